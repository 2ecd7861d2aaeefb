// Base64: decoding any text must not crash, and what the encoder makes decodes back exactly.
#include "FuzzSupport.h"
#include "text/Base64.h"

#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelvora;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    (void)Base64Decode(text);
    const Bytes bytes(data, data + size);
    if (Base64Decode(Base64Encode(bytes)) != bytes) {
        fuzz::Stop("Base64 does not round-trip");
    }
    return 0;
}
