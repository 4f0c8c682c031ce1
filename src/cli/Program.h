// The command `tallybook`.
#pragma once

#include "cli/frame/ExitCode.h"
#include "cli/frame/Terminal.h"

#include <string>
#include <vector>

namespace tallybook::cli {

// Runs the command with the arguments behind the program's name.
ExitCode run(const std::vector<std::string>& arguments, Terminal& terminal);

} // namespace tallybook::cli
