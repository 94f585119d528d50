#include "platform/MemoryReuse.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

void keepFreedMemoryForReuse()
{
#if defined(__GLIBC__)
    // Blocks up to this size come from the heap rather than a mapping of
    // their own (glibc would otherwise map and unmap anything from 128 KiB,
    // raising that limit only as far as 32 MiB as it sees blocks freed).
    mallopt(M_MMAP_THRESHOLD, 64 * 1024 * 1024);
    // And free memory at the top of the heap is returned only beyond this.
    mallopt(M_TRIM_THRESHOLD, 128 * 1024 * 1024);
#endif
    // The macOS allocator keeps large freed regions for reuse by itself.
}
