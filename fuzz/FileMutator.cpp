// The mutator of the whole readers' targets: most changes keep the container in order.

#include "ContainerMutator.h"

#include <algorithm>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using tallybook::platform::Bytes;

constexpr tallybook::fuzz::Shape kShape = std::string_view(TALLYBOOK_FUZZ_TARGET) == "older"
                                              ? tallybook::fuzz::kOlderShape
                                              : tallybook::fuzz::kPresentShape;
constexpr std::size_t kGrowth = 64; // bytes that one change may add to a record

void mutateBytes(Bytes& bytes) {
    const std::size_t size = bytes.size();
    bytes.resize(size + kGrowth);
    bytes.resize(LLVMFuzzerMutate(bytes.data(), size, bytes.size()));
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed) {
    std::mt19937 random(seed);
    auto container = tallybook::fuzz::takeApart({data, size});
    if (!container || random() % 16 == 0)
        return LLVMFuzzerMutate(data, size, maxSize);
    tallybook::fuzz::mutate(*container, kShape, random, mutateBytes);
    const Bytes file = tallybook::fuzz::putTogether(*container);
    const std::size_t kept = std::min(file.size(), maxSize);
    std::copy_n(file.begin(), kept, data);
    return kept;
}
