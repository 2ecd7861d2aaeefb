#pragma once

#include "common/Bytes.h"
#include "files/FileJobObserver.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kelvora::fuzz {

// Every target works under one passphrase, the one its seeds were made with.
inline constexpr const char* kPassphrase = "fuzz passphrase";

// Stop ends the fuzzer with a finding: libFuzzer saves the input that led here.
[[noreturn]] void Stop(const std::string& what);

// Playground is a scratch folder for a run: "base/work" holds the container and the output
// folder "out", which holds symbolic links (relative and absolute) to "base/work/outside".
// Anything created next to "work" or inside "outside" escaped the output folder.
class Playground {
public:
    Playground();
    std::string Container() const { return m_work + "/c.vexo"; }
    std::string Output() const { return m_work + "/out"; }
    // Inputs is a folder beside "work" for files to encrypt.
    std::string Inputs() const;
    // Reset empties the output folder and puts its links back.
    void Reset() const;
    // CheckNothingEscaped stops the fuzzer when anything appeared outside the output folder.
    void CheckNothingEscaped() const;

private:
    std::string m_base;
    std::string m_work;
};

// Reader runs list, test and decrypt on the playground's container, answering every
// question so that the job goes as far as it can.
void ReadContainerEveryWay(const Playground& playground);

// AcceptingObserver replaces existing files and never cancels.
class AcceptingObserver final : public FileJobObserver {
public:
    bool AskReplaceContainer(const std::string&) override { return true; }
    ExistingFileAnswer AskExistingFile(const std::string&) override {
        return ExistingFileAnswer::Rename;
    }
};

void WriteBytes(const std::string& path, const std::uint8_t* data, std::size_t size);
Bytes ReadBytes(const std::string& path);

} // namespace kelvora::fuzz
