// The container index: its tail, the split into byte counts and the walker agree, and
// nothing they give lies outside the records.
#include "FuzzSupport.h"
#include "files/ContainerIndex.h"

#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelvora;
    const std::span<const std::uint8_t> bytes(data, size);
    (void)ParseIndexTail(bytes);
    const auto counts = SplitIndex(bytes);
    IndexWalker walker(static_cast<std::int64_t>(size));
    std::int64_t end = 0;
    for (const std::uint8_t byte : bytes) {
        const IndexWalker::Step step = walker.Feed(byte);
        if (step == IndexWalker::Step::Garbled) {
            return 0;
        }
        if (step == IndexWalker::Step::File) {
            const FileRange& range = walker.File();
            if (range.offset != end || range.byteCount < 0 ||
                range.offset + range.byteCount > static_cast<std::int64_t>(size)) {
                fuzz::Stop("the index walker gave a range outside the records");
            }
            end = range.offset + range.byteCount;
        }
    }
    if (counts) {
        const Bytes encoded = EncodeIndex(*counts);
        const auto again = SplitIndex(
            std::span(encoded).first(encoded.size() - ParseIndexTail(encoded)->digitBytes));
        if (!again || *again != *counts) {
            fuzz::Stop("an index does not round-trip");
        }
    }
    return 0;
}
