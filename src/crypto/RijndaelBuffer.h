#pragma once

#include "common/Bytes.h"

#include <cstddef>

namespace kelvora {

// NewCipherBuffer returns size zero bytes for a cipher result. A large buffer asks the
// kernel for huge pages before it is touched: faulting in a fresh 64 MiB array 4 KiB at a
// time can cost more than enciphering it. Where huge pages are not to be had, it is an
// ordinary zeroed array.
[[nodiscard]] Bytes NewCipherBuffer(std::size_t size);

} // namespace kelvora
