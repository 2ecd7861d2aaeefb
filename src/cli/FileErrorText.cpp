#include "cli/FileErrorText.h"

#include <cstring>

namespace kelvora::cli {
namespace {

std::string WithSystemError(std::string text, int systemError) {
    if (systemError != 0) {
        text += ": ";
        text += std::strerror(systemError);
    }
    return text;
}

// Refused and LeftOut say what became of one named entry, and why.
std::string Refused(const FileJobResult& result, std::string_view why) {
    return result.name + ": refused, " + std::string(why);
}

std::string LeftOut(const FileJobResult& result, std::string_view why) {
    return result.name + ": left out, " + std::string(why);
}

// WhichFile names a file of a container by its place and, when known, its stored name.
std::string WhichFile(const FileJobResult& result) {
    std::string text = "file " + std::to_string(result.fileIndex + 1);
    if (!result.name.empty()) {
        text += " (" + result.name + ")";
    }
    return text;
}

} // namespace

std::string ExistsAlready(const std::string& name, std::string_view options) {
    return name + " exists already" +
           (options.empty() ? std::string() : " (use " + std::string(options) + ")");
}

std::string FileFailure(FileError error, const std::string& path, int systemError) {
    return FileErrorMessage(Failure(error, 0, 0, path, systemError));
}

std::string LeftOutSummary(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " entry was" : " entries were") +
           " left out (named above)";
}

std::string FileErrorMessage(const FileJobResult& result) {
    switch (result.error) {
    case FileError::None:
        return {};
    case FileError::NothingToDo:
        return "nothing to do: no files, no output name or no passphrase";
    case FileError::OutputExists:
        if (result.name.empty()) {
            return std::to_string(result.omitted.size()) +
                   (result.omitted.size() == 1 ? " file exists" : " files exist") +
                   " already (use " + std::string(kExistingFileOptions) + "); nothing was written";
        }
        return ExistsAlready(result.name, kForceToReplace);
    case FileError::OutputIsInput:
        return Refused(result, "the container would be one of the inputs or lie in a "
                               "folder being encrypted");
    case FileError::NameTooLong:
        return Refused(result, "a name longer than 255 bytes (other copies of Kelvora "
                               "cannot read it, Linux cannot create it)");
    case FileError::UnsafeName:
        return Refused(result, "its stored name would leave the output folder or holds "
                               "control characters");
    case FileError::LinkInPath:
        return WithSystemError(
            Refused(result, "a folder on its way is a symbolic link or no folder"),
            result.systemError);
    case FileError::EntriesLeftOut:
        return LeftOutSummary(result.omitted.size());
    case FileError::NotRegularFile:
        return Refused(result, "not a regular file (a FIFO, socket or device)");
    case FileError::SizeUnknown:
        return Refused(result, "its size is not known in advance (it reads 0 bytes "
                               "but holds data)");
    case FileError::LinkToFolder:
        return LeftOut(result, "a symbolic link to a folder (not followed)");
    case FileError::EmptyFolder:
        return LeftOut(result, "an empty folder (a container holds files only)");
    case FileError::NameNotStorable:
        return Refused(result, "its name holds characters a container cannot store "
                               "(outside Windows-1252); nothing was written");
    case FileError::DuplicateName:
        return Refused(result, "both would be stored under the same name; nothing "
                               "was written");
    case FileError::ReadFailed:
        return WithSystemError("cannot read " + result.name, result.systemError);
    case FileError::WriteFailed:
        return WithSystemError("cannot write " + result.name, result.systemError);
    case FileError::NoUsableContent:
        return result.name + ": file has no usable content (not a Kelvora container, or damaged)";
    case FileError::WrongPassphrase:
        return "wrong passphrase";
    case FileError::DamagedData:
        return WhichFile(result) + ", chunk " + std::to_string(result.chunk) + " is damaged";
    case FileError::CompressFailed:
        return "cannot compress " + result.name;
    case FileError::Cancelled:
        return "cancelled";
    }
    return "unknown error";
}

} // namespace kelvora::cli
