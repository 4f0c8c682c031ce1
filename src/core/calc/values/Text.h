// Text of one byte a character (Windows-1252): case, comparison, search, patterns.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tallybook::calc {

char upper(char c);
char lower(char c);
std::string upper(std::string_view text);
std::string lower(std::string_view text);

enum class TextCase { Binary, Folded };

// Negative, 0 or positive: byte values as unsigned numbers, a prefix first; folded compares upper case.
int compareText(std::string_view a, std::string_view b, TextCase mode);
bool equalText(std::string_view a, std::string_view b, TextCase mode);

// Place of the first occurrence from 1, 0 for none. An empty needle is found at 1.
std::size_t findText(std::string_view text, std::string_view needle, TextCase mode);

// Line ends. A file and the grid hold a line feed alone, editors carriage return and line feed.
std::string LfToCrLf(std::string_view text);
std::string CrLfToLf(std::string_view text);
std::string CrToCrLf(std::string_view text);

// The text in double quote characters when it holds one itself, a line feed, or a comma while the separator is
// one. An embedded double quote is not doubled. Otherwise the text as it stands.
std::string QuoteDelimited(std::string_view text, char separator);

} // namespace tallybook::calc
