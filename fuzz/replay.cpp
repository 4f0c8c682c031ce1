// fuzz_replay CORPUS: runs every saved input of every target once. A folder without a target fails, and so does a
// target without inputs.

#include "Targets.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace {

namespace fs = std::filesystem;
using tallybook::fuzz::Target;

tallybook::platform::Bytes bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Inputs that are not as they must be; counts the others in `inputs`.
int failuresOf(const Target& target, const fs::path& folder, int& inputs) {
    int failures = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        ++inputs;
        const std::string complaint = target.run(bytesOf(entry.path()));
        if (complaint.empty())
            continue;
        std::printf("%s: %s\n", entry.path().c_str(), complaint.c_str());
        ++failures;
    }
    return failures;
}

int foldersWithoutTarget(const fs::path& corpus) {
    std::set<std::string> names;
    for (const Target& target : tallybook::fuzz::targets())
        names.emplace(target.name);
    int strangers = 0;
    for (const auto& entry : fs::directory_iterator(corpus)) {
        if (names.contains(entry.path().filename().string()))
            continue;
        std::printf("%s belongs to no target\n", entry.path().c_str());
        ++strangers;
    }
    return strangers;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: fuzz_replay CORPUS\n");
        return 2;
    }
    const fs::path corpus = argv[1];
    int failures = foldersWithoutTarget(corpus);
    int inputs = 0;
    for (const Target& target : tallybook::fuzz::targets()) {
        int own = 0;
        if (fs::is_directory(corpus / target.name))
            failures += failuresOf(target, corpus / target.name, own);
        if (own == 0) {
            std::printf("%s has no inputs\n", std::string(target.name).c_str());
            ++failures;
        }
        inputs += own;
    }
    std::printf("%d inputs, %d failures\n", inputs, failures);
    return failures == 0 ? 0 : 1;
}
