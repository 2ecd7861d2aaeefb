#pragma once

#include "common/Bytes.h"

#include <span>
#include <string>
#include <string_view>

namespace kelvora {

// MakePassphraseKey is the passphrase key rule: the first 32 characters of the passphrase
// (Windows-1252, one byte a character), filled up to 32 with "A" (0x41). Case and blanks
// are kept; an empty passphrase gives 32 "A"s. It cannot fail.
[[nodiscard]] SecretBytes MakePassphraseKey(std::string_view ansiPassphrase);

// SharedKey is the result of BuildKey: the key, or the number (1-based) of the first key
// that was empty, in which case key is empty.
struct SharedKey {
    SecretBytes key;
    int emptyKeyNumber = 0;
    bool ok() const { return emptyKeyNumber == 0; }
};

// BuildKey is the shared key rule for keys 1..n (keys[0] is key 1): keys 1, 3, 5 ... are
// joined into A and keys 2, 4, 6 ... into B, without separators, and the key is the raw
// MD5 digest (MD5Digest) of A followed by that of B. An empty key among them gives its number.
[[nodiscard]] SharedKey BuildKey(std::span<const std::string> ansiKeys);

} // namespace kelvora
