#include "adapters/Heap.h"

#include <cstdlib> // says whose C library this is

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tallybook::adapters {

void growHeapInLargeSteps() {
#ifdef __GLIBC__
    constexpr int kStep = 16 << 20; // bytes
    mallopt(M_TOP_PAD, kStep);
#endif
}

} // namespace tallybook::adapters
