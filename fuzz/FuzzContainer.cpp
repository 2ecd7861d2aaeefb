// A whole container from raw bytes through list, test and decrypt.
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelvora;
    static const fuzz::Playground playground;
    fuzz::WriteBytes(playground.Container(), data, size);
    fuzz::ReadContainerEveryWay(playground);
    return 0;
}
