#include "FuzzSupport.h"

#include "crypto/KeyRules.h"
#include "files/ContainerInspect.h"
#include "files/DecryptJob.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

namespace kelvora::fuzz {

namespace fs = std::filesystem;

void Stop(const std::string& what) {
    std::fprintf(stderr, "finding: %s\n", what.c_str());
    std::abort();
}

Playground::Playground() {
    std::string pattern = (fs::temp_directory_path() / "kelvora-fuzz-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        Stop("cannot make a scratch folder");
    }
    m_base = pattern;
    m_work = m_base + "/work";
    fs::create_directories(m_work + "/outside");
    Reset();
}

std::string Playground::Inputs() const {
    return m_base + "/in";
}

void Playground::Reset() const {
    fs::remove_all(Output());
    fs::create_directories(Output() + "/real");
    fs::create_directory_symlink("../outside", Output() + "/link");
    fs::create_directory_symlink(m_work + "/outside", Output() + "/real/abs");
}

void Playground::CheckNothingEscaped() const {
    std::set<std::string> base;
    for (const auto& entry : fs::directory_iterator(m_base)) {
        base.insert(entry.path().filename().string());
    }
    std::set<std::string> work;
    for (const auto& entry : fs::directory_iterator(m_work)) {
        work.insert(entry.path().filename().string());
    }
    base.erase("in"); // the inputs of a round trip
    if (base != std::set<std::string>{"work"} ||
        !(work == std::set<std::string>{"out", "outside"} ||
          work == std::set<std::string>{"c.vexo", "out", "outside"}) ||
        !fs::is_empty(m_work + "/outside")) {
        Stop("something was created outside the output folder");
    }
}

void ReadContainerEveryWay(const Playground& playground) {
    const SecretBytes key = MakePassphraseKey(kPassphrase);
    const DecryptRequest request{playground.Container(), playground.Output(), &key};
    AcceptingObserver observer;
    (void)ListContainer(request, observer);
    (void)TestContainer(request, observer);
    playground.Reset();
    (void)DecryptContainer(request, observer);
    playground.CheckNothingEscaped();
}

void WriteBytes(const std::string& path, const std::uint8_t* data, std::size_t size) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

Bytes ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

} // namespace kelvora::fuzz
