#include "files/StoredName.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

// A stored name as a container may hold it, and the path it is restored to ("" = refused).
struct RestoreCase {
    const char* name;
    std::string storedName;
    std::string path;
};

class StoredNameRestore : public ::testing::TestWithParam<RestoreCase> {};

TEST_P(StoredNameRestore, GivesAPathBelowTheFolderOrNothing) {
    EXPECT_EQ(IsSafeStoredName(GetParam().storedName), !GetParam().path.empty());
    EXPECT_EQ(RelativePathFromStoredName(GetParam().storedName).value_or(""), GetParam().path);
}

INSTANTIATE_TEST_SUITE_P(
    Table, StoredNameRestore,
    ::testing::Values(RestoreCase{"Plain", "a.txt", "a.txt"},
                      RestoreCase{"Nested", "docs\\sub\\a.txt", "docs/sub/a.txt"},
                      RestoreCase{"AnsiToUtf8", "M\xFCller\\\xE9t\xE9.jpg",
                                  "M\xC3\xBCller/\xC3\xA9t\xC3\xA9.jpg"},
                      RestoreCase{"DotsInsideAName", "a..b\\.hidden", "a..b/.hidden"},
                      RestoreCase{"ColonNotADrive", "notes:1", "notes:1"},
                      RestoreCase{"Empty", "", ""}, RestoreCase{"Absolute", "\\etc\\passwd", ""},
                      RestoreCase{"AbsoluteSlash", "/etc/passwd", ""},
                      RestoreCase{"DriveLetter", "C:\\x.txt", ""},
                      RestoreCase{"DriveRelative", "c:x.txt", ""},
                      RestoreCase{"ParentFolder", "..\\x.txt", ""},
                      RestoreCase{"ParentInside", "a\\..\\..\\x.txt", ""},
                      RestoreCase{"ParentBySlash", "a/../../x.txt", ""},
                      RestoreCase{"CurrentFolder", ".\\x.txt", ""},
                      RestoreCase{"EmptyComponent", "a\\\\x.txt", ""},
                      RestoreCase{"TrailingSeparator", "a\\", ""},
                      RestoreCase{"OnlyDots", "..", ""},
                      RestoreCase{"Nul", std::string("a\0b", 3), ""}),
    [](const auto& info) { return info.param.name; });

struct DeriveCase {
    const char* name;
    std::string path;
    std::string relative;
    std::string stored;
};

class StoredNameDerivation : public ::testing::TestWithParam<DeriveCase> {};

TEST_P(StoredNameDerivation, FromPathAndRelativePath) {
    EXPECT_EQ(StoredNameFor(GetParam().path, GetParam().relative), GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(
    Table, StoredNameDerivation,
    ::testing::Values(
        DeriveCase{"LoneFileKeepsItsName", "/home/u/a.txt", "/", "a.txt"},
        DeriveCase{"LoneFileWithoutFolder", "a.txt", "/", "a.txt"},
        DeriveCase{"WalkedFile", "/home/u/docs/x/a.txt", "/docs/x/a.txt", "docs\\x\\a.txt"},
        DeriveCase{"WalkedFromRelativeFolder", "docs/a.txt", "docs/a.txt", "docs\\a.txt"},
        DeriveCase{"Umlauts", "/h/\xC3\xA4rger.txt", "/", "\xE4rger.txt"},
        DeriveCase{"LoneFileCutTo255", "/h/" + std::string(300, 'n'), "/", std::string(255, 'n')},
        DeriveCase{"WalkedNamesAreNotCut", "/h/d/" + std::string(300, 'n'),
                   "/d/" + std::string(300, 'n'), "d\\" + std::string(300, 'n')}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
