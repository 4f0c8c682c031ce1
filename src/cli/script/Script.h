// The edit script: one command a line, words apart by blanks, texts in double quotes, "#" begins a comment.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tallybook::cli {

struct ScriptWord {
    std::string text;    // UTF-8, escapes resolved
    bool quoted = false; // stood in double quotes: a text, never a keyword

    bool is(std::string_view keyword) const { return !quoted && text == keyword; }
    bool operator==(const ScriptWord&) const = default;
};

struct ScriptLine {
    int number = 0; // from 1
    std::string command;
    std::vector<ScriptWord> arguments;

    bool operator==(const ScriptLine&) const = default;
};

struct ScriptError {
    int line = 0;     // 0: the script as a whole
    std::string text; // UTF-8

    bool operator==(const ScriptError&) const = default;
};

using Script = std::vector<ScriptLine>;

// The lines that hold a command. Quoted texts know the escapes \" \\ \n \t; a comment begins where a word would.
// Line ends may be LF or CR LF, and a byte order mark at the start is skipped.
std::variant<Script, ScriptError> parseScript(std::string_view text);

// What a command needs, for the check before a script starts.
struct ScriptCommand {
    std::string_view name;
    int leastArguments = 0;
    int mostArguments = 0;
    std::string_view usage; // shown when the arguments do not fit
};
const std::vector<ScriptCommand>& scriptCommands();

// The first line whose command is unknown or has a wrong number of arguments.
std::optional<ScriptError> checkCommands(const Script& script);

// The first line with a text that a database cannot hold. The names of files are texts of another kind.
std::optional<ScriptError> checkTexts(const Script& script);

// Puts the nearest characters that a database can hold in the place of all others.
struct Replaced {
    std::size_t characters = 0;
    std::size_t lines = 0;         // that held them
    std::size_t questionMarks = 0; // characters that nothing is near to
};
Replaced takeNearestTexts(Script& script);

} // namespace tallybook::cli
