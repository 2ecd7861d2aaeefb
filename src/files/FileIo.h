#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

namespace kelvora {

// InputFile reads a file that the job must never change. Every call reports failure by
// its result and keeps errno in LastError.
class InputFile {
public:
    InputFile() = default;
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // Open opens path for reading and learns its size; false on failure. Only regular files
    // are opened: a FIFO, socket or device is refused (NotRegular) without ever blocking.
    [[nodiscard]] bool Open(const std::string& path);
    bool NotRegular() const { return m_notRegular; }
    std::int64_t Size() const { return m_size; }

    // ReadExact reads the next out.size() bytes; false on failure or an early end.
    [[nodiscard]] bool ReadExact(std::span<std::uint8_t> out);
    // ReadAt reads out.size() bytes at offset; false on failure or an early end.
    [[nodiscard]] bool ReadAt(std::int64_t offset, std::span<std::uint8_t> out);

    int LastError() const { return m_error; }

private:
    int m_fd = -1;
    std::int64_t m_size = 0;
    int m_error = 0;
    bool m_notRegular = false;
};

// ByteSink takes a job's output bytes. Write gives false on failure, with errno in
// LastError.
class ByteSink {
public:
    virtual ~ByteSink() = default;
    [[nodiscard]] virtual bool Write(std::span<const std::uint8_t> bytes) = 0;
    virtual int LastError() const { return 0; }
};

// NullSink takes everything and keeps nothing (testing a container writes nothing).
class NullSink final : public ByteSink {
public:
    bool Write(std::span<const std::uint8_t>) override { return true; }
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
    // Reset closes the descriptor; it gives close's result (0 when there was none).
    int Reset(int fd = -1);

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

    // Create prepares the file in finalPath's folder; false (errno in LastError) on failure.
    [[nodiscard]] bool Create(const std::string& finalPath);
    // CreateIn prepares the file named leaf inside the open folder.
    [[nodiscard]] bool CreateIn(UniqueFd folder, const std::string& leaf);
    bool Write(std::span<const std::uint8_t> bytes) override;
    int LastError() const override { return m_error; }

    // Commit gives the complete file its final name. With replace false an existing file
    // is never replaced (the call then fails with EEXIST).
    [[nodiscard]] bool Commit(bool replace);
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
    int m_error = 0;
    std::string m_leaf;
    std::string m_tempName; // empty for an unnamed file
};

// PathExists is true when anything (file, folder, link) is at path.
[[nodiscard]] bool PathExists(const std::string& path);

// OpenFolder opens path as a folder (following links: the person chose it); -1 on failure.
[[nodiscard]] UniqueFd OpenFolder(const std::string& path);

} // namespace kelvora
