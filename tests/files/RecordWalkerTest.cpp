// Walking a container's records front to back without its index, as a pipe gives it: salvage
// past damage and cuts, refusals, and a salvage that settles its conflicts before writing.
// Walks over intact containers at every chunk boundary are in ContainerRoundTripTest.cpp.
#include "files/RecordWalker.h"

#include "WalkSupport.h"
#include "files/ContainerFormat.h"
#include "files/WalkHandlers.h"

#include <functional>
#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

// The first chunk's room beside the two-letter names.
constexpr std::size_t kRoom = kChunkBytes - kStreamHeaderBytes - 2;

// Three files: a1 (5 bytes, 1 record), bg (3 records), c1 (7 bytes, 1 record), the index.
struct Damaged {
    std::vector<StoredFile> files{{"a1", PatternBytes(5, 1)},
                                  {"bg", PatternBytes(kRoom + kChunkBytes + 100, 2)},
                                  {"c1", PatternBytes(7, 3)}};
    Bytes container = BuildContainer(files);
    // Record offsets: a1, bg 1, bg 2, bg 3, c1, and the index's start.
    std::vector<std::size_t> records = RecordOffsets(container, 6);
};

// CutAt cuts the container `extra` bytes behind the start of record `record` (5: the index);
// FlipAt flips a byte at `offset` from the start of record `record`.
std::function<void(Damaged&)> CutAt(std::size_t record, std::size_t extra = 0) {
    return [=](Damaged& d) { d.container.resize(d.records[record] + extra); };
}
std::function<void(Damaged&)> FlipAt(std::size_t record, std::size_t offset) {
    return [=](Damaged& d) { d.container[d.records[record] + offset] ^= 0x10; };
}

struct SalvageCase {
    const char* name;
    std::function<void(Damaged&)> damage;
    const std::vector<std::string>& intact; // files restored whole
    std::string damaged;                    // the file reported damaged, if any
    std::int64_t chunk;                     // its first damaged chunk
    std::size_t leadingBytes;               // what its intact leading chunks hold
    IndexCheck index;
};

// With keepGoing a walk restores every file it can read whole, reports a damaged one with
// its intact leading chunks, and says how the index compares. Cut at a record boundary with
// the index lost, the files whose records all came before the cut are whole and nothing else
// is claimed whole; bg cut behind a full chunk is reported with the chunk that is missing.
TEST(RecordWalk, SalvagesPastDamageAndCuts) {
    using enum IndexCheck;
    const std::vector<std::string> all{"a1", "bg", "c1"}, aroundBg{"a1", "c1"}, a{"a1"},
        ab{"a1", "bg"}, bc{"bg", "c1"};
    constexpr std::size_t kTwo = kRoom + kChunkBytes;
    const SalvageCase rows[] = {
        {"Whole", [](Damaged&) {}, all, "", 0, 0, Matches},
        {"CutAfterA1", CutAt(1), a, "", 0, 0, Missing},
        {"CutAfterBgsFirstChunk", CutAt(2), a, "bg", 2, kRoom, Missing},
        {"CutAfterBgsSecondChunk", CutAt(3), a, "bg", 3, kTwo, Missing},
        {"CutAfterBg", CutAt(4), ab, "", 0, 0, Missing},
        {"IndexLost", CutAt(5), all, "", 0, 0, Missing},
        {"IndexFlipped", FlipAt(5, 0), all, "", 0, 0, Differs},
        {"CutInBg", CutAt(3, 100), a, "bg", 3, kTwo, Missing},
        {"FirstRecordOfA1Flipped", FlipAt(0, 44), bc, "", 0, 0, Differs},
        {"LengthOfBgFlipped", FlipAt(1, 0), aroundBg, "", 0, 0, Differs},
        {"FirstRecordOfBgFlipped", FlipAt(1, 1004), aroundBg, "bg", 1, 0, Matches},
        {"SecondRecordFlipped", FlipAt(2, 5004), aroundBg, "bg", 2, kRoom, Matches},
        {"LengthOfSecondRecordFlipped", FlipAt(2, 3), aroundBg, "bg", 2, kRoom, Differs},
        {"LastRecordOfBgFlipped", FlipAt(3, 40), aroundBg, "bg", 3, kTwo, Matches},
    };
    for (const SalvageCase& row : rows) {
        SCOPED_TRACE(row.name);
        Damaged d;
        row.damage(d);
        Collected collected;
        const WalkOutcome outcome = Walk(d.container, collected, true);
        ASSERT_TRUE(outcome.result.ok()) << static_cast<int>(outcome.result.error);
        EXPECT_EQ(outcome.index, row.index);
        std::vector<std::string> intact;
        for (std::size_t i = 0; i < collected.names.size(); ++i) {
            const auto& original = *std::find_if(d.files.begin(), d.files.end(), [&](auto& f) {
                return f.ansiName == collected.names[i];
            });
            if (collected.endings[i].first == FileError::None) {
                intact.push_back(collected.names[i]);
                EXPECT_EQ(collected.files[i].bytes, original.data) << collected.names[i];
                continue;
            }
            EXPECT_EQ(collected.names[i], row.damaged);
            EXPECT_EQ(collected.endings[i], std::pair(FileError::DamagedData, row.chunk));
            EXPECT_EQ(collected.files[i].bytes,
                      Bytes(original.data.begin(),
                            original.data.begin() + static_cast<std::ptrdiff_t>(row.leadingBytes)));
        }
        EXPECT_EQ(intact, row.intact);
        EXPECT_EQ(outcome.damagedFiles, row.damaged.empty() ? 0u : 1u);
    }
}

