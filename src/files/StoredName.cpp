#include "files/StoredName.h"

#include "common/Ansi.h"
#include "common/Printable.h"

#include <algorithm>

namespace kelvora {

namespace {

bool IsSeparator(char c) {
    return c == kStoredSeparator || c == kPathSeparator;
}

bool IsAsciiLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool IsSafeComponent(std::string_view component) {
    return !component.empty() && component != "." && component != "..";
}

} // namespace

std::string_view StoredNameSource(std::string_view utf8Path, std::string_view utf8RelativePath) {
    if (utf8RelativePath != kLoneFileRelativePath) {
        return utf8RelativePath;
    }
    const std::size_t slash = utf8Path.find_last_of(kPathSeparator);
    return slash == std::string_view::npos ? utf8Path : utf8Path.substr(slash + 1);
}

std::string StoredNameFor(std::string_view utf8Path, std::string_view utf8RelativePath) {
    std::string name = AnsiFromUtf8(StoredNameSource(utf8Path, utf8RelativePath));
    if (utf8RelativePath == kLoneFileRelativePath) {
        name = name.substr(0, kMaxStoredNameBytes);
    }
    if (!name.empty() && IsSeparator(name.front())) {
        name.erase(0, 1);
    }
    std::replace(name.begin(), name.end(), kPathSeparator, kStoredSeparator);
    return name;
}

bool IsSafeStoredName(std::string_view ansiName) {
    if (ansiName.empty() || HoldsControlCharacter(ansiName)) {
        return false;
    }
    if (ansiName.size() >= 2 && IsAsciiLetter(ansiName[0]) && ansiName[1] == ':') {
        return false;
    }
    std::size_t start = 0;
    while (true) {
        const auto end = std::find_if(ansiName.begin() + static_cast<std::ptrdiff_t>(start),
                                      ansiName.end(), IsSeparator);
        const auto stop = static_cast<std::size_t>(end - ansiName.begin());
        if (!IsSafeComponent(ansiName.substr(start, stop - start))) {
            return false;
        }
        if (end == ansiName.end()) {
            return true;
        }
        start = stop + 1;
    }
}

std::optional<std::string> RelativePathFromStoredName(std::string_view ansiName) {
    if (!IsSafeStoredName(ansiName)) {
        return std::nullopt;
    }
    std::string path = Utf8FromAnsi(ansiName);
    std::replace(path.begin(), path.end(), kStoredSeparator, kPathSeparator);
    return path;
}

} // namespace kelvora
