#include "FileTestSupport.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"
#include "files/ContainerFormat.h"
#include "files/ContainerReader.h"
#include "files/DecryptJob.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <span>
#include <sys/stat.h>
#include <zlib.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

constexpr std::size_t kName = 5; // "f.bin"
constexpr std::size_t kRoom = kChunkBytes - kStreamHeaderBytes - kName;

// RecordsOf reads every file's records back through the reader: their payloads, per file.
std::vector<std::vector<Bytes>> RecordsOf(const std::string& container) {
    ContainerReader reader;
    EXPECT_EQ(reader.Open(container), FileError::None);
    std::vector<std::vector<Bytes>> files;
    reader.Rewind();
    for (FileRange range; reader.NextFile(range);) {
        files.emplace_back();
        for (std::int64_t at = range.offset; at < range.offset + range.byteCount;) {
            Bytes payload;
            at = reader.ReadRecord(at, range.offset + range.byteCount, payload);
            EXPECT_GE(at, 0);
            if (at < 0) {
                break;
            }
            files.back().push_back(payload);
        }
    }
    return files;
}

struct SizeCase {
    const char* name;
    std::size_t bytes;
    std::size_t records;
    bool compressible;
};

class ContainerRoundTrip : public ::testing::TestWithParam<SizeCase> {};

TEST_P(ContainerRoundTrip, RestoresEveryByteInTheExpectedNumberOfRecords) {
    ScratchFolder scratch;
    const Bytes data = PatternBytes(GetParam().bytes, 11, GetParam().compressible);
    WriteFile(scratch / "in/f.bin", data);
    ScriptedObserver observer;
    ASSERT_TRUE(EncryptPaths({scratch / "in/f.bin"}, scratch / "c.vexo", observer).ok());

    const auto records = RecordsOf(scratch / "c.vexo");
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].size(), GetParam().records);
    EXPECT_EQ(static_cast<std::int64_t>(GetParam().records),
              ChunkCount(static_cast<std::int64_t>(data.size()), kName));

    ASSERT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    EXPECT_EQ(FilesBelow(scratch / "out"), std::vector<std::string>{"f.bin"});
    EXPECT_EQ(ReadFile(scratch / "out/f.bin"), data);

    std::vector<ContainerEntry> listed;
    const SecretBytes key = MakePassphraseKey(kPassphrase);
    ASSERT_TRUE(ListContainer(DecryptRequest{scratch / "c.vexo", "", &key}, listed, observer).ok());
    ASSERT_EQ(listed.size(), 1u);
    EXPECT_EQ(listed[0].name, "f.bin");
    EXPECT_EQ(listed[0].plainBytes, static_cast<std::int64_t>(data.size()));
    EXPECT_TRUE(TestContainer(DecryptRequest{scratch / "c.vexo", "", &key}, observer).ok());
}

INSTANTIATE_TEST_SUITE_P(
    ChunkBoundaries, ContainerRoundTrip,
    ::testing::Values(SizeCase{"Empty", 0, 1, true}, SizeCase{"OneByte", 1, 1, false},
                      SizeCase{"FirstChunkRoomLessOne", kRoom - 1, 1, true},
                      SizeCase{"StreamOfExactly2MiB", kRoom, 1, true},
                      SizeCase{"FirstChunkRoomPlusOne", kRoom + 1, 2, true},
                      SizeCase{"StreamOfExactlyTwoChunks", kRoom + kChunkBytes, 2, true},
                      SizeCase{"ThreeChunks", kRoom + kChunkBytes + 1, 3, true},
                      SizeCase{"FiveMiBRandom", 5 * 1024 * 1024, 3, false}),
    [](const auto& info) { return info.param.name; });

// FirstPlain deciphers a file's first record on its own, as another reader would.
Bytes FirstPlain(const Bytes& payload) {
    CRijndael cipher;
    return cipher.DecryptData(payload, MakePassphraseKey(kPassphrase).bytes());
}

TEST(ContainerFormat, EmptyFileIsOneRecordOfItsHeaderWithTailByte99) {
    ScratchFolder scratch;
    WriteFile(scratch / "empty.txt", {});
    ScriptedObserver observer;
    ASSERT_TRUE(EncryptPaths({scratch / "empty.txt"}, scratch / "c.vexo", observer).ok());
    const auto records = RecordsOf(scratch / "c.vexo");
    ASSERT_EQ(records.at(0).size(), 1u);
    const Bytes plain = FirstPlain(records[0][0]);
    ASSERT_EQ(plain.size(), 64u); // 34 + 9 bytes, zero-padded to the cipher block
    EXPECT_EQ(plain[0], 0);       // the salt comes from the injected source
    EXPECT_EQ(plain[31], 31);
    EXPECT_EQ(plain[32], 99);
    EXPECT_EQ(plain[33], 9);
    EXPECT_EQ(std::string(plain.begin() + 34, plain.begin() + 43), "empty.txt");
    EXPECT_TRUE(std::all_of(plain.begin() + 43, plain.end(), [](auto b) { return b == 0; }));
}

