// The cipher's modes of use: one-shot and streaming CBC, padding, key rules, bad input,
// progress and cancellation. Known answers live in CRijndaelVectorTest.cpp.
#include "common/TestBytes.h"
#include "crypto/CRijndael.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace kelvora {
namespace {

using testing::PatternBytes;

Bytes Slice(const Bytes& bytes, std::size_t offset, std::size_t size) {
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(offset);
    return Bytes(begin, begin + static_cast<std::ptrdiff_t>(size));
}

Bytes Concat(Bytes a, const Bytes& b, std::size_t padTo = 1) {
    a.insert(a.end(), b.begin(), b.end());
    a.resize((a.size() + padTo - 1) / padTo * padTo);
    return a;
}

const Bytes kKey = PatternBytes(kKeyBytes, 1);
using Positions = std::vector<std::int64_t>;

// RecordingObserver records what the cipher reports and sets Cancel at a chosen event call.
struct RecordingObserver : JobObserver {
    CRijndael* cipher = nullptr;
    int cancelAtCall = 0; // 0: never
    int eventCalls = 0;
    std::int64_t range = -1;
    Positions positions;

    void OnProgressRange(std::int64_t maximum) override { range = maximum; }
    void OnProgress(std::int64_t position) override { positions.push_back(position); }
    void LetEventsRun() override {
        if (++eventCalls == cancelAtCall) {
            cipher->Cancel = true;
        }
    }
};

TEST(CRijndaelPadding, EncryptDataPadsToWholeBlocksAndDecryptsBack) {
    for (const auto& [plainBytes, cipherBytes] : {std::pair<std::size_t, std::size_t>{32, 32},
                                                  {33, 64},
                                                  {1, 32},
                                                  {32 * 700 + 5, 32 * 701}}) {
        const Bytes plain = PatternBytes(plainBytes, 2);
        CRijndael rijndael;
        const Bytes cipher = rijndael.EncryptData(plain, kKey, true);
        EXPECT_EQ(cipher.size(), cipherBytes);
        EXPECT_EQ(rijndael.DecryptData(cipher, kKey), Concat(plain, {}, kBlockBytes)) << plainBytes;
        EXPECT_EQ(CRijndael().EncryptData(plain, kKey, true), cipher) << "the IV is always zero";
    }
}

TEST(CRijndaelBadInput, GivesEmptyArrays) {
    CRijndael rijndael;
    const Bytes data = PatternBytes(64, 3);
    EXPECT_TRUE(rijndael.EncryptData({}, kKey, true).empty());
    EXPECT_TRUE(rijndael.EncryptData(data, {}, true).empty());
    EXPECT_TRUE(rijndael.DecryptData({}, kKey).empty());
    EXPECT_TRUE(rijndael.DecryptData(data, {}).empty());
    EXPECT_TRUE(rijndael.DecryptData(PatternBytes(33, 3), kKey).empty());
    EXPECT_FALSE(rijndael.EncryptPrepareKey({}));
    EXPECT_FALSE(rijndael.EncryptPrepareKey(Slice(kKey, 0, 31)));
    EXPECT_TRUE(rijndael.EncryptDo({}, false).empty());
    EXPECT_TRUE(rijndael.DecryptDo({}, false).empty());
    EXPECT_FALSE(rijndael.Cancel);
    ASSERT_TRUE(rijndael.EncryptPrepareKey(kKey));
    EXPECT_TRUE(rijndael.DecryptDo(PatternBytes(33, 3), false).empty());
    EXPECT_TRUE(rijndael.Cancel) << "a partial block cancels the stream";
    EXPECT_TRUE(rijndael.EncryptDo(data, false).empty());
}

TEST(CRijndaelKeyRule, ShortKeysAreZeroFilledAndLongKeysCut) {
    const Bytes plain = PatternBytes(96, 4), longKey = PatternBytes(40, 5),
                shortKey = Slice(longKey, 0, 5);
    CRijndael rijndael;
    const Bytes cipher = rijndael.EncryptData(plain, shortKey, true);
    EXPECT_EQ(cipher, rijndael.EncryptData(plain, Concat(shortKey, Bytes(kKeyBytes - 5)), true));
    EXPECT_EQ(rijndael.DecryptData(cipher, shortKey), plain);
    const Bytes cutCipher = rijndael.EncryptData(plain, longKey, true);
    EXPECT_EQ(cutCipher, rijndael.EncryptData(plain, Slice(longKey, 0, kKeyBytes), true));
    EXPECT_EQ(rijndael.DecryptData(cutCipher, longKey), plain);
    EXPECT_NE(cipher, cutCipher);
}

TEST(CRijndaelStream, RestartedDecryptionGetsOnlyItsFirstBlockWrong) {
    const Bytes plain = PatternBytes(32 * 4, 7);
    const Bytes cipher = CRijndael().EncryptData(plain, kKey, true);
    CRijndael rijndael;
    ASSERT_TRUE(rijndael.EncryptPrepareKey(kKey));
    EXPECT_EQ(rijndael.DecryptDo(Slice(cipher, 0, 64), false), Slice(plain, 0, 64));
    const Bytes second = rijndael.DecryptDo(Slice(cipher, 64, 64), false);
    EXPECT_NE(Slice(second, 0, 32), Slice(plain, 64, 32));
    EXPECT_EQ(Slice(second, 32, 32), Slice(plain, 96, 32));
}

// Pieces of random sizes, encryption and decryption streams interleaved on one object:
// each piece is padded by itself, and the chaining runs across pieces and 500-block stretches.
TEST(CRijndaelStream, RandomPiecesEqualOneShot) {
    std::mt19937 random(8);
    std::vector<Bytes> pieces;
    Bytes padded;
    for (unsigned i = 0; i < 12; ++i) {
        const std::size_t size = random() % 3 == 0 ? random() % 100 + 1 : random() % 40000 + 1;
        pieces.push_back(PatternBytes(size, i));
        padded = Concat(padded, pieces.back(), kBlockBytes);
    }
    const Bytes expected = CRijndael().EncryptData(padded, kKey, true);
    CRijndael rijndael;
    ASSERT_TRUE(rijndael.EncryptPrepareKey(kKey));
    Bytes cipher, plain;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Bytes piece = rijndael.EncryptDo(pieces[i], i > 0);
        ASSERT_EQ(piece, Slice(expected, cipher.size(), piece.size())) << "piece " << i;
        plain = Concat(plain, rijndael.DecryptDo(piece, i > 0));
        cipher = Concat(cipher, piece);
    }
    EXPECT_EQ(plain, padded);
}

