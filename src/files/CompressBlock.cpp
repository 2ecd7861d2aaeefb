#include "files/CompressBlock.h"

#include "files/Deflate.h"
#include "files/LittleEndian.h"

namespace kelvora {

std::int32_t CompressBlock(std::span<const std::uint8_t> source, Bytes& output) {
    const std::size_t n = source.size();
    if (n == 0 || n > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        return 0;
    }
    const std::size_t capacity = CompressCapacity(n);
    output.resize(capacity + kBlockHeaderBytes);
    const std::size_t streamLength =
        ZlibCompress(source, std::span(output).subspan(kBlockHeaderBytes));
    if (streamLength == 0) {
        return 0;
    }
    PutInt32Le(output.data(), kBlockMagic);
    PutInt32Le(output.data() + 4, static_cast<std::int32_t>(n));
    output.resize(streamLength + kBlockHeaderBytes);
    return static_cast<std::int32_t>(output.size());
}

std::int32_t BlockPlainLength(std::span<const std::uint8_t> block) {
    if (block.size() < kBlockHeaderBytes || GetInt32Le(block.data()) != kBlockMagic) {
        return -1;
    }
    return GetInt32Le(block.data() + 4);
}

std::int32_t UncompressBlock(std::span<const std::uint8_t> block, Bytes& output,
                             std::int32_t maxPlainBytes) {
    if (block.size() <= kBlockHeaderBytes) {
        return 0;
    }
    const std::int32_t plainLength = BlockPlainLength(block);
    if (plainLength < 1 || plainLength > maxPlainBytes) {
        return 0;
    }
    output.resize(static_cast<std::size_t>(plainLength));
    const std::int64_t restored = ZlibUncompress(block.subspan(kBlockHeaderBytes), output);
    return restored < 0 ? 0 : static_cast<std::int32_t>(restored);
}

} // namespace kelvora
