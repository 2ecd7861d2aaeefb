// Restoring containers as a damaged or hostile source could hand them over: refused before
// anything is written, a wrong passphrase, and files that go never through a symbolic link,
// never over a file without asking, never under a name the folder cannot take; the same on
// the calling thread alone and with workers decoding ahead, also when cancelled.
#include "FileTestSupport.h"
#include "crypto/KeyRules.h"
#include "files/ContainerIndex.h"
#include "files/ContainerInspect.h"
#include "files/LittleEndian.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;
namespace fs = std::filesystem;

const Bytes kSome{'s', 'o', 'm', 'e'};
using Prepare = std::function<void(const ScratchFolder&)>;

// LinkAt makes out/link point at target ("{s}" stands for the scratch folder).
Prepare LinkAt(std::string link, std::string target) {
    return [=](const ScratchFolder& scratch) {
        fs::create_directories(scratch / "outside");
        fs::create_directories(scratch / "out/deep");
        const std::string to =
            target.starts_with("{s}") ? scratch.Path() + target.substr(3) : target;
        fs::create_symlink(to, scratch / ("out/" + link));
    };
}

Prepare FileAt(std::string path, std::string contents) {
    return
        [=](const ScratchFolder& scratch) { WriteFile(scratch / path, BytesFromString(contents)); };
}

// WithIndex replaces the container's index by zeroCounts counts of 0 and then count (the
// size of the records when -1).
void WithIndex(Bytes& container, std::size_t zeroCounts, std::int64_t count = -1) {
    const auto tail = ParseIndexTail(container);
    container.resize(container.size() - tail->digitBytes -
                     static_cast<std::size_t>(tail->indexLength));
    std::vector<std::int64_t> counts(zeroCounts, 0);
    counts.push_back(count < 0 ? static_cast<std::int64_t>(container.size()) : count);
    const Bytes index = EncodeIndex(counts);
    container.insert(container.end(), index.begin(), index.end());
}

// FlipInRecord flips a byte in the second cipher block of a record (from 0).
void FlipInRecord(Bytes& container, std::size_t record) {
    container[RecordOffsets(container, record + 1)[record] + 4 + 40] ^= 0x5A;
}

// A restore into out/ of a container built by hand and perhaps spoilt, with what was there
// before, how the observer answers about existing files and when it cancels. In `after`, "*"
// stands for the data of the stored file of that name.
struct RestoreCase {
    const char* name;
    const std::vector<StoredFile>& stored;
    const char* after; // every file below the scratch folder afterwards but the container
    FileError error = FileError::None;
    FileError omitted = FileError::None; // why the one entry left out was, if any
    void (*spoil)(Bytes& container) = nullptr;
    std::int64_t chunk = 0; // where the damage is, when it matters
    int cancelAtFile = -1;
    Prepare prepare = nullptr;
    ExistingFileAnswer answer = ExistingFileAnswer::Cancel;
    const char* anotherName = nullptr; // below the scratch folder
    const char* output = "out";
};

