// Known-answer tests of the cipher against the published Rijndael-256/256 vectors in
// tests/data (see tests/data/README.md for their sources).
#include "crypto/CRijndael.h"

#include <fstream>
#include <gtest/gtest.h>
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
        Row row;
        for (std::string field; std::getline(fields, field, '\t');) {
            row.push_back(field);
        }
        rows.push_back(row);
    }
    return rows;
}

Bytes FromHex(const std::string& hex) {
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(hex.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

Bytes LastBlock(const Bytes& bytes) {
    return Bytes(bytes.end() - static_cast<std::ptrdiff_t>(kBlockBytes), bytes.end());
}

// Failures collects the rows that disagree, so one broken cipher does not print 3000 lines.
struct Failures {
    std::vector<std::string> sources;
    void Check(bool ok, const std::string& what, const std::string& source) {
        if (!ok) {
            sources.push_back(what + ": " + source);
        }
    }
    std::string Summary() const {
        std::string text = std::to_string(sources.size()) + " failures";
        for (std::size_t i = 0; i < sources.size() && i < 5; ++i) {
            text += "\n  " + sources[i];
        }
        return text;
    }
};

TEST(CRijndaelVectors, EveryEcbKnownAnswerHoldsBothWays) {
    const auto rows = ReadTable("rijndael256-ecb-kat.tsv");
    ASSERT_EQ(rows.size(), 1545U);
    Failures failures;
    for (const Row& row : rows) {
        const Bytes key = FromHex(row[0]), plain = FromHex(row[1]), cipher = FromHex(row[2]);
        CRijndael rijndael;
        rijndael.gentables();
        rijndael.gkey(8, 8, key.data());
        Bytes block = plain;
        rijndael.Encrypt(block.data());
        failures.Check(block == cipher, "encrypt", row[3]);
        rijndael.Decrypt(block.data());
        failures.Check(block == plain, "decrypt", row[3]);
    }
    EXPECT_TRUE(failures.sources.empty()) << failures.Summary();
}

// E iterated n times equals the last block of zero-IV CBC over plain and n - 1 zero blocks.
TEST(CRijndaelVectors, EveryIteratedResultHoldsAsZeroIvCbc) {
    const auto rows = ReadTable("rijndael256-mct.txt");
    ASSERT_EQ(rows.size(), 1540U);
    Failures failures;
    for (const Row& row : rows) {
        const Bytes key = FromHex(row[0]), result = FromHex(row[3]);
        Bytes message = FromHex(row[1]);
        message.resize(std::stoul(row[2]) * kBlockBytes);
        CRijndael oneShot;
        const Bytes cipher = oneShot.EncryptData(message, key, true);
        failures.Check(LastBlock(cipher) == result, "EncryptData", row[4]);
        failures.Check(oneShot.DecryptData(cipher, key) == message, "DecryptData", row[4]);
        CRijndael stream;
        ASSERT_TRUE(stream.EncryptPrepareKey(key));
        failures.Check(stream.EncryptDo(message, false) == cipher, "EncryptDo", row[4]);
        failures.Check(stream.DecryptDo(cipher, false) == message, "DecryptDo", row[4]);
    }
    EXPECT_TRUE(failures.sources.empty()) << failures.Summary();
}

TEST(CRijndaelVectors, CbcVectorWithIvHoldsBothWays) {
    const auto rows = ReadTable("rijndael256-cbc.tsv");
    ASSERT_EQ(rows.size(), 1U);
    const Bytes key = FromHex(rows[0][0]), iv = FromHex(rows[0][1]);
    const Bytes plain = FromHex(rows[0][2]), cipher = FromHex(rows[0][3]);
    CRijndael rijndael;
    ASSERT_TRUE(rijndael.EncryptPrepareKey(key));
    const std::size_t blocks = plain.size() / kBlockBytes;
    Bytes out(plain.size()), chain = iv;
    rijndael.EncryptBlocksCbc(plain.data(), out.data(), blocks, chain.data());
    EXPECT_EQ(out, cipher);
    EXPECT_EQ(chain, LastBlock(cipher));
    chain = iv;
    rijndael.DecryptBlocksCbc(cipher.data(), out.data(), blocks, chain.data());
    EXPECT_EQ(out, plain);
    EXPECT_EQ(chain, LastBlock(cipher));
}

// The schedule also serves the 128-bit block: FIPS-197 appendix C (row shifts 1, 2, 3).
struct AesCase {
    const char* name;
    int keyWords;
    const char* cipherHex;
};

class CRijndaelShortBlock : public ::testing::TestWithParam<AesCase> {};

TEST_P(CRijndaelShortBlock, MatchesAesKnownAnswer) {
    Bytes key(32);
    for (std::size_t i = 0; i < key.size(); ++i) {
        key[i] = static_cast<std::uint8_t>(i);
    }
    const Bytes plain = FromHex("00112233445566778899aabbccddeeff");
    CRijndael rijndael;
    rijndael.gentables();
    rijndael.gkey(4, GetParam().keyWords, key.data());
    Bytes block = plain;
    rijndael.Encrypt(block.data());
    EXPECT_EQ(block, FromHex(GetParam().cipherHex));
    rijndael.Decrypt(block.data());
    EXPECT_EQ(block, plain);
}

INSTANTIATE_TEST_SUITE_P(Fips197, CRijndaelShortBlock,
                         ::testing::Values(AesCase{"Key128", 4, "69c4e0d86a7b0430d8cdb78070b4c55a"},
                                           AesCase{"Key192", 6, "dda97ca4864cdfe06eaf70a0ec0d7191"},
                                           AesCase{"Key256", 8,
                                                   "8ea2b7ca516745bfeafc49904b496089"}),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
