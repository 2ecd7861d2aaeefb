#pragma once

#include "common/Result.h"
#include "files/FileError.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

namespace kelvora {

// Errno is the error of the file-system layer: the errno value of the call that failed.
using Errno = int;

// InputFile reads a file that the job must never change.
class InputFile {
public:
    InputFile() = default;
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // Open opens path for reading and learns its size. It fails with ReadFailed and errno,
    // or with NotRegularFile for a FIFO, socket or device (refused without ever blocking).
    [[nodiscard]] Result<void, FileFailure> Open(const std::string& path);
    std::int64_t Size() const { return m_size; }

    // ReadExact reads the next out.size() bytes; an early end fails with EIO.
    [[nodiscard]] Result<void, Errno> ReadExact(std::span<std::uint8_t> out);
    // ReadAt reads out.size() bytes at offset; an early end fails with EIO.
    [[nodiscard]] Result<void, Errno> ReadAt(std::int64_t offset, std::span<std::uint8_t> out);

private:
    int m_fd = -1;
    std::int64_t m_size = 0;
};

// ByteSink takes a job's output bytes; Write fails with errno.
class ByteSink {
public:
    virtual ~ByteSink() = default;
    [[nodiscard]] virtual Result<void, Errno> Write(std::span<const std::uint8_t> bytes) = 0;
};

// NullSink takes everything and keeps nothing (testing a container writes nothing).
class NullSink final : public ByteSink {
public:
    Result<void, Errno> Write(std::span<const std::uint8_t>) override { return {}; }
};

// UniqueFd owns a file descriptor and closes it when destroyed.
class UniqueFd {
public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) : m_fd(fd) {}
    ~UniqueFd() { Reset(); }
    UniqueFd(UniqueFd&& other) noexcept : m_fd(other.Release()) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept;
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;

    int Get() const { return m_fd; }
    bool Valid() const { return m_fd >= 0; }
    int Release();
    // Reset closes the descriptor it holds and takes fd instead.
    void Reset(int fd = -1);
    // Close closes the descriptor and says whether close worked (a write-back can fail
    // there); closing nothing works.
    [[nodiscard]] Result<void, Errno> Close();

private:
    int m_fd = -1;
};

// TempOutputFile writes a file that nobody sees under its final name before Commit. Where
// the file system allows, the file has no name at all until Commit links it in (O_TMPFILE),
// so even a killed process leaves nothing behind; elsewhere it is a hidden temporary file
// beside the final one, removed when the object is destroyed uncommitted.
class TempOutputFile final : public ByteSink {
public:
    TempOutputFile() = default;
    ~TempOutputFile() override;
    TempOutputFile(const TempOutputFile&) = delete;
    TempOutputFile& operator=(const TempOutputFile&) = delete;

    // Create prepares the file in finalPath's folder.
    [[nodiscard]] Result<void, Errno> Create(const std::string& finalPath);
    // CreateIn prepares the file named leaf inside the open folder.
    [[nodiscard]] Result<void, Errno> CreateIn(UniqueFd folder, const std::string& leaf);
    Result<void, Errno> Write(std::span<const std::uint8_t> bytes) override;

    // Commit gives the complete file its final name. With replace false an existing file
    // is never replaced (the call then fails with EEXIST).
    [[nodiscard]] Result<void, Errno> Commit(bool replace);
    // Retarget changes the final path before Commit, within the same folder (a file that
    // turned out damaged is kept under a name that says so).
    void Retarget(const std::string& finalPath);
    // Discard closes and removes the unfinished file.
    void Discard();

    // IsUnnamed is true while the unfinished file has no name in any folder.
    bool IsUnnamed() const { return m_tempName.empty() && m_file.Valid(); }

private:
    [[nodiscard]] bool LinkUnnamed(const std::string& name);
    [[nodiscard]] bool MoveInPlace(bool replace);

    UniqueFd m_folder;
    UniqueFd m_file;
    std::string m_leaf;
    std::string m_tempName; // empty for an unnamed file
};

// PathExists is true when anything (file, folder, link) is at path.
[[nodiscard]] bool PathExists(const std::string& path);

// OpenFolder opens path as a folder (following links: the person chose it).
[[nodiscard]] Result<UniqueFd, Errno> OpenFolder(const std::string& path);

} // namespace kelvora
