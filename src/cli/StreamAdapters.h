#pragma once

#include "files/ByteSource.h"
#include "files/FileIo.h"

#include <istream>
#include <ostream>

namespace kelvora::cli {

// IstreamSource reads a job's input from a stream (standard input, or a file opened as one).
class IstreamSource final : public ByteSource {
public:
    explicit IstreamSource(std::istream& in) : m_in(in) {}
    Result<std::size_t, Errno> Read(std::span<std::uint8_t> out) override {
        m_in.read(reinterpret_cast<char*>(out.data()), static_cast<std::streamsize>(out.size()));
        if (m_in.bad()) {
            return kelvora::Fail(EIO);
        }
        return static_cast<std::size_t>(m_in.gcount());
    }

private:
    std::istream& m_in;
};

// OstreamSink writes a job's output to a stream (standard output).
class OstreamSink final : public ByteSink {
public:
    explicit OstreamSink(std::ostream& out) : m_out(out) {}
    Result<void, Errno> Write(std::span<const std::uint8_t> bytes) override {
        m_out.write(reinterpret_cast<const char*>(bytes.data()),
                    static_cast<std::streamsize>(bytes.size()));
        if (!m_out) {
            return kelvora::Fail(EPIPE);
        }
        return {};
    }

private:
    std::ostream& m_out;
};

} // namespace kelvora::cli
