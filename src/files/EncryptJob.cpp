#include "files/EncryptJob.h"

#include "common/Ansi.h"
#include "files/ContainerIndex.h"
#include "files/ContainerWriter.h"
#include "files/StoredName.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <sys/stat.h>
#include <system_error>

namespace kelvora {

namespace {

namespace fs = std::filesystem;

// CheckStoredNames refuses, before anything is written, a name other copies could not read
// back or that no reader could restore safely.
FileJobResult CheckStoredNames(const std::vector<std::string>& names,
                               const std::vector<InputEntry>& entries) {
    std::map<std::string, std::size_t> firstWithName;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!CheckAnsi(StoredNameSource(entries[i].path, entries[i].relativePath), NulRule::Refused)
                 .ok()) {
            return Failure(FileError::NameNotStorable, i, 0, entries[i].path, 0);
        }
        if (const auto [first, added] = firstWithName.emplace(names[i], i); !added) {
            return Failure(FileError::DuplicateName, i, 0,
                           entries[first->second].path + " and " + entries[i].path, 0);
        }
        if (names[i].size() > kLongestNameBytes) {
            return Failure(FileError::NameTooLong, i, 0, entries[i].path, 0);
        }
        if (!IsSafeStoredName(names[i])) {
            return Failure(FileError::UnsafeName, i, 0, entries[i].path, 0);
        }
    }
    return {};
}

// ChosenFolderOf gives the folder a walked entry came from: its path up to the first folder
// of its relative path ("/base/dir" for "/base/dir/sub/f" with "/dir/sub/f").
std::optional<std::string> ChosenFolderOf(const InputEntry& entry) {
    if (entry.relativePath == kLoneFileRelativePath || !entry.path.ends_with(entry.relativePath)) {
        return std::nullopt;
    }
    const std::size_t base = entry.path.size() - entry.relativePath.size();
    const std::size_t firstSlash = entry.path.find(kPathSeparator, base + 1);
    return entry.path.substr(0, firstSlash);
}

bool IsSameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// OutputAmongInputs is true when the output is one of the inputs (by identity, so links
// count) or lies below a folder being encrypted, where a later run would take it in.
bool OutputAmongInputs(const std::string& output, const std::vector<InputEntry>& entries) {
    struct stat outputInfo {};
    const bool outputExists = ::stat(output.c_str(), &outputInfo) == 0;
    std::error_code error;
    const fs::path outputPath = fs::weakly_canonical(output, error);
    std::set<std::string> folders;
    for (const InputEntry& entry : entries) {
        struct stat info {};
        if (outputExists && ::stat(entry.path.c_str(), &info) == 0 &&
            IsSameFile(info, outputInfo)) {
            return true;
        }
        if (const auto folder = ChosenFolderOf(entry)) {
            folders.insert(*folder);
        }
    }
    for (const std::string& folder : folders) {
        const fs::path root = fs::weakly_canonical(folder, error);
        const auto [rootEnd, outputAt] =
            std::mismatch(root.begin(), root.end(), outputPath.begin(), outputPath.end());
        if (rootEnd == root.end()) {
            return true;
        }
    }
    return false;
}

std::int64_t PlainBytesOf(const std::vector<InputEntry>& entries) {
    std::int64_t total = 0;
    for (const InputEntry& entry : entries) {
        struct stat info {};
        if (::stat(entry.path.c_str(), &info) == 0) {
            total += info.st_size;
        }
    }
    return total;
}

// ReadableInputs keeps the entries that can be stored and names every other one: what is
// not a regular file (FIFO, socket, device: opening one could wait for ever), what cannot
// be opened, and a file that claims 0 bytes but holds data (/proc, /dev/stdin).
std::vector<InputEntry> ReadableInputs(const std::vector<InputEntry>& entries,
                                       std::vector<OmittedEntry>& omitted,
                                       FileJobObserver& observer) {
    std::vector<InputEntry> kept;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        InputFile file;
        FileFailure refused;
        std::uint8_t probe = 0;
        if (auto opened = file.Open(entries[i].path); !opened) {
            refused = opened.error();
        } else if (file.Size() == 0 && file.ReadExact(std::span(&probe, 1))) {
            refused.error = FileError::SizeUnknown;
        }
        const FileError why = refused.error;
        if (why == FileError::None) {
            kept.push_back(entries[i]);
            continue;
        }
        const int error = why == FileError::ReadFailed ? refused.systemError : 0;
        omitted.push_back(OmittedEntry{entries[i].path, why, error});
        observer.OnFileRefused(i, omitted.back());
    }
    return kept;
}