TEST(CRijndaelProgress, OneShotReportsEveryBlockUnlessQuietAndRunsEventsEachBlock) {
    for (const bool quiet : {false, true}) {
        RecordingObserver observer;
        static_cast<void>(CRijndael(&observer).EncryptData(PatternBytes(3 * 32, 9), kKey, quiet));
        EXPECT_EQ(observer.range, quiet ? -1 : 4);
        EXPECT_EQ(observer.positions, (quiet ? Positions{} : Positions{0, 0, 1, 2, 4}));
        EXPECT_EQ(observer.eventCalls, 3);
    }
}

// Streaming calls run events at blocks 0, 500, 1000, ...
TEST(CRijndaelProgress, StreamingRunsEventsEvery500Blocks) {
    for (const auto& [blocks, calls] : {std::pair{1, 1}, {500, 1}, {501, 2}, {1001, 3}}) {
        RecordingObserver observer;
        CRijndael rijndael(&observer);
        ASSERT_TRUE(rijndael.EncryptPrepareKey(kKey));
        const Bytes data = PatternBytes(static_cast<std::size_t>(blocks) * 32, 10);
        static_cast<void>(rijndael.DecryptDo(rijndael.EncryptDo(data, false), false));
        EXPECT_EQ(observer.eventCalls, 2 * calls) << blocks << " blocks";
        EXPECT_TRUE(observer.positions.empty());
    }
}

TEST(CRijndaelCancel, OneShotKeepsFullLengthWithFinishedBlocksOnly) {
    const Bytes plain = PatternBytes(5 * 32, 11);
    const Bytes cipher = CRijndael().EncryptData(plain, kKey, true);
    RecordingObserver observer;
    CRijndael rijndael(&observer);
    observer.cipher = &rijndael;
    observer.cancelAtCall = 2;
    EXPECT_EQ(rijndael.EncryptData(plain, kKey, true), Concat(Slice(cipher, 0, 64), Bytes(96)));
    EXPECT_EQ(rijndael.DecryptData(cipher, kKey), Concat(Slice(plain, 0, 32), Bytes(128)))
        << "Cancel stays set, so decryption stops after its first block";
}

TEST(CRijndaelCancel, StreamingReturnsNothingAndKeepsItsChainingBlocks) {
    const Bytes plain = PatternBytes(2000 * 32, 12);
    const Bytes expected = CRijndael().EncryptData(plain, kKey, true);
    RecordingObserver observer;
    CRijndael rijndael(&observer);
    observer.cipher = &rijndael;
    ASSERT_TRUE(rijndael.EncryptPrepareKey(kKey));
    const Bytes first = rijndael.EncryptDo(Slice(plain, 0, 32000), false);
    const Bytes firstPlain = rijndael.DecryptDo(first, false);
    observer.cancelAtCall = observer.eventCalls + 2;
    EXPECT_TRUE(rijndael.EncryptDo(plain, true).empty());
    EXPECT_TRUE(rijndael.DecryptDo(expected, true).empty()) << "Cancel stays set";
    rijndael.Cancel = false;
    const Bytes second = rijndael.EncryptDo(Slice(plain, 32000, 32000), true);
    EXPECT_EQ(Concat(first, second), expected);
    EXPECT_EQ(Concat(firstPlain, rijndael.DecryptDo(second, true)), plain);
}

} // namespace
} // namespace kelvora
