#include "files/StoredName.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

struct SafetyCase {
    const char* name;
    std::string storedName;
    bool safe;
};

class StoredNameSafety : public ::testing::TestWithParam<SafetyCase> {};

TEST_P(StoredNameSafety, RefusesNamesThatLeaveTheFolder) {
    EXPECT_EQ(IsSafeStoredName(GetParam().storedName), GetParam().safe);
    EXPECT_EQ(RelativePathFromStoredName(GetParam().storedName).has_value(), GetParam().safe);
}

INSTANTIATE_TEST_SUITE_P(Table, StoredNameSafety,
                         ::testing::Values(SafetyCase{"Plain", "a.txt", true},
                                           SafetyCase{"Nested", "docs\\sub\\a.txt", true},
                                           SafetyCase{"DotsInsideAName", "a..b\\.hidden", true},
                                           SafetyCase{"ColonNotADrive", "notes:1", true},
                                           SafetyCase{"Empty", "", false},
                                           SafetyCase{"Absolute", "\\etc\\passwd", false},
                                           SafetyCase{"AbsoluteSlash", "/etc/passwd", false},
                                           SafetyCase{"DriveLetter", "C:\\x.txt", false},
                                           SafetyCase{"DriveRelative", "c:x.txt", false},
                                           SafetyCase{"ParentFolder", "..\\x.txt", false},
                                           SafetyCase{"ParentInside", "a\\..\\..\\x.txt", false},
                                           SafetyCase{"ParentBySlash", "a/../../x.txt", false},
                                           SafetyCase{"CurrentFolder", ".\\x.txt", false},
                                           SafetyCase{"EmptyComponent", "a\\\\x.txt", false},
                                           SafetyCase{"TrailingSeparator", "a\\", false},
                                           SafetyCase{"OnlyDots", "..", false},
                                           SafetyCase{"Nul", std::string("a\0b", 3), false}),
                         [](const auto& info) { return info.param.name; });

TEST(StoredName, ReaderTurnsBackslashesIntoSlashesAndAnsiIntoUtf8) {
    EXPECT_EQ(RelativePathFromStoredName("Fotos\\M\xFCller\\\xE9t\xE9.jpg"),
              "Fotos/M\xC3\xBCller/\xC3\xA9t\xC3\xA9.jpg");
}

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
