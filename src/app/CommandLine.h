#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvora {

// What the command line asks the main window to do at start.
enum class StartRequest {
    Nothing,         // no switch, an unknown one, or "/setEncrFiles " with nothing after it
    OpenEncryptPage, // "/filee": the files page on its encrypt tab
    OpenDecryptPage, // "/filed": the files page on its decrypt tab
    SetEncryptFiles, // "/setEncrFiles <list of files> /outputfile <file>"
    SetDecryptFile,  // "/setDecrFile <file>"
    OpenTextPage,    // "/text": the text page
    ShowUsage,       // "/?"
};

struct StartCommand {
    StartRequest request = StartRequest::Nothing;
    std::string encryptArguments;          // SetEncryptFiles: everything after the switch, as typed
    std::string decryptFile;               // SetDecryptFile: the container, as typed
    std::string decryptOutPath;            // SetDecryptFile: decryptFile up to its last "/" (kept)
    std::vector<std::string> encryptFiles; // SetEncryptFiles: the files and folders, in order
    std::string encryptOutput;             // SetEncryptFiles: the output container, or ""

    bool operator==(const StartCommand&) const = default;
};

// ParseCommandLine reads the whole argument string of the program as one text. Only the
// switch word is compared without regard to case, by its fixed-length prefix ("/fileeXYZ"
// counts as "/filee"); the argument keeps its case, and no quotes are stripped. Anything
// it does not recognise gives StartRequest::Nothing; it cannot fail.
[[nodiscard]] StartCommand ParseCommandLine(std::string_view commandLine);

// ParseArguments reads the program's arguments as the system passes them, one word each, so
// a path with blanks stays one path: "/setEncrFiles" takes the words up to "/outputfile" as
// the files and the rest as the output, "/setDecrFile" takes the rest as the container. The
// switch words are compared without regard to case. A single word is read as a whole command
// line (ParseCommandLine), as a caller that passes everything in one string expects. It
// cannot fail.
[[nodiscard]] StartCommand ParseArguments(const std::vector<std::string>& words);

// ProgramName is the name the program runs under, without its folder.
[[nodiscard]] std::string ProgramName(std::string_view argv0);

} // namespace kelvora
