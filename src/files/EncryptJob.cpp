#include "files/EncryptJob.h"

#include "files/ContainerIndex.h"
#include "files/ContainerWriter.h"
#include "files/StoredName.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>

namespace kelvora {

namespace {

// CheckStoredNames refuses, before anything is written, a name other copies could not read
// back or that no reader could restore safely.
FileJobResult CheckStoredNames(const std::vector<std::string>& names,
                               const std::vector<InputEntry>& entries) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i].size() > kMaxStoredNameBytes) {
            return Failure(FileError::NameTooLong, i, 0, entries[i].path, 0);
        }
        if (!IsSafeStoredName(names[i])) {
            return Failure(FileError::UnsafeName, i, 0, entries[i].path, 0);
        }
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

FileJobResult AppendAll(const EncryptRequest& request, const std::vector<std::string>& names,
                        ByteSink& container, FileJobObserver& observer) {
    JobCipher cipher(observer);
    if (!cipher.Cipher().EncryptPrepareKey(request.key->bytes())) {
        return Failure(FileError::NothingToDo);
    }
    ParallelCompressor compressor(ParallelCompressor::WorkersForThisMachine());
    std::vector<ChunkFeed::Input> inputs;
    for (std::size_t i = 0; i < request.entries.size(); ++i) {
        inputs.push_back(ChunkFeed::Input{request.entries[i].path, names[i].size()});
    }
    ChunkFeed feed(std::move(inputs), compressor);
    std::vector<std::int64_t> byteCounts;
    for (std::size_t i = 0; i < request.entries.size(); ++i) {
        const std::string& path = request.entries[i].path;
        observer.OnFileStarted(i, path);
        const AppendResult appended = AppendFileToContainer(feed, names[i], container, cipher,
                                                            *request.random, compressor, observer);
        if (appended.error != FileError::None) {
            return Failure(appended.error, i, appended.chunk, path, appended.systemError);
        }
        byteCounts.push_back(appended.byteCount);
        observer.OnFileDone(i, path);
    }
    if (!container.Write(EncodeIndex(byteCounts))) {
        return Failure(FileError::WriteFailed, 0, 0, request.outputPath, container.LastError());
    }
    return {};
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
    std::error_code error;
    if (std::filesystem::is_directory(request.outputPath, error)) {
        return Failure(FileError::WriteFailed, 0, 0, request.outputPath, EISDIR);
    }
    const bool replace = PathExists(request.outputPath);
    if (replace && !observer.AskReplaceContainer(request.outputPath)) {
        return Failure(FileError::OutputExists, 0, 0, request.outputPath, 0);
    }
    TempOutputFile output;
    if (!output.Create(request.outputPath)) {
        return Failure(FileError::WriteFailed, 0, 0, request.outputPath, output.LastError());
    }
    observer.OnJobStarted(request.entries.size(), PlainBytesOf(request.entries));
    std::unique_ptr<ByteSink> wrapped = request.wrapOutput ? request.wrapOutput(output) : nullptr;
    FileJobResult result =
        AppendAll(request, names, wrapped ? *wrapped : static_cast<ByteSink&>(output), observer);
    if (result.ok() && !output.Commit(replace)) {
        result = Failure(FileError::WriteFailed, 0, 0, request.outputPath, output.LastError());
    }
    return result;
}

FileJobResult EncryptFilesTo(const EncryptRequest& request, ByteSink& sink,
                             FileJobObserver& observer) {
    if (request.entries.empty() || request.key == nullptr || request.key->empty() ||
        request.random == nullptr) {
        return Failure(FileError::NothingToDo);
    }
    const std::vector<std::string> names = StoredNamesOf(request.entries);
    if (FileJobResult refused = CheckStoredNames(names, request.entries); !refused.ok()) {
        return refused;
    }
    observer.OnJobStarted(request.entries.size(), PlainBytesOf(request.entries));
    return AppendAll(request, names, sink, observer);
}

} // namespace kelvora
