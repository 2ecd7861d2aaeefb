#pragma once

#include "common/JobObserver.h"
#include "files/FileError.h"

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
    // as a lone file. A path already listed (after collapsing doubled separators) is not
    // added again. It returns true when an addition was refused as a duplicate (the caller
    // tells the user once).
    //
    // A folder is walked depth first, entries of a folder in name order. What cannot be
    // stored is passed over and named in PassedOver: symbolic links to folders, dangling
    // links, special files, unreadable and empty folders. The walk stops when RequestCancel
    // was called and lets the observer's events run after every entry.
    bool AddListPath(std::string_view path, JobObserver* observer = nullptr);

    // RemoveEntries takes the entries at the given indexes out of the list in one pass, so a
    // large selection goes as fast as a single entry. Indexes outside the list are ignored.
    void RemoveEntries(const std::vector<std::size_t>& indexes);
    void Clear();

    const std::vector<InputEntry>& Entries() const { return m_entries; }
    // PassedOver names every entry a folder walk found but could not list (the job that
    // encrypts the list reports them with the files it leaves out).
    const std::vector<OmittedEntry>& PassedOver() const { return m_passedOver; }
    bool Empty() const { return m_entries.empty(); }

    // The output name box: filled from the first added file with an extension while empty.
    const std::string& OutputName() const { return m_outputName; }
    void SetOutputName(std::string name) { m_outputName = std::move(name); }

    // RequestCancel stops a running folder walk (the front end calls it from its events).
    void RequestCancel() { m_cancel = true; }

private:
    // AddListFile adds one file under the given base folder ("/" for a lone file), or sets
    // the duplicate flag for a path already listed.
    void AddListFile(std::string_view path, std::string_view base);
    // WalkFolder adds every file below folder; an empty base is derived from folder (its
    // parent).
    void WalkFolder(std::string_view folder, std::string_view base, JobObserver* observer);
    void WalkLevel(const std::string& folder, const std::string& base, JobObserver* observer);
    void WalkEntry(const std::string& child, const std::string& base, JobObserver* observer);
    void PassOver(const std::string& path, FileError why, int error);

    std::vector<InputEntry> m_entries;
    std::vector<OmittedEntry> m_passedOver;
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
