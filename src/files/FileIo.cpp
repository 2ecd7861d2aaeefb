#include "files/FileIo.h"

#include "common/Hex.h"
#include "common/Random.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kelvora {

namespace {

constexpr int kTempNameAttempts = 16;

std::string RandomSuffix() {
    std::array<std::uint8_t, 6> bytes{};
    SystemRandom().Fill(bytes.data(), bytes.size());
    return HexFromBytes(bytes);
}

// HiddenTempName is the fallback temporary name beside the final file (".name.XXXX.part").
std::string HiddenTempName(const std::string& leaf) {
    // Keep the temporary name within the usual 255-byte limit of a file name.
    return "." + leaf.substr(0, 200) + "." + RandomSuffix() + ".part";
}

// SplitFolderAndLeaf cuts a path before its last "/" ("." when it has none).
std::pair<std::string, std::string> SplitFolderAndLeaf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return {".", path};
    }
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

// MoveAll calls io(done) until total bytes are read or written; io returns what read, pread
// or write return. An early end counts as EIO.
template <typename Io> Result<void, Errno> MoveAll(std::size_t total, Io io) {
    std::size_t done = 0;
    while (done < total) {
        const ssize_t moved = io(done);
        if (moved < 0 && errno == EINTR) {
            continue;
        }
        if (moved <= 0) {
            return Fail(moved == 0 ? EIO : errno);
        }
        done += static_cast<std::size_t>(moved);
    }
    return {};
}

// RenameWithoutReplacing never replaces a file that appeared meanwhile. File systems without
// RENAME_NOREPLACE get the same guarantee from a hard link, which fails when the name exists.
bool RenameWithoutReplacing(int folder, const std::string& from, const std::string& to) {
    if (::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return false;
    }
    if (::linkat(folder, from.c_str(), folder, to.c_str(), 0) != 0) {
        return false;
    }
    ::unlinkat(folder, from.c_str(), 0);
    return true;
}

} // namespace

InputFile::~InputFile() {
    if (m_fd >= 0) {
        ::close(m_fd);
    }
}

Result<void, FileFailure> InputFile::Open(const std::string& path) {
    // O_NONBLOCK: opening a FIFO without a writer must not wait; regular files ignore it.
    m_fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    struct stat info {};
    if (m_fd < 0 || ::fstat(m_fd, &info) != 0) {
        return Fail(FileFailure{FileError::ReadFailed, 0, errno});
    }
    if (S_ISDIR(info.st_mode)) {
        return Fail(FileFailure{FileError::ReadFailed, 0, EISDIR});
    }
    if (!S_ISREG(info.st_mode)) {
        return Fail(FileFailure{FileError::NotRegularFile, 0, EINVAL});
    }
    m_size = info.st_size;
    ::posix_fadvise(m_fd, 0, 0, POSIX_FADV_SEQUENTIAL);
    return {};
}

Result<void, Errno> InputFile::ReadExact(std::span<std::uint8_t> out) {
    return MoveAll(out.size(), [&](std::size_t done) {
        return ::read(m_fd, out.data() + done, out.size() - done);
    });
}

Result<void, Errno> InputFile::ReadAt(std::int64_t offset, std::span<std::uint8_t> out) {
    return MoveAll(out.size(), [&](std::size_t done) {
        return ::pread(m_fd, out.data() + done, out.size() - done,
                       static_cast<off_t>(offset) + static_cast<off_t>(done));
    });
}

UniqueFd& UniqueFd::operator=(UniqueFd&& other) noexcept {
    if (this != &other) {
        Reset(other.Release());
    }
    return *this;
}

int UniqueFd::Release() {
    const int fd = m_fd;
    m_fd = -1;
    return fd;
}

void UniqueFd::Reset(int fd) {
    if (m_fd >= 0) {
        ::close(m_fd);
    }
    m_fd = fd;
}

