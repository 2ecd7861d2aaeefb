#pragma once

#include "files/FileIo.h"

#include <string>

namespace kelvora {

// Where a relative path leads inside an output folder that is not blocked.
enum class Spot {
    Free,  // nothing there yet (the folders on the way may be missing)
    Taken, // a file (or a link) has that name already
};

// OutputFolder is the folder a container is restored into, held open, so that every level
// below it is opened relative to it without ever following a symbolic link: nothing can be
// created or written outside it, even when links inside it point elsewhere.
class OutputFolder {
public:
    // Open creates root and its missing parents when absent and opens it. The root itself
    // may be a link: the person chose it.
    [[nodiscard]] Result<void, Errno> Open(const std::string& root);

    // Look tells what is at relativePath ("/" between folders) without creating anything. It
    // fails when the way is blocked: a folder on the way is a symbolic link or no folder
    // (ELOOP, ENOTDIR), or the name is a folder (EISDIR).
    [[nodiscard]] Result<Spot, Errno> Look(const std::string& relativePath) const;

    // OpenParent opens relativePath's folder, creating its missing levels one by one; it
    // fails with ELOOP when a level is a link.
    [[nodiscard]] Result<UniqueFd, Errno> OpenParent(const std::string& relativePath) const;

private:
    UniqueFd m_root;
};

// LeafOf gives the part of a relative path behind its last "/".
[[nodiscard]] std::string LeafOf(const std::string& relativePath);

} // namespace kelvora
