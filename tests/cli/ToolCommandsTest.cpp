#include "ProcessRunner.h"
#include "cli/Commands.h"
#include "common/Version.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using testing::RunCli;

TEST(ToolCommands, GenpassPrintsAFreshPassphraseEachTime) {
    const auto first = RunCli({"genpass"});
    const auto second = RunCli({"genpass"});
    ASSERT_EQ(first.status, 0);
    ASSERT_EQ(first.out.size(), 33u);
    EXPECT_EQ(first.out.back(), '\n');
    EXPECT_NE(first.out, second.out);
}

TEST(ToolCommands, RatePrintsScoreStarsAndSentence) {
    const auto result = RunCli({"rate", "-p", "-"}, "abcdefghij\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "score: 20/100\nstars: **---\n"
                          "This passphrase can presumably be cracked.\n");
}

TEST(ToolCommands, EveryCommandExplainsItself) {
    for (const cli::Command* command : cli::AllCommands()) {
        const auto result = RunCli({std::string(command->name), "--help"});
        EXPECT_EQ(result.status, 0) << command->name;
        EXPECT_TRUE(result.out.starts_with("Usage: kelvora-cli " + std::string(command->name)))
            << result.out;
    }
    EXPECT_EQ(RunCli({"--help"}).status, 0);
    EXPECT_EQ(RunCli({}).status, 2);
}

TEST(ToolCommands, VersionLeadsWithTheProductVersion) {
    const auto result = RunCli({"--version"});
    ASSERT_EQ(result.status, 0) << result.err;
    const std::string firstLine = result.out.substr(0, result.out.find('\n'));
    EXPECT_EQ(firstLine, std::string("kelvora-cli ") + kVersionText);
    EXPECT_EQ(result.err, "");
}

} // namespace
} // namespace kelvora
