#include "adapters/EndBySignal.h"
#include "adapters/Heap.h"
#include "cli/Program.h"

#include <cstdio>
#include <ios>
#include <new>
#include <string>
#include <vector>

namespace {

int runCommand(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    auto terminal = tallybook::cli::Terminal::standard();
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto code = tallybook::cli::run(arguments, terminal);
    if (tallybook::cli::Terminal::readerIsGone())
        tallybook::cli::Terminal::endByReader();
    return static_cast<int>(code);
}

} // namespace

int main(int argc, char** argv) {
    tallybook::adapters::growHeapInLargeSteps();
    tallybook::adapters::cleanUpAtSignals();
    try {
        return runCommand(argc, argv);
    } catch (const std::bad_alloc&) { // for the streams and the words of the command line; this asks for none
        std::fputs("tallybook: There is not enough memory.\n", stderr);
        return static_cast<int>(tallybook::cli::ExitCode::Refused);
    }
}
