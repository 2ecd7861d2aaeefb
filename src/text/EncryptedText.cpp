#include "text/EncryptedText.h"

#include "i18n/Catalogue.h"
#include "text/Base64.h"

#include <algorithm>
#include <array>

namespace kelvora {
namespace {

// The banner texts in Windows-1252, each up to and including the " - " before the address.
constexpr std::string_view kGermanBanner =
    "Dieser Text wurde mit Kelvora Portable (kostenlos) verschl\xFCsselt - ";
constexpr std::string_view kEnglishBanner =
    "This text has been encrypted with Kelvora Portable (free!) - ";
constexpr std::string_view kSpanishBanner =
    "Este texto ha sido encriptado con Kelvora Portable (gratis) - ";
constexpr std::string_view kFrenchBanner =
    "Ce texte a \xE9t\xE9 chiffr\xE9 avec Kelvora Portable (gratuit) - ";
constexpr std::array<std::string_view, 4> kBanners = {kGermanBanner, kEnglishBanner, kSpanishBanner,
                                                      kFrenchBanner};

std::string WithoutBlanks(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(out),
                 [](char c) { return c != ' '; });
    return out;
}

} // namespace

std::string BannerLine(int languageOffset) {
    std::string_view banner = kEnglishBanner;
    if (languageOffset == kGerman) {
        banner = kGermanBanner;
    } else if (languageOffset == kSpanish) {
        banner = kSpanishBanner;
    } else if (languageOffset == kFrench) {
        banner = kFrenchBanner;
    }
    return std::string(banner) + std::string(kMakerAddress);
}

std::string WithBanner(int languageOffset, std::string_view ansiText) {
    return BannerLine(languageOffset) + "\r\n" + std::string(ansiText);
}

bool StartsWithBanner(std::string_view ansiText) {
    return std::any_of(kBanners.begin(), kBanners.end(),
                       [&](std::string_view banner) { return ansiText.starts_with(banner); });
}

TextResult EncryptText(CRijndael& cipher, const Bytes& key, std::string_view ansiText,
                       RandomSource& random) {
    Bytes plain(kTextPrefixBytes + ansiText.size());
    random.Fill(plain.data(), kTextPrefixBytes);
    std::copy(ansiText.begin(), ansiText.end(), plain.begin() + kTextPrefixBytes);
    const Bytes encrypted = cipher.EncryptData(plain, key, false);
    Wipe(plain);
    if (cipher.Cancel) {
        return TextResult{TextStatus::Cancelled, {}};
    }
    return TextResult{TextStatus::Ok, Base64Encode(encrypted)};
}

TextResult DecryptText(CRijndael& cipher, const Bytes& key, std::string_view armoured) {
    Bytes decrypted = cipher.DecryptData(Base64Decode(WithoutBlanks(armoured)), key);
    if (cipher.Cancel) {
        Wipe(decrypted);
        return TextResult{TextStatus::Cancelled, {}};
    }
    if (decrypted.empty()) {
        return TextResult{TextStatus::NotBlockAligned, {}};
    }
    std::string text(decrypted.begin() + kTextPrefixBytes, decrypted.end());
    Wipe(decrypted);
    return TextResult{TextStatus::Ok, std::move(text)};
}

std::string_view UpToFirstNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

} // namespace kelvora
