#pragma once

#include "common/Bytes.h"
#include "common/JobObserver.h"
#include "crypto/CipherPath.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace kelvora {

inline constexpr std::size_t kBlockBytes = 32; // Rijndael with a 256-bit block
inline constexpr std::size_t kKeyBytes = 32;   // and a 256-bit key

// CRijndael is the only cipher of the system: Rijndael with a 256-bit block and a 256-bit
// key (Nb = 8, Nk = 8, 14 rounds) in CBC mode with an all-zero IV and zero padding. It adds
// no header, length or checksum; callers frame their data themselves. One object per job.
//
// Bad input is never an error: it yields an empty array, and callers test for emptiness.
class CRijndael {
public:
    // observer receives progress of the one-shot operations and the "let events run"
    // calls of all long operations; it may be null.
    explicit CRijndael(JobObserver* observer = nullptr);
    ~CRijndael();
    CRijndael(const CRijndael&) = delete;
    CRijndael& operator=(const CRijndael&) = delete;

    // Cancel is the stop request. A front end sets it (from LetEventsRun or from another
    // thread); DecryptDo also sets it itself when its input is not a multiple of 32 bytes.
    // The engine never resets it.
    std::atomic<bool> Cancel{false};

    // gentables builds the cipher tables. gkey builds the key schedule for a block of nb
    // and a key of nk 32-bit words from the first 4*nk bytes of key.
    void gentables();
    void gkey(int nb, int nk, const std::uint8_t* key);

    // Encrypt and Decrypt work on one 32-byte block in place with the current schedule.
    void Encrypt(std::uint8_t* block) const;
    void Decrypt(std::uint8_t* block) const;

    // EncryptBlocksCbc enciphers count consecutive blocks from in to out in CBC mode,
    // chaining from iv and leaving the last ciphertext block in iv. DecryptBlocksCbc is its
    // inverse (iv ends as the last ciphertext block consumed). in and out may be the same.
    // These are the engine's bulk paths; they run on the object's cipher path.
    void EncryptBlocksCbc(const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                          std::uint8_t* iv) const;
    void DecryptBlocksCbc(const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                          std::uint8_t* iv) const;

    // UseCipherPath makes this object run on path from now on and gives true, or gives false
    // and changes nothing when this CPU cannot run it. New objects take ActiveCipherPath().
    [[nodiscard]] bool UseCipherPath(CipherPath path);
    [[nodiscard]] CipherPath Path() const { return m_path; }

    // EncryptData encrypts a whole message: the key is its first 32 bytes (a shorter key is
    // padded with zero bytes), the output the data zero-padded to a multiple of 32 bytes.
    // Unless quiet, progress goes to the observer. On cancel the output keeps its full
    // length with only the finished blocks filled. Empty data or key gives an empty array.
    [[nodiscard]] Bytes EncryptData(const Bytes& data, const Bytes& key, bool quiet);

    // DecryptData decrypts a whole message with the key rule of EncryptData. The output is
    // as long as the input (padding is not removed); a length that is not a multiple of 32
    // gives an empty array. A wrong key is not detected.
    [[nodiscard]] Bytes DecryptData(const Bytes& data, const Bytes& key);

    // EncryptPrepareKey sets up the schedule for the streaming operations from the first 32
    // bytes of key. Returns false, leaving the schedule untouched, when key is empty or
    // shorter than 32 bytes.
    [[nodiscard]] bool EncryptPrepareKey(const Bytes& key);

    // EncryptDo encrypts the next piece of a stream: the piece is zero-padded to a multiple
    // of 32 bytes; continued = false starts from a zero IV, true chains from the previous
    // call's last block. Empty data, or Cancel seen at a check, gives an empty array.
    [[nodiscard]] Bytes EncryptDo(const Bytes& data, bool continued);

    // DecryptDo decrypts the next piece of a stream (no padding removed). A length that is
    // not a multiple of 32 sets Cancel and gives an empty array; so does Cancel itself.
    [[nodiscard]] Bytes DecryptDo(const Bytes& data, bool continued);

private:
    struct Schedule;

    // Streaming calls let events run once per this many blocks (about every 16 KB).
    static constexpr std::size_t kBlocksBetweenChecks = 500;

    void PrepareOneShotKey(const Bytes& key);
    [[nodiscard]] bool HasKey() const;
    [[nodiscard]] bool CancelAfterEvents();
    void ResetProgress(std::size_t blocks);
    void ReportProgress(std::size_t position);

    [[nodiscard]] bool OnHardware() const;

    JobObserver* m_observer;
    Schedule* m_schedule;
    CipherPath m_path = ActiveCipherPath();
    std::array<std::uint8_t, kBlockBytes> m_encryptChain{};
    std::array<std::uint8_t, kBlockBytes> m_decryptChain{};
};

} // namespace kelvora
