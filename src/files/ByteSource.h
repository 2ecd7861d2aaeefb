#pragma once

#include <cstdint>
#include <span>

namespace kelvora {

// ByteSource gives a job its input as a stream, front to back, as a pipe does: nothing is
// read twice and nothing is sought.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    // Read fills out from its start as far as the source goes: fewer bytes than asked only
    // at the end. It gives the count, or -1 on a read failure (errno in LastError).
    [[nodiscard]] virtual std::int64_t Read(std::span<std::uint8_t> out) = 0;
    virtual int LastError() const { return 0; }
};

} // namespace kelvora