// Without keepGoing a walk refuses what is no container, or not under this passphrase,
// before it starts a file, and stops at the first damage.
TEST(RecordWalk, RefusesBeforeStartingAFileAndStopsAtTheFirstDamage) {
    Damaged damaged;
    FlipAt(2, 4 + 5000)(damaged);
    const std::vector<std::string> none, ab{"a1", "bg"};
    const struct {
        const char* name;
        Bytes container;
        const char* passphrase;
        FileError error;
        const std::vector<std::string>& started;
    } rows[] = {
        {"WrongPassphrase", BuildContainer({{"a", {'x'}}}), "wrong", FileError::WrongPassphrase,
         none},
        {"NotAContainer", PatternBytes(5000, 7), kPassphrase, FileError::NoUsableContent, none},
        {"Nothing", {}, kPassphrase, FileError::None, none},
        {"DamagedSecondChunkOfBg", damaged.container, kPassphrase, FileError::DamagedData, ab},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Collected collected;
        const WalkOutcome outcome = Walk(row.container, collected, false, row.passphrase);
        EXPECT_EQ(outcome.result.error, row.error);
        EXPECT_EQ(collected.names, row.started);
        if (row.error == FileError::DamagedData) {
            EXPECT_EQ(outcome.result.fileIndex, 1u);
            EXPECT_EQ(outcome.result.chunk, 2);
        }
    }
}

// A salvage from a file walks it once for the names and settles every conflict before the
// walk that writes: an existing later file stops the run before an earlier one is written,
// and two files with the same name are asked about as the indexed restore asks.
TEST(RecordWalk, PlannedSalvageSettlesEveryConflictBeforeWriting) {
    const std::vector<StoredFile> ab{{"a.txt", {'a'}}, {"b.txt", {'b'}}};
    const std::vector<StoredFile> twice{{"x.txt", {'1'}}, {"x.txt", {'2'}}};
    const struct {
        const char* name;
        const std::vector<StoredFile>& files;
        ExistingFileAnswer answer;
        const char* written; // below out/, after the run
        FileError planned;
    } rows[] = {
        {"LaterFileExistsCancel", ab, ExistingFileAnswer::Cancel, "b.txt=old",
         FileError::Cancelled},
        {"LaterFileExistsSkip", ab, ExistingFileAnswer::Skip, "a.txt=a, b.txt=old",
         FileError::None},
        {"SameNameTwiceRenamed", twice, ExistingFileAnswer::Rename,
         "b.txt=old, x.txt=1, x (2).txt=2", FileError::None},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ScratchFolder scratch;
        WriteFile(scratch / "out/b.txt", {'o', 'l', 'd'});
        const Bytes container = BuildContainer(row.files);
        const SecretBytes key = MakePassphraseKey(kPassphrase);
        ScriptedObserver observer;
        WalkNames names;
        MemorySource first(container);
        ASSERT_TRUE(WalkRecords(first, key, names, observer, true).result.ok());
        observer.existingFile = row.answer;
        WalkRestorer restorer(scratch / "out", observer, false);
        EXPECT_EQ(restorer.PlanTargets(names.Names()).error, row.planned);
        if (row.planned == FileError::None) {
            MemorySource second(container);
            EXPECT_TRUE(WalkRecords(second, key, restorer, observer, true).result.ok());
        }
        EXPECT_EQ(TreeBelow(scratch / "out"), TreeOf(row.written));
    }
}

} // namespace
} // namespace kelvora
