#pragma once

#include "common/JobObserver.h"
#include "files/FileError.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace kelvora {

// What to do with an output file that exists already.
enum class ExistingFileAnswer {
    Overwrite,   // replace it once the new file is complete
    AnotherName, // ask for another name (AskAnotherName)
    Skip,        // do not restore this file
    Rename,      // restore it as "name (2).ext", the first number that is free
    Cancel,      // end the job
};

// FileJobObserver adds to JobObserver what the file jobs report and ask: file and byte
// progress, questions about existing files, and the cancel request. The window answers
// from dialogs, the CLI from its options. The defaults report nothing and never replace.
class FileJobObserver : public JobObserver {
public:
    // CancelRequested is polled between chunks and at every LetEventsRun.
    virtual bool CancelRequested() { return false; }

    // The files of the job: started (count and total work known) and each file's turn,
    // index from 0. Work counts plain input bytes when encrypting and container bytes when
    // reading a container; OnBytesDone adds to it.
    virtual void OnJobStarted(std::size_t fileCount, std::int64_t totalBytes) {
        (void)fileCount;
        (void)totalBytes;
    }
    virtual void OnFileStarted(std::size_t index, const std::string& name) {
        (void)index;
        (void)name;
    }
    // OnFileDone names the file written (decryption) or read (encryption).
    virtual void OnFileDone(std::size_t index, const std::string& path) {
        (void)index;
        (void)path;
    }
    // OnFileRefused reports a file the job passed over, such as an unsafe stored name, with
    // why and, for a file that could not be read, the system's reason.
    virtual void OnFileRefused(std::size_t index, const OmittedEntry& refused) {
        (void)index;
        (void)refused;
    }
    // OnFileSkipped reports a file not restored because its path exists already.
    virtual void OnFileSkipped(std::size_t index, const std::string& path) {
        (void)index;
        (void)path;
    }
    // OnNameOnlyThisProgramReads warns that a file's stored name is longer than 255 bytes:
    // it is stored as the format says (byte 33 holds its length modulo 256), so this program
    // restores it, other copies cannot.
    virtual void OnNameOnlyThisProgramReads(const std::string& path) { (void)path; }
    // OnBytesDone adds the bytes just worked through, for a bytes-and-speed display.
    virtual void OnBytesDone(std::int64_t bytes) { (void)bytes; }

    // AskReplaceContainer: the output container exists; true replaces it when the new one
    // is complete.
    virtual bool AskReplaceContainer(const std::string& path) {
        (void)path;
        return false;
    }
    // AskExistingFile: a file to restore exists already, or two files of the container
    // have the same name. Every such question is asked before anything is written.
    virtual ExistingFileAnswer AskExistingFile(const std::string& path) {
        (void)path;
        return ExistingFileAnswer::Cancel;
    }
    // AskAnotherName gives the path to restore to instead, or nothing to skip the file.
    virtual std::optional<std::string> AskAnotherName(const std::string& path) {
        (void)path;
        return std::nullopt;
    }
};

} // namespace kelvora
