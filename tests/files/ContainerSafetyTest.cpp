#include "FileTestSupport.h"
#include "crypto/KeyRules.h"
#include "files/ContainerFormat.h"
#include "files/ContainerIndex.h"
#include "files/ContainerInspect.h"
#include "files/DecryptJob.h"
#include "files/LittleEndian.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

const Bytes kSome{'s', 'o', 'm', 'e'};
constexpr FileError kUnusable = FileError::NoUsableContent;
constexpr FileError kDamaged = FileError::DamagedData;

// WithIndex replaces the container's index by zeroCounts counts of 0 and then count (the
// size of the records when -1).
void WithIndex(Bytes& container, std::size_t zeroCounts, std::int64_t count = -1) {
    const auto tail = ParseIndexTail(container);
    container.resize(container.size() - tail->digitBytes -
                     static_cast<std::size_t>(tail->indexLength));
    std::vector<std::int64_t> counts(zeroCounts, 0);
    counts.push_back(count < 0 ? static_cast<std::int64_t>(container.size()) : count);
    const Bytes index = EncodeIndex(counts);
    container.insert(container.end(), index.begin(), index.end());
}

// A container of one file as a damaged or hostile source could hand it over.
struct DamageCase {
    const char* name;
    void (*spoil)(Bytes& container);
    FileError error;
};

class DamagedContainer : public ::testing::TestWithParam<DamageCase> {};

TEST_P(DamagedContainer, IsRefusedBeforeAnythingIsWritten) {
    ScratchFolder scratch;
    Bytes container = BuildContainer({{"a.txt", kSome}});
    GetParam().spoil(container);
    WriteFile(scratch / "c.vexo", container);
    ScriptedObserver observer;
    EXPECT_EQ(DecryptTo(scratch / "c.vexo", scratch / "out", observer).error, GetParam().error);
    const bool restored = GetParam().error == FileError::None;
    EXPECT_EQ(FilesBelow(scratch.Path()).size(), restored ? 2u : 1u);
    if (GetParam().error == kUnusable) { // found before any passphrase is tried
        const SecretBytes key = MakePassphraseKey("any passphrase at all");
        EXPECT_EQ(TestContainer(DecryptRequest{scratch / "c.vexo", {}, &key}, observer).error,
                  kUnusable);
    }
}

// {255, 255, 1} would read as an index of one empty file, but the container is too short.
INSTANTIATE_TEST_SUITE_P(
    Cases, DamagedContainer,
    ::testing::Values(
        DamageCase{"ZeroCountsBeyondOneReadPiece", [](Bytes& c) { WithIndex(c, 70000); }, {}},
        DamageCase{"Below4Bytes", [](Bytes& c) { c.assign(3, 255), c[2] = 1; }, kUnusable},
        DamageCase{"NoSeparatorAtEnd", [](Bytes& c) { c.end()[-1] = c.end()[-2] = 7; }, kUnusable},
        DamageCase{"LengthOverflows", [](Bytes& c) { c.insert(c.end() - 1, 9, 254); }, kUnusable},
        DamageCase{"CountPastTheRecords", [](Bytes& c) { WithIndex(c, 0, 1000000); }, kUnusable},
        DamageCase{"RecordTooLong", [](Bytes& c) { PutInt32Le(c.data(), 0x7FFFFFFE); }, kDamaged},
        DamageCase{"RecordNotWholeBlocks", [](Bytes& c) { PutInt32Le(c.data(), 32); }, kDamaged},
        // Containers that hold no record, or whose index length lies where the search must
        // not look: of 5 bytes only the last 2 are searched, so the 255 in byte 2 is not.
        DamageCase{"OneEmptyEntry",
                   [](Bytes& c) {
                       c = {0x00, 0xFF, 0x01, 0x00};
                   },
                   kUnusable},
        DamageCase{"ThreeEmptyEntries",
                   [](Bytes& c) {
                       c = {0, 255, 255, 255, 3};
                   },
                   kUnusable},
        DamageCase{"SeparatorBeforeTheSearchedBytes",
                   [](Bytes& c) {
                       c = {0, 255, 1, 2, 3};
                   },
                   kUnusable}),
    [](const auto& info) { return info.param.name; });

TEST(DecryptContainer, DamageInALaterChunkKeepsOnlyTheFilesBefore) {
    ScratchFolder scratch;
    Bytes container = BuildContainer({{"ok.txt", kSome}, {"big.bin", PatternBytes(2100000, 9)}});
    container[container.size() - 200] ^= 1;
    WriteFile(scratch / "c.vexo", container);
    ScriptedObserver observer;
    const FileJobResult result = DecryptTo(scratch / "c.vexo", scratch / "out", observer);
    EXPECT_EQ(result.error, FileError::DamagedData);
    EXPECT_EQ(result.chunk, 2);
    EXPECT_EQ(FilesBelow(scratch.Path()), (std::vector<std::string>{"c.vexo", "out/ok.txt"}));
}

struct WrongPassphraseCase {
    const char* name;
    std::vector<StoredFile> files;
};

