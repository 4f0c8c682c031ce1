#include "adapters/Heap.h"

#include <cstdlib> // says whose C library this is

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tallybook::adapters {

void growHeapInLargeSteps() {
#ifdef __GLIBC__
    constexpr int kMiB = 1 << 20;
    mallopt(M_TOP_PAD, 16 * kMiB);
    // With a step of one's own these no longer adapt themselves; they stand where they would come to.
    mallopt(M_MMAP_THRESHOLD, 32 * kMiB);
    mallopt(M_TRIM_THRESHOLD, 64 * kMiB);
#endif
}

} // namespace tallybook::adapters
