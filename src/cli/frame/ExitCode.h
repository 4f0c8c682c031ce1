// What the command tells the shell.
#pragma once

namespace tallybook::cli {

enum class ExitCode : int {
    Done = 0,
    Refused = 1, // by a rule, an error or a password; the reason stands on standard error
    Usage = 2,   // the command line itself makes no sense
};

} // namespace tallybook::cli