TEST(DecryptContainer, RestoresOnlyWhatItSafelyCan) {
    using enum FileError;
    using enum ExistingFileAnswer;
    const std::vector<StoredFile> one{{"a.txt", kSome}}, lateNew{{"a.txt", {'n', 'e', 'w'}}};
    const std::vector<StoredFile> laterChunk{{"ok.txt", kSome},
                                             {"big.bin", PatternBytes(2100000, 9)}};
    // Empty files have no block whose magic could tell a wrong passphrase.
    const std::vector<StoredFile> emptyFirst{{"e1", {}}, {"e2", {}}, {"d\\a.txt", kSome}};
    const std::vector<StoredFile> onlyEmpty{{"d\\e", {}}};
    const std::vector<StoredFile> linkAndFine{{"d\\f.txt", kSome}, {"fine.txt", kSome}};
    const std::vector<StoredFile> deeper{{"d\\x\\y\\f.txt", kSome}, {"fine.txt", kSome}};
    const std::vector<StoredFile> belowReal{{"deep\\d\\f", kSome}, {"fine.txt", kSome}};
    // 200 characters of "ä" are 200 bytes stored and 400 bytes in UTF-8.
    const std::vector<StoredFile> tooLong{{std::string(200, '\xe4'), {'x'}}, {"fine.txt", {'f'}}};
    const std::vector<StoredFile> twice{{"a.txt", kSome}, {"d\\b.txt", kSome}, {"d\\b.txt", kSome}};
    const auto overLink = [](const ScratchFolder& scratch) {
        WriteFile(scratch / "outside/f.txt", BytesFromString("old"));
        fs::create_directories(scratch / "out");
        fs::create_symlink(scratch / "outside/f.txt", scratch / "out/a.txt");
    };
    // Files of 2, 1, 2, 1 and 1 records, so that workers decode ahead across files.
    std::vector<StoredFile> five{{"Ordner\\text.log", PatternBytes(2 * 1048576 + 77, 1, true)},
                                 {"leer", {}},
                                 {"random.bin", PatternBytes(2 * 1048576 + 3, 2)},
                                 {"Ordner\\klein.txt", PatternBytes(900, 3, true)},
                                 {"mixed.bin", PatternBytes(300000, 4, true)}};
    std::vector<StoredFile> fiveUnsafe = five;
    fiveUnsafe[2].ansiName = "..\\escape.bin";
    const char* firstTwo = "out/Ordner/text.log=*, out/leer=";
    const std::string all =
        std::string(firstTwo) + ", out/random.bin=*, out/Ordner/klein.txt=*, out/mixed.bin=*";
    const std::string allSafe = std::string(firstTwo) + ", out/Ordner/klein.txt=*, out/mixed.bin=*";
    const std::string smallDone =
        std::string(firstTwo) + ", out/random.bin=*, out/Ordner/klein.txt=*";
    const std::string safeSmallDone = std::string(firstTwo) + ", out/Ordner/klein.txt=*";
    const RestoreCase rows[] = {
        {"ZeroCountsBeyondOneReadPiece", one, "out/a.txt=some", None, None,
         [](Bytes& c) { WithIndex(c, 70000); }},
        // {255, 255, 1} would read as an index of one empty file, but it is too short.
        {"Below4Bytes", one, "", NoUsableContent, None,
         [](Bytes& c) { c = BytesFromHex("ffff01"); }},
        {"NoSeparatorAtEnd", one, "", NoUsableContent, None,
         [](Bytes& c) { c.end()[-1] = c.end()[-2] = 7; }},
        {"LengthOverflows", one, "", NoUsableContent, None,
         [](Bytes& c) { c.insert(c.end() - 1, 9, 254); }},
        {"CountPastTheRecords", one, "", NoUsableContent, None,
         [](Bytes& c) { WithIndex(c, 0, 1000000); }},
        {"RecordTooLong", one, "", DamagedData, None,
         [](Bytes& c) { PutInt32Le(c.data(), 0x7FFFFFFE); }},
        {"RecordNotWholeBlocks", one, "", DamagedData, None,
         [](Bytes& c) { PutInt32Le(c.data(), 32); }},
        // Containers that hold no record, or whose index length lies where the search must
        // not look: of 5 bytes only the last 2 are searched, so the 255 in byte 2 is not.
        {"OneEmptyEntry", one, "", NoUsableContent, None,
         [](Bytes& c) { c = BytesFromHex("00ff0100"); }},
        {"ThreeEmptyEntries", one, "", NoUsableContent, None,
         [](Bytes& c) { c = BytesFromHex("00ffffff03"); }},
        {"SeparatorBeforeTheSearchedBytes", one, "", NoUsableContent, None,
         [](Bytes& c) { c = BytesFromHex("00ff010203"); }},
        // Damage in a later chunk keeps only the files before.
        {"DamageInALaterChunk", laterChunk, "out/ok.txt=some", DamagedData, None,
         [](Bytes& c) { c.end()[-200] ^= 1; }, 2},
        {"WrongPassphraseEmptyFilesFirst", emptyFirst, "", WrongPassphrase},
        {"WrongPassphraseOnlyAnEmptyFile", onlyEmpty, "", WrongPassphrase},
        {"RelativeLink", linkAndFine, "out/fine.txt=some", EntriesLeftOut, LinkInPath, nullptr, 0,
         -1, LinkAt("d", "../outside")},
        {"AbsoluteLink", linkAndFine, "out/fine.txt=some", EntriesLeftOut, LinkInPath, nullptr, 0,
         -1, LinkAt("d", "{s}/outside")},
        {"DeeperFoldersWouldBeMadeOutside", deeper, "out/fine.txt=some", EntriesLeftOut, LinkInPath,
         nullptr, 0, -1, LinkAt("d", "../outside")},
        {"LinkBelowARealFolder", belowReal, "out/fine.txt=some", EntriesLeftOut, LinkInPath,
         nullptr, 0, -1, LinkAt("deep/d", "../../outside")},
        {"LinkToAFileUsedAsFolder", linkAndFine, "out/fine.txt=some", EntriesLeftOut, LinkInPath,
         nullptr, 0, -1, LinkAt("d", "{s}/c.vexo")},
        // Overwriting a link replaces the link, not its target.
        {"OverwriteALink", one, "out/a.txt=some, outside/f.txt=old", None, None, nullptr, 0, -1,
         overLink, Overwrite},
        {"AnotherName", lateNew, "out/a.txt=some, out/b.txt=new", None, None, nullptr, 0, -1,
         FileAt("out/a.txt", "some"), AnotherName, "out/b.txt"},
        {"NoOtherNameSkips", lateNew, "out/a.txt=some", None, None, nullptr, 0, -1,
         FileAt("out/a.txt", "some"), AnotherName},
        {"ANameLinuxCannotTake", tooLong, "out/fine.txt=f", EntriesLeftOut, NameTooLong},
        {"AFolderThatCannotBeMade", one, "file=f", WriteFailed, None, nullptr, 0, -1,
         FileAt("file", "f"), Cancel, nullptr, "file/out"},
        // A conflict found late stops the run before anything is written.
        {"SameNameTwice", twice, "", OutputExists, OutputExists},
        {"Intact", five, all.c_str()},
        {"DamagedSecondChunk", five, "", DamagedData, None, [](Bytes& c) { FlipInRecord(c, 1); },
         2},
        // A first record that does not decipher to a header is no file: left out, named.
        {"DamagedFirstChunkOfALaterFile", five, allSafe.c_str(), EntriesLeftOut, DamagedData,
         [](Bytes& c) { FlipInRecord(c, 3); }},
        {"DamagedLastChunks", five, firstTwo, DamagedData, None,
         [](Bytes& c) { FlipInRecord(c, 4), FlipInRecord(c, 6); }, 2},
        {"CancelInABigFile", five, "", Cancelled, None, nullptr, 0, 0},
        // Cancel asked when a file of one chunk starts is honoured once it is done.
        {"CancelAtASmallFile", five, smallDone.c_str(), Cancelled, None, nullptr, 0, 3},
        {"UnsafeNamePassedOver", fiveUnsafe, allSafe.c_str(), EntriesLeftOut, UnsafeName},
        {"CancelAfterAnUnsafeName", fiveUnsafe, safeSmallDone.c_str(), Cancelled, UnsafeName,
         nullptr, 0, 3},
    };
    for (const RestoreCase& row : rows) {
        SCOPED_TRACE(row.name);
        Tree after = TreeOf(row.after);
        for (auto& [path, contents] : after) {
            for (const StoredFile& file : row.stored) {
                std::string name = "out/" + file.ansiName;
                std::replace(name.begin(), name.end(), '\\', '/');
                if (contents == "*" && name == path) {
                    contents = StringFromBytes(file.data);
                }
            }
        }
        // Restore and test on the calling thread alone, then with more workers than cores.
        std::vector<FileJobResult> results;
        for (const std::size_t workers : std::initializer_list<std::size_t>{0, 3}) {
            SCOPED_TRACE(::testing::Message() << workers << " workers");
            ScratchFolder scratch;
            if (row.prepare) {
                row.prepare(scratch);
            }
            Bytes container = BuildContainer(row.stored);
            if (row.spoil != nullptr) {
                row.spoil(container);
            }
            WriteFile(scratch / "c.vexo", container);
            ScriptedObserver observer;
            observer.existingFile = row.answer;
            observer.cancelAtFile = row.cancelAtFile;
            if (row.anotherName != nullptr) {
                observer.anotherName = scratch / row.anotherName;
            }
            const std::string out = scratch / row.output;
            // The rows that expect a wrong passphrase give one.
            const char* passphrase = row.error == WrongPassphrase ? "not it" : kPassphrase;
            const FileJobResult result =
                DecryptTo(scratch / "c.vexo", out, observer, passphrase, workers);
            EXPECT_EQ(result.error, row.error);
            EXPECT_EQ(result.systemError, row.error == WriteFailed ? ENOTDIR : 0);
            if (row.chunk != 0) {
                EXPECT_EQ(result.chunk, row.chunk);
            }
            ASSERT_EQ(result.omitted.size(), row.omitted == None ? 0u : 1u);
            if (row.omitted != None) {
                EXPECT_EQ(result.omitted[0].why, row.omitted);
            }
            if (row.error == OutputExists) {
                EXPECT_EQ(result.omitted[0].name, scratch / "out/d/b.txt");
            }
            const Tree tree = TreeBelow(scratch.Path());
            EXPECT_TRUE(std::equal(tree.begin(), tree.end(), after.begin(), after.end(),
                                   [](auto& a, auto& b) { return a.first == b.first; }))
                << ::testing::PrintToString(FilesBelow(scratch.Path()));
            EXPECT_TRUE(tree == after) << "every file holds what it should";
            if (row.omitted == LinkInPath) {
                EXPECT_TRUE(fs::is_empty(scratch / "outside")) << "not even a folder made there";
            }
            ScriptedObserver testObserver;
            testObserver.cancelAtFile = row.cancelAtFile;
            const SecretBytes key = MakePassphraseKey(passphrase);
            const FileJobResult tested =
                TestContainer(DecryptRequest{scratch / "c.vexo", {}, &key}, testObserver, workers);
            if (row.error == NoUsableContent) { // found before any passphrase is tried
                const SecretBytes anyKey = MakePassphraseKey("any passphrase at all");
                EXPECT_EQ(
                    TestContainer(DecryptRequest{scratch / "c.vexo", {}, &anyKey}, observer).error,
                    NoUsableContent);
            }
            if (row.error == WrongPassphrase) { // found before anything is created
                EXPECT_FALSE(PathExists(out));
                EXPECT_TRUE(DecryptTo(scratch / "c.vexo", out, observer).ok());
            }
            for (FileJobResult named : {result, tested}) { // names below the scratch folder
                named.name = named.name.substr(std::min(scratch.Path().size(), named.name.size()));
                results.push_back(named);
            }
        }
        // The workers give the same error at the same file and chunk as the thread alone.
        for (const std::size_t alone : std::initializer_list<std::size_t>{0, 1}) {
            const FileJobResult &expected = results[alone], &workers = results[alone + 2];
            EXPECT_EQ(workers.error, expected.error) << alone;
            EXPECT_EQ(workers.fileIndex, expected.fileIndex) << alone;
            EXPECT_EQ(workers.chunk, expected.chunk) << alone;
            EXPECT_EQ(workers.name, expected.name) << alone;
        }
    }
}

} // namespace
} // namespace kelvora
