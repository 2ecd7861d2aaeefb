#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace kelvora {

// FileError is how a file job ends. The window maps it to a catalogue message and the CLI
// to its own line, each in exactly one function.
enum class FileError {
    None,
    NothingToDo,     // empty list, output name or passphrase
    OutputExists,    // the output container exists and was not to be replaced
    OutputIsInput,   // the output would be one of the inputs or inside a folder encrypted
    NameTooLong,     // a stored name longer than 255 bytes
    UnsafeName,      // a stored name that would leave the output folder
    LinkInPath,      // a folder on a stored name's way is a symbolic link (or no folder)
    ReadFailed,      // an input file or the container could not be read
    NotRegularFile,  // a FIFO, socket or device where a file is needed
    SizeUnknown,     // a file whose size reads 0 but that holds data (/proc, a pipe)
    LinkToFolder,    // a symbolic link to a folder inside a folder being encrypted
    EmptyFolder,     // a folder without entries: the format holds files only
    NameNotStorable, // a name with characters Windows-1252 lacks (they would become "?")
    DuplicateName,   // two entries with the same stored name
    WriteFailed,     // the output could not be written, renamed or its folder made
    NoUsableContent, // the container is too short or its index is garbled
    WrongPassphrase, // the first record does not decrypt to a consistent header
    DamagedData,     // a record that does not decrypt or decompress
    CompressFailed,  // zlib could not compress a chunk
    Cancelled,
    EntriesLeftOut, // the job did everything else, but some entries were left out (named)
};

// FileFailure is the error of a step inside a file job: what went wrong, the chunk it
// happened at (from 1, where it matters) and errno for file-system errors.
struct FileFailure {
    FileError error = FileError::None;
    std::int64_t chunk = 0;
    int systemError = 0;
};

// OmittedEntry is one entry a job left out: its name as shown to a person and why.
struct OmittedEntry {
    std::string name;
    FileError why = FileError::None;
    int systemError = 0;
};

// FileJobResult is the outcome of a whole job. For errors tied to one file, fileIndex and
// name tell which (name as shown to a person, UTF-8), chunk counts from 1 where it matters,
// and systemError holds errno for file-system errors.
struct FileJobResult {
    FileError error = FileError::None;
    std::size_t fileIndex = 0;
    std::int64_t chunk = 0;
    std::string name;
    int systemError = 0;
    // omitted names every entry left out, also when the job failed later for another reason.
    std::vector<OmittedEntry> omitted;

    bool ok() const { return error == FileError::None; }
};

// Failure builds the result of a job that ended with error.
inline FileJobResult Failure(FileError error, std::size_t fileIndex = 0, std::int64_t chunk = 0,
                             std::string name = {}, int systemError = 0) {
    return FileJobResult{error, fileIndex, chunk, std::move(name), systemError, {}};
}

// Failure builds the result of a job that ended with a step's failure.
inline FileJobResult Failure(const FileFailure& failure, std::size_t fileIndex,
                             std::string name = {}) {
    return Failure(failure.error, fileIndex, failure.chunk, std::move(name), failure.systemError);
}

} // namespace kelvora
