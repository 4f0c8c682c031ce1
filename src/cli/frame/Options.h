// The options that every verb understands.
#pragma once

#include "cli/frame/Verb.h"
#include "core/platform/Regional.h"

#include <filesystem>
#include <optional>
#include <string>

namespace tallybook::cli {

struct CommonOptions {
    std::string region = "us";
    std::filesystem::path passwordFile;      // empty: passwords are asked for at the terminal
    std::filesystem::path applicationFolder; // empty: a private one for the length of the run
    bool yes = false;                        // questions are answered with Yes or OK

    platform::Regional regional() const;
    // The first line of the password file, less its line end. Nothing without the option or when the file
    // cannot be read; the parser has made sure that it exists.
    std::optional<std::string> password() const;
};

void addRegionOption(Verb& verb, std::string& region);
// The options of a verb that opens a database: region, passwords, application folder, answers.
void addOpenOptions(Verb& verb, CommonOptions& options);

// The argument FILE, which must exist.
void addFileArgument(Verb& verb, std::filesystem::path& file);

} // namespace tallybook::cli
