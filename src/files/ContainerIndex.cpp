#include "files/ContainerIndex.h"

#include <limits>

namespace kelvora {

namespace {

constexpr std::int64_t kRadix = 255;
constexpr std::int64_t kInt64Max = std::numeric_limits<std::int64_t>::max();

} // namespace

void AppendBase255(Bytes& out, std::int64_t value) {
    while (value >= 1) {
        out.push_back(static_cast<std::uint8_t>(value % kRadix));
        value /= kRadix;
    }
}

Bytes EncodeIndex(std::span<const std::int64_t> byteCounts) {
    Bytes index;
    for (const std::int64_t count : byteCounts) {
        AppendBase255(index, count);
        index.push_back(kIndexSeparator);
    }
    AppendBase255(index, static_cast<std::int64_t>(index.size()));
    return index;
}

bool Base255Accumulator::Add(std::uint8_t digit) {
    if (digit != 0) {
        if (m_weightOverflowed || digit > (kInt64Max - m_value) / m_weight) {
            return false;
        }
        m_value += digit * m_weight;
    }
    // A digit position past the range only matters when a later digit is not 0.
    if (m_weight > kInt64Max / kRadix) {
        m_weightOverflowed = true;
    } else {
        m_weight *= kRadix;
    }
    return true;
}

std::optional<std::int64_t> DecodeBase255(std::span<const std::uint8_t> digits) {
    Base255Accumulator value;
    for (const std::uint8_t digit : digits) {
        if (!value.Add(digit)) {
            return std::nullopt;
        }
    }
    return value.Value();
}

std::optional<IndexTail> ParseIndexTail(std::span<const std::uint8_t> tail) {
    for (std::size_t i = tail.size(); i-- > 0;) {
        if (tail[i] == kIndexSeparator) {
            const auto digits = tail.subspan(i + 1);
            const auto length = DecodeBase255(digits);
            if (!length) {
                return std::nullopt;
            }
            return IndexTail{digits.size(), *length};
        }
    }
    return std::nullopt;
}

std::optional<std::vector<std::int64_t>> SplitIndex(std::span<const std::uint8_t> index) {
    if (index.empty() || index.back() != kIndexSeparator) {
        return std::nullopt;
    }
    std::vector<std::int64_t> counts;
    IndexWalker walker(std::numeric_limits<std::int64_t>::max());
    for (const std::uint8_t byte : index) {
        const IndexWalker::Step step = walker.Feed(byte);
        if (step == IndexWalker::Step::Garbled) {
            return std::nullopt;
        }
        if (step == IndexWalker::Step::File) {
            counts.push_back(walker.File().byteCount);
        }
    }
    return counts;
}

IndexWalker::Step IndexWalker::Feed(std::uint8_t byte) {
    if (byte != kIndexSeparator) {
        return m_count.Add(byte) ? Step::Digit : Step::Garbled;
    }
    const std::int64_t count = m_count.Value();
    m_count.Reset();
    if (count > m_recordsEnd - m_nextOffset) {
        return Step::Garbled;
    }
    m_file = FileRange{m_nextIndex++, m_nextOffset, count};
    m_nextOffset += count;
    return Step::File;
}

} // namespace kelvora
