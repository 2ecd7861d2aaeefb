#include "files/FileIo.h"

#include "common/Random.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace kelvora {

namespace {

constexpr int kTempNameAttempts = 16;

std::string RandomSuffix() {
    std::array<std::uint8_t, 6> bytes{};
    SystemRandom().Fill(bytes.data(), bytes.size());
    static constexpr char kHex[] = "0123456789abcdef";
    std::string suffix;
    for (const std::uint8_t b : bytes) {
        suffix.push_back(kHex[b >> 4]);
        suffix.push_back(kHex[b & 15]);
    }
    return suffix;
}

// TempNameBeside hides the temporary file in the final file's folder ("dir/.name.XXXX.part").
std::string TempNameBeside(const std::string& finalPath) {
    const std::size_t slash = finalPath.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : finalPath.substr(0, slash + 1);
    const std::string name = slash == std::string::npos ? finalPath : finalPath.substr(slash + 1);
    // Keep the temporary name within the usual 255-byte limit of a file name.
    return folder + "." + name.substr(0, 200) + "." + RandomSuffix() + ".part";
}

// MoveAll calls io(done) until total bytes are read or written; io returns what read, pread
// or write return. An early end counts as EIO.
template <typename Io> bool MoveAll(std::size_t total, int& error, Io io) {
    std::size_t done = 0;
    while (done < total) {
        const ssize_t moved = io(done);
        if (moved < 0 && errno == EINTR) {
            continue;
        }
        if (moved <= 0) {
            error = moved == 0 ? EIO : errno;
            return false;
        }
        done += static_cast<std::size_t>(moved);
    }
    return true;
}

// RenameWithoutReplacing never replaces a file that appeared meanwhile. File systems without
// RENAME_NOREPLACE get the same guarantee from a hard link, which fails when the name exists.
bool RenameWithoutReplacing(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return false;
    }
    if (::link(from.c_str(), to.c_str()) != 0) {
        return false;
    }
    ::unlink(from.c_str());
    return true;
}

} // namespace

InputFile::~InputFile() {
    if (m_fd >= 0) {
        ::close(m_fd);
    }
}

bool InputFile::Open(const std::string& path) {
    m_fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat info {};
    if (m_fd < 0 || ::fstat(m_fd, &info) != 0) {
        m_error = errno;
        return false;
    }
    if (S_ISDIR(info.st_mode)) {
        m_error = EISDIR;
        return false;
    }
    m_size = info.st_size;
    ::posix_fadvise(m_fd, 0, 0, POSIX_FADV_SEQUENTIAL);
    return true;
}

bool InputFile::ReadExact(std::span<std::uint8_t> out) {
    return MoveAll(out.size(), m_error, [&](std::size_t done) {
        return ::read(m_fd, out.data() + done, out.size() - done);
    });
}

bool InputFile::ReadAt(std::int64_t offset, std::span<std::uint8_t> out) {
    return MoveAll(out.size(), m_error, [&](std::size_t done) {
        return ::pread(m_fd, out.data() + done, out.size() - done,
                       static_cast<off_t>(offset) + static_cast<off_t>(done));
    });
}

TempOutputFile::~TempOutputFile() {
    Discard();
}

bool TempOutputFile::Create(const std::string& finalPath) {
    m_finalPath = finalPath;
    for (int attempt = 0; attempt < kTempNameAttempts; ++attempt) {
        m_tempPath = TempNameBeside(finalPath);
        m_fd = ::open(m_tempPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_fd >= 0) {
            return true;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    m_error = errno;
    m_tempPath.clear();
    return false;
}

bool TempOutputFile::Write(std::span<const std::uint8_t> bytes) {
    return MoveAll(bytes.size(), m_error, [&](std::size_t done) {
        return ::write(m_fd, bytes.data() + done, bytes.size() - done);
    });
}

bool TempOutputFile::Commit(bool replace) {
    const int closed = ::close(m_fd);
    m_fd = -1;
    if (closed != 0) {
        m_error = errno;
        return false;
    }
    if (!(replace ? ::rename(m_tempPath.c_str(), m_finalPath.c_str()) == 0
                  : RenameWithoutReplacing(m_tempPath, m_finalPath))) {
        m_error = errno;
        return false;
    }
    m_tempPath.clear();
    return true;
}

void TempOutputFile::Discard() {
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
    if (!m_tempPath.empty()) {
        ::unlink(m_tempPath.c_str());
        m_tempPath.clear();
    }
}

bool PathExists(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

bool MakeFoldersFor(const std::string& root, const std::string& relativePath, int* error) {
    std::error_code made;
    std::filesystem::create_directories(root, made);
    std::string folder = root;
    std::size_t start = 0;
    for (std::size_t slash = relativePath.find('/'); slash != std::string::npos;
         slash = relativePath.find('/', start)) {
        folder += '/';
        folder += relativePath.substr(start, slash - start);
        start = slash + 1;
        struct stat info {};
        if (::stat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) {
            continue;
        }
        if (::mkdir(folder.c_str(), 0777) != 0) {
            *error = errno;
            return false;
        }
    }
    return true;
}

} // namespace kelvora
