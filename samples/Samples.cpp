#include "Samples.h"

#include <array>

namespace tallybook::samples {

std::span<const Sample> samples() {
    static constexpr std::array<Sample, 6> kSamples = {{
        {"MS2_Books.pdb", books},
        {"MS2_Expenses.pdb", expenses},
        {"MS2_Inventory.pdb", inventory},
        {"MS2_Loans.pdb", loans},
        {"MS2_Members.pdb", members},
        {"MS2_Empty.pdb", empty},
    }};
    return kSamples;
}

} // namespace tallybook::samples
