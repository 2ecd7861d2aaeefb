#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

// Stored names are Windows-1252 bytes with "\" between folders, so that containers agree
// byte for byte with copies of the program on Windows. Paths on this side use "/".
inline constexpr char kStoredSeparator = '\\';
inline constexpr char kPathSeparator = '/';
// Byte 33 of a file's stream holds the name length modulo 256, so longer names cannot be
// read back by other copies.
inline constexpr std::size_t kMaxStoredNameBytes = 255;
// The longest name this program stores and restores anyway (a Linux path's limit).
inline constexpr std::size_t kLongestNameBytes = 4096;

// The relative path of an entry added by itself: the stored name is then the file's own name.
inline constexpr std::string_view kLoneFileRelativePath = "/";

// StoredNameFor derives the stored name of a list entry: for a lone file the part of the path
// behind its last "/", cut to its first 255 characters, else the relative path; a leading
// separator is dropped, "/" becomes "\" and the text becomes Windows-1252. It cannot fail;
// IsSafeStoredName and the length limit are checked by the writer.
[[nodiscard]] std::string StoredNameFor(std::string_view utf8Path,
                                        std::string_view utf8RelativePath);

// StoredNameSource is the UTF-8 text a list entry's stored name is made from: the file's
// own name for a lone file, else its relative path.
[[nodiscard]] std::string_view StoredNameSource(std::string_view utf8Path,
                                                std::string_view utf8RelativePath);

// IsSafeStoredName is true when a stored name stays below the folder it is restored into:
// not empty, not absolute, no drive letter, no control character (NUL, ESC, CR, LF, ...),
// and no empty, "." or ".." component
// ("\" and "/" both separate components).
[[nodiscard]] bool IsSafeStoredName(std::string_view ansiName);

// RelativePathFromStoredName turns a safe stored name into a UTF-8 path with "/" between
// folders. It gives nothing for a name IsSafeStoredName refuses.
[[nodiscard]] std::optional<std::string> RelativePathFromStoredName(std::string_view ansiName);

} // namespace kelvora
