#include "FileTestSupport.h"
#include "files/OutputFolder.h"
#include "files/RestorePlan.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;
namespace fs = std::filesystem;

const Bytes kSome{'s', 'o', 'm', 'e'};

// A symbolic link inside the output folder, and a stored name that tries to pass through it.
struct LinkCase {
    const char* name;
    const char* link;   // below out/
    const char* target; // "{s}" stands for the scratch folder
    const char* stored; // the stored name that meets the link
};

class LinkInOutputFolder : public ::testing::TestWithParam<LinkCase> {};

TEST_P(LinkInOutputFolder, IsNeverFollowedAndTheFileIsNamedAsLeftOut) {
    ScratchFolder scratch;
    fs::create_directories(scratch / "outside");
    fs::create_directories(scratch / "out/deep");
    std::string target = GetParam().target;
    if (target.starts_with("{s}")) {
        target = scratch.Path() + target.substr(3);
    }
    fs::create_symlink(target, scratch / (std::string("out/") + GetParam().link));
    WriteFile(scratch / "c.vexo",
              BuildContainer({{GetParam().stored, kSome}, {"fine.txt", kSome}}));
    ScriptedObserver observer;
    const FileJobResult result = DecryptTo(scratch / "c.vexo", scratch / "out", observer);
    EXPECT_EQ(result.error, FileError::EntriesLeftOut);
    ASSERT_EQ(result.omitted.size(), 1u);
    EXPECT_EQ(result.omitted[0].why, FileError::LinkInPath);
    EXPECT_TRUE(fs::is_empty(scratch / "outside"));
    EXPECT_EQ(ReadFile(scratch / "out/fine.txt"), kSome);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, LinkInOutputFolder,
    ::testing::Values(LinkCase{"Relative", "d", "../outside", "d\\f.txt"},
                      LinkCase{"Absolute", "d", "{s}/outside", "d\\f.txt"},
                      LinkCase{"DeeperFoldersWouldBeMadeOutside", "d", "../outside",
                               "d\\x\\y\\f.txt"},
                      LinkCase{"LinkBelowARealFolder", "deep/d", "../../outside", "deep\\d\\f"},
                      LinkCase{"LinkToAFileUsedAsFolder", "d", "{s}/c.vexo", "d\\f.txt"}),
    [](const auto& info) { return info.param.name; });

TEST(OutputFolder, ReplacingALinkReplacesTheLinkNotItsTarget) {
    ScratchFolder scratch;
    WriteFile(scratch / "outside/f.txt", {'o', 'l', 'd'});
    fs::create_directories(scratch / "out");
    fs::create_symlink(scratch / "outside/f.txt", scratch / "out/f.txt");
    WriteFile(scratch / "c.vexo", BuildContainer({{"f.txt", kSome}}));
    ScriptedObserver observer;
    observer.existingFile = ExistingFileAnswer::Overwrite;
    EXPECT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    EXPECT_EQ(ReadFile(scratch / "outside/f.txt"), BytesFromString("old"));
    EXPECT_FALSE(fs::is_symlink(scratch / "out/f.txt"));
    EXPECT_EQ(ReadFile(scratch / "out/f.txt"), kSome);
}

TEST(TempOutputFile, HasNoNameUntilCommittedAndLeavesNothingWhenDropped) {
    ScratchFolder scratch;
    {
        TempOutputFile output;
        ASSERT_TRUE(output.Create(scratch / "result.bin"));
        ASSERT_TRUE(output.Write(kSome));
        if (!output.IsUnnamed()) {
            GTEST_SKIP() << "this file system cannot make unnamed files";
        }
        // Not even a hidden temporary name: a killed process would leave nothing.
        EXPECT_TRUE(fs::is_empty(scratch.Path()));
    }
    EXPECT_TRUE(fs::is_empty(scratch.Path()));
    TempOutputFile output;
    ASSERT_TRUE(output.Create(scratch / "result.bin"));
    ASSERT_TRUE(output.Write(kSome));
    ASSERT_TRUE(output.Commit(false));
    EXPECT_EQ(FilesBelow(scratch.Path()), std::vector<std::string>{"result.bin"});
    EXPECT_EQ(ReadFile(scratch / "result.bin"), kSome);
}

