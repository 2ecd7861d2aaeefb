#pragma once

#include "common/Bytes.h"
#include "common/FixedRandom.h"
#include "common/Random.h"
#include "common/TempFolder.h"
#include "files/FileError.h"
#include "files/FileIo.h"
#include "files/FileJobObserver.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
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

// PatternBytes gives reproducible bytes: random-looking (incompressible) or text-like.
Bytes PatternBytes(std::size_t count, std::uint32_t seed, bool compressible = false);

// FilesBelow lists every file below folder as relative paths, sorted.
std::vector<std::string> FilesBelow(const std::string& folder);

// ScriptedObserver answers the jobs' questions from its fields and records what it saw.
class ScriptedObserver : public FileJobObserver {
public:
    bool replaceContainer = false;
    ExistingFileAnswer existingFile = ExistingFileAnswer::Cancel;
    std::optional<std::string> anotherName;
    // cancelAfterEvents cancels once LetEventsRun was called this often (-1: never).
    int cancelAfterEvents = -1;

    int events = 0;
    int questions = 0;
    std::vector<std::string> done;
    std::vector<std::string> refused;

    bool CancelRequested() override {
        return cancelAfterEvents >= 0 && events >= cancelAfterEvents;
    }
    void LetEventsRun() override { ++events; }
    void OnFileDone(std::size_t, const std::string& path) override { done.push_back(path); }
    void OnFileRefused(std::size_t, const std::string& name, FileError) override {
        refused.push_back(name);
    }
    bool AskReplaceContainer(const std::string&) override {
        ++questions;
        return replaceContainer;
    }
    ExistingFileAnswer AskExistingFile(const std::string&) override {
        ++questions;
        return existingFile;
    }
    std::optional<std::string> AskAnotherName(const std::string&) override { return anotherName; }
};

// VectorSink keeps what is written; failAfter bytes (when set) makes later writes fail.
class VectorSink final : public ByteSink {
public:
    explicit VectorSink(std::int64_t failAfter = -1) : m_failAfter(failAfter) {}
    bool Write(std::span<const std::uint8_t> bytes) override;
    int LastError() const override { return m_failed ? 28 : 0; }
    Bytes bytes;

private:
    std::int64_t m_failAfter;
    bool m_failed = false;
};

inline constexpr const char* kPassphrase = "correct horse battery staple";

// EncryptPaths adds paths to an input list as the CLI does and encrypts them to output.
FileJobResult EncryptPaths(const std::vector<std::string>& paths, const std::string& output,
                           FileJobObserver& observer, const char* passphrase = kPassphrase);
FileJobResult DecryptTo(const std::string& container, const std::string& folder,
                        FileJobObserver& observer, const char* passphrase = kPassphrase);

// StoredFile is one file of a hand-built container: any stored name, even a hostile one.
struct StoredFile {
    std::string ansiName;
    Bytes data;
};

// BuildContainer writes the records of files under the passphrase, then the index of
// byteCounts (the files' real counts when empty), as another copy of the program could.
Bytes BuildContainer(const std::vector<StoredFile>& files,
                     std::vector<std::int64_t> byteCounts = {},
                     const char* passphrase = kPassphrase);

} // namespace kelvora::testing
