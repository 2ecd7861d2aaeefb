// Known-answer tests of the cipher against the published Rijndael-256/256 vectors in
// tests/data (see tests/data/README.md for their sources), on every cipher path this CPU has.
#include "common/TestBytes.h"
#include "crypto/CRijndael.h"
#include "crypto/CipherPathTesting.h"

#include <fstream>
#include <gtest/gtest.h>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

namespace kelvora {
namespace {

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

using testing::BytesFromHex;

Bytes LastBlock(const Bytes& bytes) {
    return Bytes(bytes.end() - static_cast<std::ptrdiff_t>(kBlockBytes), bytes.end());
}

using CRijndaelVectors = CipherPathTest;

// BlockHoldsBothWays enciphers one block with a fresh schedule and deciphers it back.
bool BlockHoldsBothWays(CipherPath path, int nb, int nk, const Bytes& key, const Bytes& plain,
                        const Bytes& cipher) {
    CRijndael rijndael;
    static_cast<void>(rijndael.UseCipherPath(path));
    rijndael.gentables();
    rijndael.gkey(nb, nk, key.data());
    Bytes block = plain;
    rijndael.Encrypt(block.data());
    const bool encrypted = block == cipher;
    rijndael.Decrypt(block.data());
    return encrypted && block == plain;
}

TEST_P(CRijndaelVectors, EveryEcbKnownAnswerHoldsBothWays) {
    const auto rows = ReadTable("rijndael256-ecb-kat.tsv");
    ASSERT_EQ(rows.size(), 1545U);
    for (const Row& row : rows) {
        ASSERT_TRUE(BlockHoldsBothWays(GetParam(), 8, 8, BytesFromHex(row[0]), BytesFromHex(row[1]),
                                       BytesFromHex(row[2])))
            << row[3];
    }
}

// E iterated n times equals the last block of zero-IV CBC over plain and n - 1 zero blocks.
TEST_P(CRijndaelVectors, EveryIteratedResultHoldsAsZeroIvCbc) {
    const auto rows = ReadTable("rijndael256-mct.txt");
    ASSERT_EQ(rows.size(), 1540U);
    for (const Row& row : rows) {
        const Bytes key = BytesFromHex(row[0]);
        Bytes message = BytesFromHex(row[1]);
        message.resize(std::stoul(row[2]) * kBlockBytes);
        CRijndael oneShot;
        ASSERT_TRUE(oneShot.UseCipherPath(GetParam()));
        const Bytes cipher = oneShot.EncryptData(message, key, true);
        CRijndael stream;
        ASSERT_TRUE(stream.UseCipherPath(GetParam()));
        ASSERT_TRUE(stream.EncryptPrepareKey(key));
        ASSERT_EQ(LastBlock(cipher), BytesFromHex(row[3])) << row[4];
        ASSERT_TRUE(oneShot.DecryptData(cipher, key) == message) << row[4];
        ASSERT_TRUE(stream.EncryptDo(message, false) == cipher) << row[4];
        ASSERT_TRUE(stream.DecryptDo(cipher, false) == message) << row[4];
    }
}

TEST_P(CRijndaelVectors, CbcVectorWithIvHoldsBothWays) {
    const auto rows = ReadTable("rijndael256-cbc.tsv");
    ASSERT_EQ(rows.size(), 1U);
    const Bytes key = BytesFromHex(rows[0][0]), iv = BytesFromHex(rows[0][1]);
    const Bytes plain = BytesFromHex(rows[0][2]), cipher = BytesFromHex(rows[0][3]);
    CRijndael rijndael;
    ASSERT_TRUE(rijndael.UseCipherPath(GetParam()));
    ASSERT_TRUE(rijndael.EncryptPrepareKey(key));
    Bytes out(plain.size()), chain = iv;
    rijndael.EncryptBlocksCbc(plain.data(), out.data(), plain.size() / kBlockBytes, chain.data());
    EXPECT_EQ(out, cipher);
    EXPECT_EQ(chain, LastBlock(cipher));
    chain = iv;
    rijndael.DecryptBlocksCbc(cipher.data(), out.data(), plain.size() / kBlockBytes, chain.data());
    EXPECT_EQ(out, plain);
    EXPECT_EQ(chain, LastBlock(cipher));
}

// The schedule also serves the 128-bit block: FIPS-197 appendix C (row shifts 1, 2, 3). The
// hardware paths only take the 256-bit block, so such a schedule must stay on the tables.
TEST_P(CRijndaelVectors, ShortBlockMatchesAesKnownAnswers) {
    Bytes key(32);
    std::iota(key.begin(), key.end(), std::uint8_t{0});
    const Bytes plain = BytesFromHex("00112233445566778899aabbccddeeff");
    for (const auto& [keyWords, cipherHex] : {std::pair{4, "69c4e0d86a7b0430d8cdb78070b4c55a"},
                                              {6, "dda97ca4864cdfe06eaf70a0ec0d7191"},
                                              {8, "8ea2b7ca516745bfeafc49904b496089"}}) {
        EXPECT_TRUE(
            BlockHoldsBothWays(GetParam(), 4, keyWords, key, plain, BytesFromHex(cipherHex)))
            << keyWords << " key words";
    }
}

INSTANTIATE_CIPHER_PATHS(CRijndaelVectors);

} // namespace
} // namespace kelvora
