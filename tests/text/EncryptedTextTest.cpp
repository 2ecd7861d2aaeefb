#include "text/EncryptedText.h"

#include "common/FixedRandom.h"
#include "crypto/KeyRules.h"
#include "i18n/Catalogue.h"
#include "text/Base64.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

// "Hi" in English under the passphrase "secret", with the prefix bytes 0..31. The cipher
// bytes were made with an independent Rijndael-256 implementation (libmcrypt) from the
// plain bytes laid out by hand: prefix, banner line, CR LF, text, zero padding.
constexpr std::string_view kHiUnderSecret =
    "HlsrjuX5+MdfLK9r2m8rDRV1R85+uTQsF/KUu7a3bQdYxA7YvWeS1fPaUB1dyehhplkyAivsbBvp\r\n"
    "MUWQUIOkOH5svjcgVxzm9yqPRt8bDmySz988vGwqMQzxJL1tm+OYvK6useHP8Dezt6+U82aNFiJT\r\n"
    "oHftgoQRQpXw43rOzBo=";
constexpr std::string_view kEnglishHi =
    "This text has been encrypted with Kelvora Portable (free!) - http://www.kelvora.net\r\nHi";

// Decryption keeps the padding behind the text, and takes blanks and line breaks anywhere.
TEST(EncryptedText, EncryptsAndDecryptsTheHandBuiltTextExactly) {
    const SecretBytes key = MakePassphraseKey("secret");
    CRijndael cipher;
    const std::string plain = WithBanner(kEnglish, "Hi");
    ASSERT_EQ(plain, kEnglishHi);
    testing::FixedRandom random;
    const TextResult encrypted = EncryptText(cipher, key.bytes(), plain, random);
    ASSERT_EQ(encrypted.status, TextStatus::Ok);
    EXPECT_EQ(encrypted.text, kHiUnderSecret);
    std::string spaced;
    for (const char c : std::string(kHiUnderSecret)) {
        spaced += c == 'M' ? "M " : c == '+' ? "+\r\n" : std::string(1, c);
    }
    for (const std::string_view text : {kHiUnderSecret, std::string_view(spaced)}) {
        const TextResult result = DecryptText(cipher, key.bytes(), text);
        ASSERT_EQ(result.status, TextStatus::Ok);
        EXPECT_EQ(result.text.size(), 128u - kTextPrefixBytes);
        EXPECT_EQ(UpToFirstNul(result.text), kEnglishHi);
    }
}

TEST(EncryptedText, RoundTripsWithAFreshPrefixEachTimeAndRefusesPartialBlocks) {
    const SecretBytes key = MakePassphraseKey("secret");
    CRijndael cipher;
    SystemRandom random;
    for (const int language : {kGerman, kEnglish, kSpanish, kFrench}) {
        const std::string plain = WithBanner(language, "Gr\xFC\xDF"
                                                       "e\r\nline two");
        const TextResult first = EncryptText(cipher, key.bytes(), plain, random);
        const TextResult second = EncryptText(cipher, key.bytes(), plain, random);
        EXPECT_NE(first.text, second.text);
        const TextResult back = DecryptText(cipher, key.bytes(), first.text);
        EXPECT_EQ(UpToFirstNul(back.text), plain);
        EXPECT_TRUE(StartsWithBanner(back.text));
    }
    for (const std::string_view bad : {"", "QUJD", "not base64 at all!"}) {
        EXPECT_EQ(DecryptText(cipher, key.bytes(), bad).status, TextStatus::NotBlockAligned) << bad;
    }
}

TEST(Banner, RecognisesEveryLanguageWithAnyAddress) {
    for (const int language : {kGerman, kEnglish, kSpanish, kFrench}) {
        EXPECT_TRUE(StartsWithBanner(BannerLine(language)));
    }
    EXPECT_TRUE(
        StartsWithBanner("Ce texte a \xE9t\xE9 chiffr\xE9 avec Kelvora Portable (gratuit) - "
                         "https://elsewhere.example"));
    EXPECT_FALSE(StartsWithBanner("This text has been encrypted with"));
    EXPECT_EQ(BannerLine(1234), BannerLine(kEnglish));
}

} // namespace
} // namespace kelvora
