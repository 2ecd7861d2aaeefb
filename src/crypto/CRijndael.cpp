#include "crypto/CRijndael.h"

#include "crypto/Rijndael256Hardware.h"
#include "crypto/RijndaelBuffer.h"
#include "crypto/RijndaelCipher.h"
#include "crypto/RijndaelSchedule.h"
#include "crypto/RijndaelTables.h"

#include <algorithm>
#include <cstring>

namespace kelvora {
namespace {

using Block = std::array<std::uint8_t, kBlockBytes>;

std::size_t PaddedBlockCount(std::size_t length) {
    return (length + kBlockBytes - 1) / kBlockBytes;
}

} // namespace

struct CRijndael::Schedule {
    const RijndaelTables* tables = nullptr;
    RijndaelSchedule keys;
    HardwareRoundKeys hardwareKeys{}; // the same keys laid out for the AES instructions

    const RijndaelTables& Tables() const {
        return tables != nullptr ? *tables : SharedRijndaelTables();
    }
};

CRijndael::CRijndael(JobObserver* observer) : m_observer(observer), m_schedule(new Schedule) {}

CRijndael::~CRijndael() {
    WipeMemory(&m_schedule->keys, sizeof m_schedule->keys);
    WipeMemory(&m_schedule->hardwareKeys, sizeof m_schedule->hardwareKeys);
    delete m_schedule;
    WipeMemory(m_encryptChain.data(), m_encryptChain.size());
    WipeMemory(m_decryptChain.data(), m_decryptChain.size());
}

void CRijndael::gentables() {
    m_schedule->tables = &SharedRijndaelTables();
}

// A block or key length the cipher does not know leaves the previous schedule in force.
void CRijndael::gkey(int nb, int nk, const std::uint8_t* key) {
    static_cast<void>(ExpandRijndaelKey(m_schedule->Tables(), nb, nk, key, m_schedule->keys));
    if (m_schedule->keys.nb == 8) {
        MakeHardwareRoundKeys(m_schedule->keys, m_schedule->hardwareKeys);
    }
}

bool CRijndael::UseCipherPath(CipherPath path) {
    if (!CipherPathAvailable(path)) {
        return false;
    }
    m_path = path;
    return true;
}

// The AES instructions only serve the 256-bit block; other block lengths stay portable.
bool CRijndael::OnHardware() const {
    return m_path != CipherPath::Portable && m_schedule->keys.nb == 8;
}

bool CRijndael::HasKey() const {
    return m_schedule->keys.nb != 0;
}

// Before the first key there is nothing to encrypt with, and the block stays as it is.
void CRijndael::Encrypt(std::uint8_t* block) const {
    Block zeroIv{};
    EncryptBlocksCbc(block, block, 1, zeroIv.data());
}

void CRijndael::Decrypt(std::uint8_t* block) const {
    Block zeroIv{};
    DecryptBlocksCbc(block, block, 1, zeroIv.data());
}

void CRijndael::EncryptBlocksCbc(const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                                 std::uint8_t* iv) const {
    if (OnHardware() && m_path == CipherPath::Avx512) {
        Rijndael256EncryptCbcAvx512(m_schedule->hardwareKeys, in, out, count, iv);
    } else if (OnHardware()) {
        Rijndael256EncryptCbcAesNi(m_schedule->hardwareKeys, in, out, count, iv);
    } else if (HasKey()) {
        RijndaelEncryptCbc(m_schedule->Tables(), m_schedule->keys, in, out, count, iv);
    }
}

void CRijndael::DecryptBlocksCbc(const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                                 std::uint8_t* iv) const {
    if (OnHardware() && (m_path == CipherPath::Vaes || m_path == CipherPath::Avx512)) {
        Rijndael256DecryptCbcVaes(m_schedule->hardwareKeys, in, out, count, iv);
    } else if (OnHardware()) {
        Rijndael256DecryptCbcAesNi(m_schedule->hardwareKeys, in, out, count, iv);
    } else if (HasKey()) {
        RijndaelDecryptCbc(m_schedule->Tables(), m_schedule->keys, in, out, count, iv);
    }
}

void CRijndael::PrepareOneShotKey(const Bytes& key) {
    Block padded{};
    std::copy_n(key.begin(), std::min(key.size(), padded.size()), padded.begin());
    gentables();
    gkey(8, 8, padded.data());
    WipeMemory(padded.data(), padded.size());
}

bool CRijndael::CancelAfterEvents() {
    if (m_observer != nullptr) {
        m_observer->LetEventsRun();
    }
    return Cancel.load();
}

// The progress range is one more than the block count, so a bar only fills at the very end.
void CRijndael::ResetProgress(std::size_t blocks) {
    if (m_observer != nullptr) {
        m_observer->OnProgressRange(static_cast<std::int64_t>(blocks + 1));
        m_observer->OnProgress(0);
    }
}

void CRijndael::ReportProgress(std::size_t position) {
    if (m_observer != nullptr) {
        m_observer->OnProgress(static_cast<std::int64_t>(position));
    }
}

Bytes CRijndael::EncryptData(const Bytes& data, const Bytes& key, bool quiet) {
    if (data.empty() || key.empty()) {
        return {};
    }
    PrepareOneShotKey(key);
    const std::size_t blocks = PaddedBlockCount(data.size());
    Bytes out(blocks * kBlockBytes); // zeros pad the last block
    if (!quiet) {
        ResetProgress(blocks);
    }
    Block chain{};
    for (std::size_t i = 0; i < blocks; ++i) {
        const std::size_t offset = i * kBlockBytes;
        std::uint8_t* block = out.data() + offset;
        std::memcpy(block, data.data() + offset, std::min(kBlockBytes, data.size() - offset));
        EncryptBlocksCbc(block, block, 1, chain.data());
        if (!quiet) {
            ReportProgress(i);
        }
        if (CancelAfterEvents()) {
            return out;
        }
    }
    if (!quiet) {
        ReportProgress(blocks + 1);
    }
    return out;
}

Bytes CRijndael::DecryptData(const Bytes& data, const Bytes& key) {
    if (data.empty() || key.empty() || data.size() % kBlockBytes != 0) {
        return {};
    }
    PrepareOneShotKey(key);
    const std::size_t blocks = data.size() / kBlockBytes;
    Bytes out(data.size());
    ResetProgress(blocks);
    Block chain{};
    for (std::size_t i = 0; i < blocks; ++i) {
        DecryptBlocksCbc(data.data() + i * kBlockBytes, out.data() + i * kBlockBytes, 1,
                         chain.data());
        ReportProgress(i);
        if (CancelAfterEvents()) {
            return out;
        }
    }
    ReportProgress(blocks + 1);
    return out;
}

bool CRijndael::EncryptPrepareKey(const Bytes& key) {
    if (key.size() < kKeyBytes) {
        return false;
    }
    gentables();
    gkey(8, 8, key.data());
    return true;
}

// Events run before each stretch of kBlocksBetweenChecks blocks. A cancelled call returns
// nothing, so the chaining block keeps the value of the last completed call.
Bytes CRijndael::EncryptDo(const Bytes& data, bool continued) {
    if (data.empty()) {
        return {};
    }
    const std::size_t fullBlocks = data.size() / kBlockBytes;
    const std::size_t blocks = PaddedBlockCount(data.size());
    Bytes out = NewCipherBuffer(blocks * kBlockBytes);
    std::copy(data.begin() + static_cast<std::ptrdiff_t>(fullBlocks * kBlockBytes), data.end(),
              out.begin() + static_cast<std::ptrdiff_t>(fullBlocks * kBlockBytes));
    Block chain = continued ? m_encryptChain : Block{};
    for (std::size_t start = 0; start < blocks; start += kBlocksBetweenChecks) {
        if (CancelAfterEvents()) {
            return {};
        }
        const std::size_t end = std::min(start + kBlocksBetweenChecks, blocks);
        const std::size_t fromData = std::min(end, fullBlocks);
        if (start < fromData) {
            EncryptBlocksCbc(data.data() + start * kBlockBytes, out.data() + start * kBlockBytes,
                             fromData - start, chain.data());
        }
        if (fromData < end) { // the padded last block was copied into out above
            std::uint8_t* tail = out.data() + fromData * kBlockBytes;
            EncryptBlocksCbc(tail, tail, end - fromData, chain.data());
        }
    }
    m_encryptChain = chain;
    return out;
}

Bytes CRijndael::DecryptDo(const Bytes& data, bool continued) {
    if (data.empty()) {
        return {};
    }
    if (data.size() % kBlockBytes != 0) {
        Cancel = true;
        return {};
    }
    const std::size_t blocks = data.size() / kBlockBytes;
    Bytes out = NewCipherBuffer(data.size());
    Block chain = continued ? m_decryptChain : Block{};
    for (std::size_t start = 0; start < blocks; start += kBlocksBetweenChecks) {
        if (CancelAfterEvents()) {
            return {};
        }
        const std::size_t count = std::min(kBlocksBetweenChecks, blocks - start);
        DecryptBlocksCbc(data.data() + start * kBlockBytes, out.data() + start * kBlockBytes, count,
                         chain.data());
    }
    m_decryptChain = chain;
    return out;
}

} // namespace kelvora
