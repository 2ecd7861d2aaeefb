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

std::optional<std::int64_t> DecodeBase255(std::span<const std::uint8_t> digits) {
    std::int64_t value = 0;
    std::int64_t weight = 1;
    bool weightOverflowed = false;
    for (const std::uint8_t digit : digits) {
        if (digit != 0) {
            if (weightOverflowed || digit > (kInt64Max - value) / weight) {
                return std::nullopt;
            }
            value += digit * weight;
        }
        // A higher digit position past the range only matters if a later digit is not 0.
        if (weight > kInt64Max / kRadix) {
            weightOverflowed = true;
        } else {
            weight *= kRadix;
        }
    }
    return value;
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
    std::size_t groupStart = 0;
    for (std::size_t i = 0; i < index.size(); ++i) {
        if (index[i] != kIndexSeparator) {
            continue;
        }
        const auto count = DecodeBase255(index.subspan(groupStart, i - groupStart));
        if (!count) {
            return std::nullopt;
        }
        counts.push_back(*count);
        groupStart = i + 1;
    }
    return counts;
}

std::optional<std::vector<FileRange>> RangesFromCounts(std::span<const std::int64_t> byteCounts,
                                                       std::int64_t recordsEnd) {
    std::vector<FileRange> ranges;
    ranges.reserve(byteCounts.size());
    std::int64_t offset = 0;
    for (const std::int64_t count : byteCounts) {
        if (count < 0 || count > recordsEnd - offset) {
            return std::nullopt;
        }
        ranges.push_back(FileRange{offset, count});
        offset += count;
    }
    return ranges;
}

} // namespace kelvora
