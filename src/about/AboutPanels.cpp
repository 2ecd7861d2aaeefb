#include "about/AboutPanels.h"

#include "i18n/Catalogue.h"

namespace kelvora {
namespace {

constexpr const char* kMakerSite = "https://www.kelvora.net/";
constexpr const char* kToolPage = "cookie.php";
constexpr const char* kPrivacyTestSite = "https://privacy.kelvora.net/";
constexpr const char* kPartnerShop = "https://partner.kelvora.net/shop.php";
constexpr const char* kPartnerKeys = "&promo=KV-TRIAL30&link=kelvora-crypt";
constexpr int kMakerReference = 91;
constexpr int kPrivacyReference = 0;

} // namespace

AboutPanel PanelForDraw(double r) {
    const bool beyondFirst = r > kFirstPanelBound;
    const bool beyondSecond = r > kSecondPanelBound;
    if (beyondSecond) {
        return AboutPanel::PartnerTrial;
    }
    return beyondFirst ? AboutPanel::MakerTool : AboutPanel::PrivacyTest;
}

int LanguageBaseOf(int languageOffset) {
    switch (languageOffset) {
    case kEnglish:
        return 1 * kLanguageBaseStep;
    case kSpanish:
        return 2 * kLanguageBaseStep;
    case kFrench:
        return 3 * kLanguageBaseStep;
    default:
        return 0;
    }
}

int LanguageOffsetOfBase(int languageBase) {
    switch (languageBase / kLanguageBaseStep) {
    case 1:
        return kEnglish;
    case 2:
        return kSpanish;
    case 3:
        return kFrench;
    default:
        return kGerman;
    }
}

std::string LinkAddress(AboutPanel panel, int languageBase, int labelIndex) {
    switch (panel) {
    case AboutPanel::PartnerTrial:
        return std::string(kPartnerShop) + (languageBase == 0 ? "?lang=de" : "?lang=en") +
               kPartnerKeys;
    case AboutPanel::MakerTool: {
        const bool startPage =
            labelIndex == kStartPageLinkIndex || languageBase > kLanguageBaseStep;
        return std::string(kMakerSite) + (startPage ? "" : kToolPage) +
               "?aref=" + std::to_string(kMakerReference);
    }
    case AboutPanel::PrivacyTest:
        break;
    }
    return std::string(kPrivacyTestSite) + "?aref=" + std::to_string(kPrivacyReference);
}

} // namespace kelvora
