// Output files appear complete or not at all, replace only when asked, and numbered names
// keep the extension. Where restored files may go is in ContainerSafetyTest.cpp.
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

TEST(TempOutputFile, ReplacesOnlyWhenAskedAndHasNoNameUntilCommitted) {
    ScratchFolder scratch;
    WriteFile(scratch / "result.bin", {'o', 'l', 'd'});
    for (const bool replace : {false, true}) {
        TempOutputFile output;
        ASSERT_TRUE(output.Create(scratch / "result.bin"));
        ASSERT_TRUE(output.Write(kSome));
        EXPECT_EQ(output.Commit(replace).has_value(), replace);
        EXPECT_EQ(TreeBelow(scratch.Path()), (Tree{{"result.bin", replace ? "some" : "old"}}));
    }
    {
        TempOutputFile output;
        ASSERT_TRUE(output.Create(scratch / "new.bin"));
        ASSERT_TRUE(output.Write(kSome));
        if (!output.IsUnnamed()) {
            GTEST_SKIP() << "this file system cannot make unnamed files";
        }
        // Not even a hidden temporary name: a killed process would leave nothing.
        EXPECT_EQ(FilesBelow(scratch.Path()), std::vector<std::string>{"result.bin"});
    }
    EXPECT_EQ(FilesBelow(scratch.Path()), std::vector<std::string>{"result.bin"}) << "dropped";
}

TEST(NumberedName, PutsTheNumberBeforeTheExtension) {
    for (const auto& [relative, numbered] : {std::pair{"a.txt", "a (2).txt"},
                                             {"d/readme", "d/readme (2)"},
                                             {"d.x/readme", "d.x/readme (2)"},
                                             {"d/.profile", "d/.profile (2)"},
                                             {"a.tar.gz", "a.tar (2).gz"}}) {
        EXPECT_EQ(NumberedName(relative, 2), numbered);
    }
}

} // namespace
} // namespace kelvora
