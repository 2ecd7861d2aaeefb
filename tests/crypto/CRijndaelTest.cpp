// The cipher on every path this CPU has: the published Rijndael-256/256 vectors in tests/data
// (see tests/data/README.md for their sources), and each path against the portable one on
// odd block counts (the hardware kernels work in groups of four and eight blocks), streams cut
// at odd places and cancel inside a call. Then its modes of use on the process's own path:
// padding, key rules, bad input, progress and cancellation, and how a process chooses its path.
#include "crypto/CRijndael.h"

#include "common/TestBytes.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <numeric>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace kelvora {
namespace {

using testing::BytesFromHex;
using testing::PatternBytes;
using Row = std::vector<std::string>;

// ReadTable reads a tab-separated file without its header line.
std::vector<Row> ReadTable(const std::string& name) {
    std::ifstream file(std::string(KELVORA_TEST_DATA) + "/" + name);
    std::vector<Row> rows;
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        std::istringstream fields(line);
        Row& row = rows.emplace_back();
        for (std::string field; std::getline(fields, field, '\t');) {
            row.push_back(field);
        }
    }
    return rows;
}

Bytes Slice(const Bytes& bytes, std::size_t offset, std::size_t size) {
    return Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(offset),
                 bytes.begin() + static_cast<std::ptrdiff_t>(offset + size));
}

Bytes LastBlock(const Bytes& bytes) {
    return Slice(bytes, bytes.size() - kBlockBytes, kBlockBytes);
}

Bytes Concat(Bytes a, const Bytes& b, std::size_t padTo = 1) {
    a.insert(a.end(), b.begin(), b.end());
    a.resize((a.size() + padTo - 1) / padTo * padTo);
    return a;
}

const Bytes kKey = PatternBytes(kKeyBytes, 21);
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

// CRijndaelOnPath runs a test once per cipher path. A path this CPU cannot run is skipped
// with a note, so a run on a CPU without VAES or AVX-512 says what it did not test.
class CRijndaelOnPath : public ::testing::TestWithParam<CipherPath> {
protected:
    void SetUp() override {
        if (!CipherPathAvailable(GetParam())) {
            GTEST_SKIP() << "this CPU cannot run the " << CipherPathName(GetParam()) << " path";
        }
    }

    // Keyed gives a cipher on path (this test's path unless said) with the key prepared.
    std::unique_ptr<CRijndael> Keyed(const Bytes& key = kKey, JobObserver* observer = nullptr,
                                     std::optional<CipherPath> path = std::nullopt) {
        auto cipher = std::make_unique<CRijndael>(observer);
        EXPECT_TRUE(cipher->UseCipherPath(path.value_or(GetParam())));
        EXPECT_TRUE(cipher->EncryptPrepareKey(key));
        return cipher;
    }

    // BlockHoldsBothWays enciphers one block with a fresh schedule and deciphers it back.
    bool BlockHoldsBothWays(int nb, int nk, const Bytes& key, const Bytes& plain,
                            const Bytes& cipher) {
        CRijndael rijndael;
        static_cast<void>(rijndael.UseCipherPath(GetParam()));
        rijndael.gentables();
        rijndael.gkey(nb, nk, key.data());
        Bytes block = plain;
        rijndael.Encrypt(block.data());
        const bool encrypted = block == cipher;
        rijndael.Decrypt(block.data());
        return encrypted && block == plain;
    }
};

TEST_P(CRijndaelOnPath, EveryEcbKnownAnswerHoldsBothWays) {
    const auto rows = ReadTable("rijndael256-ecb-kat.tsv");
    ASSERT_EQ(rows.size(), 1545U);
    for (const Row& row : rows) {
        ASSERT_TRUE(BlockHoldsBothWays(8, 8, BytesFromHex(row[0]), BytesFromHex(row[1]),
                                       BytesFromHex(row[2])))
            << row[3];
    }
}

