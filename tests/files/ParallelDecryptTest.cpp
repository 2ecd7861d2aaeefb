// The reading jobs give the same results whether worker threads decode the records ahead or
// the calling thread does all the work: the same files with the same bytes, the same error
// at the same file and chunk, also for a wrong passphrase, damage, unsafe names and cancel.
#include "FileTestSupport.h"
#include "crypto/KeyRules.h"
#include "files/ContainerInspect.h"
#include "files/ContainerReader.h"
#include "files/DecryptJob.h"
#include "files/LittleEndian.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

using enum FileError;

constexpr std::size_t kSerial = 0;
constexpr std::size_t kParallel = 3; // more workers than cores, to shake the ordering

// CancelAtFile asks to stop once the job has started restoring a chosen file.
class CancelAtFile : public ScriptedObserver {
public:
    explicit CancelAtFile(std::optional<std::size_t> file) : m_file(file) {}
    bool CancelRequested() override { return m_started; }
    void OnFileStarted(std::size_t index, const std::string&) override {
        m_started = m_started || (m_file && index == *m_file);
    }

private:
    std::optional<std::size_t> m_file;
    bool m_started = false;
};

struct Outcome {
    FileJobResult result;
    std::vector<std::string> files;
    std::vector<Bytes> contents;
};

// A record of the container: the file's index and the chunk, from 1.
struct RecordAt {
    std::size_t file;
    std::int64_t chunk;
};

// PayloadOffset finds where a record's payload starts by walking the index and the records'
// length fields.
std::size_t PayloadOffset(const std::string& path, const Bytes& container, RecordAt at) {
    ContainerReader reader;
    EXPECT_TRUE(reader.Open(path));
    reader.Rewind();
    FileRange range;
    for (auto next = reader.NextFile(); next && next->has_value(); next = reader.NextFile()) {
        range = **next;
        if (range.index == at.file) {
            break;
        }
    }
    auto offset = static_cast<std::size_t>(range.offset);
    for (std::int64_t chunk = 1; chunk < at.chunk; ++chunk) {
        offset += 4 + static_cast<std::size_t>(GetInt32Le(&container[offset])) + 1;
    }
    return offset + 4;
}

struct ParallelCase {
    const char* name;
    std::vector<RecordAt> damaged; // each gets one byte flipped in its second cipher block
    const char* passphrase;
    std::optional<std::size_t> cancelAtFile;
    bool unsafeNames;
    std::optional<FileError> expected; // what restoring gives; none: some failure
};

class ParallelDecrypt : public ::testing::TestWithParam<ParallelCase> {
protected:
    void SetUp() override {
        const std::vector<StoredFile> files{
            {"Ordner\\text.log", PatternBytes(2 * 1048576 + 77, 1, true)},
            {"leer", {}},
            {GetParam().unsafeNames ? "..\\escape.bin" : "random.bin",
             PatternBytes(2 * 1048576 + 3, 2)},
            {"Ordner\\klein.txt", PatternBytes(900, 3, true)},
            {"mixed.bin", PatternBytes(300000, 4, true)},
        };
        Bytes container = BuildContainer(files);
        WriteFile(m_scratch / "c.vexo", container);
        for (const RecordAt at : GetParam().damaged) {
            container[PayloadOffset(m_scratch / "c.vexo", container, at) + 40] ^= 0x5A;
        }
        WriteFile(m_scratch / "c.vexo", container);
    }

    Outcome Decrypt(const std::string& folder, DecodeWorkers workers) {
        CancelAtFile observer(GetParam().cancelAtFile);
        const SecretBytes key = MakePassphraseKey(GetParam().passphrase);
        Outcome outcome;
        outcome.result = DecryptContainer(
            DecryptRequest{m_scratch / "c.vexo", m_scratch / folder, &key}, observer, workers);
        if (!std::filesystem::exists(m_scratch / folder)) {
            return outcome; // nothing was written, not even the folder
        }
        outcome.files = FilesBelow(m_scratch / folder);
        for (const std::string& file : outcome.files) {
            outcome.contents.push_back(ReadFile(m_scratch / folder + "/" + file));
        }
        return outcome;
    }

    FileJobResult Test(DecodeWorkers workers) {
        CancelAtFile observer(GetParam().cancelAtFile);
        const SecretBytes key = MakePassphraseKey(GetParam().passphrase);
        return TestContainer(DecryptRequest{m_scratch / "c.vexo", {}, &key}, observer, workers);
    }

    ScratchFolder m_scratch;
};

void ExpectSameResult(const FileJobResult& serial, const FileJobResult& parallel) {
    EXPECT_EQ(parallel.error, serial.error);
    EXPECT_EQ(parallel.fileIndex, serial.fileIndex);
    EXPECT_EQ(parallel.chunk, serial.chunk);
    EXPECT_EQ(parallel.name, serial.name);
}

TEST_P(ParallelDecrypt, RestoresWhatTheSerialPathRestores) {
    const Outcome serial = Decrypt("serial", kSerial);
    const Outcome parallel = Decrypt("parallel", kParallel);
    if (GetParam().expected) {
        EXPECT_EQ(serial.result.error, *GetParam().expected);
    } else {
        EXPECT_FALSE(serial.result.ok());
    }
    ExpectSameResult(serial.result, parallel.result);
    EXPECT_EQ(parallel.files, serial.files);
    EXPECT_TRUE(parallel.contents == serial.contents);
}

TEST_P(ParallelDecrypt, TestsAsTheSerialPathTests) {
    const FileJobResult serial = Test(kSerial);
    ExpectSameResult(serial, Test(kParallel));
}

constexpr auto kNoCancel = std::nullopt;

INSTANTIATE_TEST_SUITE_P(
    Cases, ParallelDecrypt,
    ::testing::Values(
        ParallelCase{"Intact", {}, kPassphrase, kNoCancel, false, None},
        ParallelCase{"WrongPassphrase", {}, "not it", kNoCancel, false, WrongPassphrase},
        ParallelCase{"DamagedSecondChunk", {{0, 2}}, kPassphrase, kNoCancel, false, DamagedData},
        ParallelCase{"DamagedFirstChunkOfALaterFile", {{2, 1}}, kPassphrase, kNoCancel, false, {}},
        ParallelCase{
            "DamagedLastChunks", {{2, 2}, {4, 1}}, kPassphrase, kNoCancel, false, DamagedData},
        ParallelCase{"CancelInABigFile", {}, kPassphrase, 0, false, Cancelled},
        ParallelCase{"CancelBeforeASmallFile", {}, kPassphrase, 3, false, Cancelled},
        ParallelCase{"UnsafeNamePassedOver", {}, kPassphrase, kNoCancel, true, EntriesLeftOut},
        ParallelCase{"CancelAfterAnUnsafeName", {}, kPassphrase, 3, true, Cancelled}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
