// The record pipeline hands back every record of a container in order, deciphered and
// restored, however its small records are batched for the workers: across batch ends, next
// to a full chunk, when the caller skips files, and past the last record.
#include "files/RecordPipeline.h"

#include "FileTestSupport.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"
#include "files/ContainerFormat.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

constexpr std::size_t kFiles = 200; // several batches of small records
constexpr std::size_t kLargeFile = 90;

class RecordPipelineTest : public ::testing::TestWithParam<std::size_t> {
protected:
    void SetUp() override {
        for (std::size_t i = 0; i < kFiles; ++i) {
            const std::size_t size = i == kLargeFile ? 2 * 1048576 + 5 : 1 + i * 37 % 3000;
            m_files.push_back(
                StoredFile{"f" + std::to_string(i),
                           PatternBytes(size, static_cast<std::uint32_t>(i), i % 3 != 0)});
        }
        WriteFile(m_scratch / "c.vexo", BuildContainer(m_files));
        ASSERT_TRUE(m_cipher.EncryptPrepareKey(MakePassphraseKey(kPassphrase).bytes()));
    }

    // ExpectFirstRecord checks that record is chunk 1 of file i, restored in full.
    void ExpectFirstRecord(const std::optional<DecodedRecord>& record, std::size_t i) {
        ASSERT_TRUE(record.has_value());
        EXPECT_EQ(record->fileIndex, i);
        EXPECT_EQ(record->chunk, 1);
        ASSERT_TRUE(record->end.has_value()) << "file " << i;
        const Bytes& data = m_files[i].data;
        const std::size_t room = std::min(data.size(), FirstChunkRoom(m_files[i].ansiName.size()));
        ASSERT_EQ(record->restoredBytes, room) << "file " << i;
        EXPECT_TRUE(std::equal(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(room),
                               record->restored.begin()))
            << "file " << i;
    }

    ScratchFolder m_scratch;
    std::vector<StoredFile> m_files;
    CRijndael m_cipher;
};

const auto kAlways = [] { return true; };

TEST_P(RecordPipelineTest, HandsBackEveryRecordInOrder) {
    RecordPipeline pipeline(m_scratch / "c.vexo", m_cipher, GetParam());
    for (std::size_t i = 0; i < kFiles; ++i) {
        ExpectFirstRecord(pipeline.Take(i, 1, kAlways), i);
        if (i == kLargeFile) {
            const std::optional<DecodedRecord> second = pipeline.Take(i, 2, kAlways);
            ASSERT_TRUE(second && second->end && second->restoredBytes);
            const std::size_t room = FirstChunkRoom(m_files[i].ansiName.size());
            EXPECT_EQ(*second->restoredBytes, m_files[i].data.size() - room);
        }
    }
    const std::optional<DecodedRecord> past = pipeline.Take(kFiles, 1, kAlways);
    ASSERT_TRUE(past.has_value());
    EXPECT_FALSE(past->end.has_value());
}

TEST_P(RecordPipelineTest, DropsTheRecordsOfSkippedFiles) {
    RecordPipeline pipeline(m_scratch / "c.vexo", m_cipher, GetParam());
    for (const std::size_t i : {std::size_t{3}, std::size_t{4}, kLargeFile + 1, kFiles - 1}) {
        ExpectFirstRecord(pipeline.Take(i, 1, kAlways), i);
    }
}

TEST_P(RecordPipelineTest, MarksARecordTheIndexDoesNotLeadTo) {
    RecordPipeline pipeline(m_scratch / "c.vexo", m_cipher, GetParam());
    const std::optional<DecodedRecord> wrong = pipeline.Take(5, 2, kAlways); // file 5 has one
    ASSERT_TRUE(wrong.has_value());
    EXPECT_FALSE(wrong->end.has_value());
    ExpectFirstRecord(pipeline.Take(7, 1, kAlways), 7);
}

INSTANTIATE_TEST_SUITE_P(Workers, RecordPipelineTest, ::testing::Values(0, 1, 3));

} // namespace
} // namespace kelvora
