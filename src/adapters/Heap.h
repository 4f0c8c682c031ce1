// What the program asks of the system's allocator.
#pragma once

namespace tallybook::adapters {

// Has the heap grow by steps of 16 MiB instead of 128 KiB. A large database takes about as much; a step is a call of
// the system, and pages that nobody writes to cost nothing. To be called once, at the start of a program. An
// allocator other than the C library's own is left as it is.
void growHeapInLargeSteps();

} // namespace tallybook::adapters
