// What libFuzzer calls. The build compiles it once for each target.

#include "Targets.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const tallybook::fuzz::Target& target = tallybook::fuzz::targetNamed(TALLYBOOK_FUZZ_TARGET);
    const std::string complaint = target.run({data, size});
    if (!complaint.empty()) {
        std::fprintf(stderr, "%s\n", complaint.c_str());
        std::abort();
    }
    return 0;
}
