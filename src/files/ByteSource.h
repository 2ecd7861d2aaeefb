#pragma once

#include "files/FileIo.h"

#include <cstdint>
#include <span>

namespace kelvora {

// ByteSource gives a job its input as a stream, front to back, as a pipe does: nothing is
// read twice and nothing is sought.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    // Read fills out from its start as far as the source goes: fewer bytes than asked only
    // at the end. It gives the count, or errno on a read failure.
    [[nodiscard]] virtual Result<std::size_t, Errno> Read(std::span<std::uint8_t> out) = 0;
};

} // namespace kelvora
