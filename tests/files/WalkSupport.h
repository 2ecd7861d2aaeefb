#pragma once

#include "FileTestSupport.h"
#include "crypto/KeyRules.h"
#include "files/ByteSource.h"
#include "files/RecordWalker.h"

#include <algorithm>

namespace kelvora::testing {

// MemorySource hands out bytes front to back, as a pipe does.
class MemorySource final : public ByteSource {
public:
    explicit MemorySource(Bytes bytes) : m_bytes(std::move(bytes)) {}
    Result<std::size_t, Errno> Read(std::span<std::uint8_t> out) override {
        const std::size_t count = std::min(out.size(), m_bytes.size() - m_at);
        std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(m_at), count, out.begin());
        m_at += count;
        return count;
    }

private:
    Bytes m_bytes;
    std::size_t m_at = 0;
};

// Collected is what a walk handed over: every file's name, bytes and how it ended.
struct Collected final : RecordWalkHandler {
    struct Sink final : ByteSink {
        Bytes bytes;
        Result<void, Errno> Write(std::span<const std::uint8_t> more) override {
            bytes.insert(bytes.end(), more.begin(), more.end());
            return {};
        }
    };
    std::vector<std::string> names;
    std::vector<Sink> files;
    std::vector<std::pair<FileError, std::int64_t>> endings;

    ByteSink* OnFileStarted(std::size_t, const std::string& ansiName) override {
        names.push_back(ansiName);
        return &files.emplace_back();
    }
    FileJobResult OnFileEnded(std::size_t, FileError error, std::int64_t chunk) override {
        endings.emplace_back(error, chunk);
        return {};
    }
};

// Walk walks a container's records front to back as they come from a pipe.
inline WalkOutcome Walk(const Bytes& container, Collected& collected, bool keepGoing = false,
                        const char* passphrase = kPassphrase) {
    MemorySource source(container);
    FileJobObserver observer;
    return WalkRecords(source, MakePassphraseKey(passphrase), collected, observer, keepGoing);
}

} // namespace kelvora::testing
