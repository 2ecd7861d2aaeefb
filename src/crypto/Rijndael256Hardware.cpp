#include "crypto/Rijndael256Hardware.h"

namespace kelvora {

void MakeHardwareRoundKeys(const RijndaelSchedule& schedule, HardwareRoundKeys& keys) {
    for (int round = 0; round <= kHardwareRounds; ++round) {
        for (int column = 0; column < 8; ++column) {
            const auto word = static_cast<std::size_t>(round * 8 + column);
            const auto at = static_cast<std::size_t>(4 * column);
            StoreWordLe(schedule.encryptKeys[word], &keys.encrypt[round][at]);
            StoreWordLe(schedule.decryptKeys[word], &keys.decrypt[round][at]);
        }
    }
}

} // namespace kelvora