// E iterated n times equals the last block of zero-IV CBC over plain and n - 1 zero blocks.
TEST_P(CRijndaelOnPath, EveryIteratedResultHoldsAsZeroIvCbc) {
    const auto rows = ReadTable("rijndael256-mct.txt");
    ASSERT_EQ(rows.size(), 1540U);
    for (const Row& row : rows) {
        const Bytes key = BytesFromHex(row[0]);
        Bytes message = BytesFromHex(row[1]);
        message.resize(std::stoul(row[2]) * kBlockBytes);
        const auto oneShot = Keyed(key);
        const Bytes cipher = oneShot->EncryptData(message, key, true);
        const auto stream = Keyed(key);
        ASSERT_EQ(LastBlock(cipher), BytesFromHex(row[3])) << row[4];
        ASSERT_TRUE(oneShot->DecryptData(cipher, key) == message) << row[4];
        ASSERT_TRUE(stream->EncryptDo(message, false) == cipher) << row[4];
        ASSERT_TRUE(stream->DecryptDo(cipher, false) == message) << row[4];
    }
}

TEST_P(CRijndaelOnPath, CbcVectorWithIvHoldsBothWays) {
    const auto rows = ReadTable("rijndael256-cbc.tsv");
    ASSERT_EQ(rows.size(), 1U);
    const Bytes iv = BytesFromHex(rows[0][1]), plain = BytesFromHex(rows[0][2]);
    const Bytes cipher = BytesFromHex(rows[0][3]);
    const auto rijndael = Keyed(BytesFromHex(rows[0][0]));
    Bytes out(plain.size()), chain = iv;
    rijndael->EncryptBlocksCbc(plain.data(), out.data(), plain.size() / kBlockBytes, chain.data());
    EXPECT_EQ(out, cipher);
    EXPECT_EQ(chain, LastBlock(cipher));
    chain = iv;
    rijndael->DecryptBlocksCbc(cipher.data(), out.data(), plain.size() / kBlockBytes, chain.data());
    EXPECT_EQ(out, plain);
    EXPECT_EQ(chain, LastBlock(cipher));
}

// The schedule also serves the 128-bit block: FIPS-197 appendix C (row shifts 1, 2, 3). The
// hardware paths only take the 256-bit block, so such a schedule must stay on the tables.
TEST_P(CRijndaelOnPath, ShortBlockMatchesAesKnownAnswers) {
    Bytes key(32);
    std::iota(key.begin(), key.end(), std::uint8_t{0});
    const Bytes plain = BytesFromHex("00112233445566778899aabbccddeeff");
    for (const auto& [keyWords, cipherHex] : {std::pair{4, "69c4e0d86a7b0430d8cdb78070b4c55a"},
                                              {6, "dda97ca4864cdfe06eaf70a0ec0d7191"},
                                              {8, "8ea2b7ca516745bfeafc49904b496089"}}) {
        EXPECT_TRUE(BlockHoldsBothWays(4, keyWords, key, plain, BytesFromHex(cipherHex)))
            << keyWords << " key words";
    }
}

// Every block of a bulk call, and the chaining block it leaves, equals the portable path's;
// decryption also in place, and of random bytes (what a wrong key or damage meets).
TEST_P(CRijndaelOnPath, BulkCallsAgreeWithThePortablePathOnOddBlockCounts) {
    const auto portable = Keyed(kKey, nullptr, CipherPath::Portable), path = Keyed();
    for (const std::size_t blocks :
         std::vector<std::size_t>{1, 2, 3, 4, 5, 7, 8, 9, 11, 12, 15, 16, 17, 31, 33, 501}) {
        SCOPED_TRACE(::testing::Message() << blocks << " blocks");
        const Bytes plain = PatternBytes(blocks * kBlockBytes, static_cast<unsigned>(blocks));
        const Bytes iv = PatternBytes(kBlockBytes, static_cast<unsigned>(blocks) + 1000);
        const auto run = [&](const CRijndael& cipher, bool encrypt, const Bytes& in, Bytes& out) {
            Bytes chain = iv;
            out.resize(in.size());
            encrypt ? cipher.EncryptBlocksCbc(in.data(), out.data(), blocks, chain.data())
                    : cipher.DecryptBlocksCbc(in.data(), out.data(), blocks, chain.data());
            return chain;
        };
        Bytes expected, cipher, garbage, expectedGarbage;
        const Bytes expectedChain = run(*portable, true, plain, expected);
        ASSERT_EQ(run(*path, true, plain, cipher), expectedChain);
        ASSERT_EQ(cipher, expected);
        ASSERT_EQ(run(*path, false, cipher, cipher), expectedChain) << "in place";
        ASSERT_EQ(cipher, plain) << "in place";
        ASSERT_EQ(run(*path, false, plain, garbage), run(*portable, false, plain, expectedGarbage));
        ASSERT_EQ(garbage, expectedGarbage);
    }
}

