#pragma once

#include "common/Random.h"
#include "i18n/TextIds.h"

#include <string>

namespace kelvora {

inline constexpr std::size_t kGeneratedPassphraseLength = 32;

// GenerateRandomPassphrase draws 32 characters, each uniform over the 94 codes from 32
// (blank) to 125 ("}"). The message id shown with it is kGeneratedPassphraseMessageId.
[[nodiscard]] std::string GenerateRandomPassphrase(RandomSource& random);

} // namespace kelvora
