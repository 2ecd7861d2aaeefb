#pragma once

namespace kelvora {

// KeepChunkBuffersInHeap tells the C library to keep the 2 to 4 MiB buffers of chunks and
// records in its heap once freed, instead of mapping each one afresh or handing freed memory
// back at once: otherwise every chunk pays page faults and the kernel's zeroing of its pages,
// about a seventh of the CPU time of testing a container. What the heap keeps stays within
// the jobs' memory bound. Programs call it once at start; it changes nothing else.
void KeepChunkBuffersInHeap();

} // namespace kelvora
