// End-to-end speed and peak memory of the file commands: kelvora-cli encrypts a corpus of
// many small and a few large files into one container and decrypts it again, next to
// `tar | gpg --symmetric` and `gpg -d | tar -x` on the same corpus in the same run. Each job
// runs as a child process; its wall time gives MB/s of plain data, wait4's ru_maxrss its
// peak memory, and its CPU time shows the work done when other processes share the machine. With
// --large it instead proves that memory stays flat on a file above 2 GiB. Exits 1 when a restored
// file differs or a kelvora job peaks at 64 MiB or more.
#include "ContainerBenchCorpus.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace kelvora::bench {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPassphrase = "a bench passphrase, long enough";
constexpr long kMemoryLimitKiB = 64 * 1024;

struct Measured {
    int status = -1;
    double seconds = 0;
    double cpuSeconds = 0; // user and system time of the job and its children
    long peakKiB = 0;
};

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// Run starts argv as a child with KELVORA_PASSPHRASE set and waits for it.
Measured Run(const std::vector<std::string>& argv) {
    std::vector<char*> pointers;
    for (const std::string& arg : argv) {
        pointers.push_back(const_cast<char*>(arg.c_str()));
    }
    pointers.push_back(nullptr);
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        setenv("KELVORA_PASSPHRASE", kPassphrase, 1);
        // The restored files' names are not part of the measurement.
        const int quiet = open("/dev/null", O_WRONLY);
        dup2(quiet, STDOUT_FILENO);
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    Measured measured;
    measured.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    measured.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    measured.peakKiB = usage.ru_maxrss;
    measured.cpuSeconds = Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
    return measured;
}

Measured Shell(const std::string& script) {
    return Run({"/bin/sh", "-c", script});
}

bool SameFile(const fs::path& a, const fs::path& b) {
    std::ifstream left(a, std::ios::binary);
    std::ifstream right(b, std::ios::binary);
    std::vector<char> x(1 << 20);
    std::vector<char> y(1 << 20);
    while (left && right) {
        left.read(x.data(), static_cast<std::streamsize>(x.size()));
        right.read(y.data(), static_cast<std::streamsize>(y.size()));
        if (left.gcount() != right.gcount() ||
            !std::equal(x.begin(), x.begin() + left.gcount(), y.begin())) {
            return false;
        }
    }
    return left.eof() && right.eof();
}

// SameTree is true when every file below original has an equal copy below restored.
bool SameTree(const fs::path& original, const fs::path& restored) {
    for (const auto& entry : fs::recursive_directory_iterator(original)) {
        if (entry.is_regular_file() &&
            !SameFile(entry.path(),
                      restored / fs::relative(entry.path(), original.parent_path()))) {
            std::printf("MISMATCH: %s\n", entry.path().c_str());
            return false;
        }
    }
    return true;
}

void PrintRow(const char* job, const Measured& m, std::uint64_t plainBytes) {
    std::printf("  %-24s %7.1f MB/s  %7.2f s wall  %7.2f s cpu  peak %6.1f MiB%s\n", job,
                static_cast<double>(plainBytes) / 1e6 / m.seconds, m.seconds, m.cpuSeconds,
                static_cast<double>(m.peakKiB) / 1024.0, m.status == 0 ? "" : "  FAILED");
    std::fflush(stdout);
}

bool KelvoraRoundTrip(const std::string& cli, const fs::path& input, const fs::path& work,
                      std::uint64_t bytes) {
    const std::string container = (work / "bench.vexo").string();
    const fs::path restored = work / "kelvora-out";
    fs::remove_all(restored);
    const Measured encrypt =
        Run({cli, "encrypt", "-q", "--force", "-o", container, input.string()});
    PrintRow("kelvora-cli encrypt", encrypt, bytes);
    const Measured decrypt = Run({cli, "decrypt", "-q", container, "-C", restored.string()});
    PrintRow("kelvora-cli decrypt", decrypt, bytes);
    std::printf("  container %.1f MB of %.1f MB plain\n",
                static_cast<double>(fs::file_size(container)) / 1e6,
                static_cast<double>(bytes) / 1e6);
    const bool memoryOk = encrypt.peakKiB < kMemoryLimitKiB && decrypt.peakKiB < kMemoryLimitKiB;
    std::printf("  peak memory below 64 MiB: %s\n", memoryOk ? "yes" : "NO");
    const bool same = encrypt.status == 0 && decrypt.status == 0 && SameTree(input, restored);
    std::printf("  restored files equal the originals: %s\n", same ? "yes" : "NO");
    fs::remove_all(restored);
    fs::remove(container);
    return memoryOk && same;
}

void GpgRoundTrip(const fs::path& input, const fs::path& work, std::uint64_t bytes) {
    const std::string passFile = (work / "gpg-passphrase").string();
    std::ofstream(passFile) << kPassphrase << '\n';
    const std::string archive = (work / "bench.tar.gpg").string();
    const fs::path restored = work / "gpg-out";
    fs::remove_all(restored);
    fs::create_directories(restored);
    const std::string gpg = "gpg --batch --yes --quiet --pinentry-mode loopback --homedir '" +
                            (work / "gnupg").string() + "' --passphrase-file '" + passFile + "'";
    fs::create_directories(work / "gnupg");
    fs::permissions(work / "gnupg", fs::perms::owner_all);
    PrintRow("tar | gpg --symmetric",
             Shell("tar -cf - -C '" + input.parent_path().string() + "' '" +
                   input.filename().string() + "' | " + gpg + " --symmetric -o '" + archive + "'"),
             bytes);
    PrintRow("gpg -d | tar -x",
             Shell(gpg + " -d '" + archive + "' | tar -xf - -C '" + restored.string() + "'"),
             bytes);
    fs::remove_all(restored);
    fs::remove(archive);
}

int CorpusBench(const std::string& cli, const fs::path& work) {
    const fs::path corpus = work / "corpus";
    const CorpusSummary summary = MakeCorpus(corpus.string());
    std::printf("Corpus: %llu files, %.1f MB (text-like and random, many small, a few large)\n",
                static_cast<unsigned long long>(summary.files),
                static_cast<double>(summary.bytes) / 1e6);
    const bool ok = KelvoraRoundTrip(cli, corpus, work, summary.bytes);
    GpgRoundTrip(corpus, work, summary.bytes);
    fs::remove_all(corpus);
    return ok ? 0 : 1;
}

int LargeFileBench(const std::string& cli, const fs::path& work) {
    const fs::path folder = work / "large";
    fs::remove_all(folder);
    const std::uint64_t size = (std::uint64_t{2} << 30) + (std::uint64_t{1} << 20) + 7;
    WriteCorpusFile((folder / "big.log").string(), size, Content::Text, 99);
    std::printf("One file of %.2f GiB (text-like)\n", static_cast<double>(size) / (1 << 30));
    const bool ok = KelvoraRoundTrip(cli, folder, work, size);
    fs::remove_all(folder);
    return ok ? 0 : 1;
}

} // namespace
} // namespace kelvora::bench

int main(int argc, char** argv) {
    const std::string cli = KELVORA_CLI_PATH;
    const std::filesystem::path work = KELVORA_BENCH_WORK;
    std::filesystem::create_directories(work);
    const bool large = argc > 1 && std::string(argv[1]) == "--large";
    std::printf("== kelvora-cli end to end%s ==\n", large ? ": memory on a file above 2 GiB" : "");
    return large ? kelvora::bench::LargeFileBench(cli, work)
                 : kelvora::bench::CorpusBench(cli, work);
}
