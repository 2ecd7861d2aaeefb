#include "crypto/KeyRules.h"

#include "common/TestBytes.h"
#include "crypto/Md5.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

std::string KeyText(const SecretBytes& key) {
    return StringFromBytes(key.bytes());
}

// Raw digest bytes of a text, from its hex form.
std::string RawDigest(const std::string& text) {
    return StringFromBytes(testing::BytesFromHex(*MD5String(text)));
}

TEST(MakePassphraseKey, FillsWithAAndCutsAt32) {
    EXPECT_EQ(KeyText(MakePassphraseKey("abcdef")), "abcdef" + std::string(26, 'A'));
    EXPECT_EQ(KeyText(MakePassphraseKey("")), std::string(32, 'A'));
    const std::string forty = "0123456789012345678901234567890123456789";
    EXPECT_EQ(KeyText(MakePassphraseKey(forty)), forty.substr(0, 32));
    EXPECT_EQ(KeyText(MakePassphraseKey("AAA")), KeyText(MakePassphraseKey("A")));
    EXPECT_EQ(KeyText(MakePassphraseKey(" Mixed Case ")), " Mixed Case " + std::string(20, 'A'));
}

// Odd and even keys are joined before digesting; one key is followed by the digest of nothing.
TEST(BuildKey, JoinsOddAndEvenKeysBeforeDigesting) {
    const std::vector<std::string> three = {"a", "b", "c"}, swapped = {"c", "b", "a"},
                                   moved = {"b", "a", "c"}, one = {"solo"};
    EXPECT_EQ(KeyText(BuildKey(three).key), RawDigest("ac") + RawDigest("b"));
    EXPECT_NE(KeyText(BuildKey(swapped).key), KeyText(BuildKey(three).key));
    EXPECT_NE(KeyText(BuildKey(moved).key), KeyText(BuildKey(three).key));
    EXPECT_EQ(KeyText(BuildKey(one).key), RawDigest("solo") + RawDigest(""));
}

TEST(BuildKey, NamesTheFirstEmptyKey) {
    const std::vector<std::string> keys = {"one", "two", "", "four", ""};
    const SharedKey result = BuildKey(keys);
    EXPECT_FALSE(result.ok());
    EXPECT_EQ(result.emptyKeyNumber, 3);
    EXPECT_TRUE(result.key.empty());
}

} // namespace
} // namespace kelvora