// Commit(false) never replaces; Commit(true) swaps the complete file in.
TEST(TempOutputFile, CommitReplacesOnlyWhenAsked) {
    ScratchFolder scratch;
    WriteFile(scratch / "result.bin", {'o', 'l', 'd'});
    for (const bool replace : {false, true}) {
        TempOutputFile output;
        ASSERT_TRUE(output.Create(scratch / "result.bin"));
        ASSERT_TRUE(output.Write(kSome));
        EXPECT_EQ(output.Commit(replace).has_value(), replace);
        EXPECT_EQ(ReadFile(scratch / "result.bin"), replace ? kSome : BytesFromString("old"));
    }
    EXPECT_EQ(FilesBelow(scratch.Path()), std::vector<std::string>{"result.bin"});
}

// An output that is one of the inputs, or lies in a folder being encrypted.
struct OutputInputCase {
    const char* name;
    std::vector<std::string> inputs; // below the scratch folder
    const char* output;
};

class OutputAmongInputs : public ::testing::TestWithParam<OutputInputCase> {};

TEST_P(OutputAmongInputs, IsRefusedBeforeAnythingIsWritten) {
    ScratchFolder scratch;
    WriteFile(scratch / "a.txt", kSome);
    WriteFile(scratch / "b.txt", kSome);
    WriteFile(scratch / "dir/old.vexo", kSome);
    fs::create_hard_link(scratch / "a.txt", scratch / "hard.txt");
    std::vector<std::string> inputs;
    for (const std::string& input : GetParam().inputs) {
        inputs.push_back(scratch / input);
    }
    const std::vector<std::string> before = FilesBelow(scratch.Path());
    ScriptedObserver observer;
    observer.replaceContainer = true;
    const FileJobResult result = EncryptPaths(inputs, scratch / GetParam().output, observer);
    EXPECT_EQ(result.error, FileError::OutputIsInput);
    EXPECT_EQ(FilesBelow(scratch.Path()), before);
    for (const std::string& file : before) {
        EXPECT_EQ(ReadFile(scratch / file), kSome) << file;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, OutputAmongInputs,
    ::testing::Values(OutputInputCase{"OneOfTheFiles", {"a.txt", "b.txt"}, "a.txt"},
                      OutputInputCase{"AHardLinkToAnInput", {"a.txt"}, "hard.txt"},
                      OutputInputCase{"OldContainerInTheFolder", {"dir"}, "dir/old.vexo"},
                      OutputInputCase{"NewContainerInTheFolder", {"dir"}, "dir/new.vexo"},
                      OutputInputCase{"ThroughDotDot", {"dir"}, "dir/../dir/new.vexo"}),
    [](const auto& info) { return info.param.name; });

TEST(DecryptContainer, AConflictFoundLateStopsTheRunBeforeAnythingIsWritten) {
    ScratchFolder scratch;
    WriteFile(scratch / "c.vexo",
              BuildContainer({{"a.txt", kSome}, {"d\\b.txt", kSome}, {"d\\b.txt", kSome}}));
    ScriptedObserver observer;
    const FileJobResult result = DecryptTo(scratch / "c.vexo", scratch / "out", observer);
    EXPECT_EQ(result.error, FileError::OutputExists);
    ASSERT_EQ(result.omitted.size(), 1u);
    EXPECT_EQ(result.omitted[0].name, scratch / "out/d/b.txt");
    EXPECT_TRUE(FilesBelow(scratch / "out").empty());
}

struct NumberedCase {
    const char* name;
    const char* relative;
    const char* numbered;
};

class NumberedNameTest : public ::testing::TestWithParam<NumberedCase> {};

TEST_P(NumberedNameTest, PutsTheNumberBeforeTheExtension) {
    EXPECT_EQ(NumberedName(GetParam().relative, 2), GetParam().numbered);
}

INSTANTIATE_TEST_SUITE_P(Cases, NumberedNameTest,
                         ::testing::Values(NumberedCase{"Plain", "a.txt", "a (2).txt"},
                                           NumberedCase{"NoExtension", "d/readme", "d/readme (2)"},
                                           NumberedCase{"DotInFolder", "d.x/readme",
                                                        "d.x/readme (2)"},
                                           NumberedCase{"Hidden", "d/.profile", "d/.profile (2)"},
                                           NumberedCase{"TwoDots", "a.tar.gz", "a.tar (2).gz"}),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
