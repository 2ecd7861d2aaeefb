#include "files/InputList.h"

#include "FileTestSupport.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using testing::ScratchFolder;
using testing::WriteFile;

std::vector<std::string> Paths(const InputList& list) {
    std::vector<std::string> paths;
    for (const InputEntry& entry : list.Entries()) {
        paths.push_back(entry.path);
    }
    return paths;
}

// Two paths added one after the other: the second may be the first again.
TEST(InputList, ListsEachPathOnceAndFillsTheOutputName) {
    const struct {
        const char* name;
        std::string first, second;
        bool duplicate;
        std::string outputName;
    } rows[] = {
        {"SameFileTwice", "/n/a.txt", "/n/a.txt", true, "/n/a.vexo"},
        {"DoubledSeparatorsCollapse", "/n//x///a.txt", "/n/x/a.txt", true, "/n/x/a.vexo"},
        {"DotInAFolderIsNoExtension", "/n/v1.2/README", "/n/b.tar.gz", false, "/n/b.tar.vexo"},
        {"FirstExtensionWins", "/n/a.doc", "/n/b.txt", false, "/n/a.vexo"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        InputList list;
        EXPECT_FALSE(list.AddListPath(row.first));
        EXPECT_EQ(list.AddListPath(row.second), row.duplicate);
        std::vector<std::string> expected{row.second};
        if (!row.duplicate) {
            expected.insert(expected.begin(), row.first);
        }
        EXPECT_EQ(Paths(list), expected);
        for (const InputEntry& entry : list.Entries()) {
            EXPECT_EQ(entry.relativePath, "/");
        }
        EXPECT_EQ(list.OutputName(), row.outputName);
        EXPECT_FALSE(list.AddListPath("/n/other")) << "a refusal is reported once";
    }
}

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
    EXPECT_EQ(Paths(list), (std::vector<std::string>{"/n/a", "/n/c", "/n/e"}));
    EXPECT_FALSE(list.AddListPath("/n/d")); // forgotten, so it can come back
    EXPECT_TRUE(list.AddListPath("/n/a"));  // still listed
}

TEST(InputList, BaseOfTheChosenFolderIsItsParent) {
    EXPECT_EQ(BaseOfChosenFolder("/home/u/docs/"), "/home/u");
    EXPECT_EQ(BaseOfChosenFolder("/docs"), "");
    EXPECT_EQ(BaseOfChosenFolder("docs"), "");
    EXPECT_EQ(BaseOfChosenFolder("a/docs"), "a");
}

TEST(InputList, SplitsAFileListArgumentIntoListAndOutput) {
    const struct {
        std::string text;
        std::vector<std::string> files;
        std::string output;
    } rows[] = {
        {"\"/a/my file.txt\"  /b/z /OutputFile \"/c/my out.vexo\"",
         {"/a/my file.txt", "/b/z"},
         "/c/my out.vexo"},
        {"/a /outputfile /b /outputfile /c", {"/a"}, "/b /outputfile /c"}, // the first marker wins
        {"/a/outputfile.txt", {"/a/outputfile.txt"}, ""}, // the marker needs blanks
        {"/OUTPUTFILE /o.vexo", {}, "/o.vexo"},
    };
    for (const auto& row : rows) {
        const FileListArgument split = SplitFileListArgument(row.text);
        EXPECT_EQ(split.files, row.files) << row.text;
        EXPECT_EQ(split.outputFile, row.output) << row.text;
    }
}

} // namespace
} // namespace kelvora
