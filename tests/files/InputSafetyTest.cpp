// What an encryption stores, names as left out or refuses: entries of a tree it cannot store,
// names the format cannot hold apart, an output among the inputs, an existing container, and a
// write that fails or a cancel half-way, which leave no container and the old one untouched.
// What it stores comes back whole, also under names only this program reads back.
#include "FileTestSupport.h"
#include "crypto/KeyRules.h"
#include "files/ContainerFormat.h"
#include "files/ContainerInspect.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;
namespace fs = std::filesystem;

// FailingSink passes writes through to the container file and fails the failAt-th one.
struct FailingSink final : ByteSink {
    FailingSink(ByteSink& target, int at) : file(target), failAt(at) {}
    Result<void, Errno> Write(std::span<const std::uint8_t> bytes) override {
        if (++writes == failAt) {
            return Fail(ENOSPC);
        }
        return file.Write(bytes);
    }
    ByteSink& file;
    int failAt;
    int writes = 0;
};

// Scratch holds a.txt, b.txt ("some" each, hard.txt a hard link to a.txt), dir/old.vexo and
// in.txt of two records; tree/ holds a.txt beside what the format cannot store; names the
// format cannot store or hold apart; and in long-N/ a leaf of N bytes, so that the stored
// name is N + 8 bytes long: its length byte only keeps it modulo 256.
void MakeInputs(const ScratchFolder& scratch) {
    for (const char* file : {"a.txt", "b.txt", "dir/old.vexo", "tree/a.txt", "a/x.txt", "b/x.txt",
                             "\xe6\x97\xa5\xe6\x9c\xac.txt", "t/\xce\xb1.txt"}) {
        WriteFile(scratch / file, BytesFromString("some"));
    }
    for (const auto& [leafBytes, dataBytes] :
         {std::pair<std::size_t, std::size_t>{247, 10}, {248, 10}, {255, 3000}, {250, 0}}) {
        WriteFile(scratch / "long-" + std::to_string(leafBytes) + "/" + std::string(leafBytes, 'n'),
                  PatternBytes(dataBytes, 4));
    }
    fs::create_hard_link(scratch / "a.txt", scratch / "hard.txt");
    WriteFile(scratch / "in.txt", PatternBytes(kChunkBytes + 100000, 5));
    fs::create_directories(scratch / "tree/empty");
    ASSERT_EQ(::mkfifo((scratch / "tree/fifo").c_str(), 0600), 0);
    fs::create_directory_symlink(scratch / "dir", scratch / "tree/folderlink");
    fs::create_symlink(scratch / "gone", scratch / "tree/dangling");
}

using Omitted = std::vector<std::pair<std::string, FileError>>;

struct StoreCase {
    const char* name;
    const char* inputs; // below the scratch folder, between blanks
    FileError error = FileError::None;
    const Omitted* omitted = nullptr; // names below the scratch folder
    const char* output = "c.vexo";
    const char* existing = nullptr; // what c.vexo holds before
    bool replace = false;
    int failAtWrite = 0; // counting from 1: each record's length, its payload, then the index
    std::int64_t cancelAfterChunk = 0;
    std::int64_t chunk = 0; // where the result says it happened (0: after the records)
};