TEST(ContainerFormat, TailByteIsTheFirstBlockLengthModulo32AndIndexCountsRecords) {
    ScratchFolder scratch;
    WriteFile(scratch / "a.txt", PatternBytes(5000, 2, true));
    WriteFile(scratch / "b.txt", PatternBytes(70, 3, false));
    WriteFile(scratch / "c.txt", {});
    ScriptedObserver observer;
    ASSERT_TRUE(EncryptPaths({scratch / "a.txt", scratch / "b.txt", scratch / "c.txt"},
                             scratch / "c.vexo", observer)
                    .ok());
    const Bytes container = ReadFile(scratch / "c.vexo");
    const auto records = RecordsOf(scratch / "c.vexo");
    ASSERT_EQ(records.size(), 3u);
    std::int64_t recordBytes = 0;
    for (std::size_t file = 0; file < 2; ++file) {
        const Bytes plain = FirstPlain(records[file][0]);
        const std::size_t blockAt = 34 + plain[33];
        Bytes restored(8000);
        uLongf restoredLength = 8000;
        uLong consumed = static_cast<uLong>(plain.size() - blockAt - 8);
        ASSERT_EQ(
            uncompress2(restored.data(), &restoredLength, plain.data() + blockAt + 8, &consumed),
            Z_OK);
        EXPECT_EQ(plain[32], (consumed + 8) % 32) << "file " << file;
    }
    for (const auto& file : records) {
        recordBytes += static_cast<std::int64_t>(file.at(0).size() + 4);
    }
    // Behind the records: three counts, each closed by 255, and the index length.
    const auto index = std::span(container).subspan(static_cast<std::size_t>(recordBytes));
    EXPECT_EQ(std::count(index.begin(), index.end(), 255), 3);
    EXPECT_EQ(index.back(), index.size() - 1);
}

// BlockByHand is a compressed block laid out from its field table with zlib itself.
Bytes BlockByHand(std::span<const std::uint8_t> data) {
    Bytes block(8 + compressBound(static_cast<uLong>(data.size())));
    uLongf length = static_cast<uLongf>(block.size() - 8);
    EXPECT_EQ(compress(block.data() + 8, &length, data.data(), static_cast<uLong>(data.size())),
              Z_OK);
    block.resize(8 + length);
    const Bytes header{0xD2,
                       0x02,
                       0x96,
                       0x49,
                       static_cast<std::uint8_t>(data.size()),
                       static_cast<std::uint8_t>(data.size() >> 8),
                       static_cast<std::uint8_t>(data.size() >> 16),
                       static_cast<std::uint8_t>(data.size() >> 24)};
    std::copy(header.begin(), header.end(), block.begin());
    return block;
}

TEST(ContainerFormat, ReadsAContainerBuiltFieldByField) {
    // One file "Ordner\x.bin" of two chunks: the first holds the header and the first
    // 2097152 - 34 - 12 data bytes, the second the rest.
    const std::string name = "Ordner\\x.bin";
    const Bytes data = PatternBytes(kChunkBytes + 5000, 8, true);
    const std::size_t room = kChunkBytes - 34 - name.size();
    Bytes chunk1(32, 0xAB);
    const Bytes firstBlock = BlockByHand(std::span(data).first(room));
    chunk1.push_back(static_cast<std::uint8_t>(firstBlock.size() % 32));
    chunk1.push_back(static_cast<std::uint8_t>(name.size()));
    chunk1.insert(chunk1.end(), name.begin(), name.end());
    chunk1.insert(chunk1.end(), firstBlock.begin(), firstBlock.end());
    const Bytes chunk2 = BlockByHand(std::span(data).subspan(room));

    CRijndael cipher;
    ASSERT_TRUE(cipher.EncryptPrepareKey(MakePassphraseKey(kPassphrase).bytes()));
    Bytes container;
    std::int64_t count = 0;
    for (const Bytes& payload : {cipher.EncryptDo(chunk1, false), cipher.EncryptDo(chunk2, true)}) {
        const auto lastIndex = static_cast<std::uint32_t>(payload.size() - 1);
        for (int shift = 0; shift < 32; shift += 8) {
            container.push_back(static_cast<std::uint8_t>(lastIndex >> shift));
        }
        container.insert(container.end(), payload.begin(), payload.end());
        count += static_cast<std::int64_t>(payload.size() + 4);
    }
    Bytes index;
    for (; count >= 1; count /= 255) {
        index.push_back(static_cast<std::uint8_t>(count % 255));
    }
    index.push_back(255);
    index.push_back(static_cast<std::uint8_t>(index.size()));
    container.insert(container.end(), index.begin(), index.end());

    ScratchFolder scratch;
    WriteFile(scratch / "c.vexo", container);
    ScriptedObserver observer;
    ASSERT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    EXPECT_EQ(FilesBelow(scratch / "out"), std::vector<std::string>{"Ordner/x.bin"});
    EXPECT_EQ(ReadFile(scratch / "out/Ordner/x.bin"), data);
}

TEST(ContainerRoundTrip, FolderTreesWithUmlautsAnd255CharacterNames) {
    ScratchFolder scratch;
    const std::string longName(255, 'n');
    WriteFile(scratch / "Fotos/M\xC3\xBCller/\xC3\xA9t\xC3\xA9 2024.jpg", PatternBytes(3000, 4));
    WriteFile(scratch / "Fotos/leer/tief/x", PatternBytes(10, 5));
    WriteFile(scratch / "Fotos/only/sub/y.txt", {});
    WriteFile(scratch / longName, PatternBytes(100, 6));
    struct stat before {};
    ASSERT_EQ(::stat((scratch / longName).c_str(), &before), 0);
    ScriptedObserver observer;
    ASSERT_TRUE(
        EncryptPaths({scratch / "Fotos", scratch / longName}, scratch / "c.vexo", observer).ok());
    struct stat after {};
    ASSERT_EQ(::stat((scratch / longName).c_str(), &after), 0);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec); // input files are only read

    ASSERT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    const std::vector<std::string> expected{"Fotos/M\xC3\xBCller/\xC3\xA9t\xC3\xA9 2024.jpg",
                                            "Fotos/leer/tief/x", "Fotos/only/sub/y.txt", longName};
    EXPECT_EQ(FilesBelow(scratch / "out"), expected);
    for (const std::string& name : expected) {
        EXPECT_EQ(ReadFile(scratch / "out/" + name), ReadFile(scratch / name)) << name;
    }
}

} // namespace
} // namespace kelvora
