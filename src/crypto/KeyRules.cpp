#include "crypto/KeyRules.h"

#include "crypto/CRijndael.h"
#include "crypto/Md5.h"

#include <algorithm>

namespace kelvora {
namespace {

constexpr char kKeyFiller = 'A';

} // namespace

SecretBytes MakePassphraseKey(std::string_view ansiPassphrase) {
    Bytes key(kKeyBytes, static_cast<std::uint8_t>(kKeyFiller));
    const std::size_t used = std::min(ansiPassphrase.size(), kKeyBytes);
    for (std::size_t i = 0; i < used; ++i) {
        key[i] = static_cast<std::uint8_t>(ansiPassphrase[i]);
    }
    return SecretBytes(std::move(key));
}

SharedKey BuildKey(std::span<const std::string> ansiKeys) {
    std::string joined[2]; // keys 1, 3, 5 ... and keys 2, 4, 6 ...
    for (std::size_t i = 0; i < ansiKeys.size(); ++i) {
        if (ansiKeys[i].empty()) {
            Wipe(joined[0]);
            Wipe(joined[1]);
            return SharedKey{SecretBytes(), static_cast<int>(i + 1)};
        }
        joined[i % 2] += ansiKeys[i];
    }
    Bytes key;
    key.reserve(kKeyBytes);
    for (std::string& part : joined) {
        // A digest fails only for over 256 MiB of key text, which no front end accepts.
        Md5Digest digest = MD5Digest(part).value_or(Md5Digest{});
        key.insert(key.end(), digest.begin(), digest.end());
        WipeMemory(digest.data(), digest.size());
        Wipe(part);
    }
    return SharedKey{SecretBytes(std::move(key)), 0};
}

} // namespace kelvora
