#pragma once

#include <string>
#include <string_view>

namespace kelvora {

// What the command line asks the main window to do at start.
enum class StartRequest {
    Nothing,         // no switch, an unknown one, or "/setEncrFiles " with nothing after it
    OpenEncryptPage, // "/filee": the files page on its encrypt tab
    OpenDecryptPage, // "/filed": the files page on its decrypt tab
    SetEncryptFiles, // "/setEncrFiles <list of files> /outputfile <file>"
    SetDecryptFile,  // "/setDecrFile <file>"
    ShowUsage,       // "/?"
};

struct StartCommand {
    StartRequest request = StartRequest::Nothing;
    std::string encryptArguments; // SetEncryptFiles: everything after the switch, as typed
    std::string decryptFile;      // SetDecryptFile: the container, as typed
    std::string decryptOutPath;   // SetDecryptFile: decryptFile up to its last "/" (kept)

    bool operator==(const StartCommand&) const = default;
};

// ParseCommandLine reads the whole argument string of the program as one text. Only the
// switch word is compared without regard to case, by its fixed-length prefix ("/fileeXYZ"
// counts as "/filee"); the argument keeps its case, and no quotes are stripped. Anything
// it does not recognise gives StartRequest::Nothing; it cannot fail.
[[nodiscard]] StartCommand ParseCommandLine(std::string_view commandLine);

// JoinArguments rebuilds the one argument string from the words the system split it into
// (joined by single blanks), which is the text ParseCommandLine reads.
[[nodiscard]] std::string JoinArguments(int argc, const char* const* argv);

// ProgramName is the name the program runs under, without its folder.
[[nodiscard]] std::string ProgramName(std::string_view argv0);

} // namespace kelvora
