// Texts on their way to a terminal. A file may hold any byte, and a terminal obeys some of them: none of those gets
// there as it is. All texts are UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace tallybook::cli {

// The text with what a terminal would obey written out: \n, \r, \t, \x1b for a control character (0 to 31, 127, 128
// to 159) or a byte that is no UTF-8, \u202e for a mark that turns the direction of writing.
std::string visibleText(std::string_view utf8);

// The same on one line: each run of line ends is a blank. A message's own line breaks are no more than that.
std::string visibleLine(std::string_view utf8);

// The same, but line feeds and tabs stay: a block of cells, or of JSON, whose lines are its own.
std::string visibleBlock(std::string_view utf8);

// JSON whose strings hold none of those characters but escaped, as \u009b. It means what it meant.
std::string visibleJson(std::string_view json);

} // namespace tallybook::cli
