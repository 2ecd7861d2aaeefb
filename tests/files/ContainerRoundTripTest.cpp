// The writer's containers, checked field by field against the layout with the cipher and zlib
// alone (never against another writer), then restored through the index and walked front to
// back as a pipe gives them, at every chunk boundary.
#include "WalkSupport.h"
#include "crypto/CRijndael.h"
#include "files/ContainerFormat.h"
#include "files/LittleEndian.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <zlib.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

bool AllZeroFrom(const Bytes& plain, std::size_t from) {
    return std::all_of(plain.begin() + static_cast<std::ptrdiff_t>(from), plain.end(),
                       [](std::uint8_t b) { return b == 0; });
}

// ExpectBlock checks the block at plain[offset]: magic, plain length, a zlib stream that
// restores the data's next bytes and ends where the zero padding begins. It gives the block's
// plain length.
std::size_t ExpectBlock(const Bytes& plain, std::size_t offset, const Bytes& data,
                        std::size_t done) {
    EXPECT_EQ(GetInt32Le(&plain[offset]), kBlockMagic);
    const auto plainBytes = static_cast<std::size_t>(GetInt32Le(&plain[offset + 4]));
    Bytes restored(plainBytes);
    z_stream stream{};
    inflateInit(&stream);
    stream.next_in = const_cast<Bytef*>(&plain[offset + kBlockHeaderBytes]);
    stream.avail_in = static_cast<uInt>(plain.size() - offset - kBlockHeaderBytes);
    stream.next_out = restored.data();
    stream.avail_out = static_cast<uInt>(restored.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    EXPECT_EQ(stream.total_out, plainBytes);
    const std::size_t end = offset + kBlockHeaderBytes + stream.total_in;
    inflateEnd(&stream);
    EXPECT_TRUE(done + plainBytes <= data.size() &&
                std::equal(restored.begin(), restored.end(),
                           data.begin() + static_cast<std::ptrdiff_t>(done)));
    EXPECT_TRUE(AllZeroFrom(plain, end)) << "only zero padding behind the block";
    EXPECT_EQ(plain.size(), RoundUpToCipherBlock(end));
    if (offset > 0) {
        EXPECT_EQ(plain[kTailByteOffset], (end - offset) % 32) << "the first block's length";
    }
    return plainBytes;
}

// ExpectLayout checks each file's records: the salt the fixed random source gave it (32
// bytes a file, in order), the tail byte, the name's length and the name, then a block per
// chunk; then that the rest is each file's byte count in base-255 digits (least significant
// first) closed by 255, and the index's length in digits.
void ExpectLayout(const Bytes& container, const std::vector<std::string>& names,
                  const std::vector<Bytes>& data, const std::vector<std::int64_t>& records) {
    CRijndael cipher;
    ASSERT_TRUE(cipher.EncryptPrepareKey(MakePassphraseKey(kPassphrase).bytes()));
    std::size_t at = 0;
    Bytes index;
    const auto appendDigits = [&index](std::size_t value) {
        for (; value > 0; value /= 255) {
            index.push_back(static_cast<std::uint8_t>(value % 255));
        }
    };
    for (std::size_t file = 0; file < names.size(); ++file) {
        const std::size_t start = at, header = kStreamHeaderBytes + names[file].size();
        std::size_t done = 0;
        for (std::int64_t chunk = 1; chunk <= records[file]; ++chunk) {
            const auto length = static_cast<std::size_t>(GetInt32Le(&container[at])) + 1;
            const auto payload = container.begin() + static_cast<std::ptrdiff_t>(at + 4);
            const Bytes plain = cipher.DecryptDo(
                Bytes(payload, payload + static_cast<std::ptrdiff_t>(length)), chunk > 1);
            at += 4 + length;
            if (chunk == 1) {
                for (std::size_t i = 0; i < kSaltBytes; ++i) {
                    EXPECT_EQ(plain[i], static_cast<std::uint8_t>(32 * file + i)) << "salt " << i;
                }
                EXPECT_EQ(plain[kNameLengthOffset], names[file].size());
                EXPECT_EQ(std::string(&plain[kStreamHeaderBytes], &plain[header]), names[file]);
            }
            if (data[file].empty()) {
                EXPECT_EQ(plain[kTailByteOffset], kEmptyFileTailByte);
                EXPECT_EQ(plain.size(), RoundUpToCipherBlock(header));
                EXPECT_TRUE(AllZeroFrom(plain, header));
            } else {
                done += ExpectBlock(plain, chunk == 1 ? header : 0, data[file], done);
            }
        }
        EXPECT_EQ(done, data[file].size()) << names[file] << " ends with its last record";
        appendDigits(at - start);
        index.push_back(255);
    }
    appendDigits(index.size());
    EXPECT_EQ(Bytes(container.begin() + static_cast<std::ptrdiff_t>(at), container.end()), index);
}

// The files f000, f001, ... of a folder, as one folder given to the writer. Many small files
// around a big one are read back in several batches by the workers.
TEST(ContainerRoundTrip, IsLaidOutFieldByFieldAndRestoresEveryByte) {
    constexpr std::size_t kRoom = kChunkBytes - kStreamHeaderBytes - 7; // beside "in\f000"
    std::vector<std::size_t> manySizes;
    for (std::size_t i = 0; i < 200; ++i) {
        manySizes.push_back(i == 90 ? kRoom + 5 : 1 + i * 37 % 3000);
    }
    std::vector<std::int64_t> manyRecords(200, 1);
    manyRecords[90] = 2;
    const struct {
        const char* name;
        std::vector<std::size_t> sizes;
        std::vector<std::int64_t> records;
        bool compressible;
    } rows[] = {
        {"Empty", {0}, {1}, true},
        {"OneByte", {1}, {1}, false},
        {"RoomLessOne", {kRoom - 1}, {1}, false},
        {"StreamOfExactly2MiB", {kRoom}, {1}, true},
        {"FirstChunkRoomPlusOne", {kRoom + 1}, {2}, true},
        {"StreamOfExactlyTwoChunks", {kRoom + kChunkBytes}, {2}, true},
        {"ThreeChunksRandom", {kRoom + kChunkBytes + 1}, {3}, false},
        {"FullThenAnother", {kRoom, 5, 0}, {1, 1, 1}, false},
        {"EmptyThenTwoFullThenEmpty", {0, kRoom + kChunkBytes, 0}, {1, 2, 1}, false},
        {"Several", {3, 0, 1000, kRoom + 7}, {1, 1, 1, 2}, true},
        {"ManySmallFilesAroundABigOne", manySizes, manyRecords, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ScratchFolder scratch;
        std::vector<std::string> names, stored;
        std::vector<Bytes> data;
        for (std::size_t i = 0; i < row.sizes.size(); ++i) {
            const std::string number = std::to_string(1000 + i).substr(1);
            names.push_back("in/f" + number);
            stored.push_back("in\\f" + number);
            data.push_back(
                PatternBytes(row.sizes[i], static_cast<std::uint32_t>(11 + i), row.compressible));
            WriteFile(scratch / names.back(), data.back());
        }
        ScriptedObserver observer;
        ASSERT_TRUE(EncryptPaths({scratch / "in"}, scratch / "c.vexo", observer).ok());
        const Bytes container = ReadFile(scratch / "c.vexo");
        ExpectLayout(container, stored, data, row.records);

        ASSERT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer, kPassphrase, 3).ok());
        EXPECT_EQ(FilesBelow(scratch / "out"), names);
        Collected walked;
        const WalkOutcome outcome = Walk(container, walked);
        ASSERT_TRUE(outcome.result.ok()) << static_cast<int>(outcome.result.error);
        EXPECT_EQ(outcome.index, IndexCheck::Matches);
        ASSERT_EQ(walked.names, stored);
        for (std::size_t i = 0; i < names.size(); ++i) {
            EXPECT_TRUE(ReadFile(scratch / "out/" + names[i]) == data[i]) << names[i];
            EXPECT_TRUE(ReadFile(scratch / names[i]) == data[i]) << "input files are only read";
            EXPECT_TRUE(walked.files[i].bytes == data[i]) << names[i] << " walked";
            EXPECT_EQ(walked.endings[i].first, FileError::None);
        }
    }
}

} // namespace
} // namespace kelvora
