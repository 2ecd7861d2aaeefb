#include "files/ParallelCompressor.h"

#include "FileTestSupport.h"
#include "files/CompressBlock.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

class ParallelCompressorWorkers : public ::testing::TestWithParam<std::size_t> {};

TEST_P(ParallelCompressorWorkers, GivesBlocksBackInSubmissionOrder) {
    ParallelCompressor compressor(GetParam());
    std::vector<Bytes> sent;
    std::size_t received = 0;
    const auto takeOne = [&] {
        const ParallelCompressor::CompressedChunk chunk = compressor.Next();
        const Bytes& expected = sent[received++];
        EXPECT_EQ(chunk.data, expected);
        Bytes restored;
        EXPECT_EQ(UncompressBlock(chunk.block, restored).value(), expected.size());
        EXPECT_EQ(restored, expected);
    };
    for (std::uint32_t i = 0; i < 40; ++i) {
        // Big and small chunks alternate, so later ones often finish first.
        sent.push_back(testing::PatternBytes(i % 3 == 0 ? 300000 : i * 7, i, i % 2 == 0));
        compressor.Submit(sent.back());
        if (compressor.InFlight() > compressor.Depth()) {
            takeOne();
        }
    }
    while (compressor.InFlight() > 0) {
        takeOne();
    }
    EXPECT_EQ(received, sent.size());
}

TEST_P(ParallelCompressorWorkers, PassesUnreadChunksThrough) {
    ParallelCompressor compressor(GetParam());
    compressor.Submit(testing::PatternBytes(200000, 1));
    compressor.Submit(Fail(5));
    EXPECT_FALSE(compressor.Next().failure);
    const ParallelCompressor::CompressedChunk unread = compressor.Next();
    ASSERT_TRUE(unread.failure);
    EXPECT_EQ(unread.failure->error, FileError::ReadFailed);
    EXPECT_EQ(unread.failure->systemError, 5);
    EXPECT_TRUE(unread.block.empty());
    compressor.Submit(testing::PatternBytes(300000, 2)); // dropped with the compressor
}

INSTANTIATE_TEST_SUITE_P(Workers, ParallelCompressorWorkers, ::testing::Values(0u, 1u, 3u),
                         [](const auto& info) {
                             return info.param == 0 ? std::string("OnTheCallingThread")
                                                    : std::to_string(info.param) + "Workers";
                         });

} // namespace
} // namespace kelvora