Result<void, Errno> UniqueFd::Close() {
    const int fd = Release();
    if (fd >= 0 && ::close(fd) != 0) {
        return Fail(errno);
    }
    return {};
}

TempOutputFile::~TempOutputFile() {
    Discard();
}

Result<void, Errno> TempOutputFile::Create(const std::string& finalPath) {
    const auto [folder, leaf] = SplitFolderAndLeaf(finalPath);
    Result<UniqueFd, Errno> opened = OpenFolder(folder);
    if (!opened) {
        return Fail(opened.error());
    }
    return CreateIn(std::move(opened).value(), leaf);
}

Result<void, Errno> TempOutputFile::CreateIn(UniqueFd folder, const std::string& leaf) {
    m_folder = std::move(folder);
    m_leaf = leaf;
    m_file.Reset(::openat(m_folder.Get(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666));
    if (m_file.Valid()) {
        return {};
    }
    for (int attempt = 0; attempt < kTempNameAttempts; ++attempt) {
        m_tempName = HiddenTempName(leaf);
        m_file.Reset(::openat(m_folder.Get(), m_tempName.c_str(),
                              O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
        if (m_file.Valid()) {
            return {};
        }
        if (errno != EEXIST) {
            break;
        }
    }
    const Errno error = errno;
    m_tempName.clear();
    return Fail(error);
}

Result<void, Errno> TempOutputFile::Write(std::span<const std::uint8_t> bytes) {
    return MoveAll(bytes.size(), [&](std::size_t done) {
        return ::write(m_file.Get(), bytes.data() + done, bytes.size() - done);
    });
}

bool TempOutputFile::LinkUnnamed(const std::string& name) {
    const std::string self = "/proc/self/fd/" + std::to_string(m_file.Get());
    if (::linkat(AT_FDCWD, self.c_str(), m_folder.Get(), name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
        return true;
    }
    // Without /proc, linking the descriptor itself needs a privilege, but may be granted.
    return errno == ENOENT &&
           ::linkat(m_file.Get(), "", m_folder.Get(), name.c_str(), AT_EMPTY_PATH) == 0;
}

bool TempOutputFile::MoveInPlace(bool replace) {
    const char* from = m_tempName.c_str();
    return replace ? ::renameat(m_folder.Get(), from, m_folder.Get(), m_leaf.c_str()) == 0
                   : RenameWithoutReplacing(m_folder.Get(), m_tempName, m_leaf);
}

void TempOutputFile::Retarget(const std::string& finalPath) {
    const std::size_t slash = finalPath.rfind('/');
    m_leaf = slash == std::string::npos ? finalPath : finalPath.substr(slash + 1);
}

Result<void, Errno> TempOutputFile::Commit(bool replace) {
    if (!m_file.Valid()) {
        return Fail(EBADF);
    }
    if (m_tempName.empty()) {
        if (!replace) {
            // A link never replaces: a file that appeared meanwhile makes it fail with EEXIST.
            if (!LinkUnnamed(m_leaf) || !m_file.Close()) {
                return Fail(errno);
            }
            return {};
        }
        // Replacing takes a name first, then a rename swaps it in at once.
        const std::string name = HiddenTempName(m_leaf);
        if (!LinkUnnamed(name)) {
            return Fail(errno);
        }
        m_tempName = name;
    }
    if (!m_file.Close() || !MoveInPlace(replace)) {
        return Fail(errno);
    }
    m_tempName.clear();
    return {};
}

void TempOutputFile::Discard() {
    m_file.Reset();
    if (!m_tempName.empty()) {
        ::unlinkat(m_folder.Get(), m_tempName.c_str(), 0);
        m_tempName.clear();
    }
}

bool PathExists(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

Result<UniqueFd, Errno> OpenFolder(const std::string& path) {
    UniqueFd folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.Valid()) {
        return Fail(errno);
    }
    return folder;
}

} // namespace kelvora
