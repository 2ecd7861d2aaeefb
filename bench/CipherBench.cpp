// Speed of the streaming cipher calls against libmcrypt's rijndael-256 in CBC mode over the
// same 64 MiB buffer, on the cipher path this process chose (KELVORA_CIPHER forces one) and on
// the portable path. After the usual table a summary gives the median speed of each and the
// ratio ours/libmcrypt per direction, with the floors the cipher is held to.
#include "crypto/CRijndael.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>
#include <mcrypt.h>
#include <string>
#include <vector>

namespace kelvora {
namespace {

constexpr std::size_t kBufferBytes = std::size_t{64} << 20;
constexpr std::size_t kCallBytes = std::size_t{2} << 20; // one chunk of a container

Bytes Pattern(std::size_t size, std::uint32_t seed) {
    Bytes bytes(size);
    std::uint32_t x = seed;
    for (auto& byte : bytes) {
        x = x * 1664525U + 1013904223U; // any bytes do; they need not be random
        byte = static_cast<std::uint8_t>(x >> 24);
    }
    return bytes;
}

const Bytes& Key() {
    static const Bytes key = Pattern(kKeyBytes, 7);
    return key;
}

const Bytes& Plain() {
    static const Bytes plain = Pattern(kBufferBytes, 11);
    return plain;
}

const Bytes& Cipher() {
    static const Bytes cipher = [] {
        CRijndael rijndael;
        static_cast<void>(rijndael.EncryptPrepareKey(Key()));
        return rijndael.EncryptDo(Plain(), false);
    }();
    return cipher;
}

void SetBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kBufferBytes));
}

// EncryptDo and DecryptDo as the product calls them: the 64 MiB in 2 MiB calls, chained, each
// returning a fresh array.
template <bool kEncrypt, bool kPortable = false> void OursDo(benchmark::State& state) {
    const Bytes& input = kEncrypt ? Plain() : Cipher();
    std::vector<Bytes> pieces;
    for (std::size_t at = 0; at < input.size(); at += kCallBytes) {
        const auto begin = input.begin() + static_cast<std::ptrdiff_t>(at);
        pieces.emplace_back(begin, begin + static_cast<std::ptrdiff_t>(kCallBytes));
    }
    CRijndael rijndael;
    static_cast<void>(rijndael.EncryptPrepareKey(Key()));
    if (kPortable) {
        static_cast<void>(rijndael.UseCipherPath(CipherPath::Portable));
    }
    for (auto _ : state) {
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            Bytes out = kEncrypt ? rijndael.EncryptDo(pieces[i], i > 0)
                                 : rijndael.DecryptDo(pieces[i], i > 0);
            benchmark::DoNotOptimize(out.data());
        }
    }
    SetBytes(state);
}

// The bulk CBC calls in place, with no allocation: the cipher alone, as libmcrypt is measured.
template <bool kEncrypt> void OursInPlace(benchmark::State& state) {
    Bytes work = kEncrypt ? Plain() : Cipher();
    Bytes iv(kBlockBytes);
    CRijndael rijndael;
    static_cast<void>(rijndael.EncryptPrepareKey(Key()));
    const std::size_t blocks = work.size() / kBlockBytes;
    for (auto _ : state) {
        if (kEncrypt) {
            rijndael.EncryptBlocksCbc(work.data(), work.data(), blocks, iv.data());
        } else {
            rijndael.DecryptBlocksCbc(work.data(), work.data(), blocks, iv.data());
        }
        benchmark::DoNotOptimize(work.data());
    }
    SetBytes(state);
}

// libmcrypt works in place; the buffer is simply enciphered again on every iteration.
template <bool kEncrypt> void Mcrypt(benchmark::State& state) {
    char algorithm[] = "rijndael-256";
    char mode[] = "cbc";
    MCRYPT module = mcrypt_module_open(algorithm, nullptr, mode, nullptr);
    if (module == MCRYPT_FAILED) {
        state.SkipWithError("libmcrypt has no rijndael-256");
        return;
    }
    Bytes key = Key();
    Bytes iv(kBlockBytes);
    Bytes work = kEncrypt ? Plain() : Cipher();
    mcrypt_generic_init(module, key.data(), static_cast<int>(key.size()), iv.data());
    for (auto _ : state) {
        if (kEncrypt) {
            mcrypt_generic(module, work.data(), static_cast<int>(work.size()));
        } else {
            mdecrypt_generic(module, work.data(), static_cast<int>(work.size()));
        }
        benchmark::DoNotOptimize(work.data());
    }
    mcrypt_generic_deinit(module);
    mcrypt_module_close(module);
    SetBytes(state);
}

