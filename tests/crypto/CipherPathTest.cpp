// Each hardware cipher path against the portable one: the bulk calls on odd block counts (the
// hardware kernels work in groups of four and eight blocks), streams cut at odd places, and
// cancel inside a call. Plus the rules by which a process chooses its path.
#include "common/TestBytes.h"
#include "crypto/CRijndael.h"
#include "crypto/CipherPathTesting.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

namespace kelvora {
namespace {

using testing::PatternBytes;

const Bytes kKey = PatternBytes(kKeyBytes, 21);

using CipherPathAgainstPortable = CipherPathTest;

TEST_P(CipherPathAgainstPortable, BulkCallsAgreeOnOddBlockCounts) {
    CRijndael portable, path;
    ASSERT_TRUE(portable.UseCipherPath(CipherPath::Portable));
    ASSERT_TRUE(path.UseCipherPath(GetParam()));
    ASSERT_TRUE(portable.EncryptPrepareKey(kKey));
    ASSERT_TRUE(path.EncryptPrepareKey(kKey));
    for (const std::size_t blocks :
         std::vector<std::size_t>{1, 2, 3, 4, 5, 7, 8, 9, 11, 12, 15, 16, 17, 31, 33, 501}) {
        const auto seed = static_cast<unsigned>(blocks);
        const Bytes plain = PatternBytes(blocks * kBlockBytes, seed);
        const Bytes iv = PatternBytes(kBlockBytes, seed + 1000);
        Bytes expected(plain.size()), expectedIv = iv;
        portable.EncryptBlocksCbc(plain.data(), expected.data(), blocks, expectedIv.data());
        Bytes cipher(plain.size()), chain = iv;
        path.EncryptBlocksCbc(plain.data(), cipher.data(), blocks, chain.data());
        ASSERT_EQ(cipher, expected) << blocks << " blocks";
        ASSERT_EQ(chain, expectedIv) << blocks << " blocks";

        Bytes inPlace = cipher;
        chain = iv;
        path.DecryptBlocksCbc(inPlace.data(), inPlace.data(), blocks, chain.data());
        ASSERT_EQ(inPlace, plain) << blocks << " blocks, in place";
        ASSERT_EQ(chain, expectedIv) << blocks << " blocks, in place";
        // Random ciphertext: a wrong key or damage must decrypt to the same garbage.
        Bytes garbage(plain.size()), portableGarbage(plain.size());
        Bytes chainA = iv, chainB = iv;
        portable.DecryptBlocksCbc(plain.data(), portableGarbage.data(), blocks, chainA.data());
        path.DecryptBlocksCbc(plain.data(), garbage.data(), blocks, chainB.data());
        ASSERT_EQ(garbage, portableGarbage) << blocks << " blocks";
        ASSERT_EQ(chainB, chainA) << blocks << " blocks";
    }
}

// EncryptDo pieces of odd sizes and DecryptDo continued over other cuts give the portable
// path's bytes, so chaining holds across calls and across the 500-block stretches.
TEST_P(CipherPathAgainstPortable, StreamsAgreeAcrossCallBoundaries) {
    const std::vector<std::size_t> pieces{1, 31, 33, 16001, 500 * 32 + 1, 95, 70000, 32 * 9};
    CRijndael portable, path;
    ASSERT_TRUE(portable.UseCipherPath(CipherPath::Portable));
    ASSERT_TRUE(path.UseCipherPath(GetParam()));
    ASSERT_TRUE(portable.EncryptPrepareKey(kKey));
    ASSERT_TRUE(path.EncryptPrepareKey(kKey));
    Bytes cipher;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Bytes plain = PatternBytes(pieces[i], static_cast<unsigned>(i));
        const Bytes expected = portable.EncryptDo(plain, i > 0);
        ASSERT_EQ(path.EncryptDo(plain, i > 0), expected) << "piece " << i;
        cipher.insert(cipher.end(), expected.begin(), expected.end());
    }
    const std::vector<std::size_t> cuts{3, 501, 9, 1, 4, 8, 1003};
    for (std::size_t at = 0, i = 0; at < cipher.size(); ++i) {
        const std::size_t size = std::min(cuts[i % cuts.size()] * kBlockBytes, cipher.size() - at);
        const Bytes piece(cipher.begin() + static_cast<std::ptrdiff_t>(at),
                          cipher.begin() + static_cast<std::ptrdiff_t>(at + size));
        ASSERT_EQ(path.DecryptDo(piece, at > 0), portable.DecryptDo(piece, at > 0))
            << "at byte " << at;
        at += size;
    }
}

// CancellingObserver sets Cancel at a chosen call of LetEventsRun.
struct CancellingObserver : JobObserver {
    CRijndael* cipher = nullptr;
    int cancelAtCall = 0;
    int calls = 0;
    void LetEventsRun() override {
        if (++calls == cancelAtCall) {
            cipher->Cancel = true;
        }
    }
};

TEST_P(CipherPathAgainstPortable, CancelIsHonouredInsideACall) {
    const Bytes plain = PatternBytes(2000 * kBlockBytes, 5);
    for (const bool encrypt : {true, false}) {
        CancellingObserver observer;
        CRijndael rijndael(&observer);
        observer.cipher = &rijndael;
        ASSERT_TRUE(rijndael.UseCipherPath(GetParam()));
        ASSERT_TRUE(rijndael.EncryptPrepareKey(kKey));
        const Bytes head(plain.begin(), plain.begin() + 64);
        const Bytes headOut =
            encrypt ? rijndael.EncryptDo(head, false) : rijndael.DecryptDo(head, false);
        observer.cancelAtCall = observer.calls + 3; // the third stretch of the next call
        const Bytes cancelled =
            encrypt ? rijndael.EncryptDo(plain, true) : rijndael.DecryptDo(plain, true);
        EXPECT_TRUE(cancelled.empty()) << (encrypt ? "encrypt" : "decrypt");
        EXPECT_EQ(observer.calls, observer.cancelAtCall) << "stopped at the check that saw it";
        // The chaining block is the one of the last completed call.
        rijndael.Cancel = false;
        CRijndael reference;
        ASSERT_TRUE(reference.EncryptPrepareKey(kKey));
        const Bytes tail(plain.begin() + 64, plain.begin() + 128);
        if (encrypt) {
            static_cast<void>(reference.EncryptDo(head, false));
            EXPECT_EQ(rijndael.EncryptDo(tail, true), reference.EncryptDo(tail, true));
        } else {
            static_cast<void>(reference.DecryptDo(head, false));
            EXPECT_EQ(rijndael.DecryptDo(tail, true), reference.DecryptDo(tail, true));
        }
        EXPECT_FALSE(headOut.empty());
    }
}

INSTANTIATE_CIPHER_PATHS(CipherPathAgainstPortable);

TEST(CipherPathChoice, NamesRoundTripAndUnknownNamesForceNothing) {
    for (CipherPath path : kCipherPaths) {
        EXPECT_EQ(ParseCipherPath(CipherPathName(path)), path);
        if (CipherPathAvailable(path)) {
            EXPECT_EQ(ChooseCipherPath(path), path);
        } else {
            EXPECT_NE(ChooseCipherPath(path), path) << "a path the CPU lacks is never chosen";
        }
    }
    EXPECT_FALSE(ParseCipherPath("AESNI"));
    EXPECT_FALSE(ParseCipherPath(""));
    const CipherPath fastest = ChooseCipherPath(std::nullopt);
    EXPECT_TRUE(CipherPathAvailable(fastest));
    for (CipherPath faster : kCipherPaths) {
        EXPECT_FALSE(faster > fastest && CipherPathAvailable(faster)) << CipherPathName(faster);
    }
}

// The process-wide path follows the environment, so ctest can run the whole suite once per
// path; a new cipher object starts on it.
TEST(CipherPathChoice, ActivePathFollowsTheEnvironment) {
    const char* forced = std::getenv("KELVORA_CIPHER");
    const CipherPath expected =
        ChooseCipherPath(forced != nullptr ? ParseCipherPath(forced) : std::nullopt);
    EXPECT_EQ(ActiveCipherPath(), expected);
    EXPECT_EQ(CRijndael().Path(), expected);
}

} // namespace
} // namespace kelvora
