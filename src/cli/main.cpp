#include "adapters/Heap.h"
#include "cli/Program.h"

#include <csignal>
#include <ios>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    tallybook::adapters::growHeapInLargeSteps();
    std::ios::sync_with_stdio(false);
    // A reader that goes away ("| head") is seen as a failed write, so that temporary folders are still removed.
    std::signal(SIGPIPE, SIG_IGN);
    auto terminal = tallybook::cli::Terminal::standard();
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    return static_cast<int>(tallybook::cli::run(arguments, terminal));
}
