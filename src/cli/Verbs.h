// The verbs of the command, one file each. Adding a verb declares its options; parsing the command line then runs
// it and leaves its exit code.
#pragma once

#include "cli/ExitCode.h"
#include "cli/Terminal.h"

namespace CLI {
class App;
}

namespace tallybook::cli {

void addInfo(CLI::App& app, Terminal& terminal, ExitCode& code);
void addCells(CLI::App& app, Terminal& terminal, ExitCode& code);
void addFind(CLI::App& app, Terminal& terminal, ExitCode& code);
void addDump(CLI::App& app, Terminal& terminal, ExitCode& code);
void addSave(CLI::App& app, Terminal& terminal, ExitCode& code);
void addConvert(CLI::App& app, Terminal& terminal, ExitCode& code);
void addRecalc(CLI::App& app, Terminal& terminal, ExitCode& code);
void addCheck(CLI::App& app, Terminal& terminal, ExitCode& code);
void addEdit(CLI::App& app, Terminal& terminal, ExitCode& code);
void addNew(CLI::App& app, Terminal& terminal, ExitCode& code);
void addSchema(CLI::App& app, Terminal& terminal, ExitCode& code);
void addRetype(CLI::App& app, Terminal& terminal, ExitCode& code);
void addExpr(CLI::App& app, Terminal& terminal, ExitCode& code);
void addUsers(CLI::App& app, Terminal& terminal, ExitCode& code);
void addList(CLI::App& app, Terminal& terminal, ExitCode& code);
void addInstall(CLI::App& app, Terminal& terminal, ExitCode& code);

} // namespace tallybook::cli
