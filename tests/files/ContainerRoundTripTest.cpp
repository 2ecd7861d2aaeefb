#include "FileTestSupport.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"
#include "files/ContainerFormat.h"
#include "files/LittleEndian.h"

#include <gtest/gtest.h>
#include <zlib.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

// The data the first chunk holds beside the name "f.bin".
constexpr std::size_t kRoom = kChunkBytes - kStreamHeaderBytes - 5;

// ContainerFields reads a container the writer made, record by record, with the cipher
// alone, and checks every field against the layout rather than against another writer.
class ContainerFields {
public:
    explicit ContainerFields(Bytes container) : m_bytes(std::move(container)) {
        EXPECT_TRUE(m_cipher.EncryptPrepareKey(MakePassphraseKey(kPassphrase).bytes()));
    }

    // ExpectFile checks one file's records: the salt the fixed random source gave it, the
    // tail byte, the name's length and the name, then in each chunk a block (magic, plain
    // length, a stream zlib restores to the data) followed by zero padding only. It gives
    // the byte count of the file's records.
    std::int64_t ExpectFile(const std::string& name, const Bytes& data, std::uint8_t saltStart,
                            std::int64_t records) {
        const std::size_t start = m_at;
        Bytes plain = NextRecord(false);
        for (std::size_t i = 0; i < kSaltBytes; ++i) {
            EXPECT_EQ(plain[i], static_cast<std::uint8_t>(saltStart + i)) << "salt byte " << i;
        }
        EXPECT_EQ(plain[kNameLengthOffset], name.size() % 256);
        EXPECT_EQ(StringFromBytes(Bytes(plain.begin() + kStreamHeaderBytes,
                                        plain.begin() + static_cast<std::ptrdiff_t>(
                                                            kStreamHeaderBytes + name.size()))),
                  name);
        const std::size_t header = kStreamHeaderBytes + name.size();
        if (data.empty()) {
            EXPECT_EQ(plain[kTailByteOffset], kEmptyFileTailByte);
            EXPECT_EQ(plain.size(), RoundUpToCipherBlock(header));
            ExpectZeroFrom(plain, header);
        }
        std::size_t done = 0;
        for (std::int64_t chunk = 1; !data.empty(); ++chunk) {
            const std::size_t offset = chunk == 1 ? header : 0;
            const std::size_t blockBytes = BlockBytes(plain, offset);
            if (chunk == 1) {
                EXPECT_EQ(plain[kTailByteOffset], blockBytes % 32);
            }
            done += ExpectBlock(std::span(plain).subspan(offset, blockBytes), data, done);
            ExpectZeroFrom(plain, offset + blockBytes);
            EXPECT_EQ(plain.size(), RoundUpToCipherBlock(offset + blockBytes));
            if (done == data.size()) {
                EXPECT_EQ(chunk, records);
                break;
            }
            plain = NextRecord(true);
        }
        return static_cast<std::int64_t>(m_at - start);
    }

    // ExpectIndex checks that the rest is each count's base-255 digits (least significant
    // first) closed by 255, then the index's length in digits.
    void ExpectIndex(const std::vector<std::int64_t>& counts) {
        const std::size_t start = m_at;
        for (const std::int64_t count : counts) {
            EXPECT_EQ(ReadDigits(true), count);
        }
        const auto length = static_cast<std::int64_t>(m_at - start);
        EXPECT_EQ(ReadDigits(false), length);
        EXPECT_EQ(m_at, m_bytes.size());
    }

private:
    Bytes NextRecord(bool chained) {
        const auto length = static_cast<std::size_t>(GetInt32Le(&m_bytes[m_at])) + 1;
        const auto payload = m_bytes.begin() + static_cast<std::ptrdiff_t>(m_at + 4);
        m_at += 4 + length;
        return m_cipher.DecryptDo(Bytes(payload, payload + static_cast<std::ptrdiff_t>(length)),
                                  chained);
    }

    // BlockBytes is the block's length: the zlib stream ends where adler32's 4 bytes close
    // it, which the stream's own end marks; the padding behind is zero.
    static std::size_t BlockBytes(const Bytes& plain, std::size_t offset) {
        z_stream stream{};
        Bytes sink(kChunkBytes);
        inflateInit(&stream);
        stream.next_in = const_cast<Bytef*>(plain.data() + offset + kBlockHeaderBytes);
        stream.avail_in = static_cast<uInt>(plain.size() - offset - kBlockHeaderBytes);
        stream.next_out = sink.data();
        stream.avail_out = static_cast<uInt>(sink.size());
        EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
        const std::size_t used = stream.total_in;
        inflateEnd(&stream);
        return kBlockHeaderBytes + used;
    }

