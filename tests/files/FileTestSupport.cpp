#include "FileTestSupport.h"

#include "crypto/KeyRules.h"
#include "files/ContainerIndex.h"
#include "files/ContainerWriter.h"
#include "files/DecryptJob.h"
#include "files/EncryptJob.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

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

Bytes PatternBytes(std::size_t count, std::uint32_t seed, bool compressible) {
    static constexpr char kWords[] = "lorem ipsum dolor sit amet consectetur adipiscing elit ";
    std::mt19937 generator(seed);
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] =
            compressible
                ? static_cast<std::uint8_t>(kWords[(i + generator() % 3) % (sizeof kWords - 1)])
                : static_cast<std::uint8_t>(generator());
    }
    return bytes;
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

bool VectorSink::Write(std::span<const std::uint8_t> data) {
    if (m_failAfter >= 0 && static_cast<std::int64_t>(bytes.size() + data.size()) > m_failAfter) {
        m_failed = true;
        return false;
    }
    bytes.insert(bytes.end(), data.begin(), data.end());
    return true;
}

FileJobResult EncryptPaths(const std::vector<std::string>& paths, const std::string& output,
                           FileJobObserver& observer, const char* passphrase) {
    InputList list;
    for (const std::string& path : paths) {
        (void)list.AddListPath(path);
    }
    const SecretBytes key = MakePassphraseKey(passphrase);
    FixedRandom random;
    EncryptRequest request{list.Entries(), output, &key, &random, {}};
    return EncryptFiles(request, observer);
}

FileJobResult DecryptTo(const std::string& container, const std::string& folder,
                        FileJobObserver& observer, const char* passphrase) {
    const SecretBytes key = MakePassphraseKey(passphrase);
    return DecryptContainer(DecryptRequest{container, folder, &key}, observer);
}

Bytes BuildContainer(const std::vector<StoredFile>& files, std::vector<std::int64_t> byteCounts,
                     const char* passphrase) {
    ScratchFolder inputs;
    FileJobObserver quiet;
    JobCipher cipher(quiet);
    const SecretBytes key = MakePassphraseKey(passphrase);
    if (!cipher.Cipher().EncryptPrepareKey(key.bytes())) {
        throw std::runtime_error("cannot prepare the key");
    }
    FixedRandom random;
    VectorSink sink;
    ParallelCompressor onThisThread(0);
    std::vector<ChunkFeed::Input> feedInputs;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string input = inputs / std::to_string(i);
        WriteFile(input, files[i].data);
        feedInputs.push_back(ChunkFeed::Input{input, files[i].ansiName.size()});
    }
    ChunkFeed feed(std::move(feedInputs), onThisThread);
    const bool countsGiven = !byteCounts.empty();
    for (const StoredFile& file : files) {
        const AppendResult appended =
            AppendFileToContainer(feed, file.ansiName, sink, cipher, random, onThisThread, quiet);
        if (appended.error != FileError::None) {
            throw std::runtime_error("cannot build the container");
        }
        if (!countsGiven) {
            byteCounts.push_back(appended.byteCount);
        }
    }
    const Bytes index = EncodeIndex(byteCounts);
    sink.bytes.insert(sink.bytes.end(), index.begin(), index.end());
    return sink.bytes;
}

} // namespace kelvora::testing
