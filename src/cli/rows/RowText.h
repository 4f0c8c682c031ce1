// How a row of cells leaves the command. Every form lets a reader get the very texts back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tallybook::cli {

enum class RowForm : std::uint8_t { Csv, Tsv, Json };

// Who reads: CSV has no way to write a control character out, so a terminal gets it changed.
enum class Audience : std::uint8_t { Program, Terminal };

// Builds one row in a buffer of its own, so that a table of any length costs no allocation per cell.
class RowText {
public:
    explicit RowText(RowForm form, Audience audience = Audience::Program) : m_form(form), m_audience(audience) {}

    // Appends a cell. UTF-8.
    // Csv (RFC 4180): in double quotes when it holds one, a comma, a carriage return or a line feed, or when it
    // is the only cell and empty; a double quote inside is doubled.
    // At a terminal its control characters but line feeds and tabs are written out as in Tsv.
    // Tsv: tab, line feed, carriage return and backslash as \t, \n, \r, \\; other control characters as \x1b.
    // Json: a string, all its control characters escaped.
    void add(std::string_view cell);

    // The row with its line end (CR LF for Csv, LF for Tsv, none for Json), and an empty one to go on with. The
    // view lasts until the next add().
    std::string_view finish();

private:
    void addCsv(std::string_view cell);
    void addTsv(std::string_view cell);

    RowForm m_form;
    Audience m_audience;
    std::string m_row;
    int m_cells = 0;
    bool m_finished = false;
};

// A text as JSON string, in its double quotes.
void appendJsonString(std::string_view text, std::string& out);

} // namespace tallybook::cli
