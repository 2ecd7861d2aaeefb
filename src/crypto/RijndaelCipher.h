#pragma once

#include "crypto/RijndaelSchedule.h"
#include "crypto/RijndaelTables.h"

#include <cstddef>
#include <cstdint>

namespace kelvora {

// RijndaelEncryptCbc enciphers count blocks of 4 * nb bytes from in to out in CBC mode,
// chaining from iv (4 * nb bytes) and leaving the last ciphertext block there.
// RijndaelDecryptCbc is its inverse; iv ends as the last ciphertext block consumed. in and
// out may be the same buffer. A 256-bit block takes the unrolled fast path.
void RijndaelEncryptCbc(const RijndaelTables& tables, const RijndaelSchedule& schedule,
                        const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                        std::uint8_t* iv);
void RijndaelDecryptCbc(const RijndaelTables& tables, const RijndaelSchedule& schedule,
                        const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                        std::uint8_t* iv);

} // namespace kelvora
