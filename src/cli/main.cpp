#include "adapters/EndBySignal.h"
#include "adapters/Heap.h"
#include "cli/Program.h"

#include <ios>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    tallybook::adapters::growHeapInLargeSteps();
    tallybook::adapters::cleanUpAtSignals();
    std::ios::sync_with_stdio(false);
    auto terminal = tallybook::cli::Terminal::standard();
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto code = tallybook::cli::run(arguments, terminal);
    if (tallybook::cli::Terminal::readerIsGone())
        tallybook::cli::Terminal::endByReader();
    return static_cast<int>(code);
}
