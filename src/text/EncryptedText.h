#pragma once

#include "common/Bytes.h"
#include "common/Random.h"
#include "crypto/CRijndael.h"

#include <string>
#include <string_view>

namespace kelvora {

// An encrypted text is Base64 (lines of 76, CR LF) of the cipher bytes of
//   32 random bytes + banner line + CR LF + the text,
// enciphered with EncryptData. All texts here are Windows-1252 with CR LF line breaks.

inline constexpr std::size_t kTextPrefixBytes = 32;
inline constexpr std::string_view kMakerAddress = "http://www.kelvora.net";

// BannerLine is the advertising line put at the top of every text before it is encrypted,
// chosen by the language offset (0 German, 1900 Spanish, 2900 French, else English).
[[nodiscard]] std::string BannerLine(int languageOffset);

// WithBanner returns banner line + CR LF + text.
[[nodiscard]] std::string WithBanner(int languageOffset, std::string_view ansiText);

// StartsWithBanner tells whether a text begins with one of the four banner texts, the
// address behind them being any.
[[nodiscard]] bool StartsWithBanner(std::string_view ansiText);

enum class TextStatus {
    Ok,
    Cancelled,       // the cipher's Cancel was set while it ran
    NotBlockAligned, // the decoded bytes are not a whole number of blocks (or none)
};

struct TextResult {
    TextStatus status = TextStatus::Ok;
    std::string text;
};

// EncryptText enciphers 32 random bytes followed by ansiText (which already holds its
// banner line) and returns the armoured text. Cancelled gives no text.
[[nodiscard]] TextResult EncryptText(CRijndael& cipher, const Bytes& key, std::string_view ansiText,
                                     RandomSource& random);

// DecryptText removes every blank, decodes the Base64 and deciphers it, returning
// everything after the 32-byte prefix; the cipher's zero padding stays at its end.
[[nodiscard]] TextResult DecryptText(CRijndael& cipher, const Bytes& key,
                                     std::string_view armoured);

// UpToFirstNul is what a text box shows of a decrypted text.
[[nodiscard]] std::string_view UpToFirstNul(std::string_view text);

} // namespace kelvora
