#pragma once

#include "files/FileIo.h"

#include <string>

namespace kelvora {

// Where a relative path leads inside an output folder.
enum class SpotState {
    Free,    // nothing there yet (the folders on the way may be missing)
    Taken,   // a file (or a link) has that name already
    Blocked, // a folder on the way is a symbolic link or no folder, or the name is a folder
};

struct Spot {
    SpotState state = SpotState::Free;
    int error = 0; // errno for Blocked: ELOOP for a link, ENOTDIR, EISDIR, ...
};

// OutputFolder is the folder a container is restored into, held open, so that every level
// below it is opened relative to it without ever following a symbolic link: nothing can be
// created or written outside it, even when links inside it point elsewhere.
class OutputFolder {
public:
    // Open creates root and its missing parents when absent and opens it; false with errno
    // in *error on failure. The root itself may be a link: the person chose it.
    [[nodiscard]] bool Open(const std::string& root, int* error);

    // Look tells what is at relativePath ("/" between folders) without creating anything.
    [[nodiscard]] Spot Look(const std::string& relativePath) const;

    // OpenParent opens relativePath's folder, creating its missing levels one by one; an
    // invalid descriptor with errno in *error (ELOOP when a level is a link) on failure.
    [[nodiscard]] UniqueFd OpenParent(const std::string& relativePath, int* error) const;

private:
    UniqueFd m_root;
};

// LeafOf gives the part of a relative path behind its last "/".
[[nodiscard]] std::string LeafOf(const std::string& relativePath);

} // namespace kelvora
