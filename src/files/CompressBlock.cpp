#include "files/CompressBlock.h"

#include "files/Deflate.h"
#include "files/LittleEndian.h"

namespace kelvora {

Result<std::size_t, BlockError> CompressBlock(std::span<const std::uint8_t> source, Bytes& output) {
    const std::size_t n = source.size();
    if (n == 0) {
        return Fail(BlockError::Empty);
    }
    if (n > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        return Fail(BlockError::TooLarge);
    }
    const std::size_t capacity = CompressCapacity(n);
    output.resize(capacity + kBlockHeaderBytes);
    const std::optional<std::size_t> streamLength =
        ZlibCompress(source, std::span(output).subspan(kBlockHeaderBytes));
    if (!streamLength) {
        return Fail(BlockError::DeflateFailed);
    }
    PutInt32Le(output.data(), kBlockMagic);
    PutInt32Le(output.data() + 4, static_cast<std::int32_t>(n));
    output.resize(*streamLength + kBlockHeaderBytes);
    return output.size();
}

Result<std::int32_t, BlockError> BlockPlainLength(std::span<const std::uint8_t> block) {
    if (block.size() < kBlockHeaderBytes) {
        return Fail(BlockError::Empty);
    }
    if (GetInt32Le(block.data()) != kBlockMagic) {
        return Fail(BlockError::BadMagic);
    }
    return GetInt32Le(block.data() + 4);
}

Result<std::size_t, BlockError> UncompressBlock(std::span<const std::uint8_t> block, Bytes& output,
                                                std::int32_t maxPlainBytes) {
    if (block.size() <= kBlockHeaderBytes) {
        return Fail(BlockError::Empty);
    }
    const Result<std::int32_t, BlockError> plainLength = BlockPlainLength(block);
    if (!plainLength) {
        return Fail(plainLength.error());
    }
    if (*plainLength < 1 || *plainLength > maxPlainBytes) {
        return Fail(BlockError::LengthOutOfRange);
    }
    output.resize(static_cast<std::size_t>(*plainLength));
    const std::optional<std::size_t> restored =
        ZlibUncompress(block.subspan(kBlockHeaderBytes), output);
    if (!restored) {
        return Fail(BlockError::InflateFailed);
    }
    return *restored;
}

} // namespace kelvora
