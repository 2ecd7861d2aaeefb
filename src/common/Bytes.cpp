#include "common/Bytes.h"

#include <string.h>

namespace kelvora {

void WipeMemory(void* data, std::size_t size) noexcept {
    if (data != nullptr && size > 0) {
        explicit_bzero(data, size);
    }
}

void Wipe(Bytes& bytes) noexcept {
    WipeMemory(bytes.data(), bytes.capacity());
    bytes.clear();
}

void Wipe(std::string& text) noexcept {
    WipeMemory(text.data(), text.capacity());
    text.clear();
}

Bytes BytesFromString(std::string_view text) {
    return Bytes(text.begin(), text.end());
}

std::string StringFromBytes(const Bytes& bytes) {
    return std::string(bytes.begin(), bytes.end());
}

SecretBytes& SecretBytes::operator=(SecretBytes&& other) noexcept {
    if (this != &other) {
        Wipe(m_bytes);
        m_bytes = std::move(other.m_bytes);
    }
    return *this;
}

SecretString& SecretString::operator=(SecretString&& other) noexcept {
    if (this != &other) {
        Wipe(m_text);
        m_text = std::move(other.m_text);
    }
    return *this;
}

} // namespace kelvora
