#pragma once

#include "crypto/RijndaelSchedule.h"

#include <cstddef>
#include <cstdint>

namespace kelvora {

inline constexpr int kHardwareRounds = 14; // the 256-bit block always takes 14 rounds

// HardwareRoundKeys holds a 256-bit-block schedule as the AES instructions take it: round key
// r as 32 bytes in block order, bytes 0-15 for the left half of the state (columns 0-3),
// bytes 16-31 for the right half. decrypt holds the equivalent inverse cipher's keys in the
// order decryption uses them.
struct HardwareRoundKeys {
    alignas(32) std::uint8_t encrypt[kHardwareRounds + 1][32];
    alignas(32) std::uint8_t decrypt[kHardwareRounds + 1][32];
};

// MakeHardwareRoundKeys lays out a schedule with nb = 8 for the kernels below.
void MakeHardwareRoundKeys(const RijndaelSchedule& schedule, HardwareRoundKeys& keys);

// The kernels have the contract of RijndaelEncryptCbc and RijndaelDecryptCbc for the 256-bit
// block. They use instructions the CPU may lack: call them only on a path that
// CipherPathAvailable allows. Encryption is serial in CBC: AesNi and Vaes share the 128-bit
// kernel, Avx512 has one with a whole block per register. Decryption keeps four blocks in
// flight (AesNi) or eight, two per 256-bit register (Vaes and Avx512).
void Rijndael256EncryptCbcAesNi(const HardwareRoundKeys& keys, const std::uint8_t* in,
                                std::uint8_t* out, std::size_t count, std::uint8_t* iv);
void Rijndael256EncryptCbcAvx512(const HardwareRoundKeys& keys, const std::uint8_t* in,
                                 std::uint8_t* out, std::size_t count, std::uint8_t* iv);
void Rijndael256DecryptCbcAesNi(const HardwareRoundKeys& keys, const std::uint8_t* in,
                                std::uint8_t* out, std::size_t count, std::uint8_t* iv);
void Rijndael256DecryptCbcVaes(const HardwareRoundKeys& keys, const std::uint8_t* in,
                               std::uint8_t* out, std::size_t count, std::uint8_t* iv);

} // namespace kelvora
