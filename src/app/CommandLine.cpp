#include "app/CommandLine.h"

#include "files/InputList.h"

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

bool IsSwitch(std::string_view word, std::string_view switchWord) {
    return word.size() == switchWord.size() && StartsWithSwitch(word, switchWord);
}

std::string JoinWords(const std::vector<std::string>& words, std::size_t first, std::size_t end) {
    std::string joined;
    for (std::size_t i = first; i < end; ++i) {
        if (i > first) {
            joined.push_back(' ');
        }
        joined += words[i];
    }
    return joined;
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
    constexpr std::string_view kTextPage = "/text";
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
            FileListArgument split = SplitFileListArgument(rest);
            command.encryptFiles = std::move(split.files);
            command.encryptOutput = std::move(split.outputFile);
        }
    } else if (StartsWithSwitch(commandLine, kDecryptFile)) {
        const std::string_view file = commandLine.substr(kDecryptFile.size());
        command.request = StartRequest::SetDecryptFile;
        command.decryptFile = std::string(file);
        command.decryptOutPath = FolderPart(file);
    } else if (StartsWithSwitch(commandLine, kTextPage)) {
        command.request = StartRequest::OpenTextPage;
    } else if (StartsWithSwitch(commandLine, kUsage)) {
        command.request = StartRequest::ShowUsage;
    }
    return command;
}

StartCommand ParseArguments(const std::vector<std::string>& words) {
    constexpr std::string_view kEncryptFiles = "/setencrfiles";
    constexpr std::string_view kOutputFile = "/outputfile";
    constexpr std::string_view kDecryptFile = "/setdecrfile";
    if (words.size() < 2) {
        return ParseCommandLine(words.empty() ? std::string_view() : words.front());
    }
    StartCommand command;
    if (IsSwitch(words[0], kEncryptFiles)) {
        command.request = StartRequest::SetEncryptFiles;
        command.encryptArguments = JoinWords(words, 1, words.size());
        std::size_t i = 1;
        for (; i < words.size() && !IsSwitch(words[i], kOutputFile); ++i) {
            command.encryptFiles.push_back(words[i]);
        }
        command.encryptOutput = i < words.size() ? JoinWords(words, i + 1, words.size()) : "";
    } else if (IsSwitch(words[0], kDecryptFile)) {
        command.request = StartRequest::SetDecryptFile;
        command.decryptFile = JoinWords(words, 1, words.size());
        command.decryptOutPath = FolderPart(command.decryptFile);
    } else {
        command = ParseCommandLine(JoinWords(words, 0, words.size()));
    }
    return command;
}

std::string ProgramName(std::string_view argv0) {
    const std::size_t last = argv0.rfind(kSeparator);
    return std::string(last == std::string_view::npos ? argv0 : argv0.substr(last + 1));
}

} // namespace kelvora
