#include "app/CommandLine.h"

#include <cctype>

namespace kelvora {
namespace {

constexpr char kSeparator = '/';

// StartsWithSwitch compares the first switchWord.size() characters without regard to case.
bool StartsWithSwitch(std::string_view text, std::string_view switchWord) {
    if (text.size() < switchWord.size()) {
        return false;
    }
    for (std::size_t i = 0; i < switchWord.size(); ++i) {
        const auto typed = static_cast<unsigned char>(text[i]);
        if (std::tolower(typed) != switchWord[i]) {
            return false;
        }
    }
    return true;
}

std::string FolderPart(std::string_view path) {
    const std::size_t last = path.rfind(kSeparator);
    return last == std::string_view::npos ? std::string() : std::string(path.substr(0, last + 1));
}

} // namespace

StartCommand ParseCommandLine(std::string_view commandLine) {
    constexpr std::string_view kEncryptPage = "/filee";
    constexpr std::string_view kDecryptPage = "/filed";
    constexpr std::string_view kEncryptFiles = "/setencrfiles ";
    constexpr std::string_view kDecryptFile = "/setdecrfile ";
    constexpr std::string_view kUsage = "/?";

    StartCommand command;
    if (StartsWithSwitch(commandLine, kEncryptPage)) {
        command.request = StartRequest::OpenEncryptPage;
    } else if (StartsWithSwitch(commandLine, kDecryptPage)) {
        command.request = StartRequest::OpenDecryptPage;
    } else if (StartsWithSwitch(commandLine, kEncryptFiles)) {
        const std::string_view rest = commandLine.substr(kEncryptFiles.size());
        if (!rest.empty()) {
            command.request = StartRequest::SetEncryptFiles;
            command.encryptArguments = std::string(rest);
        }
    } else if (StartsWithSwitch(commandLine, kDecryptFile)) {
        const std::string_view file = commandLine.substr(kDecryptFile.size());
        command.request = StartRequest::SetDecryptFile;
        command.decryptFile = std::string(file);
        command.decryptOutPath = FolderPart(file);
    } else if (StartsWithSwitch(commandLine, kUsage)) {
        command.request = StartRequest::ShowUsage;
    }
    return command;
}

std::string JoinArguments(int argc, const char* const* argv) {
    std::string joined;
    for (int i = 1; i < argc; ++i) {
        if (i > 1) {
            joined.push_back(' ');
        }
        joined += argv[i];
    }
    return joined;
}

std::string ProgramName(std::string_view argv0) {
    const std::size_t last = argv0.rfind(kSeparator);
    return std::string(last == std::string_view::npos ? argv0 : argv0.substr(last + 1));
}

} // namespace kelvora
