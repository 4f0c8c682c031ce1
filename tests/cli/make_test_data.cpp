// Writes the databases of tests/data that a program makes into a folder.
#include "TestBooks.h"
#include "adapters/PosixFiles.h"
#include "core/platform/WholeFile.h"

#include <filesystem>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: make_test_data FOLDER\n";
        return 2;
    }
    tallybook::adapters::PosixFiles files;
    const auto path = std::filesystem::absolute(argv[1]) / "MS2_Locked.pdb";
    const auto written = tallybook::platform::writeWholeFile(files, path, tallybook::cli::lockedDatabase());
    if (!written)
        std::cerr << written.error().description() << '\n';
    return written ? 0 : 1;
}
