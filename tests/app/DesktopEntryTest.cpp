// The menu entries and file associations start the program with the command line it reads:
// each Exec line is expanded as a desktop launcher does and handed to the start-up parser.
#include "app/CommandLine.h"
#include "files/InputList.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace kelvora {
namespace {

// ExecLine is the Exec value of one group ("Desktop Entry", "Desktop Action text") of a
// desktop file in the packaging folder; empty when the file or the group lacks it.
std::string ExecLine(const std::string& file, const std::string& group) {
    std::ifstream in(std::string(KELVORA_PACKAGING_DIR) + "/" + file);
    std::string line;
    bool inGroup = false;
    while (std::getline(in, line)) {
        if (line.starts_with('[')) {
            inGroup = line == "[" + group + "]";
        } else if (inGroup && line.starts_with("Exec=")) {
            return line.substr(5);
        }
    }
    return {};
}

// LaunchArguments splits an Exec value into the argument vector a launcher starts, with %f
// standing for the one file and %F for all of them, each file one argument.
std::vector<std::string> LaunchArguments(const std::string& exec,
                                         const std::vector<std::string>& files) {
    std::vector<std::string> arguments;
    std::istringstream words(exec);
    std::string word;
    while (words >> word) {
        if (word == "%f" && !files.empty()) {
            arguments.push_back(files.front());
        } else if (word == "%F") {
            arguments.insert(arguments.end(), files.begin(), files.end());
        } else if (word != "%f") {
            arguments.push_back(word);
        }
    }
    return arguments;
}

StartCommand Launch(const std::string& file, const std::string& group,
                    const std::vector<std::string>& files = {}) {
    const std::string exec = ExecLine(file, group);
    EXPECT_FALSE(exec.empty()) << file << " [" << group << "]";
    const std::vector<std::string> arguments = LaunchArguments(exec, files);
    std::vector<const char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    EXPECT_EQ(arguments.empty() ? "" : arguments.front(), "kelvora");
    return ParseCommandLine(JoinArguments(static_cast<int>(argv.size()), argv.data()));
}

constexpr const char* kMenuEntry = "net.kelvora.Kelvora.desktop";

struct PageCase {
    const char* name;
    const char* group;
    StartRequest request;
};

const PageCase kPages[] = {
    {"MenuOpensTheFilesPage", "Desktop Entry", StartRequest::OpenEncryptPage},
    {"DecryptActionOpensTheDecryptTab", "Desktop Action decrypt", StartRequest::OpenDecryptPage},
    {"TextActionOpensTheTextPage", "Desktop Action text", StartRequest::OpenTextPage},
};

class MenuEntry : public ::testing::TestWithParam<PageCase> {};

TEST_P(MenuEntry, StartsOnItsPage) {
    EXPECT_EQ(Launch(kMenuEntry, GetParam().group).request, GetParam().request);
}

INSTANTIATE_TEST_SUITE_P(Table, MenuEntry, ::testing::ValuesIn(kPages),
                         [](const auto& info) { return info.param.name; });

TEST(FileAssociation, AContainerOpensOnTheDecryptTabWithItsPathWhole) {
    const std::string container = "/home/anna/My Backups/Holiday 2026.vexo";
    const StartCommand command =
        Launch("net.kelvora.Kelvora.Decrypt.desktop", "Desktop Entry", {container});
    EXPECT_EQ(command.request, StartRequest::SetDecryptFile);
    EXPECT_EQ(command.decryptFile, container);
    EXPECT_EQ(command.decryptOutPath, "/home/anna/My Backups/");
}

TEST(FileAssociation, OtherFilesGoIntoTheEncryptList) {
    const std::vector<std::string> files = {"/home/anna/notes.txt", "/home/anna/Pictures"};
    const StartCommand command =
        Launch("net.kelvora.Kelvora.Encrypt.desktop", "Desktop Entry", files);
    ASSERT_EQ(command.request, StartRequest::SetEncryptFiles);
    const FileListArgument list = SplitFileListArgument(command.encryptArguments);
    EXPECT_EQ(list.files, files);
    EXPECT_EQ(list.outputFile, "");
}

} // namespace
} // namespace kelvora
