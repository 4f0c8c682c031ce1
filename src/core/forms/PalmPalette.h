// The colours that the handheld gives to the pixels of a bitmap without a table of its own.
#pragma once

#include "core/model/Definitions.h"

#include <vector>

namespace tallybook::forms {

// By depth 1, 2, 4 (white to black) or 8 (the system's palette): 2^depth colours.
std::vector<model::Colour> systemPalette(int depth);

} // namespace tallybook::forms
