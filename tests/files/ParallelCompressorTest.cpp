#include "files/ParallelCompressor.h"

#include "FileTestSupport.h"
#include "files/CompressBlock.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

// Run on the calling thread (0), one worker and three.
class ParallelCompressorWorkers : public ::testing::TestWithParam<std::size_t> {};

// That blocks come back in submission order, whichever finishes first, the container tests
// check through the writer, field by field, for many small files around a big one.
TEST_P(ParallelCompressorWorkers, PassesUnreadChunksThrough) {
    ParallelCompressor compressor(GetParam());
    const Bytes data = testing::PatternBytes(200000, 1);
    compressor.Submit(data);
    compressor.Submit(Fail(5));
    const ParallelCompressor::CompressedChunk read = compressor.Next();
    EXPECT_FALSE(read.failure);
    Bytes restored;
    EXPECT_EQ(UncompressBlock(read.block, restored).value(), data.size());
    EXPECT_EQ(restored, data);
    const ParallelCompressor::CompressedChunk unread = compressor.Next();
    ASSERT_TRUE(unread.failure);
    EXPECT_EQ(unread.failure->error, FileError::ReadFailed);
    EXPECT_EQ(unread.failure->systemError, 5);
    EXPECT_TRUE(unread.block.empty());
    compressor.Submit(testing::PatternBytes(300000, 2)); // dropped with the compressor
}

INSTANTIATE_TEST_SUITE_P(Workers, ParallelCompressorWorkers, ::testing::Values(0u, 1u, 3u));

} // namespace
} // namespace kelvora
