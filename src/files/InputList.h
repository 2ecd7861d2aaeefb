#pragma once

#include "common/JobObserver.h"

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kelvora {

// InputEntry is one file to encrypt: its path (UTF-8, "/" between folders) and its relative
// path, which becomes its stored name: kLoneFileRelativePath for a file added by itself,
// else the part of the path behind the base folder, starting with the chosen folder's name.
struct InputEntry {
    std::string path;
    std::string relativePath;
};

// CollapseSeparators replaces every run of "/" by a single one.
[[nodiscard]] std::string CollapseSeparators(std::string_view path);

// DefaultOutputName gives the path up to and including its extension's dot followed by
// "vexo" ("a/b.txt" -> "a/b.vexo"), or "" when the file name has no extension.
[[nodiscard]] std::string DefaultOutputName(std::string_view path);

// BaseOfChosenFolder gives the parent of a chosen folder: a trailing "/" dropped, then the
// path cut before its last "/" ("" when it has none).
[[nodiscard]] std::string BaseOfChosenFolder(std::string_view folder);

// InputList is the list of files to encrypt with the relative path of every entry, the
// duplicate flag and the default output name; the window and the CLI both fill it.
class InputList {
public:
    // AddListPath walks path as a directory structure when it names a folder, else adds it
    // as a lone file. It returns true when an addition was refused as a duplicate (the
    // duplicate flag is then cleared; the caller tells the user once).
    bool AddListPath(std::string_view path, JobObserver* observer = nullptr);

    // AddListFile adds one file under the given base folder ("/" for a lone file). A path
    // already listed (after collapsing doubled separators) sets the duplicate flag instead.
    void AddListFile(std::string_view path, std::string_view base);

    // WalkFolder adds every file below folder, depth first, entries of a folder in name
    // order. An empty base is derived from folder (its parent). Symbolic links to folders
    // and special files are passed over. Stops when RequestCancel was called; lets the
    // observer's events run after every entry. Unreadable folders are passed over.
    void WalkFolder(std::string_view folder, std::string_view base,
                    JobObserver* observer = nullptr);

    // Remove takes the entry at index (and its relative path) out of the list.
    void Remove(std::size_t index);
    // RemoveEntries takes the entries at the given indexes out of the list in one pass, so a
    // large selection goes as fast as a single entry. Indexes outside the list are ignored.
    void RemoveEntries(const std::vector<std::size_t>& indexes);
    void Clear();

    const std::vector<InputEntry>& Entries() const { return m_entries; }
    bool Empty() const { return m_entries.empty(); }
    bool DuplicateFlag() const { return m_duplicate; }

    // The output name box: filled from the first added file with an extension while empty.
    const std::string& OutputName() const { return m_outputName; }
    void SetOutputName(std::string name) { m_outputName = std::move(name); }

    // RequestCancel stops a running folder walk (the front end calls it from its events).
    void RequestCancel() { m_cancel = true; }

private:
    void WalkLevel(const std::string& folder, const std::string& base, JobObserver* observer);

    std::vector<InputEntry> m_entries;
    std::unordered_set<std::string> m_listed;
    std::string m_outputName;
    bool m_duplicate = false;
    std::atomic<bool> m_cancel{false};
};

// FileListArgument is "<list of files> /outputfile <file>" split into its parts.
struct FileListArgument {
    std::vector<std::string> files;
    std::string outputFile;
};

// SplitFileListArgument splits at the first " /outputfile " (any case): the entries before
// it are separated by blanks, an entry in double quotes may hold blanks (the quotes are
// removed); the output name loses surrounding blanks and quotes. Without the marker every
// entry is a file and the output name stays empty.
[[nodiscard]] FileListArgument SplitFileListArgument(std::string_view text);

} // namespace kelvora
