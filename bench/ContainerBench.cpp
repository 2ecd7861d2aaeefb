// End-to-end speed and peak memory of the file commands: kelvora-cli encrypts a corpus of
// many small and a few large files into one container, tests it and decrypts it again, next
// to `tar | gpg --symmetric`, `gpg -d > /dev/null` and `gpg -d | tar -x` on the same corpus in
// the same run. Each job runs as a child process KELVORA_BENCH_RUNS times (default 3); the
// median wall time gives MB/s of plain data, [min-max] the machine's noise, wait4's ru_maxrss
// the peak memory and the CPU time the work done when others share the machine. Beside the
// figures stand the ceilings they chase (deflate and cipher alone) and the ratios with their
// floors. With KELVORA_BENCH_BEFORE_CLI naming an earlier kelvora-cli, its jobs run in the
// same run for a before/after ratio. With --large it instead proves that memory stays flat
// on a file above 2 GiB. Exits 1 when a restored file differs or a kelvora job peaks at
// 64 MiB or more.
#include "BenchCeilings.h"
#include "ContainerBenchCorpus.h"
#include "DeflateLevels.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
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
    double lowSeconds = 0; // the fastest and slowest of the runs
    double highSeconds = 0;
};

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// RunOnce starts argv as a child with KELVORA_PASSPHRASE set and waits for it.
Measured RunOnce(const std::vector<std::string>& argv) {
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

int Runs() {
    const char* runs = std::getenv("KELVORA_BENCH_RUNS");
    return runs != nullptr ? std::max(1, std::atoi(runs)) : 3;
}

// Run runs a job Runs() times (prepare before each) and keeps the median run, the spread and
// the highest peak.
Measured Run(const std::vector<std::string>& argv, const std::function<void()>& prepare = {}) {
    std::vector<Measured> runs;
    for (int i = 0; i < Runs(); ++i) {
        if (prepare) {
            prepare();
        }
        runs.push_back(RunOnce(argv));
    }
    std::sort(runs.begin(), runs.end(),
              [](const Measured& a, const Measured& b) { return a.seconds < b.seconds; });
    Measured median = runs[runs.size() / 2];
    median.lowSeconds = runs.front().seconds;
    median.highSeconds = runs.back().seconds;
    for (const Measured& run : runs) {
        median.peakKiB = std::max(median.peakKiB, run.peakKiB);
        median.status = run.status != 0 ? run.status : median.status;
    }
    return median;
}

Measured Shell(const std::string& script, const std::function<void()>& prepare = {}) {
    return Run({"/bin/sh", "-c", script}, prepare);
}

std::string LoadAverage() {
    std::ifstream in("/proc/loadavg");
    std::string one, five;
    in >> one >> five;
    return one + " (1 min), " + five + " (5 min)";
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

double MBps(std::uint64_t bytes, double seconds) {
    return static_cast<double>(bytes) / 1e6 / seconds;
}

void PrintRow(const char* job, const Measured& m, std::uint64_t plainBytes) {
    std::printf("  %-26s %7.1f MB/s  %6.2f s wall [%.2f-%.2f]  %6.2f s cpu  peak %6.1f MiB%s\n",
                job, MBps(plainBytes, m.seconds), m.seconds, m.lowSeconds, m.highSeconds,
                m.cpuSeconds, static_cast<double>(m.peakKiB) / 1024.0,
                m.status == 0 ? "" : "  FAILED");
    std::fflush(stdout);
}

void PrintRatio(const char* what, double ratio, double floor) {
    std::printf("RATIO %-44s %6.2f (floor %.2f): %s\n", what, ratio, floor,
                ratio >= floor ? "ok" : "BELOW");
}

struct KelvoraJobs {
    Measured encrypt, test, decrypt;
    std::uint64_t containerBytes = 0;
    bool same = false;
};

// KelvoraRoundTrip encrypts input, tests the container and decrypts it into a fresh folder.
KelvoraJobs KelvoraRoundTrip(const std::string& cli, const std::string& label,
                             const fs::path& input, const fs::path& work, std::uint64_t bytes) {
    const std::string container = (work / "bench.vexo").string();
    const fs::path restored = work / "kelvora-out";
    KelvoraJobs jobs;
    jobs.encrypt = Run({cli, "encrypt", "-q", "--force", "-o", container, input.string()});
    PrintRow((label + " encrypt").c_str(), jobs.encrypt, bytes);
    jobs.containerBytes = fs::exists(container) ? fs::file_size(container) : 0;
    jobs.test = Run({cli, "test", "-q", container});
    PrintRow((label + " test").c_str(), jobs.test, bytes);
    jobs.decrypt = Run({cli, "decrypt", "-q", container, "-C", restored.string()},
                       [&] { fs::remove_all(restored); });
    PrintRow((label + " decrypt").c_str(), jobs.decrypt, bytes);
    jobs.same = jobs.encrypt.status == 0 && jobs.test.status == 0 && jobs.decrypt.status == 0 &&
                SameTree(input, restored);
    std::printf("  container %.1f MB of %.1f MB plain; restored files equal the originals: %s\n",
                static_cast<double>(jobs.containerBytes) / 1e6, static_cast<double>(bytes) / 1e6,
                jobs.same ? "yes" : "NO");
    fs::remove_all(restored);
    fs::remove(container);
    return jobs;
}

bool MemoryOk(const KelvoraJobs& jobs) {
    const bool ok = jobs.encrypt.peakKiB < kMemoryLimitKiB && jobs.test.peakKiB < kMemoryLimitKiB &&
                    jobs.decrypt.peakKiB < kMemoryLimitKiB;
    std::printf("  peak memory of every kelvora job below 64 MiB: %s\n", ok ? "yes" : "NO");
    return ok;
}

struct GpgJobs {
    Measured encrypt, test, decrypt;
    std::uint64_t archiveBytes = 0;
};

GpgJobs GpgRoundTrip(const fs::path& input, const fs::path& work, std::uint64_t bytes) {
    const std::string passFile = (work / "gpg-passphrase").string();
    std::ofstream(passFile) << kPassphrase << '\n';
    const std::string archive = (work / "bench.tar.gpg").string();
    const fs::path restored = work / "gpg-out";
    const std::string gpg = "gpg --batch --yes --quiet --pinentry-mode loopback --homedir '" +
                            (work / "gnupg").string() + "' --passphrase-file '" + passFile + "'";
    fs::create_directories(work / "gnupg");
    fs::permissions(work / "gnupg", fs::perms::owner_all);
    GpgJobs jobs;
    jobs.encrypt =
        Shell("tar -cf - -C '" + input.parent_path().string() + "' '" + input.filename().string() +
              "' | " + gpg + " --symmetric --cipher-algo AES256 -o '" + archive + "'");
    PrintRow("tar | gpg -c AES256", jobs.encrypt, bytes);
    jobs.archiveBytes = fs::exists(archive) ? fs::file_size(archive) : 0;
    jobs.test = Shell(gpg + " -d '" + archive + "' > /dev/null");
    PrintRow("gpg -d > /dev/null", jobs.test, bytes);
    jobs.decrypt =
        Shell(gpg + " -d '" + archive + "' | tar -xf - -C '" + restored.string() + "'", [&] {
            fs::remove_all(restored);
            fs::create_directories(restored);
        });
    PrintRow("gpg -d | tar -x", jobs.decrypt, bytes);
    std::printf("  archive %.1f MB\n", static_cast<double>(jobs.archiveBytes) / 1e6);
    fs::remove_all(restored);
    fs::remove(archive);
    return jobs;
}

void PrintCeilings(const Ceilings& c, const KelvoraJobs& k) {
    std::printf("Ceilings on %zu cores (corpus from memory, %.1f MB in %.1f MB of blocks):\n",
                c.cores, static_cast<double>(c.plainBytes) / 1e6,
                static_cast<double>(c.compressedBytes) / 1e6);
    std::printf("  deflate alone %.2f s, cipher alone %.2f s on one core -> encrypt ceiling "
                "%.2f s (%.1f MB/s)\n",
                c.deflateSeconds, c.encipherSeconds, c.Encrypt(), MBps(c.plainBytes, c.Encrypt()));
    std::printf("  inflate alone %.2f s, decipher alone %.2f s on one core -> test/decrypt "
                "ceiling %.2f s (%.1f MB/s)\n",
                c.inflateSeconds, c.decipherSeconds, c.Decrypt(), MBps(c.plainBytes, c.Decrypt()));
    std::printf("  encrypt at %.0f%% of its ceiling's time, test at %.0f%%, decrypt at %.0f%%\n",
                100 * k.encrypt.seconds / c.Encrypt(), 100 * k.test.seconds / c.Decrypt(),
                100 * k.decrypt.seconds / c.Decrypt());
    // CPU time is what a shared machine disturbs least: the jobs' own overhead over the work.
    std::printf("  CPU: encrypt %.2f s against deflate + cipher %.2f s; test %.2f s and decrypt "
                "%.2f s against inflate + decipher %.2f s\n",
                k.encrypt.cpuSeconds, c.deflateCpu + c.encipherCpu, k.test.cpuSeconds,
                k.decrypt.cpuSeconds, c.inflateCpu + c.decipherCpu);
    PrintRatio("ceiling CPU / encrypt CPU", (c.deflateCpu + c.encipherCpu) / k.encrypt.cpuSeconds,
               1 / 1.2);
    PrintRatio("encrypt ceiling time / encrypt time", c.Encrypt() / k.encrypt.seconds, 1 / 1.2);
}

// PrintCpuRatios gives the ratios of CPU time, which a busy machine disturbs least. gpg works
// on one thread, so its wall time cannot drop below its CPU time, while kelvora-cli's can drop
// to its CPU time shared by every core: on a machine with every core free for the job, the
// wall ratio can reach at most the cores times the CPU ratio, and less when others share it.
// (Decrypting, tar works beside gpg, so there the bound is looser.)
void PrintCpuRatios(const GpgJobs& gpg, const KelvoraJobs& k, std::size_t cores) {
    const auto ratio = [](const Measured& theirs, const Measured& ours) {
        return theirs.cpuSeconds / std::max(ours.cpuSeconds, 1e-3);
    };
    const double encrypt = ratio(gpg.encrypt, k.encrypt);
    const double test = ratio(gpg.test, k.test);
    std::printf("  CPU time gpg/kelvora: encrypt %.2f, test %.2f, decrypt %.2f; with %zu cores "
                "free the wall ratios of encrypt and test could reach %.2f and %.2f\n",
                encrypt, test, ratio(gpg.decrypt, k.decrypt), cores,
                static_cast<double>(cores) * encrypt, static_cast<double>(cores) * test);
}

void PrintBeforeAfter(const KelvoraJobs& before, const KelvoraJobs& after) {
    PrintRatio("encrypt after/before (speed)", before.encrypt.seconds / after.encrypt.seconds, 1);
    PrintRatio("test after/before (speed)", before.test.seconds / after.test.seconds, 1);
    PrintRatio("decrypt after/before (speed)", before.decrypt.seconds / after.decrypt.seconds, 1);
    std::printf("  container after/before (size): %.4f\n",
                static_cast<double>(after.containerBytes) /
                    static_cast<double>(std::max<std::uint64_t>(before.containerBytes, 1)));
}

int CorpusBench(const std::string& cli, const fs::path& work) {
    const fs::path corpus = work / "corpus";
    const CorpusSummary summary = MakeCorpus(corpus.string());
    std::printf("Corpus: %llu files, %.1f MB (text-like and random, many small, a few large)\n",
                static_cast<unsigned long long>(summary.files),
                static_cast<double>(summary.bytes) / 1e6);
    std::printf("Load average before: %s; %d runs per job\n", LoadAverage().c_str(), Runs());
    const KelvoraJobs kelvora = KelvoraRoundTrip(cli, "kelvora-cli", corpus, work, summary.bytes);
    const bool ok = MemoryOk(kelvora) && kelvora.same;
    const char* before = std::getenv("KELVORA_BENCH_BEFORE_CLI");
    std::optional<KelvoraJobs> earlier;
    if (before != nullptr) {
        earlier = KelvoraRoundTrip(before, "before", corpus, work, summary.bytes);
    }
    const GpgJobs gpg = GpgRoundTrip(corpus, work, summary.bytes);
    const Ceilings ceilings = MeasureCeilings(corpus.string(), Runs());
    PrintCeilings(ceilings, kelvora);
    PrintDeflateLevels(corpus.string());
    PrintRatio("encrypt kelvora/gpg (speed)", gpg.encrypt.seconds / kelvora.encrypt.seconds, 3);
    PrintRatio("container (gpg + 2%) / kelvora (size)",
               1.02 * static_cast<double>(gpg.archiveBytes) /
                   static_cast<double>(std::max<std::uint64_t>(kelvora.containerBytes, 1)),
               1);
    PrintRatio("test kelvora/gpg -d (speed)", gpg.test.seconds / kelvora.test.seconds, 5);
    PrintRatio("decrypt kelvora/gpg -d | tar -x (speed)",
               gpg.decrypt.seconds / kelvora.decrypt.seconds, 1.5);
    PrintCpuRatios(gpg, kelvora, ceilings.cores);
    if (earlier) {
        PrintBeforeAfter(*earlier, kelvora);
    }
    std::printf("Load average after: %s\n", LoadAverage().c_str());
    fs::remove_all(corpus);
    return ok ? 0 : 1;
}

int LargeFileBench(const std::string& cli, const fs::path& work) {
    const fs::path folder = work / "large";
    fs::remove_all(folder);
    const std::uint64_t size = (std::uint64_t{2} << 30) + (std::uint64_t{1} << 20) + 7;
    WriteCorpusFile((folder / "big.log").string(), size, Content::Text, 99);
    std::printf("One file of %.2f GiB (text-like)\n", static_cast<double>(size) / (1 << 30));
    setenv("KELVORA_BENCH_RUNS", "1", 0);
    const KelvoraJobs jobs = KelvoraRoundTrip(cli, "kelvora-cli", folder, work, size);
    const bool ok = MemoryOk(jobs) && jobs.same;
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
