#pragma once

#include "common/Bytes.h"
#include "common/TempFolder.h"
#include "common/TestBytes.h"
#include "files/ContainerSession.h"
#include "files/FileError.h"
#include "files/FileIo.h"
#include "files/FileJobObserver.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kelvora::testing {

// ScratchFolder is a TempFolder spoken to in the engine's own terms: paths as strings.
class ScratchFolder {
public:
    std::string Path() const { return m_folder.path().string(); }
    std::string operator/(const std::string& relative) const { return Path() + "/" + relative; }

private:
    TempFolder m_folder;
};

// WriteFile creates path's folders and writes bytes to it.
void WriteFile(const std::string& path, const Bytes& bytes);
Bytes ReadFile(const std::string& path);

// FilesBelow lists every file below folder as relative paths, sorted.
std::vector<std::string> FilesBelow(const std::string& folder);

// Tree is every file below a folder (relative path) with its contents, but "c.vexo", the
// container the tests read from.
using Tree = std::map<std::string, std::string>;
Tree TreeBelow(const std::string& folder);
// TreeOf reads a tree written as "path=contents" entries, separated by ", ".
Tree TreeOf(std::string_view entries);

// ScriptedObserver answers the jobs' questions from its fields.
class ScriptedObserver : public FileJobObserver {
public:
    bool replaceContainer = false;
    ExistingFileAnswer existingFile = ExistingFileAnswer::Cancel;
    std::optional<std::string> anotherName;
    // cancelAfterChunk cancels once the job reported this chunk of a file done (0: never),
    // cancelAtFile once it started restoring this file (from 0; -1: never).
    std::int64_t cancelAfterChunk = 0;
    int cancelAtFile = -1;
    int warnings = 0; // names only this program reads back

    bool CancelRequested() override { return m_cancel; }
    void OnProgress(std::int64_t chunk) override {
        m_cancel = m_cancel || (cancelAfterChunk > 0 && chunk >= cancelAfterChunk);
    }
    void OnFileStarted(std::size_t index, const std::string&) override {
        m_cancel = m_cancel || std::cmp_equal(index, cancelAtFile);
    }
    void OnNameOnlyThisProgramReads(const std::string&) override { ++warnings; }
    bool AskReplaceContainer(const std::string&) override { return replaceContainer; }
    ExistingFileAnswer AskExistingFile(const std::string&) override { return existingFile; }
    std::optional<std::string> AskAnotherName(const std::string&) override { return anotherName; }

private:
    bool m_cancel = false;
};

inline constexpr const char* kPassphrase = "correct horse battery staple";

// EncryptPaths adds paths to an input list as the CLI does and encrypts them to output, through
// wrapOutput's sink when given.
using WrapOutput = std::function<std::unique_ptr<ByteSink>(ByteSink&)>;
FileJobResult EncryptPaths(const std::vector<std::string>& paths, const std::string& output,
                           FileJobObserver& observer, WrapOutput wrapOutput = {});
FileJobResult DecryptTo(const std::string& container, const std::string& folder,
                        FileJobObserver& observer, const char* passphrase = kPassphrase,
                        DecodeWorkers workers = std::nullopt);

// StoredFile is one file of a hand-built container: any stored name, even a hostile one.
struct StoredFile {
    std::string ansiName;
    Bytes data;
};

// BuildContainer writes the records of files, then the index of byteCounts (the files' real
// counts when empty), as another copy of the program could, with blocks from zlib's one-shot
// compress at its default level.
Bytes BuildContainer(const std::vector<StoredFile>& files,
                     std::vector<std::int64_t> byteCounts = {});

// RecordOffsets gives where the first `count` records of a container start, read from their
// length fields.
std::vector<std::size_t> RecordOffsets(const Bytes& container, std::size_t count);

} // namespace kelvora::testing