// Pieces of odd sizes, encryption and decryption interleaved on one object: each piece is
// padded by itself and the chaining runs across pieces and the 500-block stretches. Then the
// whole is decrypted again in pieces cut elsewhere.
TEST_P(CRijndaelOnPath, StreamsCutAnywhereEqualThePortableOneShot) {
    const std::vector<std::size_t> pieces{1, 31, 33, 16001, 500 * 32 + 1, 95, 70000, 32 * 9};
    Bytes padded;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        padded = Concat(padded, PatternBytes(pieces[i], static_cast<unsigned>(i)), kBlockBytes);
    }
    const Bytes expected =
        Keyed(kKey, nullptr, CipherPath::Portable)->EncryptData(padded, kKey, true);
    const auto rijndael = Keyed();
    for (std::size_t i = 0, at = 0; i < pieces.size(); ++i) {
        const Bytes piece =
            rijndael->EncryptDo(PatternBytes(pieces[i], static_cast<unsigned>(i)), i > 0);
        ASSERT_EQ(piece, Slice(expected, at, piece.size())) << "piece " << i;
        ASSERT_EQ(rijndael->DecryptDo(piece, i > 0), Slice(padded, at, piece.size())) << i;
        at += piece.size();
    }
    const std::vector<std::size_t> cuts{3, 501, 9, 1, 4, 8, 1003};
    for (std::size_t at = 0, i = 0; at < expected.size(); ++i) {
        const std::size_t size = std::min(cuts[i % cuts.size()] * kBlockBytes, padded.size() - at);
        ASSERT_EQ(rijndael->DecryptDo(Slice(expected, at, size), at > 0), Slice(padded, at, size))
            << "at byte " << at;
        at += size;
    }
}

// A cancelled streaming call gives nothing, and so does every call while Cancel stays set;
// the chaining block stays the one of the last completed call.
TEST_P(CRijndaelOnPath, CancelInsideAStreamingCallKeepsTheLastFinishedChain) {
    const Bytes plain = PatternBytes(2000 * kBlockBytes, 5);
    const Bytes reference = CRijndael().EncryptData(Slice(plain, 0, 128), kKey, true);
    for (const bool encrypt : {true, false}) {
        SCOPED_TRACE(encrypt ? "encrypt" : "decrypt");
        RecordingObserver observer;
        const auto rijndael = Keyed(kKey, &observer);
        observer.cipher = rijndael.get();
        const auto run = [&](std::size_t offset, std::size_t size, bool continued) {
            return encrypt ? rijndael->EncryptDo(Slice(plain, offset, size), continued)
                           : rijndael->DecryptDo(Slice(reference, offset, size), continued);
        };
        EXPECT_EQ(run(0, 64, false), Slice(encrypt ? reference : plain, 0, 64));
        observer.cancelAtCall = observer.eventCalls + 3; // the third stretch of the next call
        EXPECT_TRUE(encrypt ? rijndael->EncryptDo(plain, true).empty()
                            : rijndael->DecryptDo(plain, true).empty());
        EXPECT_EQ(observer.eventCalls, observer.cancelAtCall) << "stopped at the check that saw it";
        EXPECT_TRUE(run(64, 64, true).empty()) << "Cancel stays set";
        rijndael->Cancel = false;
        EXPECT_EQ(run(64, 64, true), Slice(encrypt ? reference : plain, 64, 64));
    }
}

INSTANTIATE_TEST_SUITE_P(, CRijndaelOnPath, ::testing::ValuesIn(kCipherPaths),
                         [](const auto& info) { return std::string(CipherPathName(info.param)); });

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
