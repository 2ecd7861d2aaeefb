#include "FileTestSupport.h"

#include "common/FixedRandom.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"
#include "files/ContainerIndex.h"
#include "files/DecryptJob.h"
#include "files/EncryptJob.h"
#include "files/LittleEndian.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <zlib.h>

namespace kelvora::testing {

namespace fs = std::filesystem;

void WriteFile(const std::string& path, const Bytes& bytes) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

Bytes ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<std::string> FilesBelow(const std::string& folder) {
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files.push_back(fs::relative(entry.path(), folder).string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

Tree TreeBelow(const std::string& folder) {
    Tree tree;
    for (const std::string& file : FilesBelow(folder)) {
        if (file != "c.vexo") {
            tree[file] = StringFromBytes(ReadFile(folder + "/" + file));
        }
    }
    return tree;
}

Tree TreeOf(std::string_view entries) {
    Tree tree;
    while (!entries.empty()) {
        const std::size_t comma = std::min(entries.find(", "), entries.size());
        const std::string_view entry = entries.substr(0, comma);
        const std::size_t equals = entry.find('=');
        tree[std::string(entry.substr(0, equals))] = entry.substr(equals + 1);
        entries.remove_prefix(std::min(comma + 2, entries.size()));
    }
    return tree;
}

FileJobResult EncryptPaths(const std::vector<std::string>& paths, const std::string& output,
                           FileJobObserver& observer, WrapOutput wrapOutput) {
    InputList list;
    for (const std::string& path : paths) {
        (void)list.AddListPath(path);
    }
    const SecretBytes key = MakePassphraseKey(kPassphrase);
    FixedRandom random;
    return EncryptFiles(
        EncryptRequest{list.Entries(), output, &key, &random, wrapOutput, list.PassedOver()},
        observer);
}

FileJobResult DecryptTo(const std::string& container, const std::string& folder,
                        FileJobObserver& observer, const char* passphrase, DecodeWorkers workers) {
    const SecretBytes key = MakePassphraseKey(passphrase);
    return DecryptContainer(DecryptRequest{container, folder, &key}, observer, workers);
}

namespace {

void AppendLe32(Bytes& out, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        out.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

// BlockByHand lays out a compressed block from its fields around zlib's own stream, as
// other copies write it.
Bytes BlockByHand(std::span<const std::uint8_t> data) {
    Bytes block{0xD2, 0x02, 0x96, 0x49}; // the magic 1234567890
    AppendLe32(block, static_cast<std::uint32_t>(data.size()));
    uLongf length = compressBound(static_cast<uLong>(data.size()));
    Bytes stream(length);
    if (compress(stream.data(), &length, data.data(), static_cast<uLong>(data.size())) != Z_OK) {
        throw std::runtime_error("zlib cannot compress");
    }
    block.insert(block.end(), stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(length));
    return block;
}

} // namespace

Bytes BuildContainer(const std::vector<StoredFile>& files, std::vector<std::int64_t> byteCounts) {
    CRijndael cipher;
    if (!cipher.EncryptPrepareKey(MakePassphraseKey(kPassphrase).bytes())) {
        throw std::runtime_error("cannot prepare the key");
    }
    FixedRandom random;
    Bytes container;
    const bool countsGiven = !byteCounts.empty();
    for (const StoredFile& file : files) {
        // Salt, tail byte (99 while the file is empty), name length and name, then the data
        // cut into chunks of 2 MiB of the whole stream; the last chunk takes what is left.
        Bytes plain(34 + file.ansiName.size(), 99);
        random.Fill(plain.data(), 32);
        plain[33] = static_cast<std::uint8_t>(file.ansiName.size());
        std::copy(file.ansiName.begin(), file.ansiName.end(), plain.begin() + 34);
        const std::size_t recordsStart = container.size();
        std::size_t done = 0;
        do {
            const std::size_t take = std::min(2097152 - plain.size(), file.data.size() - done);
            if (take > 0) {
                const Bytes block = BlockByHand(std::span(file.data).subspan(done, take));
                if (done == 0) {
                    plain[32] = static_cast<std::uint8_t>(block.size() % 32);
                }
                plain.insert(plain.end(), block.begin(), block.end());
            }
            const Bytes payload = cipher.EncryptDo(plain, done > 0);
            AppendLe32(container, static_cast<std::uint32_t>(payload.size() - 1));
            container.insert(container.end(), payload.begin(), payload.end());
            done += take;
            plain.clear();
        } while (done < file.data.size());
        if (!countsGiven) {
            byteCounts.push_back(static_cast<std::int64_t>(container.size() - recordsStart));
        }
    }
    const Bytes index = EncodeIndex(byteCounts);
    container.insert(container.end(), index.begin(), index.end());
    return container;
}

std::vector<std::size_t> RecordOffsets(const Bytes& container, std::size_t count) {
    std::vector<std::size_t> offsets{0};
    while (offsets.size() < count) {
        const std::size_t at = offsets.back();
        offsets.push_back(at + 4 + static_cast<std::size_t>(GetInt32Le(&container[at])) + 1);
    }
    return offsets;
}

} // namespace kelvora::testing
