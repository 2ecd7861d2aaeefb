#include "files/StoredName.h"

#include <gtest/gtest.h>
#include <tuple>

namespace kelvora {
namespace {

// A stored name as a container may hold it, and the path it is restored to ("" = refused).
TEST(StoredName, GivesAPathBelowTheFolderOrNothing) {
    const std::pair<std::string, std::string> rows[] = {
        {"a.txt", "a.txt"},
        {"docs\\sub\\a.txt", "docs/sub/a.txt"},
        {"M\xFCller\\\xE9t\xE9.jpg", "M\xC3\xBCller/\xC3\xA9t\xC3\xA9.jpg"}, // to UTF-8
        {"a..b\\.hidden", "a..b/.hidden"},
        {"notes:1", "notes:1"}, // a colon is no drive
        {"", ""},
        {"\\etc\\passwd", ""},
        {"/etc/passwd", ""},
        {"C:\\x.txt", ""},
        {"c:x.txt", ""},
        {"..\\x.txt", ""},
        {"a\\..\\..\\x.txt", ""},
        {"a/../../x.txt", ""},
        {".\\x.txt", ""},
        {"a\\\\x.txt", ""},
        {"a\\", ""},
        {"..", ""},
        {std::string("a\0b", 3), ""},
    };
    for (const auto& [storedName, path] : rows) {
        EXPECT_EQ(IsSafeStoredName(storedName), !path.empty()) << storedName;
        EXPECT_EQ(RelativePathFromStoredName(storedName).value_or(""), path) << storedName;
    }
}

// A lone file keeps its name (cut to 255 bytes); a walked file its path from the chosen folder.
TEST(StoredName, ComesFromThePathAndTheRelativePath) {
    const std::string n300(300, 'n');
    const std::tuple<std::string, std::string, std::string> rows[] = {
        {"/home/u/a.txt", "/", "a.txt"},
        {"a.txt", "/", "a.txt"},
        {"/home/u/docs/x/a.txt", "/docs/x/a.txt", "docs\\x\\a.txt"},
        {"docs/a.txt", "docs/a.txt", "docs\\a.txt"},
        {"/h/\xC3\xA4rger.txt", "/", "\xE4rger.txt"},
        {"/h/" + n300, "/", std::string(255, 'n')},
        {"/h/d/" + n300, "/d/" + n300, "d\\" + n300},
    };
    for (const auto& [path, relative, stored] : rows) {
        EXPECT_EQ(StoredNameFor(path, relative), stored) << path;
    }
}

} // namespace
} // namespace kelvora
