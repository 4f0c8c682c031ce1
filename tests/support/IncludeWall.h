// The wall between the rooms of src/: which file may include which.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::test {

// One #include line of a file.
struct Include {
    int line = 0; // from 1
    bool angled = false;
    std::string name; // what stands between the quotes or the angles

    bool operator==(const Include&) const = default;
};

// The includes of a source text, in order. Lines inside comments do not count.
std::vector<Include> includesOf(std::string_view text);

// What is wrong with one include of a file, or an empty text. `file` is relative to src/, with '/' between its
// parts, as "core/pdb/Records.cpp".
std::string faultOfInclude(std::string_view file, const Include& include);

// Every fault of every .h and .cpp file below a source folder, as "core/model/A.h:3: the reason", sorted.
std::vector<std::string> faultsBelow(const std::filesystem::path& sourceFolder);

} // namespace tallybook::test
