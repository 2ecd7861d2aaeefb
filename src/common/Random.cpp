#include "common/Random.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <sys/random.h>

namespace kelvora {

void SystemRandom::Fill(std::uint8_t* out, std::size_t count) {
    while (count > 0) {
        const ssize_t got = getrandom(out, count, 0);
        if (got < 0) {
            if (errno == EINTR) {
                continue;
            }
            std::fputs("kelvora: the system's random source failed\n", stderr);
            std::abort();
        }
        out += got;
        count -= static_cast<std::size_t>(got);
    }
}

} // namespace kelvora
