// Writes each fuzz target's seed corpus, made with the project's own writers, into
// <folder>/<target>/: kelvora_fuzz_seeds <folder>.
#include "FuzzSupport.h"
#include "common/Ansi.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"
#include "files/ContainerIndex.h"
#include "files/EncryptJob.h"
#include "files/InputList.h"
#include "text/Base64.h"
#include "text/EncryptedText.h"

#include <cstdio>
#include <filesystem>
#include <vector>

namespace kelvora::fuzz {
namespace {

namespace fs = std::filesystem;

void Seed(const fs::path& folder, int number, const Bytes& bytes) {
    fs::create_directories(folder);
    WriteBytes((folder / ("seed-" + std::to_string(number))).string(), bytes.data(), bytes.size());
}

Bytes FromText(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

const std::vector<std::string> kTexts = {"", "a", "hello, world", std::string(300, 'x'),
                                         "Zeile 1\r\nZeile 2 \xe4\xf6\xfc"};

void TextSeeds(const fs::path& root) {
    int n = 0;
    for (const std::string& text : kTexts) {
        Seed(root / "fuzz_base64", n, FromText(Base64Encode(FromText(text))));
        CRijndael cipher;
        SystemRandom random;
        const TextResult armoured = EncryptText(cipher, MakePassphraseKey(kPassphrase).bytes(),
                                                WithBanner(0, text), random);
        Seed(root / "fuzz_text", n++, FromText(armoured.text));
    }
}

void IndexSeeds(const fs::path& root) {
    const std::vector<std::vector<std::int64_t>> lists = {
        {0}, {254}, {255}, {1, 2, 3}, {2097188, 0, 70000}, {1LL << 40}};
    int n = 0;
    for (const auto& counts : lists) {
        Seed(root / "fuzz_index", n++, EncodeIndex(counts));
    }
}

// ContainerSeeds encrypts small trees with the real writer.
void ContainerSeeds(const fs::path& root, const Playground& playground) {
    const std::vector<std::vector<std::pair<std::string, std::string>>> trees = {
        {{"a.txt", "some text"}},
        {{"e", ""}, {"d/b.txt", std::string(5000, 'b')}},
        {{"x/y/z.bin", "\x01\x02\x03"}, {"x/w", "w"}, {"caf\xc3\xa9", "accent"}},
    };
    int n = 0;
    for (const auto& tree : trees) {
        fs::remove_all(playground.Inputs());
        for (const auto& [name, data] : tree) {
            const fs::path path = fs::path(playground.Inputs()) / "tree" / name;
            fs::create_directories(path.parent_path());
            WriteBytes(path.string(), FromText(data).data(), data.size());
        }
        InputList list;
        (void)list.AddListPath(playground.Inputs() + "/tree");
        const SecretBytes key = MakePassphraseKey(kPassphrase);
        SystemRandom random;
        AcceptingObserver observer;
        if (!EncryptFiles({list.Entries(), playground.Container(), &key, &random, {}, {}}, observer)
                 .ok()) {
            Stop("cannot write a seed container");
        }
        Seed(root / "fuzz_container", n++, ReadBytes(playground.Container()));
    }
}

// RecordSeeds follow the structured target's layout: shaped first records with names and
// data, and file descriptions for the round trip.
void RecordSeeds(const fs::path& root) {
    auto shaped = [](Bytes& out, std::uint8_t kind, const std::string& name,
                     const std::string& data) {
        out.push_back(kind);
        out.push_back(static_cast<std::uint8_t>(data.size() % 32));
        out.push_back(static_cast<std::uint8_t>(name.size()));
        out.insert(out.end(), name.begin(), name.end());
        out.push_back(static_cast<std::uint8_t>(data.size() & 255));
        out.push_back(static_cast<std::uint8_t>(data.size() >> 8));
        out.insert(out.end(), data.begin(), data.end());
    };
    Bytes records{0};
    shaped(records, 3, "a.txt", "hello");
    shaped(records, 3, "d\\b.txt", std::string(700, 'q'));
    shaped(records, 3, "link\\f", "through a link");
    shaped(records, 3, "real\\abs\\f", "through an absolute link");
    Seed(root / "fuzz_records", 0, records);
    Bytes files{1};
    for (const std::string name : {"abc", "d/e/f", "g.h"}) {
        files.push_back(static_cast<std::uint8_t>(name.size()));
        for (const char c : name) {
            // The target's alphabet: letters from 0, '/' at 37, '.' at 38.
            files.push_back(c == '/' ? 37 : c == '.' ? 38 : static_cast<std::uint8_t>(c - 'a'));
        }
        files.push_back(9);
        files.push_back(0);
        files.insert(files.end(), 9, static_cast<std::uint8_t>(name.size()));
    }
    Seed(root / "fuzz_records", 1, files);
}

} // namespace
} // namespace kelvora::fuzz

int main(int argc, char** argv) {
    using namespace kelvora::fuzz;
    if (argc != 2) {
        std::fprintf(stderr, "usage: kelvora_fuzz_seeds FOLDER\n");
        return 2;
    }
    const std::filesystem::path root = argv[1];
    const Playground playground;
    TextSeeds(root);
    IndexSeeds(root);
    ContainerSeeds(root, playground);
    RecordSeeds(root);
    return 0;
}