class WrongPassphrase : public ::testing::TestWithParam<WrongPassphraseCase> {};

TEST_P(WrongPassphrase, IsRecognisedBeforeAnythingIsCreated) {
    ScratchFolder scratch;
    WriteFile(scratch / "c.vexo", BuildContainer(GetParam().files));
    ScriptedObserver observer;
    EXPECT_EQ(DecryptTo(scratch / "c.vexo", scratch / "out", observer, "not the passphrase").error,
              FileError::WrongPassphrase);
    EXPECT_FALSE(PathExists(scratch / "out"));
    EXPECT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, WrongPassphrase,
    ::testing::Values(WrongPassphraseCase{"EmptyFilesFirst",
                                          {{"e1", {}}, {"e2", {}}, {"d\\a.txt", kSome}}},
                      WrongPassphraseCase{"OnlyAnEmptyFile", {{"d\\e", {}}}}),
    [](const auto& info) { return info.param.name; });

// FailingSink passes writes through to the container file and fails the failAt-th one.
struct FailingSink final : ByteSink {
    FailingSink(ByteSink& target, int at) : file(target), failAt(at) {}
    Result<void, Errno> Write(std::span<const std::uint8_t> bytes) override {
        if (++writes == failAt) {
            return Fail(ENOSPC);
        }
        return file.Write(bytes);
    }
    ByteSink& file;
    int failAt;
    int writes = 0;
};

// An encryption that fails at a write (counting from 1: each record's length, its payload,
// then the index) or is cancelled once a chunk was reported done.
struct FailureCase {
    const char* name;
    int failAtWrite;
    std::int64_t cancelAfterChunk;
    FileError error;
    std::int64_t chunk; // where the result says it happened (0: after the records)
};

class FailedEncryption : public ::testing::TestWithParam<FailureCase> {};

TEST_P(FailedEncryption, LeavesNoContainerAndTheOldOneUntouched) {
    ScratchFolder scratch;
    WriteFile(scratch / "in.txt", PatternBytes(kChunkBytes + 100000, 5)); // two records
    WriteFile(scratch / "c.vexo", kSome);
    ScriptedObserver observer;
    observer.replaceContainer = true;
    observer.cancelAfterChunk = GetParam().cancelAfterChunk;
    const int failAt = GetParam().failAtWrite;
    const FileJobResult result =
        EncryptPaths({scratch / "in.txt"}, scratch / "c.vexo", observer, [failAt](ByteSink& file) {
            return std::make_unique<FailingSink>(file, failAt);
        });
    EXPECT_EQ(result.error, GetParam().error);
    EXPECT_EQ(result.chunk, GetParam().chunk);
    EXPECT_EQ(FilesBelow(scratch.Path()), (std::vector<std::string>{"c.vexo", "in.txt"}));
    EXPECT_EQ(ReadFile(scratch / "c.vexo"), kSome);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, FailedEncryption,
    ::testing::Values(FailureCase{"WriteFailsInTheSecondPayload", 4, 0, FileError::WriteFailed, 2},
                      FailureCase{"WriteFailsAtTheIndex", 5, 0, FileError::WriteFailed, 0},
                      FailureCase{"CancelledInTheSecondChunk", 0, 1, FileError::Cancelled, 2}),
    [](const auto& info) { return info.param.name; });

TEST(EncryptFiles, ReplacesAnExistingContainerOnlyWhenAllowed) {
    ScratchFolder scratch;
    WriteFile(scratch / "in.txt", kSome);
    WriteFile(scratch / "c.vexo", kSome);
    ScriptedObserver observer;
    EXPECT_EQ(EncryptPaths({scratch / "in.txt"}, scratch / "c.vexo", observer).error,
              FileError::OutputExists);
    EXPECT_EQ(ReadFile(scratch / "c.vexo"), kSome);
    observer.replaceContainer = true;
    EXPECT_TRUE(EncryptPaths({scratch / "in.txt"}, scratch / "c.vexo", observer).ok());
    EXPECT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
}

// Names of 256 bytes and more keep only their length modulo 256 in byte 33: the reader
// finds the true length from the block (or the empty file's end) behind the name.
struct LongNameCase {
    const char* name;
    std::size_t leafBytes; // below "folder1/", so the stored name is 8 bytes longer
    std::size_t dataBytes;
};

class LongStoredName : public ::testing::TestWithParam<LongNameCase> {};

struct WarningObserver final : ScriptedObserver {
    void OnNameOnlyThisProgramReads(const std::string&) override { ++warnings; }
    int warnings = 0;
};

