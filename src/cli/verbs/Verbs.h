// The verbs of the command, one file each. Adding a verb declares its options; parsing the command line then runs
// it and leaves its exit code.
#pragma once

#include "cli/frame/ExitCode.h"
#include "cli/frame/Terminal.h"
#include "cli/frame/Verb.h"

namespace tallybook::cli {

void addInfo(Verb& command, Terminal& terminal, ExitCode& code);
void addCells(Verb& command, Terminal& terminal, ExitCode& code);
void addFind(Verb& command, Terminal& terminal, ExitCode& code);
void addDump(Verb& command, Terminal& terminal, ExitCode& code);
void addSave(Verb& command, Terminal& terminal, ExitCode& code);
void addConvert(Verb& command, Terminal& terminal, ExitCode& code);
void addRecalc(Verb& command, Terminal& terminal, ExitCode& code);
void addCheck(Verb& command, Terminal& terminal, ExitCode& code);
void addEdit(Verb& command, Terminal& terminal, ExitCode& code);
void addNew(Verb& command, Terminal& terminal, ExitCode& code);
void addSchema(Verb& command, Terminal& terminal, ExitCode& code);
void addRetype(Verb& command, Terminal& terminal, ExitCode& code);
void addExpr(Verb& command, Terminal& terminal, ExitCode& code);
void addImage(Verb& command, Terminal& terminal, ExitCode& code);
void addImages(Verb& command, Terminal& terminal, ExitCode& code);
void addForm(Verb& command, Terminal& terminal, ExitCode& code);
void addUsers(Verb& command, Terminal& terminal, ExitCode& code);
void addList(Verb& command, Terminal& terminal, ExitCode& code);
void addInstall(Verb& command, Terminal& terminal, ExitCode& code);

} // namespace tallybook::cli
