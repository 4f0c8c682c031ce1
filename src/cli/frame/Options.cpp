#include "cli/frame/Options.h"

#include "cli/frame/Regions.h"

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

void addRegionOption(Verb& verb, std::string& region) {
    std::vector<std::string> names;
    for (const std::string_view name : regionNames())
        names.emplace_back(name);
    verb.option("--region", region, "How dates, times and numbers are written (us, uk, de, se, iso)").among(names);
}

void addOpenOptions(Verb& verb, CommonOptions& options) {
    addRegionOption(verb, options.region);
    verb.option("--password-file", options.passwordFile, "File whose first line is the password").existingFile();
    verb.option("--application-folder", options.applicationFolder,
                "Folder that holds Temp and Backup; a private one is used and removed otherwise")
        .existingFolder();
    verb.flag("-y,--yes", options.yes, "Answer every question with Yes or OK");
}

void addFileArgument(Verb& verb, std::filesystem::path& file) {
    verb.argument("FILE", file, "The database");
}

} // namespace tallybook::cli
