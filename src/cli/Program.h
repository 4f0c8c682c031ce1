// The command `tallybook`.
#pragma once

#include "cli/ExitCode.h"
#include "cli/Terminal.h"

#include <string>
#include <vector>

namespace tallybook::cli {

// Runs the command with the arguments behind the program's name.
ExitCode run(const std::vector<std::string>& arguments, Terminal& terminal);

} // namespace tallybook::cli
