#include "about/AboutPanels.h"

#include <gtest/gtest.h>
#include <tuple>

namespace kelvora {
namespace {

using enum AboutPanel;

// Each bound belongs to the lower panel.
TEST(PanelChoice, BoundsBelongToTheLowerPanel) {
    const std::pair<double, AboutPanel> kDraws[] = {
        {0.0, PrivacyTest}, {0.33, PrivacyTest},       {0.3300001, MakerTool},
        {0.66, MakerTool},  {0.6600001, PartnerTrial}, {0.9999999, PartnerTrial}};
    for (const auto& [draw, panel] : kDraws) {
        EXPECT_EQ(PanelForDraw(draw), panel) << draw;
    }
}

constexpr const char* kPartnerDe =
    "https://partner.kelvora.net/shop.php?lang=de&promo=KV-TRIAL30&link=kelvora-crypt";
constexpr const char* kPartnerEn =
    "https://partner.kelvora.net/shop.php?lang=en&promo=KV-TRIAL30&link=kelvora-crypt";
constexpr const char* kToolPage = "https://www.kelvora.net/cookie.php?aref=91";
constexpr const char* kStartPage = "https://www.kelvora.net/?aref=91";
constexpr const char* kPrivacy = "https://privacy.kelvora.net/?aref=0";

// Rows: panel, language base, the link's element index, the address it opens.
TEST(LinkRules, AddressForPanelLanguageAndLabel) {
    const std::tuple<AboutPanel, int, int, const char*> kLinks[] = {
        {PartnerTrial, 0, 3, kPartnerDe},    {PartnerTrial, 1000, 3, kPartnerEn},
        {PartnerTrial, 2000, 3, kPartnerEn}, {PartnerTrial, 3000, 3, kPartnerEn},
        {MakerTool, 0, 2, kToolPage},        {MakerTool, 1000, 2, kToolPage},
        {MakerTool, 2000, 2, kStartPage},    {MakerTool, 3000, 2, kStartPage},
        {MakerTool, 0, 5, kStartPage},       {MakerTool, 1000, 5, kStartPage},
        {PrivacyTest, 0, 1, kPrivacy},       {PrivacyTest, 3000, 1, kPrivacy},
        {PrivacyTest, 1000, 5, kPrivacy}};
    for (const auto& [panel, languageBase, labelIndex, address] : kLinks) {
        EXPECT_EQ(LinkAddress(panel, languageBase, labelIndex), address)
            << static_cast<int>(panel) << " " << languageBase << " " << labelIndex;
    }
}

} // namespace
} // namespace kelvora
