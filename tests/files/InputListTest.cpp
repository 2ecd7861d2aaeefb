#include "files/InputList.h"

#include "FileTestSupport.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using testing::ScratchFolder;
using testing::WriteFile;

// Two paths added one after the other: the second may be the first again.
struct AddCase {
    const char* name;
    std::string first;
    std::string second;
    bool duplicate;
    std::string outputName;
};

class InputListAdding : public ::testing::TestWithParam<AddCase> {};

TEST_P(InputListAdding, ListsEachPathOnceAndFillsTheOutputName) {
    InputList list;
    EXPECT_FALSE(list.AddListPath(GetParam().first));
    EXPECT_EQ(list.AddListPath(GetParam().second), GetParam().duplicate);
    std::vector<std::string> expected{GetParam().second};
    if (!GetParam().duplicate) {
        expected.insert(expected.begin(), GetParam().first);
    }
    std::vector<std::string> listed;
    for (const InputEntry& entry : list.Entries()) {
        listed.push_back(entry.path);
        EXPECT_EQ(entry.relativePath, "/");
    }
    EXPECT_EQ(listed, expected);
    EXPECT_EQ(list.OutputName(), GetParam().outputName);
    EXPECT_FALSE(list.AddListPath("/n/other")) << "a refusal is reported once";
}

INSTANTIATE_TEST_SUITE_P(
    Table, InputListAdding,
    ::testing::Values(AddCase{"SameFileTwice", "/n/a.txt", "/n/a.txt", true, "/n/a.vexo"},
                      AddCase{"DoubledSeparatorsCollapse", "/n//x///a.txt", "/n/x/a.txt", true,
                              "/n/x/a.vexo"},
                      AddCase{"DotInAFolderIsNoExtension", "/n/v1.2/README", "/n/b.tar.gz", false,
                              "/n/b.tar.vexo"},
                      AddCase{"FirstExtensionWins", "/n/a.doc", "/n/b.txt", false, "/n/a.vexo"}),
    [](const auto& info) { return info.param.name; });

// The chosen folder holds only subfolders: their files come in, each with a relative path
// that starts with the chosen folder's name.
TEST(InputList, WalkGivesRelativePathsStartingWithTheChosenFolder) {
    ScratchFolder scratch;
    WriteFile(scratch / "top/b/z.txt", {1});
    WriteFile(scratch / "top/a/z.txt", {2});
    WriteFile(scratch / "top/a/deep/y.txt", {3});
    InputList list;
    EXPECT_FALSE(list.AddListPath(scratch / "top/"));
    std::vector<std::string> relative;
    for (const InputEntry& entry : list.Entries()) {
        EXPECT_EQ(entry.path, scratch.Path() + entry.relativePath);
        relative.push_back(entry.relativePath);
    }
    EXPECT_EQ(relative,
              (std::vector<std::string>{"/top/a/deep/y.txt", "/top/a/z.txt", "/top/b/z.txt"}));
    EXPECT_TRUE(list.AddListPath(scratch / "top"));
    EXPECT_EQ(list.Entries().size(), 3u);
}

TEST(InputList, RemoveEntriesTakesOutASelectionInOnePassAndKeepsTheOrder) {
    InputList list;
    for (const char* path : {"/n/a", "/n/b", "/n/c", "/n/d", "/n/e"}) {
        EXPECT_FALSE(list.AddListPath(path));
    }
    list.RemoveEntries({3, 1, 9, 3}); // the first entry stays where it is
    std::vector<std::string> left;
    for (const InputEntry& entry : list.Entries()) {
        left.push_back(entry.path);
    }
    EXPECT_EQ(left, (std::vector<std::string>{"/n/a", "/n/c", "/n/e"}));
    EXPECT_FALSE(list.AddListPath("/n/d")); // forgotten, so it can come back
    EXPECT_TRUE(list.AddListPath("/n/a"));  // still listed
}

TEST(InputList, BaseOfTheChosenFolderIsItsParent) {
    EXPECT_EQ(BaseOfChosenFolder("/home/u/docs/"), "/home/u");
    EXPECT_EQ(BaseOfChosenFolder("/docs"), "");
    EXPECT_EQ(BaseOfChosenFolder("docs"), "");
    EXPECT_EQ(BaseOfChosenFolder("a/docs"), "a");
}

struct SplitCase {
    const char* name;
    std::string text;
    std::vector<std::string> files;
    std::string output;
};

class FileListArgumentSplit : public ::testing::TestWithParam<SplitCase> {};

TEST_P(FileListArgumentSplit, SplitsListAndOutput) {
    const FileListArgument split = SplitFileListArgument(GetParam().text);
    EXPECT_EQ(split.files, GetParam().files);
    EXPECT_EQ(split.outputFile, GetParam().output);
}

INSTANTIATE_TEST_SUITE_P(
    Table, FileListArgumentSplit,
    ::testing::Values(
        SplitCase{"QuotedBlanks",
                  "\"/a/my file.txt\"  /b/z /OutputFile \"/c/my out.vexo\"",
                  {"/a/my file.txt", "/b/z"},
                  "/c/my out.vexo"},
        SplitCase{
            "FirstMarkerWins", "/a /outputfile /b /outputfile /c", {"/a"}, "/b /outputfile /c"},
        SplitCase{"MarkerNeedsBlanks", "/a/outputfile.txt", {"/a/outputfile.txt"}, ""},
        SplitCase{"EmptyList", "/OUTPUTFILE /o.vexo", {}, "/o.vexo"}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
