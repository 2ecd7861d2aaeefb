#include "FileTestSupport.h"
#include "files/InputList.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;
namespace fs = std::filesystem;

const Bytes kSome{'s', 'o', 'm', 'e'};

TEST(EncryptFiles, NamesEveryEntryOfATreeItCannotStoreAndStoresTheRest) {
    ScratchFolder scratch;
    WriteFile(scratch / "tree/a.txt", kSome);
    fs::create_directories(scratch / "tree/empty");
    fs::create_directories(scratch / "elsewhere");
    ASSERT_EQ(::mkfifo((scratch / "tree/fifo").c_str(), 0600), 0);
    fs::create_directory_symlink(scratch / "elsewhere", scratch / "tree/folderlink");
    fs::create_symlink(scratch / "gone", scratch / "tree/dangling");
    ScriptedObserver observer;
    const FileJobResult result = EncryptPaths({scratch / "tree"}, scratch / "c.vexo", observer);
    EXPECT_EQ(result.error, FileError::EntriesLeftOut);
    std::vector<std::pair<std::string, FileError>> omitted;
    for (const OmittedEntry& entry : result.omitted) {
        omitted.emplace_back(entry.name.substr(scratch.Path().size() + 1), entry.why);
    }
    std::sort(omitted.begin(), omitted.end());
    EXPECT_EQ(omitted, (std::vector<std::pair<std::string, FileError>>{
                           {"tree/dangling", FileError::ReadFailed},
                           {"tree/empty", FileError::EmptyFolder},
                           {"tree/fifo", FileError::NotRegularFile},
                           {"tree/folderlink", FileError::LinkToFolder}}));
    EXPECT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    EXPECT_EQ(FilesBelow(scratch / "out"), std::vector<std::string>{"tree/a.txt"});
}

// Inputs whose stored names the format cannot hold apart, refused before anything is written.
struct NameCase {
    const char* name;
    std::vector<std::string> files;  // created below the scratch folder
    std::vector<std::string> inputs; // given to the job
    FileError error;
};

class UnstorableNames : public ::testing::TestWithParam<NameCase> {};

TEST_P(UnstorableNames, AreRefusedBeforeAnythingIsWritten) {
    ScratchFolder scratch;
    for (const std::string& file : GetParam().files) {
        WriteFile(scratch / file, kSome);
    }
    std::vector<std::string> inputs;
    for (const std::string& input : GetParam().inputs) {
        inputs.push_back(scratch / input);
    }
    ScriptedObserver observer;
    const FileJobResult result = EncryptPaths(inputs, scratch / "c.vexo", observer);
    EXPECT_EQ(result.error, GetParam().error);
    EXPECT_FALSE(PathExists(scratch / "c.vexo"));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, UnstorableNames,
    ::testing::Values(
        NameCase{"OutsideWindows1252",
                 {"\xe6\x97\xa5\xe6\x9c\xac.txt", "\xe4\xb8\xad\xe6\x96\x87.txt"},
                 {"\xe6\x97\xa5\xe6\x9c\xac.txt", "\xe4\xb8\xad\xe6\x96\x87.txt"},
                 FileError::NameNotStorable},
        NameCase{
            "OutsideWindows1252InATree", {"t/\xce\xb1.txt"}, {"t"}, FileError::NameNotStorable},
        NameCase{"SameFileNameInTwoFolders",
                 {"a/x.txt", "b/x.txt"},
                 {"a/x.txt", "b/x.txt"},
                 FileError::DuplicateName},
        NameCase{
            "SameFileTwoSpellings", {"a.txt"}, {"a.txt", "./a.txt"}, FileError::DuplicateName}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
