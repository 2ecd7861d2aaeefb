#include "crypto/Md5.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

// Lower-case letters a..z repeated, n of them.
std::string Letters(std::size_t n) {
    std::string text;
    for (std::size_t i = 0; i < n; ++i) {
        text.push_back(static_cast<char>('a' + i % 26));
    }
    return text;
}

// Where the finish agrees with RFC 1321 (its test suite and the lengths that still agree), then
// where it departs: no 0x80 marker at 56 mod 64, and past 120 bytes a remainder of 57 to 63 is
// cut to 56 bytes before the length field. The expected digests of those were computed with
// OpenSSL's MD5_Transform over the final blocks laid out that way.
TEST(Md5Digest, MatchesKnownAnswers) {
    const std::pair<std::string, const char*> rfc1321[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
         "d174ab98d277d9f5a5611c2c9f419d9f"},
        {"1234567890123456789012345678901234567890"
         "1234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (const auto& [input, digest] : rfc1321) {
        EXPECT_EQ(MD5String(input), digest) << input;
    }
    const std::pair<std::size_t, const char*> lengths[] = {
        {55, "0d7ae056b2f015cd7dc67494efd658f1"},  {57, "fd62afaf3aa1e2a52882cb464f5ccc4d"},
        {63, "1b30c0670c15e7da3c2ba7bce77ebe99"},  {64, "a2eaf6295c32adc403865fd96a2f182b"},
        {119, "b05187e08da41fa3ef16bd56afaafd99"}, {56, "7625625a9b379f9a583dcd9bb4816e0d"},
        {120, "b7b6e700160cbaa23d83aa22a22dc51e"}, {121, "972b609fc01cf4ac3225ce6d57743acc"},
        {127, "a2f6acfa3a379c11d789be5c2ba4abff"}, {184, "e6206a60df8cdb8b6235203da3100f23"},
        {185, "1e23cc943b7406186d82610f594672df"}, {191, "50c8ec0477a0d6f3bad16ab6c101b154"},
    };
    for (const auto& [length, digest] : lengths) {
        EXPECT_EQ(MD5String(Letters(length)), digest) << length << " letters";
    }
}

TEST(Md5Digest, RefusesInputWhoseBitCountOverflows) {
    const std::string huge(std::size_t{1} << 28, 'x');
    EXPECT_EQ(MD5String(huge), std::nullopt);
}

} // namespace
} // namespace kelvora
