// Structured containers: the input is taken as the plain content of records, which are
// enciphered with the project's cipher and key rule, so that the fuzzer reaches past the
// passphrase check into names, blocks and indexes. With the first bit of the first byte
// set, the input describes files instead, which the real writer encrypts and the reader
// must restore exactly.
#include "FuzzSupport.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"
#include "files/CompressBlock.h"
#include "files/ContainerIndex.h"
#include "files/DecryptJob.h"
#include "files/EncryptJob.h"
#include "files/InputList.h"
#include "files/LittleEndian.h"

#include <array>
#include <filesystem>
#include <map>
#include <system_error>

namespace kelvora::fuzz {
namespace {

namespace fs = std::filesystem;

// Cursor hands out the input's bytes; past the end it gives zeros and empty pieces.
class Cursor {
public:
    Cursor(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    bool Done() const { return m_at >= m_size; }
    std::uint8_t Byte() { return Done() ? 0 : m_data[m_at++]; }
    std::size_t Length() { return Byte() | static_cast<std::size_t>(Byte()) << 8; }
    Bytes Take(std::size_t count) {
        const std::size_t n = std::min(count, m_size - std::min(m_at, m_size));
        Bytes piece(m_data + m_at, m_data + m_at + n);
        m_at += n;
        return piece;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_at = 0;
};

constexpr std::uint8_t kStartsFile = 1;
constexpr std::uint8_t kShaped = 2;

// ShapedFirstRecord lays out a first record from its fields: salt, tail byte, name length,
// name, and a compressed block of the data.
Bytes ShapedFirstRecord(Cursor& in) {
    Bytes plain(34, 0);
    plain[32] = in.Byte();
    const Bytes name = in.Take(in.Byte());
    plain[33] = static_cast<std::uint8_t>(name.size());
    plain.insert(plain.end(), name.begin(), name.end());
    const Bytes data = in.Take(in.Length());
    Bytes block;
    if (CompressBlock(data, block)) {
        plain.insert(plain.end(), block.begin(), block.end());
    }
    return plain;
}

void RecordsFromPlainContent(Cursor& in, const Playground& playground) {
    CRijndael cipher;
    if (!cipher.EncryptPrepareKey(MakePassphraseKey(kPassphrase).bytes())) {
        Stop("cannot prepare the key");
    }
    Bytes container;
    std::vector<std::int64_t> counts;
    while (!in.Done()) {
        const std::uint8_t kind = in.Byte();
        const bool startsFile = (kind & kStartsFile) != 0 || counts.empty();
        const Bytes plain = (kind & kShaped) != 0 ? ShapedFirstRecord(in) : in.Take(in.Length());
        const Bytes payload = cipher.EncryptDo(plain, !startsFile);
        if (payload.empty()) {
            continue;
        }
        std::array<std::uint8_t, 4> lastIndex{};
        PutInt32Le(lastIndex.data(), static_cast<std::int32_t>(payload.size() - 1));
        container.insert(container.end(), lastIndex.begin(), lastIndex.end());
        container.insert(container.end(), payload.begin(), payload.end());
        if (startsFile) {
            counts.push_back(0);
        }
        counts.back() += static_cast<std::int64_t>(payload.size() + 4);
    }
    const Bytes index = EncodeIndex(counts);
    container.insert(container.end(), index.begin(), index.end());
    WriteBytes(playground.Container(), container.data(), container.size());
    ReadContainerEveryWay(playground);
}

// SafeName maps bytes to a relative path of letters, digits and a few marks; empty when the
// result would not be a plain relative path.
std::string SafeName(const Bytes& bytes) {
    static constexpr char kAlphabet[] = "abcdefghijklmnopqrstuvwxyz0123456789_/.-";
    std::string name;
    for (const std::uint8_t b : bytes) {
        name.push_back(kAlphabet[b % (sizeof kAlphabet - 1)]);
    }
    for (const auto& part : fs::path(name)) {
        if (part.empty() || part == "." || part == "..") {
            return {};
        }
    }
    return name.empty() || name.front() == '/' || name.back() == '/' ||
                   name.find("//") != std::string::npos
               ? std::string()
               : name;
}

void RoundTrip(Cursor& in, const Playground& playground) {
    const std::string tree = playground.Inputs() + "/tree";
    fs::remove_all(playground.Inputs());
    fs::create_directories(tree);
    std::map<std::string, Bytes> files;
    for (int i = 0; i < 4 && !in.Done(); ++i) {
        const std::string name = SafeName(in.Take(in.Byte() % 24));
        const Bytes data = in.Take(in.Length());
        std::error_code error;
        fs::create_directories(fs::path(tree + "/" + name).parent_path(), error);
        if (name.empty() || error || fs::exists(tree + "/" + name)) {
            continue;
        }
        WriteBytes(tree + "/" + name, data.data(), data.size());
        if (fs::is_regular_file(tree + "/" + name)) {
            files[name] = data;
        }
    }
    if (files.empty()) {
        return;
    }
    InputList list;
    (void)list.AddListPath(tree);
    const SecretBytes key = MakePassphraseKey(kPassphrase);
    SystemRandom random;
    AcceptingObserver observer;
    const EncryptRequest request{list.Entries(), playground.Container(), &key, &random, {}, {}};
    if (!EncryptFiles(request, observer).ok()) {
        Stop("the writer failed on plain files");
    }
    playground.Reset();
    if (!DecryptContainer(DecryptRequest{playground.Container(), playground.Output(), &key},
                          observer)
             .ok()) {
        Stop("a container the writer made does not restore");
    }
    for (const auto& [name, data] : files) {
        if (ReadBytes(playground.Output() + "/tree/" + name) != data) {
            Stop("a restored file differs: " + name);
        }
    }
    playground.CheckNothingEscaped();
}

} // namespace
} // namespace kelvora::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelvora::fuzz;
    static const Playground playground;
    Cursor in(data, size);
    if ((in.Byte() & 1) != 0) {
        RoundTrip(in, playground);
    } else {
        RecordsFromPlainContent(in, playground);
    }
    return 0;
}