TEST(EncryptFiles, StoresWhatItCanAndNamesOrRefusesTheRest) {
    using enum FileError;
    const Omitted treeLeftOut{{"tree/dangling", ReadFailed},
                              {"tree/empty", EmptyFolder},
                              {"tree/fifo", NotRegularFile},
                              {"tree/folderlink", LinkToFolder}};
    const Omitted missing{{"missing", ReadFailed}};
    const StoreCase rows[] = {
        {"NameOf255Bytes", "long-247"},
        {"NamesOf256BytesAndMore", "long-248 long-255 long-250"},
        {"TreeWithEntriesItCannotStore", "tree", EntriesLeftOut, &treeLeftOut},
        {"UnreadableInput", "a.txt missing b.txt", EntriesLeftOut, &missing},
        {"OutsideWindows1252", "\xe6\x97\xa5\xe6\x9c\xac.txt", NameNotStorable},
        {"OutsideWindows1252InATree", "t", NameNotStorable},
        {"SameFileNameInTwoFolders", "a/x.txt b/x.txt", DuplicateName},
        {"SameFileTwoSpellings", "a.txt ./a.txt", DuplicateName},
        {"OutputIsOneOfTheFiles", "a.txt b.txt", OutputIsInput, nullptr, "a.txt"},
        {"OutputIsAHardLinkToAnInput", "a.txt", OutputIsInput, nullptr, "hard.txt"},
        {"OldContainerInTheFolder", "dir", OutputIsInput, nullptr, "dir/old.vexo"},
        {"NewContainerInTheFolder", "dir", OutputIsInput, nullptr, "dir/new.vexo"},
        {"ThroughDotDot", "dir", OutputIsInput, nullptr, "dir/../dir/new.vexo"},
        {"ExistingContainerKept", "a.txt", OutputExists, nullptr, "c.vexo", "old"},
        {"ExistingContainerReplaced", "a.txt", None, nullptr, "c.vexo", "old", true},
        {"WriteFailsInTheSecondPayload", "in.txt", WriteFailed, nullptr, "c.vexo", "old", true, 4,
         0, 2},
        {"WriteFailsAtTheIndex", "in.txt", WriteFailed, nullptr, "c.vexo", "old", true, 5},
        {"CancelledInTheSecondChunk", "in.txt", Cancelled, nullptr, "c.vexo", "old", true, 0, 1, 2},
    };
    for (const StoreCase& row : rows) {
        SCOPED_TRACE(row.name);
        ScratchFolder scratch;
        MakeInputs(scratch);
        if (row.existing != nullptr) {
            WriteFile(scratch / "c.vexo", BytesFromString(row.existing));
        }
        const Tree before = TreeBelow(scratch.Path());
        std::vector<std::string> inputs;
        Tree stored; // every input file, which comes back under its path
        std::istringstream words(row.inputs);
        for (std::string input; words >> input;) {
            inputs.push_back(scratch / input);
            for (const auto& [file, contents] : before) {
                if (file == input || file.starts_with(input + "/")) {
                    stored[file] = contents;
                }
            }
        }
        ScriptedObserver observer;
        observer.replaceContainer = row.replace;
        observer.cancelAfterChunk = row.cancelAfterChunk;
        const int failAt = row.failAtWrite;
        const FileJobResult result =
            EncryptPaths(inputs, scratch / row.output, observer, [failAt](ByteSink& file) {
                return std::make_unique<FailingSink>(file, failAt);
            });
        EXPECT_EQ(result.error, row.error);
        EXPECT_EQ(result.chunk, row.chunk);
        Omitted omitted;
        for (const OmittedEntry& entry : result.omitted) {
            omitted.emplace_back(entry.name.substr(scratch.Path().size() + 1), entry.why);
            EXPECT_EQ(entry.systemError, entry.why == ReadFailed ? ENOENT : 0) << entry.name;
        }
        std::sort(omitted.begin(), omitted.end());
        EXPECT_EQ(omitted, row.omitted != nullptr ? *row.omitted : Omitted{});
        EXPECT_EQ(TreeBelow(scratch.Path()), before) << "inputs are only read";
        if (row.error != FileError::None && row.error != EntriesLeftOut) {
            EXPECT_EQ(FilesBelow(scratch.Path()).size(), before.size() + (row.existing ? 1 : 0))
                << "no container made";
            if (row.existing != nullptr) {
                EXPECT_EQ(ReadFile(scratch / "c.vexo"), BytesFromString(row.existing));
            }
            continue;
        }
        ASSERT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
        EXPECT_EQ(TreeBelow(scratch / "out"), stored);
        const SecretBytes key = MakePassphraseKey(kPassphrase);
        const auto listed = ListContainer(DecryptRequest{scratch / "c.vexo", {}, &key}, observer);
        ASSERT_TRUE(listed);
        ASSERT_EQ(listed->size(), stored.size());
        for (const ContainerEntry& entry : *listed) {
            ASSERT_TRUE(stored.contains(entry.name)) << entry.name;
            EXPECT_EQ(entry.plainBytes, static_cast<std::int64_t>(stored[entry.name].size()));
        }
        EXPECT_EQ(observer.warnings, std::count_if(stored.begin(), stored.end(), [](auto& file) {
                      return file.first.size() > 255;
                  }));
    }
}

} // namespace
} // namespace kelvora
