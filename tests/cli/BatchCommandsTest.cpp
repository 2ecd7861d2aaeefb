#include "CliRun.h"
#include "files/FileTestSupport.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

const Env kSecret = {{"KELVORA_PASSPHRASE", kPassphrase}};

struct EachCase {
    const char* name;
    bool intoFolder;
    std::vector<std::string> containers; // below the scratch folder
};

class EncryptEach : public ::testing::TestWithParam<EachCase> {};

TEST_P(EncryptEach, GivesEveryFileItsOwnContainerHoldingItAlone) {
    ScratchFolder scratch;
    WriteFile(scratch / "in/tree/a.txt", {'a'});
    WriteFile(scratch / "in/tree/sub/b.txt", PatternBytes(3000, 1));
    WriteFile(scratch / "in/tree/old.vexo", {'x'});
    WriteFile(scratch / "in/c", {});
    std::vector<std::string> args = {"encrypt", "--each", scratch / "in/tree", scratch / "in/c"};
    if (GetParam().intoFolder) {
        args.insert(args.end(), {"-C", scratch / "out"});
    }
    const auto result = RunInProcess(args, "", kSecret);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "kelvora-cli: passed over " + scratch / "in/tree/old.vexo" +
                              ": it is a container already\n");
    std::vector<std::string> made;
    for (const std::string& file : FilesBelow(scratch.Path())) {
        if (file.ends_with(".vexo") && file != "in/tree/old.vexo") {
            made.push_back(file);
        }
    }
    EXPECT_EQ(made, GetParam().containers);
    for (const std::string& container : made) {
        const auto listed = RunInProcess({"list", scratch / container}, "", kSecret);
        EXPECT_EQ(std::count(listed.out.begin(), listed.out.end(), '\n'), 1) << listed.out;
        const std::string name = container.substr(container.rfind('/') + 1);
        EXPECT_TRUE(listed.out.ends_with("\t" + name.substr(0, name.size() - 5) + "\n"))
            << listed.out;
    }
    // Running again refuses to replace what is there, file by file, and says so.
    const auto again = RunInProcess(args, "", kSecret);
    EXPECT_EQ(again.status, 1);
    EXPECT_NE(again.err.find("exists already (use --force"), std::string::npos) << again.err;
}

INSTANTIATE_TEST_SUITE_P(
    Places, EncryptEach,
    ::testing::Values(
        EachCase{"Beside", false, {"in/c.vexo", "in/tree/a.txt.vexo", "in/tree/sub/b.txt.vexo"}},
        EachCase{
            "IntoAFolder", true, {"out/c.vexo", "out/tree/a.txt.vexo", "out/tree/sub/b.txt.vexo"}}),
    [](const auto& info) { return info.param.name; });

TEST(DecryptSeveral, RestoresEachAndGoesOnPastAFailure) {
    ScratchFolder scratch;
    WriteFile(scratch / "1.vexo", BuildContainer({{"one", {'1'}}}));
    WriteFile(scratch / "2.vexo", {'n', 'o'});
    WriteFile(scratch / "3.vexo", BuildContainer({{"d\\three", {'3'}}}));
    const auto result = RunInProcess({"decrypt", scratch / "1.vexo", scratch / "2.vexo",
                                      scratch / "3.vexo", "-C", scratch / "out"},
                                     "", kSecret);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, scratch / "out/one\n" + scratch / "out/d/three\n");
    EXPECT_TRUE(result.err.starts_with("kelvora-cli: " + scratch / "2.vexo")) << result.err;
    EXPECT_EQ(FilesBelow(scratch / "out"), (std::vector<std::string>{"d/three", "one"}));
}

} // namespace
} // namespace kelvora
