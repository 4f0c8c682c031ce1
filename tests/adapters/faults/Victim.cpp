// A program that saves one file between two stops, to be killed in the middle: fault_victim FILE LETTER SIZE.
#include "adapters/EndBySignal.h"
#include "adapters/PosixFiles.h"
#include "core/platform/WholeFile.h"

#include <csignal>
#include <cstdlib>

int main(int count, char** arguments) {
    if (count != 4)
        return 2;
    const auto letter = static_cast<std::uint8_t>(arguments[2][0]);
    const tallybook::platform::Bytes bytes(std::strtoul(arguments[3], nullptr, 10), letter);
    tallybook::adapters::PosixFiles files;
    tallybook::adapters::cleanUpAtSignals();
    (void)std::raise(SIGSTOP);
    const bool saved = tallybook::platform::writeWholeFile(files, arguments[1], bytes).ok();
    (void)std::raise(SIGSTOP);
    return saved ? 0 : 1;
}
