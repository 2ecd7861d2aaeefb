#include "files/RecordWalker.h"

#include "crypto/KeyRules.h"
#include "files/ContainerFormat.h"
#include "files/FileTestSupport.h"
#include "files/WalkHandlers.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

// MemorySource hands out bytes in pieces of at most `piece`, as a pipe does.
class MemorySource final : public ByteSource {
public:
    MemorySource(Bytes bytes, std::size_t piece) : m_bytes(std::move(bytes)), m_piece(piece) {}
    Result<std::size_t, Errno> Read(std::span<std::uint8_t> out) override {
        std::size_t done = 0;
        while (done < out.size() && m_at < m_bytes.size()) {
            const std::size_t n = std::min({out.size() - done, m_bytes.size() - m_at, m_piece});
            std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(m_at), n,
                        out.begin() + static_cast<std::ptrdiff_t>(done));
            m_at += n;
            done += n;
        }
        return done;
    }

private:
    Bytes m_bytes;
    std::size_t m_piece;
    std::size_t m_at = 0;
};

class BytesSink final : public ByteSink {
public:
    Bytes bytes;
    Result<void, Errno> Write(std::span<const std::uint8_t> more) override {
        bytes.insert(bytes.end(), more.begin(), more.end());
        return {};
    }
};

// Collected is what a walk handed over: every file's name, bytes and how it ended.
struct Collected final : RecordWalkHandler {
    std::vector<std::string> names;
    std::vector<BytesSink> files;
    std::vector<std::pair<FileError, std::int64_t>> endings;

    ByteSink* OnFileStarted(std::size_t, const std::string& ansiName) override {
        names.push_back(ansiName);
        files.emplace_back();
        return &files.back();
    }
    FileJobResult OnFileEnded(std::size_t, FileError error, std::int64_t chunk) override {
        endings.emplace_back(error, chunk);
        return {};
    }
};

WalkOutcome Walk(const Bytes& container, Collected& collected, bool keepGoing = false,
                 const char* passphrase = kPassphrase, std::size_t piece = 65536) {
    MemorySource source(container, piece);
    FileJobObserver observer;
    return WalkRecords(source, MakePassphraseKey(passphrase), collected, observer, keepGoing);
}

// The first chunk's room beside the two-letter names "f0", "f1", ...
constexpr std::size_t kRoom = FirstChunkRoom(2);

struct BoundaryCase {
    const char* name;
    std::vector<std::size_t> sizes; // one file each, named f0, f1, ...
};

class WalkAtChunkBoundaries : public ::testing::TestWithParam<BoundaryCase> {};

