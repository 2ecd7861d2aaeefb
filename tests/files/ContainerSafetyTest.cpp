#include "FileTestSupport.h"
#include "crypto/KeyRules.h"
#include "files/ContainerFormat.h"
#include "files/ContainerIndex.h"
#include "files/DecryptJob.h"
#include "files/EncryptJob.h"
#include "files/LittleEndian.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>

namespace kelvora {
namespace {

using namespace kelvora::testing;

// A container as a hostile or damaged source could hand it over, and how the job must end.
struct HostileCase {
    const char* name;
    std::vector<StoredFile> files;
    std::vector<std::int64_t> counts; // empty: the real ones
    void (*spoil)(Bytes& container);
    FileError error;
    std::vector<std::string> restored; // below the output folder
};

void Keep(Bytes&) {}

class HostileContainer : public ::testing::TestWithParam<HostileCase> {};

TEST_P(HostileContainer, IsRefusedWithNothingWrittenOutsideTheFolder) {
    ScratchFolder scratch;
    Bytes container = BuildContainer(GetParam().files, GetParam().counts);
    GetParam().spoil(container);
    WriteFile(scratch / "in/c.vexo", container);
    ScriptedObserver observer;
    const FileJobResult result = DecryptTo(scratch / "in/c.vexo", scratch / "in/out", observer);
    EXPECT_EQ(result.error, GetParam().error);
    EXPECT_EQ(FilesBelow(scratch.Path()).size(), 1 + GetParam().restored.size());
    if (!GetParam().restored.empty()) {
        EXPECT_EQ(FilesBelow(scratch / "in/out"), GetParam().restored);
    }
}

const Bytes kSome{'s', 'o', 'm', 'e'};

INSTANTIATE_TEST_SUITE_P(
    Cases, HostileContainer,
    ::testing::Values(
        HostileCase{"ParentFolder",
                    {{"..\\..\\evil.txt", kSome}, {"ok.txt", kSome}},
                    {},
                    Keep,
                    FileError::UnsafeName,
                    {"ok.txt"}},
        HostileCase{
            "ParentInside", {{"a\\..\\..\\evil.txt", kSome}}, {}, Keep, FileError::UnsafeName, {}},
        HostileCase{"Absolute", {{"\\tmp\\evil.txt", kSome}}, {}, Keep, FileError::UnsafeName, {}},
        HostileCase{"DriveLetter", {{"C:\\evil.txt", kSome}}, {}, Keep, FileError::UnsafeName, {}},
        HostileCase{"Nul", {{std::string("a\0b", 3), kSome}}, {}, Keep, FileError::UnsafeName, {}},
        HostileCase{"ZeroCountIsSkipped",
                    {{"a.txt", kSome}},
                    {0, 0},
                    [](Bytes& c) {
                        // Move the real count behind a count of 0.
                        const std::int64_t count = static_cast<std::int64_t>(c.size()) - 3;
                        c.resize(static_cast<std::size_t>(count));
                        const Bytes index = EncodeIndex(std::vector<std::int64_t>{0, count});
                        c.insert(c.end(), index.begin(), index.end());
                    },
                    FileError::None,
                    {"a.txt"}},
        HostileCase{"IndexLongerThanOneReadPiece",
                    {{"a.txt", kSome}},
                    {0, 0},
                    [](Bytes& c) {
                        const std::int64_t count = static_cast<std::int64_t>(c.size()) - 3;
                        c.resize(static_cast<std::size_t>(count));
                        std::vector<std::int64_t> counts(70000, 0);
                        counts.push_back(count);
                        const Bytes index = EncodeIndex(counts);
                        c.insert(c.end(), index.begin(), index.end());
                    },
                    FileError::None,
                    {"a.txt"}},
        HostileCase{"ThreeBytes",
                    {},
                    {},
                    [](Bytes& c) {
                        c = {1, 2, 3};
                    },
                    FileError::NoUsableContent,
                    {}},
        HostileCase{"NoSeparatorAtTheEnd",
                    {{"a.txt", kSome}},
                    {},
                    [](Bytes& c) {
                        c.resize(c.size() - 2);
                        c.push_back(7);
                        c.push_back(7);
                    },
                    FileError::NoUsableContent,
                    {}},
        HostileCase{"IndexLengthOverflows",
                    {{"a.txt", kSome}},
                    {},
                    [](Bytes& c) {
                        c.back() = 254;
                        c.insert(c.end(), 9, 254);
                    },
                    FileError::NoUsableContent,
                    {}},
        HostileCase{"CountPastTheRecords",
                    {{"a.txt", kSome}},
                    {1000000},
                    Keep,
                    FileError::NoUsableContent,
                    {}},
        HostileCase{"RecordLengthLies",
                    {{"a.txt", kSome}},
                    {},
                    [](Bytes& c) { PutInt32Le(c.data(), 0x7FFFFFFE); },
                    FileError::DamagedData,
                    {}},
        HostileCase{"GarbledSecondChunk",
                    {{"ok.txt", kSome}, {"big.bin", PatternBytes(2100000, 9)}},
                    {},
                    [](Bytes& c) { c[c.size() - 200] ^= 1; },
                    FileError::DamagedData,
                    {"ok.txt"}}),
    [](const auto& info) { return info.param.name; });

TEST(HostileContainer, RandomDamageNeverCrashesOrWritesOutsideTheFolder) {
    const Bytes original = BuildContainer(
        {{"a.txt", PatternBytes(3000, 1, true)}, {"d\\e", {}}, {"d\\b.bin", PatternBytes(900, 2)}});
    std::mt19937 random(20261122);
    for (int round = 0; round < 150; ++round) {
        ScratchFolder scratch;
        Bytes damaged = original;
        switch (round % 3) {
        case 0: // flip a few bytes anywhere, index included
            for (int i = 0; i < 1 + round % 4; ++i) {
                damaged[random() % damaged.size()] ^= static_cast<std::uint8_t>(1 + random() % 255);
            }
            break;
        case 1: // cut the container short
            damaged.resize(random() % damaged.size());
            break;
        default: // junk behind it
            damaged.insert(damaged.end(), 1 + random() % 300, static_cast<std::uint8_t>(random()));
            break;
        }
        WriteFile(scratch / "c.vexo", damaged);
        ScriptedObserver observer;
        (void)DecryptTo(scratch / "c.vexo", scratch / "out", observer);
        for (const std::string& file : FilesBelow(scratch.Path())) {
            EXPECT_TRUE(file == "c.vexo" || file.starts_with("out/"))
                << file << " in round " << round;
        }
    }
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

INSTANTIATE_TEST_SUITE_P(Cases, WrongPassphrase,
                         ::testing::Values(WrongPassphraseCase{"OneFile", {{"d\\a.txt", kSome}}},
                                           WrongPassphraseCase{
                                               "EmptyFilesFirst",
                                               {{"e1", {}}, {"e2", {}}, {"d\\a.txt", kSome}}},
                                           WrongPassphraseCase{"OnlyAnEmptyFile", {{"d\\e", {}}}}),
                         [](const auto& info) { return info.param.name; });

// EncryptOne encrypts scratch/in.txt (1 MiB) to scratch/c.vexo with the request adjusted.
FileJobResult EncryptOne(const ScratchFolder& scratch, ScriptedObserver& observer,
                         std::int64_t failAfter) {
    InputList list;
    (void)list.AddListPath(scratch / "in.txt");
    const SecretBytes key = MakePassphraseKey(kPassphrase);
    FixedRandom random;
    EncryptRequest request{list.Entries(), scratch / "c.vexo", &key, &random, {}};
    if (failAfter >= 0) {
        request.wrapOutput = [failAfter](ByteSink& file) -> std::unique_ptr<ByteSink> {
            // Pass everything through to the real file until the sink gives up.
            struct FailingFile final : ByteSink {
                FailingFile(ByteSink& f, std::int64_t n) : file(f), budget(n) {}
                bool Write(std::span<const std::uint8_t> bytes) override {
                    budget -= static_cast<std::int64_t>(bytes.size());
                    return budget >= 0 && file.Write(bytes);
                }
                ByteSink& file;
                std::int64_t budget;
            };
            return std::make_unique<FailingFile>(file, failAfter);
        };
    }
    return EncryptFiles(request, observer);
}

struct FailedEncryptionCase {
    const char* name;
    std::int64_t failAfter;
    int cancelAfterEvents;
    FileError error;
};

class FailedEncryption : public ::testing::TestWithParam<FailedEncryptionCase> {};

TEST_P(FailedEncryption, LeavesNoContainerAndTheOldOneUntouched) {
    ScratchFolder scratch;
    WriteFile(scratch / "in.txt", PatternBytes(kChunkBytes + 100000, 5));
    WriteFile(scratch / "c.vexo", kSome);
    ScriptedObserver observer;
    observer.replaceContainer = true;
    observer.cancelAfterEvents = GetParam().cancelAfterEvents;
    EXPECT_EQ(EncryptOne(scratch, observer, GetParam().failAfter).error, GetParam().error);
    EXPECT_EQ(FilesBelow(scratch.Path()), (std::vector<std::string>{"c.vexo", "in.txt"}));
    EXPECT_EQ(ReadFile(scratch / "c.vexo"), kSome);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, FailedEncryption,
    ::testing::Values(
        FailedEncryptionCase{"WriteFailsAtOnce", 0, -1, FileError::WriteFailed},
        FailedEncryptionCase{"WriteFailsInTheFirstRecord", 100, -1, FileError::WriteFailed},
        FailedEncryptionCase{"WriteFailsInTheSecondRecord", 100000, -1, FileError::WriteFailed},
        FailedEncryptionCase{"CancelledInTheFirstChunk", -1, 2, FileError::Cancelled},
        FailedEncryptionCase{"CancelledLater", -1, 60, FileError::Cancelled}),
    [](const auto& info) { return info.param.name; });

TEST(EncryptFiles, ExistingContainerStaysWhenTheAnswerIsNo) {
    ScratchFolder scratch;
    WriteFile(scratch / "in.txt", kSome);
    WriteFile(scratch / "c.vexo", kSome);
    ScriptedObserver observer;
    EXPECT_EQ(EncryptOne(scratch, observer, -1).error, FileError::OutputExists);
    EXPECT_EQ(ReadFile(scratch / "c.vexo"), kSome);
    observer.replaceContainer = true;
    EXPECT_TRUE(EncryptOne(scratch, observer, -1).ok());
    EXPECT_EQ(observer.questions, 2);
    EXPECT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
}

TEST(EncryptFiles, RefusesNamesOtherCopiesCannotReadBeforeWriting) {
    ScratchFolder scratch;
    WriteFile(scratch / "folder1/" + std::string(250, 'n'), kSome);
    ScriptedObserver observer;
    const FileJobResult result = EncryptPaths({scratch / "folder1"}, scratch / "c.vexo", observer);
    EXPECT_EQ(result.error, FileError::NameTooLong);
    EXPECT_FALSE(PathExists(scratch / "c.vexo"));
    EXPECT_EQ(EncryptPaths({}, scratch / "c.vexo", observer).error, FileError::NothingToDo);
}

TEST(EncryptFiles, AnInputThatVanishedIsReportedAtItsPlaceAndLeavesNoContainer) {
    ScratchFolder scratch;
    for (const char* name : {"a.txt", "b.txt", "c.txt"}) {
        WriteFile(scratch / name, PatternBytes(3000, 1));
    }
    InputList list;
    (void)list.AddListPath(scratch.Path());
    std::filesystem::remove(scratch / "b.txt");
    const SecretBytes key = MakePassphraseKey(kPassphrase);
    FixedRandom random;
    ScriptedObserver observer;
    const FileJobResult result = EncryptFiles(
        EncryptRequest{list.Entries(), scratch / "c.vexo", &key, &random, {}}, observer);
    EXPECT_EQ(result.error, FileError::ReadFailed);
    EXPECT_EQ(result.fileIndex, 1u);
    EXPECT_EQ(result.name, scratch / "b.txt");
    EXPECT_EQ(result.systemError, ENOENT);
    EXPECT_EQ(observer.done.size(), 1u);
    EXPECT_EQ(FilesBelow(scratch.Path()), (std::vector<std::string>{"a.txt", "c.txt"}));
}

struct ExistingFileCase {
    const char* name;
    ExistingFileAnswer answer;
    std::optional<std::string> anotherName;
    FileError error;
    Bytes kept;            // what a.txt holds afterwards
    const char* otherFile; // where the restored file went instead, if anywhere
};

class ExistingFile : public ::testing::TestWithParam<ExistingFileCase> {};

TEST_P(ExistingFile, IsHandledAsTheObserverAnswers) {
    ScratchFolder scratch;
    WriteFile(scratch / "c.vexo", BuildContainer({{"a.txt", {'n', 'e', 'w'}}}));
    WriteFile(scratch / "out/a.txt", kSome);
    ScriptedObserver observer;
    observer.existingFile = GetParam().answer;
    if (GetParam().anotherName) {
        observer.anotherName = scratch / *GetParam().anotherName;
    }
    EXPECT_EQ(DecryptTo(scratch / "c.vexo", scratch / "out", observer).error, GetParam().error);
    EXPECT_EQ(ReadFile(scratch / "out/a.txt"), GetParam().kept);
    if (GetParam().otherFile != nullptr) {
        EXPECT_EQ(ReadFile(scratch / GetParam().otherFile), (Bytes{'n', 'e', 'w'}));
    }
    EXPECT_EQ(FilesBelow(scratch.Path()).size(), GetParam().otherFile != nullptr ? 3u : 2u);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, ExistingFile,
    ::testing::Values(
        ExistingFileCase{"Overwrite",
                         ExistingFileAnswer::Overwrite,
                         {},
                         FileError::None,
                         {'n', 'e', 'w'},
                         nullptr},
        ExistingFileCase{"Skip", ExistingFileAnswer::Skip, {}, FileError::None, kSome, nullptr},
        ExistingFileCase{
            "Cancel", ExistingFileAnswer::Cancel, {}, FileError::Cancelled, kSome, nullptr},
        ExistingFileCase{"AnotherName", ExistingFileAnswer::AnotherName, "out/b.txt",
                         FileError::None, kSome, "out/b.txt"},
        ExistingFileCase{"NoOtherNameSkips",
                         ExistingFileAnswer::AnotherName,
                         {},
                         FileError::None,
                         kSome,
                         nullptr}),
    [](const auto& info) { return info.param.name; });

TEST(TestContainer, NamesTheDamagedFileAndChunk) {
    ScratchFolder scratch;
    Bytes container = BuildContainer({{"ok.txt", kSome}, {"big.bin", PatternBytes(2100000, 9)}});
    container[container.size() - 200] ^= 1;
    WriteFile(scratch / "c.vexo", container);
    const SecretBytes key = MakePassphraseKey(kPassphrase);
    ScriptedObserver observer;
    const FileJobResult result =
        TestContainer(DecryptRequest{scratch / "c.vexo", "", &key}, observer);
    EXPECT_EQ(result.error, FileError::DamagedData);
    EXPECT_EQ(result.fileIndex, 1u);
    EXPECT_EQ(result.chunk, 2);
    EXPECT_EQ(result.name, "big.bin");
    EXPECT_EQ(FilesBelow(scratch.Path()).size(), 1u);
}

} // namespace
} // namespace kelvora