// RatioReporter prints the usual table and keeps each run's speed for the summary.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred &&
                run.cpu_accumulated_time > 0) {
                const double bytes =
                    static_cast<double>(run.iterations) * static_cast<double>(kBufferBytes);
                m_speeds[run.run_name.function_name].push_back(bytes / run.cpu_accumulated_time /
                                                               1e6);
            }
        }
    }

    void PrintSummary() {
        std::printf("\nMB/s (10^6 bytes per CPU second), median [min-max] of the runs:\n");
        std::printf("cipher path: %s\n", std::string(CipherPathName(ActiveCipherPath())).c_str());
        PrintDirection("encrypt", "EncryptDo", "EncryptBlocksCbc-in-place", "mcrypt-cbc-encrypt");
        PrintDirection("decrypt", "DecryptDo", "DecryptBlocksCbc-in-place", "mcrypt-cbc-decrypt");
        PrintFloor("EncryptDo", "mcrypt-cbc-encrypt", 6.0);
        PrintFloor("DecryptDo", "mcrypt-cbc-decrypt", 25.0);
        PrintFloor("EncryptDo-portable", "mcrypt-cbc-encrypt", 1.5);
        PrintFloor("DecryptDo-portable", "mcrypt-cbc-decrypt", 1.5);
    }

private:
    struct Spread {
        double median = 0, low = 0, high = 0;
    };

    Spread SpreadOf(const std::string& name) {
        std::vector<double> speeds = m_speeds[name];
        if (speeds.empty()) {
            return {};
        }
        std::sort(speeds.begin(), speeds.end());
        return {speeds[speeds.size() / 2], speeds.front(), speeds.back()};
    }

    void PrintDirection(const char* direction, const std::string& streaming,
                        const std::string& inPlace, const std::string& mcrypt) {
        const Spread a = SpreadOf(streaming), b = SpreadOf(inPlace), m = SpreadOf(mcrypt);
        std::printf("%s: %s %.1f [%.1f-%.1f], %s %.1f [%.1f-%.1f], libmcrypt %.1f [%.1f-%.1f]\n",
                    direction, streaming.c_str(), a.median, a.low, a.high, inPlace.c_str(),
                    b.median, b.low, b.high, m.median, m.low, m.high);
        const double scale = m.median > 0 ? 1.0 / m.median : 0.0;
        std::printf("RATIO %s ours/libmcrypt: %s %.2f, %s %.2f\n", direction, streaming.c_str(),
                    a.median * scale, inPlace.c_str(), b.median * scale);
    }

    void PrintFloor(const std::string& ours, const std::string& mcrypt, double floor) {
        const double ratio = SpreadOf(ours).median / std::max(SpreadOf(mcrypt).median, 1e-9);
        std::printf("RATIO %s/libmcrypt %.2f (floor %.1f): %s\n", ours.c_str(), ratio, floor,
                    ratio >= floor ? "ok" : "BELOW");
    }

    std::map<std::string, std::vector<double>> m_speeds;
};

} // namespace
} // namespace kelvora

int main(int argc, char** argv) {
    using namespace kelvora;
    // Defaults first, so flags given on the command line win. Interleaving spreads the noise
    // of a shared machine over all measurements alike.
    std::vector<char*> args{argv[0]};
    std::string repetitions = "--benchmark_repetitions=5";
    std::string interleave = "--benchmark_enable_random_interleaving=true";
    args.push_back(repetitions.data());
    args.push_back(interleave.data());
    args.insert(args.end(), argv + 1, argv + argc);
    int count = static_cast<int>(args.size());
    benchmark::Initialize(&count, args.data());

    const std::vector<std::pair<const char*, void (*)(benchmark::State&)>> benchmarks{
        {"EncryptDo", OursDo<true>},
        {"DecryptDo", OursDo<false>},
        {"EncryptDo-portable", OursDo<true, true>},
        {"DecryptDo-portable", OursDo<false, true>},
        {"EncryptBlocksCbc-in-place", OursInPlace<true>},
        {"DecryptBlocksCbc-in-place", OursInPlace<false>},
        {"mcrypt-cbc-encrypt", Mcrypt<true>},
        {"mcrypt-cbc-decrypt", Mcrypt<false>}};
    for (const auto& [name, function] : benchmarks) {
        benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond);
    }
    Plain();
    Cipher(); // built before timing starts
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintSummary();
    benchmark::Shutdown();
    return 0;
}
