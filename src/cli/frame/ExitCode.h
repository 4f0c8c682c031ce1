// What the command tells the shell.
#pragma once

namespace tallybook::cli {

enum class ExitCode : int {
    Done = 0,
    Complaint = 1, // nothing was found, or something to complain of
    Usage = 2,     // the command line itself makes no sense, or a script or description that it names
    Refused = 3,   // by a rule, an error or a password, or not to be read; the reason stands on standard error
};

} // namespace tallybook::cli
