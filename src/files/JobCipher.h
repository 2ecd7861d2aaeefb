#pragma once

#include "crypto/CRijndael.h"
#include "files/FileJobObserver.h"

namespace kelvora {

// JobCipher is the cipher object of one file job, wired so that the front end's cancel
// request reaches the cipher's Cancel flag while it works through a chunk.
class JobCipher final : private JobObserver {
public:
    explicit JobCipher(FileJobObserver& front) : m_front(front), m_cipher(this) {}

    CRijndael& Cipher() { return m_cipher; }

    // Cancelled is true once the front end asked to stop or the cipher stopped itself.
    bool Cancelled() {
        if (m_front.CancelRequested()) {
            m_cipher.Cancel = true;
        }
        return m_cipher.Cancel;
    }

private:
    void LetEventsRun() override {
        m_front.LetEventsRun();
        (void)Cancelled();
    }

    FileJobObserver& m_front;
    CRijndael m_cipher;
};

} // namespace kelvora
