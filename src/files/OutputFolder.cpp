#include "files/OutputFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace kelvora {

namespace {

constexpr int kNoFollowFolder = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

// FolderLevels gives the folder names of relativePath's parent, outermost first.
std::vector<std::string> FolderLevels(const std::string& relativePath) {
    std::vector<std::string> levels;
    std::size_t start = 0;
    for (std::size_t slash = relativePath.find('/'); slash != std::string::npos;
         slash = relativePath.find('/', start)) {
        levels.push_back(relativePath.substr(start, slash - start));
        start = slash + 1;
    }
    return levels;
}

// OpenLevel opens one folder level below folder, never through a link. A link or a
// non-folder answers ELOOP or ENOTDIR; both mean the path is blocked.
UniqueFd OpenLevel(int folder, const std::string& name) {
    return UniqueFd(::openat(folder, name.c_str(), kNoFollowFolder));
}

} // namespace

std::string LeafOf(const std::string& relativePath) {
    const std::size_t slash = relativePath.rfind('/');
    return slash == std::string::npos ? relativePath : relativePath.substr(slash + 1);
}

Result<void, Errno> OutputFolder::Open(const std::string& root) {
    std::error_code made;
    std::filesystem::create_directories(root, made);
    Result<UniqueFd, Errno> opened = OpenFolder(root);
    if (!opened) {
        // The folder's own error (no permission, a full disk) says more than ENOENT.
        return Fail(made ? made.value() : opened.error());
    }
    m_root = std::move(opened).value();
    return {};
}

Result<Spot, Errno> OutputFolder::Look(const std::string& relativePath) const {
    UniqueFd folder(::dup(m_root.Get()));
    for (const std::string& level : FolderLevels(relativePath)) {
        UniqueFd next = OpenLevel(folder.Get(), level);
        if (!next.Valid()) {
            return errno == ENOENT ? Result<Spot, Errno>(Spot::Free) : Fail(errno);
        }
        folder = std::move(next);
    }
    struct stat info {};
    if (::fstatat(folder.Get(), LeafOf(relativePath).c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno == ENOENT ? Result<Spot, Errno>(Spot::Free) : Fail(errno);
    }
    return S_ISDIR(info.st_mode) ? Fail(EISDIR) : Result<Spot, Errno>(Spot::Taken);
}

Result<UniqueFd, Errno> OutputFolder::OpenParent(const std::string& relativePath) const {
    UniqueFd folder(::dup(m_root.Get()));
    for (const std::string& level : FolderLevels(relativePath)) {
        UniqueFd next = OpenLevel(folder.Get(), level);
        if (!next.Valid() && errno == ENOENT) {
            // mkdirat never follows a link at the new name, and the level is opened again
            // without following, so a link made meanwhile is still refused.
            if (::mkdirat(folder.Get(), level.c_str(), 0777) != 0 && errno != EEXIST) {
                return Fail(errno);
            }
            next = OpenLevel(folder.Get(), level);
        }
        if (!next.Valid()) {
            return Fail(errno);
        }
        folder = std::move(next);
    }
    return folder;
}

} // namespace kelvora
