#include "files/InputList.h"

#include "files/StoredName.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace kelvora {

namespace fs = std::filesystem;

namespace {

// CollapseSeparators replaces every run of "/" by a single one.
std::string CollapseSeparators(std::string_view path) {
    std::string out;
    out.reserve(path.size());
    for (const char c : path) {
        if (c == kPathSeparator && !out.empty() && out.back() == kPathSeparator) {
            continue;
        }
        out.push_back(c);
    }
    return out;
}

} // namespace

std::string DefaultOutputName(std::string_view path) {
    const std::size_t dot = path.rfind('.');
    const std::size_t slash = path.rfind(kPathSeparator);
    if (dot == std::string_view::npos || (slash != std::string_view::npos && dot < slash)) {
        return {};
    }
    return std::string(path.substr(0, dot + 1)) + "vexo";
}

std::string BaseOfChosenFolder(std::string_view folder) {
    if (!folder.empty() && folder.back() == kPathSeparator) {
        folder.remove_suffix(1);
    }
    const std::size_t slash = folder.rfind(kPathSeparator);
    return slash == std::string_view::npos ? std::string() : std::string(folder.substr(0, slash));
}

bool InputList::AddListPath(std::string_view path, JobObserver* observer) {
    std::error_code error;
    if (fs::is_directory(fs::path(path), error)) {
        WalkFolder(path, {}, observer);
    } else {
        AddListFile(path, kLoneFileRelativePath);
    }
    const bool refused = m_duplicate;
    m_duplicate = false;
    return refused;
}

void InputList::AddListFile(std::string_view path, std::string_view base) {
    std::string fullPath = CollapseSeparators(path);
    if (m_listed.contains(fullPath)) {
        m_duplicate = true;
        return;
    }
    std::string relative = base == kLoneFileRelativePath
                               ? std::string(kLoneFileRelativePath)
                               : fullPath.substr(std::min(base.size(), fullPath.size()));
    if (m_outputName.empty()) {
        m_outputName = DefaultOutputName(fullPath);
    }
    m_listed.insert(fullPath);
    m_entries.push_back(InputEntry{std::move(fullPath), std::move(relative)});
}

void InputList::WalkFolder(std::string_view folder, std::string_view base, JobObserver* observer) {
    std::string chosen = CollapseSeparators(folder);
    if (chosen.size() > 1 && chosen.back() == kPathSeparator) {
        chosen.pop_back();
    }
    const std::string baseFolder = base.empty() ? BaseOfChosenFolder(chosen) : std::string(base);
    m_cancel = false;
    WalkLevel(chosen, baseFolder, observer);
}

void InputList::PassOver(const std::string& path, FileError why, int error) {
    m_passedOver.push_back(OmittedEntry{path, why, error});
}

void InputList::WalkLevel(const std::string& folder, const std::string& base,
                          JobObserver* observer) {
    if (m_cancel) {
        return;
    }
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        names.push_back(it->path().filename().string());
    }
    if (error) {
        PassOver(folder, FileError::ReadFailed, error.value());
        return;
    }
    if (names.empty()) {
        // The container format holds files only: an empty folder cannot be stored.
        PassOver(folder, FileError::EmptyFolder, 0);
        return;
    }
    std::sort(names.begin(), names.end());
    const std::string prefix = folder == "/" ? folder : folder + kPathSeparator;
    for (const std::string& name : names) {
        if (m_cancel) {
            return;
        }
        WalkEntry(prefix + name, base, observer);
        if (observer != nullptr) {
            observer->LetEventsRun();
        }
    }
}

void InputList::WalkEntry(const std::string& child, const std::string& base,
                          JobObserver* observer) {
    std::error_code error;
    const fs::file_status own = fs::symlink_status(child, error);
    if (fs::is_directory(own)) {
        WalkLevel(child, base, observer);
        return;
    }
    const fs::file_status target = fs::status(child, error);
    if (fs::is_regular_file(target)) {
        AddListFile(child, base);
    } else if (fs::is_symlink(own) && fs::is_directory(target)) {
        PassOver(child, FileError::LinkToFolder, 0);
    } else if (fs::is_symlink(own) && !fs::exists(target)) {
        PassOver(child, FileError::ReadFailed, ENOENT);
    } else {
        PassOver(child, FileError::NotRegularFile, 0);
    }
}

void InputList::RemoveEntries(const std::vector<std::size_t>& indexes) {
    std::vector<bool> removed(m_entries.size(), false);
    for (const std::size_t index : indexes) {
        if (index < removed.size()) {
            removed[index] = true;
        }
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (removed[i]) {
            m_listed.erase(m_entries[i].path);
        } else {
            if (kept != i) { // a string moved onto itself may lose its text
                m_entries[kept] = std::move(m_entries[i]);
            }
            ++kept;
        }
    }
    m_entries.resize(kept);
}

void InputList::Clear() {
    m_entries.clear();
    m_listed.clear();
    m_passedOver.clear();
}

namespace {

std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

std::size_t FindMarkerIgnoringCase(std::string_view text, std::string_view marker) {
    const auto it =
        std::search(text.begin(), text.end(), marker.begin(), marker.end(), [](char a, char b) {
            return std::tolower(static_cast<unsigned char>(a)) ==
                   std::tolower(static_cast<unsigned char>(b));
        });
    return it == text.end() ? std::string_view::npos : static_cast<std::size_t>(it - text.begin());
}

std::vector<std::string> SplitBlankSeparated(std::string_view text) {
    std::vector<std::string> entries;
    std::string current;
    bool quoted = false;
    bool inEntry = false;
    for (const char c : text) {
        if (c == '"') {
            quoted = !quoted;
            inEntry = true;
        } else if (c == ' ' && !quoted) {
            if (inEntry) {
                entries.push_back(std::move(current));
                current.clear();
            }
            inEntry = false;
        } else {
            current.push_back(c);
            inEntry = true;
        }
    }
    if (inEntry) {
        entries.push_back(std::move(current));
    }
    return entries;
}

} // namespace

FileListArgument SplitFileListArgument(std::string_view text) {
    constexpr std::string_view kMarker = " /outputfile ";
    // A blank in front lets a list that is empty still show its marker.
    std::string padded(1, ' ');
    padded += text;
    const std::size_t at = FindMarkerIgnoringCase(padded, kMarker);
    FileListArgument result;
    if (at == std::string_view::npos) {
        result.files = SplitBlankSeparated(text);
        return result;
    }
    const std::string_view whole(padded);
    result.files = SplitBlankSeparated(whole.substr(0, at));
    std::string_view output = TrimBlanks(whole.substr(at + kMarker.size()));
    if (output.size() >= 2 && output.front() == '"' && output.back() == '"') {
        output = output.substr(1, output.size() - 2);
    }
    result.outputFile = std::string(output);
    return result;
}

} // namespace kelvora
