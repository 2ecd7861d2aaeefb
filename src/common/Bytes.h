#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kelvora {

// A byte array. An empty vector is an array "that was never dimensioned": no data.
using Bytes = std::vector<std::uint8_t>;

// WipeMemory overwrites size bytes at data with zeros in a way the compiler cannot drop.
void WipeMemory(void* data, std::size_t size) noexcept;

// Wipe clears a secret's bytes and then empties it.
void Wipe(Bytes& bytes) noexcept;
void Wipe(std::string& text) noexcept;

// BytesFromString copies the bytes of a one-byte-per-character (Windows-1252) text.
Bytes BytesFromString(std::string_view text);
// StringFromBytes is the inverse of BytesFromString.
std::string StringFromBytes(const Bytes& bytes);

// SecretBytes holds key material and wipes it when it goes out of scope.
class SecretBytes {
public:
    SecretBytes() = default;
    explicit SecretBytes(Bytes bytes) : m_bytes(std::move(bytes)) {}
    SecretBytes(const SecretBytes&) = delete;
    SecretBytes& operator=(const SecretBytes&) = delete;
    SecretBytes(SecretBytes&& other) noexcept : m_bytes(std::move(other.m_bytes)) {}
    SecretBytes& operator=(SecretBytes&& other) noexcept;
    ~SecretBytes() { Wipe(m_bytes); }

    const Bytes& bytes() const { return m_bytes; }
    bool empty() const { return m_bytes.empty(); }

private:
    Bytes m_bytes;
};

// SecretString holds a passphrase or key string and wipes it when it goes out of scope.
class SecretString {
public:
    SecretString() = default;
    explicit SecretString(std::string text) : m_text(std::move(text)) {}
    SecretString(const SecretString&) = delete;
    SecretString& operator=(const SecretString&) = delete;
    SecretString(SecretString&& other) noexcept : m_text(std::move(other.m_text)) {}
    SecretString& operator=(SecretString&& other) noexcept;
    ~SecretString() { Wipe(m_text); }

    const std::string& str() const { return m_text; }
    bool empty() const { return m_text.empty(); }

private:
    std::string m_text;
};

} // namespace kelvora