FileJobResult AppendAll(const EncryptRequest& request, const std::vector<InputEntry>& entries,
                        const std::vector<std::string>& names, ByteSink& container,
                        FileJobObserver& observer) {
    JobCipher cipher(observer);
    if (!cipher.Cipher().EncryptPrepareKey(request.key->bytes())) {
        return Failure(FileError::NothingToDo);
    }
    ParallelCompressor compressor(ParallelCompressor::WorkersForThisMachine());
    std::vector<ChunkFeed::Input> inputs;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        inputs.push_back(ChunkFeed::Input{entries[i].path, names[i].size()});
    }
    ChunkFeed feed(std::move(inputs), compressor);
    std::vector<std::int64_t> byteCounts;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const std::string& path = entries[i].path;
        observer.OnFileStarted(i, path);
        const Result<std::int64_t, FileFailure> appended = AppendFileToContainer(
            feed, names[i], container, cipher, *request.random, compressor, observer);
        if (!appended) {
            // A write that fails is the container's fault (a full disk), not the input's.
            const bool written = appended.error().error == FileError::WriteFailed;
            return Failure(appended.error(), i, written ? request.outputPath : path);
        }
        byteCounts.push_back(*appended);
        observer.OnFileDone(i, path);
    }
    if (auto written = container.Write(EncodeIndex(byteCounts)); !written) {
        return Failure(FileError::WriteFailed, 0, 0, request.outputPath, written.error());
    }
    return {};
}

std::vector<std::string> StoredNamesOf(const std::vector<InputEntry>& entries) {
    std::vector<std::string> names;
    for (const InputEntry& entry : entries) {
        names.push_back(StoredNameFor(entry.path, entry.relativePath));
    }
    return names;
}

// StorableInputs keeps the entries that can be stored; omitted gets every other one, the
// walk's passed-over entries first, each also told to the observer.
std::vector<InputEntry> StorableInputs(const EncryptRequest& request,
                                       std::vector<OmittedEntry>& omitted,
                                       FileJobObserver& observer) {
    for (const OmittedEntry& passed : request.passedOver) {
        omitted.push_back(passed);
        observer.OnFileRefused(0, passed);
    }
    return ReadableInputs(request.entries, omitted, observer);
}

FileJobResult WithOmitted(FileJobResult result, std::vector<OmittedEntry> omitted) {
    result.omitted = std::move(omitted);
    return result;
}

// Finished turns a job that did everything else into EntriesLeftOut when it left any out.
FileJobResult Finished(FileJobResult result, std::vector<OmittedEntry> omitted) {
    if (result.ok() && !omitted.empty()) {
        result = Failure(FileError::EntriesLeftOut);
    }
    return WithOmitted(std::move(result), std::move(omitted));
}

} // namespace

FileJobResult EncryptFiles(const EncryptRequest& request, FileJobObserver& observer) {
    if (request.entries.empty() || request.outputPath.empty() || request.key == nullptr ||
        request.key->empty() || request.random == nullptr) {
        return Failure(FileError::NothingToDo);
    }
    const std::vector<std::string> names = StoredNamesOf(request.entries);
    if (FileJobResult refused = CheckStoredNames(names, request.entries); !refused.ok()) {
        return refused;
    }
    if (OutputAmongInputs(request.outputPath, request.entries)) {
        return Failure(FileError::OutputIsInput, 0, 0, request.outputPath, 0);
    }
    std::error_code error;
    if (std::filesystem::is_directory(request.outputPath, error)) {
        return Failure(FileError::WriteFailed, 0, 0, request.outputPath, EISDIR);
    }
    const bool replace = PathExists(request.outputPath);
    if (replace && !observer.AskReplaceContainer(request.outputPath)) {
        return Failure(FileError::OutputExists, 0, 0, request.outputPath, 0);
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i].size() > kMaxStoredNameBytes) {
            observer.OnNameOnlyThisProgramReads(request.entries[i].path);
        }
    }
    std::vector<OmittedEntry> omitted;
    const std::vector<InputEntry> entries = StorableInputs(request, omitted, observer);
    if (entries.empty()) {
        return WithOmitted(Failure(FileError::EntriesLeftOut), std::move(omitted));
    }
    const std::vector<std::string> keptNames = StoredNamesOf(entries);
    TempOutputFile output;
    if (auto created = output.Create(request.outputPath); !created) {
        return Failure(FileError::WriteFailed, 0, 0, request.outputPath, created.error());
    }
    observer.OnJobStarted(entries.size(), PlainBytesOf(entries));
    std::unique_ptr<ByteSink> wrapped = request.wrapOutput ? request.wrapOutput(output) : nullptr;
    FileJobResult result = AppendAll(request, entries, keptNames,
                                     wrapped ? *wrapped : static_cast<ByteSink&>(output), observer);
    if (result.ok()) {
        if (auto committed = output.Commit(replace); !committed) {
            result = Failure(FileError::WriteFailed, 0, 0, request.outputPath, committed.error());
        }
    }
    return Finished(std::move(result), std::move(omitted));
}

FileJobResult EncryptFilesTo(const EncryptRequest& request, ByteSink& sink,
                             FileJobObserver& observer) {
    if (request.entries.empty() || request.key == nullptr || request.key->empty() ||
        request.random == nullptr) {
        return Failure(FileError::NothingToDo);
    }
    if (FileJobResult refused = CheckStoredNames(StoredNamesOf(request.entries), request.entries);
        !refused.ok()) {
        return refused;
    }
    std::vector<OmittedEntry> omitted;
    const std::vector<InputEntry> entries = StorableInputs(request, omitted, observer);
    if (entries.empty()) {
        return WithOmitted(Failure(FileError::EntriesLeftOut), std::move(omitted));
    }
    observer.OnJobStarted(entries.size(), PlainBytesOf(entries));
    FileJobResult result = AppendAll(request, entries, StoredNamesOf(entries), sink, observer);
    return Finished(std::move(result), std::move(omitted));
}

} // namespace kelvora
