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

    // Open opens path for reading and learns its size; false on failure.
    [[nodiscard]] bool Open(const std::string& path);
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

// TempOutputFile writes a file under a temporary name beside its final path; Commit renames
// it to the final path once complete. Destroyed uncommitted, it removes itself, so a failed
// or cancelled job leaves nothing behind.
class TempOutputFile final : public ByteSink {
public:
    TempOutputFile() = default;
    ~TempOutputFile() override;
    TempOutputFile(const TempOutputFile&) = delete;
    TempOutputFile& operator=(const TempOutputFile&) = delete;

    // Create makes the temporary file in finalPath's folder; false on failure.
    [[nodiscard]] bool Create(const std::string& finalPath);
    bool Write(std::span<const std::uint8_t> bytes) override;
    int LastError() const override { return m_error; }

    // Commit closes the file and renames it to the final path. With replace false an
    // existing file is never replaced (the call then fails with EEXIST).
    [[nodiscard]] bool Commit(bool replace);
    // Retarget changes the final path before Commit, within the same folder (a file that
    // turned out damaged is kept under a name that says so).
    void Retarget(std::string finalPath) { m_finalPath = std::move(finalPath); }
    // Discard closes and removes the temporary file.
    void Discard();

    const std::string& TempPath() const { return m_tempPath; }

private:
    int m_fd = -1;
    int m_error = 0;
    std::string m_tempPath;
    std::string m_finalPath;
};

// PathExists is true when anything (file, folder, link) is at path.
[[nodiscard]] bool PathExists(const std::string& path);

// MakeFoldersFor creates root when missing and every missing folder of relativePath's
// parent below it, level by level; false (errno in *error) when one cannot be made or a level is
// not a folder.
[[nodiscard]] bool MakeFoldersFor(const std::string& root, const std::string& relativePath,
                                  int* error);

} // namespace kelvora