TEST_P(WalkAtChunkBoundaries, GivesEveryFileAsTheIndexedReaderDoes) {
    std::vector<StoredFile> files;
    for (std::size_t i = 0; i < GetParam().sizes.size(); ++i) {
        const std::string name = "f" + std::to_string(i);
        files.push_back({name, PatternBytes(GetParam().sizes[i], static_cast<std::uint32_t>(i))});
    }
    const Bytes container = BuildContainer(files);
    Collected collected;
    const WalkOutcome outcome = Walk(container, collected);
    ASSERT_TRUE(outcome.result.ok()) << static_cast<int>(outcome.result.error);
    EXPECT_EQ(outcome.index, IndexCheck::Matches);
    EXPECT_EQ(outcome.files, files.size());
    ASSERT_EQ(collected.files.size(), files.size());
    for (std::size_t i = 0; i < files.size(); ++i) {
        EXPECT_EQ(collected.names[i], files[i].ansiName);
        EXPECT_EQ(collected.files[i].bytes, files[i].data) << i;
        EXPECT_EQ(collected.endings[i].first, FileError::None);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, WalkAtChunkBoundaries,
    ::testing::Values(BoundaryCase{"Empty", {0}}, BoundaryCase{"OneByte", {1}},
                      BoundaryCase{"RoomLessOne", {kRoom - 1}}, BoundaryCase{"Room", {kRoom}},
                      BoundaryCase{"RoomPlusOne", {kRoom + 1}},
                      BoundaryCase{"TwoFullChunks", {kRoom + kChunkBytes}},
                      BoundaryCase{"FullThenAnother", {kRoom, 5, 0}},
                      BoundaryCase{"EmptyThenFullThenEmpty", {0, kRoom + kChunkBytes, 0}},
                      BoundaryCase{"Several", {3, 0, 1000, kRoom + 7}}),
    [](const auto& info) { return info.param.name; });

// Three files: a1 (5 bytes, 1 record), bg (3 records), c1 (7 bytes, 1 record), the index.
struct Damaged {
    std::vector<StoredFile> files{{"a1", PatternBytes(5, 1)},
                                  {"bg", PatternBytes(kRoom + kChunkBytes + 100, 2)},
                                  {"c1", PatternBytes(7, 3)}};
    Bytes container = BuildContainer(files);
    // Record offsets: a1, bg 1, bg 2, bg 3, c1, and the index's start.
    std::vector<std::size_t> records;

    Damaged() {
        for (std::size_t at = 0; records.size() < 6;) {
            records.push_back(at);
            at += 4 +
                  static_cast<std::size_t>(container[at] | container[at + 1] << 8 |
                                           container[at + 2] << 16) +
                  1;
        }
    }
};

struct DamageCase {
    const char* name;
    std::function<void(Damaged&)> damage;
    std::vector<std::string> intact; // files restored whole
    std::string damaged;             // the file reported damaged, if any
    std::int64_t chunk;              // its first damaged chunk
    std::size_t leadingBytes;        // what its intact leading chunks hold
    IndexCheck index;
};

class Salvage : public ::testing::TestWithParam<DamageCase> {};

TEST_P(Salvage, KeepsGoingPastTheDamage) {
    Damaged d;
    GetParam().damage(d);
    Collected collected;
    const WalkOutcome outcome = Walk(d.container, collected, true);
    ASSERT_TRUE(outcome.result.ok()) << static_cast<int>(outcome.result.error);
    EXPECT_EQ(outcome.index, GetParam().index);
    std::vector<std::string> intact;
    for (std::size_t i = 0; i < collected.names.size(); ++i) {
        const auto& original = *std::find_if(d.files.begin(), d.files.end(), [&](const auto& f) {
            return f.ansiName == collected.names[i];
        });
        if (collected.endings[i].first == FileError::None) {
            intact.push_back(collected.names[i]);
            EXPECT_EQ(collected.files[i].bytes, original.data) << collected.names[i];
            continue;
        }
        EXPECT_EQ(collected.names[i], GetParam().damaged);
        EXPECT_EQ(collected.endings[i], std::pair(FileError::DamagedData, GetParam().chunk));
        EXPECT_EQ(
            collected.files[i].bytes,
            Bytes(original.data.begin(),
                  original.data.begin() + static_cast<std::ptrdiff_t>(GetParam().leadingBytes)));
    }
    EXPECT_EQ(intact, GetParam().intact);
    EXPECT_EQ(outcome.damagedFiles, GetParam().damaged.empty() ? 0u : 1u);
}

void Flip(Damaged& d, std::size_t offset) {
    d.container[offset] ^= 0x10;
}

// CutAt cuts the container before record `record` (5: the index); FlipAt flips a byte at
// `offset` from the start of record `record`.
std::function<void(Damaged&)> CutAt(std::size_t record, std::size_t extra = 0) {
    return [=](Damaged& d) { d.container.resize(d.records[record] + extra); };
}
std::function<void(Damaged&)> FlipAt(std::size_t record, std::size_t offset) {
    return [=](Damaged& d) { Flip(d, d.records[record] + offset); };
}

using enum IndexCheck;
const std::vector<std::string> kAll = {"a1", "bg", "c1"};
const std::vector<std::string> kAroundBg = {"a1", "c1"};

INSTANTIATE_TEST_SUITE_P(
    Cases, Salvage,
    ::testing::Values(
        DamageCase{"Whole", [](Damaged&) {}, kAll, "", 0, 0, Matches},
        DamageCase{"IndexLost", CutAt(5), kAll, "", 0, 0, Missing},
        DamageCase{"IndexFlipped", FlipAt(5, 0), kAll, "", 0, 0, Differs},
        DamageCase{"CutAfterBig", CutAt(4), {"a1", "bg"}, "", 0, 0, Missing},
        DamageCase{"CutInBig", CutAt(3, 100), {"a1"}, "bg", 3, kRoom + kChunkBytes, Missing},
        DamageCase{"FirstRecordOfAFlipped", FlipAt(0, 44), {"bg", "c1"}, "", 0, 0, Differs},
        DamageCase{"LengthOfBgFlipped", FlipAt(1, 0), kAroundBg, "", 0, 0, Differs},
        DamageCase{"FirstRecordOfBigFlipped", FlipAt(1, 1004), kAroundBg, "bg", 1, 0, Matches},
        DamageCase{"SecondRecordFlipped", FlipAt(2, 5004), kAroundBg, "bg", 2, kRoom, Matches},
        DamageCase{"LengthOfSecondRecordFlipped", FlipAt(2, 3), kAroundBg, "bg", 2, kRoom, Differs},
        DamageCase{"LastRecordOfBigFlipped", FlipAt(3, 40), kAroundBg, "bg", 3, kRoom + kChunkBytes,
                   Matches}),
    [](const auto& info) { return info.param.name; });

// Cut at every record boundary, with the index lost, the files whose records all came before
// the cut are restored whole and nothing else is claimed whole.
TEST(RecordWalk, SalvagesAContainerCutAtEveryRecordBoundary) {
    Damaged d;
    const std::vector<std::string> names = {"a1", "bg", "bg", "bg", "c1"};
    for (std::size_t cut = 1; cut < d.records.size(); ++cut) {
        Bytes container = d.container;
        container.resize(d.records[cut]);
        Collected collected;
        const WalkOutcome outcome = Walk(container, collected, true);
        ASSERT_TRUE(outcome.result.ok()) << cut;
        EXPECT_EQ(outcome.index, IndexCheck::Missing) << cut;
        std::vector<std::string> whole;
        for (std::size_t i = 0; i < cut; ++i) {
            if (i + 1 == names.size() || names[i] != names[i + 1]) {
                whole.push_back(names[i]);
            }
        }
        std::vector<std::string> restored;
        for (std::size_t i = 0; i < collected.names.size(); ++i) {
            if (collected.endings[i].first == FileError::None) {
                restored.push_back(collected.names[i]);
            }
        }
        // bg cut behind a full chunk is reported with the chunk that is missing.
        if (cut == 2 || cut == 3) {
            EXPECT_EQ(collected.endings.back(),
                      std::pair(FileError::DamagedData, static_cast<std::int64_t>(cut)))
                << cut;
        }
        EXPECT_EQ(restored, whole) << cut;
    }
}

struct RefusalCase {
    const char* name;
    std::function<Bytes()> container;
    const char* passphrase;
    FileError error;
};

class WalkRefusal : public ::testing::TestWithParam<RefusalCase> {};

TEST_P(WalkRefusal, StartsNoFile) {
    Collected collected;
    const WalkOutcome outcome =
        Walk(GetParam().container(), collected, false, GetParam().passphrase);
    EXPECT_EQ(outcome.result.error, GetParam().error);
    EXPECT_TRUE(collected.names.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, WalkRefusal,
    ::testing::Values(RefusalCase{"WrongPassphrase",
                                  [] {
                                      return BuildContainer({{"a", {'x'}}});
                                  },
                                  "wrong", FileError::WrongPassphrase},
                      RefusalCase{"NotAContainer", [] { return PatternBytes(5000, 7); },
                                  kPassphrase, FileError::NoUsableContent},
                      RefusalCase{"Nothing", [] { return Bytes(); }, kPassphrase, FileError::None}),
    [](const auto& info) { return info.param.name; });

TEST(RecordWalk, StopsAtTheFirstDamageWithoutKeepGoing) {
    Damaged d;
    Flip(d, d.records[2] + 4 + 5000);
    Collected collected;
    const WalkOutcome outcome = Walk(d.container, collected, false, kPassphrase, 1);
    EXPECT_EQ(outcome.result.error, FileError::DamagedData);
    EXPECT_EQ(outcome.result.fileIndex, 1u);
    EXPECT_EQ(outcome.result.chunk, 2);
    EXPECT_EQ(collected.names, (std::vector<std::string>{"a1", "bg"}));
}

// A salvage from a file walks it once for the names and settles every conflict before the
// walk that writes: an existing later file stops the run before an earlier one is written,
// and two files with the same name are asked about as the indexed restore asks.
struct PlanCase {
    const char* name;
    std::vector<StoredFile> files;
    ExistingFileAnswer answer;
    std::vector<std::string> written; // below out/, after the run
    FileError planned;
};

class PlannedSalvage : public ::testing::TestWithParam<PlanCase> {};

TEST_P(PlannedSalvage, SettlesEveryConflictBeforeWriting) {
    ScratchFolder scratch;
    WriteFile(scratch / "out/b.txt", {'o', 'l', 'd'});
    const Bytes container = BuildContainer(GetParam().files);
    const SecretBytes key = MakePassphraseKey(kPassphrase);
    ScriptedObserver observer;
    WalkNames names;
    MemorySource first(container, 65536);
    ASSERT_TRUE(WalkRecords(first, key, names, observer, true).result.ok());
    observer.existingFile = GetParam().answer;
    WalkRestorer restorer(scratch / "out", observer, false);
    EXPECT_EQ(restorer.PlanTargets(names.Names()).error, GetParam().planned);
    if (GetParam().planned == FileError::None) {
        MemorySource second(container, 65536);
        EXPECT_TRUE(WalkRecords(second, key, restorer, observer, true).result.ok());
    }
    EXPECT_EQ(FilesBelow(scratch / "out"), GetParam().written);
    EXPECT_EQ(ReadFile(scratch / "out/b.txt"), BytesFromString("old"));
}

const std::vector<StoredFile> kAB{{"a.txt", {'a'}}, {"b.txt", {'b'}}};
const std::vector<StoredFile> kTwice{{"x.txt", {'1'}}, {"x.txt", {'2'}}};

INSTANTIATE_TEST_SUITE_P(Cases, PlannedSalvage,
                         ::testing::Values(PlanCase{"LaterFileExistsCancel",
                                                    kAB,
                                                    ExistingFileAnswer::Cancel,
                                                    {"b.txt"},
                                                    FileError::Cancelled},
                                           PlanCase{"LaterFileExistsSkip",
                                                    kAB,
                                                    ExistingFileAnswer::Skip,
                                                    {"a.txt", "b.txt"},
                                                    FileError::None},
                                           PlanCase{"SameNameTwiceRenamed",
                                                    kTwice,
                                                    ExistingFileAnswer::Rename,
                                                    {"b.txt", "x (2).txt", "x.txt"},
                                                    FileError::None}),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