    static std::size_t ExpectBlock(std::span<const std::uint8_t> block, const Bytes& data,
                                   std::size_t done) {
        EXPECT_EQ(GetInt32Le(block.data()), kBlockMagic);
        const auto plainBytes = static_cast<std::size_t>(GetInt32Le(block.data() + 4));
        Bytes restored(plainBytes);
        auto restoredBytes = static_cast<uLongf>(plainBytes);
        EXPECT_EQ(uncompress(restored.data(), &restoredBytes, block.data() + kBlockHeaderBytes,
                             static_cast<uLong>(block.size() - kBlockHeaderBytes)),
                  Z_OK);
        EXPECT_TRUE(std::equal(restored.begin(), restored.end(),
                               data.begin() + static_cast<std::ptrdiff_t>(done)));
        return plainBytes;
    }

    static void ExpectZeroFrom(const Bytes& plain, std::size_t from) {
        EXPECT_TRUE(std::all_of(plain.begin() + static_cast<std::ptrdiff_t>(from), plain.end(),
                                [](std::uint8_t b) { return b == 0; }));
    }

    std::int64_t ReadDigits(bool closed) {
        std::int64_t value = 0;
        std::int64_t weight = 1;
        while (m_at < m_bytes.size() && m_bytes[m_at] != 255) {
            value += m_bytes[m_at++] * weight;
            weight *= 255;
        }
        if (closed) {
            EXPECT_LT(m_at, m_bytes.size()) << "a count closes with 255";
            ++m_at;
        }
        return value;
    }

    Bytes m_bytes;
    CRijndael m_cipher;
    std::size_t m_at = 0;
};

struct SizeCase {
    const char* name;
    std::size_t bytes;
    std::int64_t records;
    bool compressible;
};

class ContainerRoundTrip : public ::testing::TestWithParam<SizeCase> {};

TEST_P(ContainerRoundTrip, IsLaidOutFieldByFieldAndRestoresEveryByte) {
    ScratchFolder scratch;
    const Bytes data = PatternBytes(GetParam().bytes, 11, GetParam().compressible);
    WriteFile(scratch / "in/f.bin", data);
    ScriptedObserver observer;
    ASSERT_TRUE(EncryptPaths({scratch / "in/f.bin"}, scratch / "c.vexo", observer).ok());
    ContainerFields fields(ReadFile(scratch / "c.vexo"));
    const std::int64_t count = fields.ExpectFile("f.bin", data, 0, GetParam().records);
    fields.ExpectIndex({count});

    ASSERT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    EXPECT_EQ(FilesBelow(scratch / "out"), std::vector<std::string>{"f.bin"});
    EXPECT_TRUE(ReadFile(scratch / "out/f.bin") == data);
    EXPECT_TRUE(ReadFile(scratch / "in/f.bin") == data); // input files are only read
}

INSTANTIATE_TEST_SUITE_P(
    ChunkBoundaries, ContainerRoundTrip,
    ::testing::Values(SizeCase{"Empty", 0, 1, true}, SizeCase{"OneByte", 1, 1, false},
                      SizeCase{"StreamOfExactly2MiB", kRoom, 1, true},
                      SizeCase{"FirstChunkRoomPlusOne", kRoom + 1, 2, true},
                      SizeCase{"StreamOfExactlyTwoChunks", kRoom + kChunkBytes, 2, true},
                      SizeCase{"ThreeChunksRandom", kRoom + kChunkBytes + 1, 3, false}),
    [](const auto& info) { return info.param.name; });

// Several files: a folder's file of two chunks, an incompressible one and an empty one. Salts
// come from the injected source in order, 32 bytes a file.
TEST(ContainerFormat, WriterLaysOutStreamsRecordsAndIndexFieldByField) {
    ScratchFolder scratch;
    const Bytes big = PatternBytes(kChunkBytes + 5000, 8, true);
    const Bytes small = PatternBytes(70, 3);
    WriteFile(scratch / "Ordner/x.bin", big);
    WriteFile(scratch / "b.txt", small);
    WriteFile(scratch / "leer", {});
    ScriptedObserver observer;
    ASSERT_TRUE(EncryptPaths({scratch / "Ordner", scratch / "b.txt", scratch / "leer"},
                             scratch / "c.vexo", observer)
                    .ok());
    ContainerFields fields(ReadFile(scratch / "c.vexo"));
    const std::int64_t counts[] = {fields.ExpectFile("Ordner\\x.bin", big, 0, 2),
                                   fields.ExpectFile("b.txt", small, 32, 1),
                                   fields.ExpectFile("leer", {}, 64, 1)};
    EXPECT_EQ(counts[2], 4 + 64) << "an empty file's one record: header and zero padding";
    fields.ExpectIndex({counts[0], counts[1], counts[2]});
    ASSERT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    EXPECT_EQ(FilesBelow(scratch / "out"),
              (std::vector<std::string>{"Ordner/x.bin", "b.txt", "leer"}));
    EXPECT_TRUE(ReadFile(scratch / "out/Ordner/x.bin") == big);
}

} // namespace
} // namespace kelvora
