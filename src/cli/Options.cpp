#include "cli/Options.h"

#include "cli/Regions.h"

#include <CLI/CLI.hpp>
#include <fstream>
#include <string>
#include <vector>

namespace tallybook::cli {

platform::Regional CommonOptions::regional() const {
    return regionNamed(region).value_or(platform::Regional{});
}

std::optional<std::string> CommonOptions::password() const {
    if (passwordFile.empty())
        return std::nullopt;
    std::ifstream file(passwordFile, std::ios::binary);
    std::string line;
    if (!std::getline(file, line))
        return std::nullopt;
    if (line.ends_with('\r'))
        line.pop_back();
    return line;
}

void addRegionOption(CLI::App& verb, std::string& region) {
    std::vector<std::string> names;
    for (const std::string_view name : regionNames())
        names.emplace_back(name);
    verb.add_option("--region", region, "How dates, times and numbers are written (us, uk, de, se)")
        ->check(CLI::IsMember(names))
        ->capture_default_str();
}

void addOpenOptions(CLI::App& verb, CommonOptions& options) {
    addRegionOption(verb, options.region);
    verb.add_option("--password-file", options.passwordFile, "File whose first line is the password")
        ->check(CLI::ExistingFile);
    verb.add_option("--application-folder", options.applicationFolder,
                    "Folder that holds Temp and Backup; a private one is used and removed otherwise")
        ->check(CLI::ExistingDirectory);
    verb.add_flag("-y,--yes", options.yes, "Answer every question with Yes or OK");
}

void addFileArgument(CLI::App& verb, std::filesystem::path& file) {
    verb.add_option("FILE", file, "The database")->required();
}

} // namespace tallybook::cli
