#pragma once

#include "crypto/RijndaelSchedule.h"
#include "crypto/RijndaelTables.h"

#include <cstddef>
#include <cstdint>

namespace kelvora {

// The fast path for the 256-bit block (Nb = 8, so always 14 rounds): fully unrolled rounds
// over eight column words that stay in registers for a whole run of blocks. Same contract
// as RijndaelEncryptCbc and RijndaelDecryptCbc.
void Rijndael256EncryptCbc(const RijndaelTables& tables, const RijndaelSchedule& schedule,
                           const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                           std::uint8_t* iv);
void Rijndael256DecryptCbc(const RijndaelTables& tables, const RijndaelSchedule& schedule,
                           const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                           std::uint8_t* iv);

} // namespace kelvora
