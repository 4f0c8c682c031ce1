// All that an operation may ask of the computer and the user, handed down as one argument.
#pragma once

#include "core/platform/Clock.h"
#include "core/platform/Files.h"
#include "core/platform/Regional.h"
#include "core/platform/Screen.h"
#include "core/platform/UserInterface.h"

#include <filesystem>

namespace tallybook::platform {

struct Services {
    UserInterface& ui;
    Screen& screen;
    Files& files;
    const Clock& clock;
    const Regional& regional;
    std::filesystem::path applicationFolder; // holds Backup, Temp, ConversionSpecs
};

} // namespace tallybook::platform