TEST_P(LongStoredName, IsStoredWithAWarningAndRestoredExactly) {
    ScratchFolder scratch;
    const std::string leaf(GetParam().leafBytes, 'n');
    const Bytes data = PatternBytes(GetParam().dataBytes, 4);
    WriteFile(scratch / "folder1/" + leaf, data);
    WarningObserver observer;
    ASSERT_TRUE(EncryptPaths({scratch / "folder1"}, scratch / "c.vexo", observer).ok());
    EXPECT_EQ(observer.warnings, GetParam().leafBytes + 8 > 255 ? 1 : 0);
    const SecretBytes key = MakePassphraseKey(kPassphrase);
    const auto listed = ListContainer(DecryptRequest{scratch / "c.vexo", {}, &key}, observer);
    ASSERT_TRUE(listed);
    const std::vector<ContainerEntry>& entries = *listed;
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].name, "folder1/" + leaf);
    EXPECT_EQ(entries[0].plainBytes, static_cast<std::int64_t>(data.size()));
    ASSERT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    EXPECT_EQ(ReadFile(scratch / "out/folder1/" + leaf), data);
}

INSTANTIATE_TEST_SUITE_P(Cases, LongStoredName,
                         ::testing::Values(LongNameCase{"Exactly255", 247, 10},
                                           LongNameCase{"Exactly256", 248, 10},
                                           LongNameCase{"LongestLinuxLeaf", 255, 3000},
                                           LongNameCase{"EmptyFile", 250, 0}),
                         [](const auto& info) { return info.param.name; });

TEST(EncryptFiles, AnUnreadableInputIsNamedAndTheRestStored) {
    ScratchFolder scratch;
    WriteFile(scratch / "a.txt", PatternBytes(3000, 1));
    WriteFile(scratch / "c.txt", PatternBytes(3000, 2));
    ScriptedObserver observer;
    const FileJobResult result = EncryptPaths(
        {scratch / "a.txt", scratch / "b.txt", scratch / "c.txt"}, scratch / "c.vexo", observer);
    EXPECT_EQ(result.error, FileError::EntriesLeftOut);
    ASSERT_EQ(result.omitted.size(), 1u);
    EXPECT_EQ(result.omitted[0].name, scratch / "b.txt");
    EXPECT_EQ(result.omitted[0].why, FileError::ReadFailed);
    EXPECT_EQ(result.omitted[0].systemError, ENOENT);
    EXPECT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    EXPECT_EQ(FilesBelow(scratch / "out"), (std::vector<std::string>{"a.txt", "c.txt"}));
}

// Overwriting, skipping and cancelling are what the command line does; see its tests.
struct AnotherNameCase {
    const char* name;
    const char* anotherName; // where the file goes instead, or nowhere
};

class ExistingFile : public ::testing::TestWithParam<AnotherNameCase> {};

TEST_P(ExistingFile, GoesUnderAnotherNameOrIsSkipped) {
    ScratchFolder scratch;
    WriteFile(scratch / "c.vexo", BuildContainer({{"a.txt", {'n', 'e', 'w'}}}));
    WriteFile(scratch / "out/a.txt", kSome);
    ScriptedObserver observer;
    observer.existingFile = ExistingFileAnswer::AnotherName;
    if (GetParam().anotherName != nullptr) {
        observer.anotherName = scratch / GetParam().anotherName;
    }
    EXPECT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    EXPECT_EQ(ReadFile(scratch / "out/a.txt"), kSome);
    if (GetParam().anotherName != nullptr) {
        EXPECT_EQ(ReadFile(scratch / GetParam().anotherName), (Bytes{'n', 'e', 'w'}));
    }
    EXPECT_EQ(FilesBelow(scratch.Path()).size(), GetParam().anotherName != nullptr ? 3u : 2u);
}

INSTANTIATE_TEST_SUITE_P(Answers, ExistingFile,
                         ::testing::Values(AnotherNameCase{"AnotherName", "out/b.txt"},
                                           AnotherNameCase{"NoOtherNameSkips", nullptr}),
                         [](const auto& info) { return info.param.name; });

TEST(DecryptContainer, ANameLinuxCannotTakeIsLeftOutAndTheRestRestored) {
    ScratchFolder scratch;
    // 200 characters of "ä" are 200 bytes stored and 400 bytes in UTF-8.
    WriteFile(scratch / "c.vexo",
              BuildContainer({{std::string(200, '\xe4'), {'x'}}, {"fine.txt", {'f'}}}));
    ScriptedObserver observer;
    const FileJobResult result = DecryptTo(scratch / "c.vexo", scratch / "out", observer);
    EXPECT_EQ(result.error, FileError::EntriesLeftOut);
    ASSERT_EQ(result.omitted.size(), 1u);
    EXPECT_EQ(result.omitted[0].why, FileError::NameTooLong);
    EXPECT_EQ(FilesBelow(scratch / "out"), std::vector<std::string>{"fine.txt"});
}

TEST(DecryptContainer, AFolderThatCannotBeMadeReportsItsOwnError) {
    ScratchFolder scratch;
    WriteFile(scratch / "c.vexo", BuildContainer({{"a.txt", {'a'}}}));
    WriteFile(scratch / "file", {'f'});
    ScriptedObserver observer;
    const FileJobResult result = DecryptTo(scratch / "c.vexo", scratch / "file/out", observer);
    EXPECT_EQ(result.error, FileError::WriteFailed);
    EXPECT_EQ(result.systemError, ENOTDIR);
}

} // namespace
} // namespace kelvora
