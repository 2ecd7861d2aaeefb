#include "about/AboutPanels.h"

#include "i18n/Catalogue.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

struct DrawCase {
    const char* name;
    double r;
    AboutPanel panel;
};

class PanelChoice : public ::testing::TestWithParam<DrawCase> {};

TEST_P(PanelChoice, BoundsBelongToTheLowerPanel) {
    EXPECT_EQ(PanelForDraw(GetParam().r), GetParam().panel);
}

INSTANTIATE_TEST_SUITE_P(
    Table, PanelChoice,
    ::testing::Values(DrawCase{"Zero", 0.0, AboutPanel::PrivacyTest},
                      DrawCase{"FirstBound", 0.33, AboutPanel::PrivacyTest},
                      DrawCase{"JustAboveFirst", 0.3300001, AboutPanel::MakerTool},
                      DrawCase{"SecondBound", 0.66, AboutPanel::MakerTool},
                      DrawCase{"JustAboveSecond", 0.6600001, AboutPanel::PartnerTrial},
                      DrawCase{"AlmostOne", 0.9999999, AboutPanel::PartnerTrial}),
    [](const auto& info) { return info.param.name; });

TEST(LanguageBase, ConvertsBothWays) {
    constexpr std::pair<int, int> kPairs[] = {
        {kGerman, 0}, {kEnglish, 1000}, {kSpanish, 2000}, {kFrench, 3000}};
    for (const auto& [offset, base] : kPairs) {
        EXPECT_EQ(LanguageBaseOf(offset), base);
        EXPECT_EQ(LanguageOffsetOfBase(base), offset);
    }
}

struct LinkCase {
    const char* name;
    AboutPanel panel;
    int languageBase;
    int labelIndex;
    const char* address;
};

class LinkRules : public ::testing::TestWithParam<LinkCase> {};

TEST_P(LinkRules, AddressForPanelLanguageAndLabel) {
    const LinkCase& c = GetParam();
    EXPECT_EQ(LinkAddress(c.panel, c.languageBase, c.labelIndex), c.address);
}

constexpr const char* kPartnerDe =
    "https://partner.kelvora.net/shop.php?lang=de&promo=KV-TRIAL30&link=kelvora-crypt";
constexpr const char* kPartnerEn =
    "https://partner.kelvora.net/shop.php?lang=en&promo=KV-TRIAL30&link=kelvora-crypt";
constexpr const char* kToolPage = "https://www.kelvora.net/cookie.php?aref=91";
constexpr const char* kStartPage = "https://www.kelvora.net/?aref=91";
constexpr const char* kPrivacy = "https://privacy.kelvora.net/?aref=0";

INSTANTIATE_TEST_SUITE_P(
    Table, LinkRules,
    ::testing::Values(LinkCase{"PartnerGerman", AboutPanel::PartnerTrial, 0, 3, kPartnerDe},
                      LinkCase{"PartnerEnglish", AboutPanel::PartnerTrial, 1000, 3, kPartnerEn},
                      LinkCase{"PartnerSpanish", AboutPanel::PartnerTrial, 2000, 3, kPartnerEn},
                      LinkCase{"PartnerFrench", AboutPanel::PartnerTrial, 3000, 3, kPartnerEn},
                      LinkCase{"ToolGerman", AboutPanel::MakerTool, 0, 2, kToolPage},
                      LinkCase{"ToolEnglish", AboutPanel::MakerTool, 1000, 2, kToolPage},
                      LinkCase{"ToolSpanish", AboutPanel::MakerTool, 2000, 2, kStartPage},
                      LinkCase{"ToolFrench", AboutPanel::MakerTool, 3000, 2, kStartPage},
                      LinkCase{"StartLinkGerman", AboutPanel::MakerTool, 0, 5, kStartPage},
                      LinkCase{"StartLinkEnglish", AboutPanel::MakerTool, 1000, 5, kStartPage},
                      LinkCase{"PrivacyGerman", AboutPanel::PrivacyTest, 0, 1, kPrivacy},
                      LinkCase{"PrivacyFrench", AboutPanel::PrivacyTest, 3000, 1, kPrivacy},
                      LinkCase{"PrivacyElementFive", AboutPanel::PrivacyTest, 1000, 5, kPrivacy}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
