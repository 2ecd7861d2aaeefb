#include "files/ChunkHeap.h"

#include "files/ContainerFormat.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace kelvora {
namespace {

// Only buffers larger than any a job allocates get a mapping of their own; the heap keeps up
// to the jobs' memory bound of free memory.
constexpr int kMapAboveBytes = 16 * static_cast<int>(kChunkBytes);
constexpr int kKeepFreeBytes = 32 * static_cast<int>(kChunkBytes);

} // namespace

void KeepChunkBuffersInHeap() {
#ifdef __GLIBC__
    static_cast<void>(mallopt(M_MMAP_THRESHOLD, kMapAboveBytes));
    static_cast<void>(mallopt(M_TRIM_THRESHOLD, kKeepFreeBytes));
#endif
}

} // namespace kelvora
