// Which files may be opened at all.
#pragma once

#include "core/handheld/OpenDialog.h"

#include <string_view>

namespace tallybook::shell {

using handheld::kNoValidFile;

// True for a file name, without its folder, that starts with the prefix of one of the two formats, in any letter
// case.
bool isTallybookName(std::string_view fileName);

} // namespace tallybook::shell
