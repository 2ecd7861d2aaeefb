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
        ParallelCompressor::CompressedChunk chunk = compressor.Next();
        ASSERT_FALSE(chunk.failed);
        EXPECT_EQ(chunk.data, sent[received]);
        Bytes restored;
        if (sent[received].empty()) {
            EXPECT_TRUE(chunk.block.empty());
        } else {
            EXPECT_EQ(UncompressBlock(chunk.block, restored),
                      static_cast<std::int32_t>(sent[received].size()));
            EXPECT_EQ(restored, sent[received]);
        }
        ++received;
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

TEST_P(ParallelCompressorWorkers, DiscardsWhatIsInFlight) {
    ParallelCompressor compressor(GetParam());
    compressor.Submit(testing::PatternBytes(200000, 1));
    compressor.Submit(testing::PatternBytes(10, 2));
    compressor.DiscardInFlight();
    EXPECT_EQ(compressor.InFlight(), 0u);
    const Bytes next = testing::PatternBytes(50, 3);
    compressor.Submit(next);
    EXPECT_EQ(compressor.Next().data, next);
}

INSTANTIATE_TEST_SUITE_P(Workers, ParallelCompressorWorkers, ::testing::Values(0u, 1u, 3u));

} // namespace
} // namespace kelvora
