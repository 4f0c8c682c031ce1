// The page setups that are remembered between sessions, one for each handheld user and database, in one small file of
// the program's folder.
#pragma once

#include "core/platform/Services.h"

#include <string>
#include <string_view>
#include <vector>

namespace tallybook::print {

inline constexpr std::string_view kPrintSpecFile = "MS2info.dat"; // in the program's folder

// One remembered page setup as it stands in the file: texts in Windows-1252, flags as "1" and "0".
struct PrintSpec {
    std::string UserName;     // the handheld user; first part of the key
    std::string DatabasePath; // of the database's file; second part of the key
    std::string Paper;        // position in the list of papers
    std::string Portrait;
    std::string TopMargin; // the margins in inches, with two decimals
    std::string BottomMargin;
    std::string LeftMargin;
    std::string RightMargin;
    std::string Date;
    std::string FileName;
    std::string GridLines;
    std::string PageNumber;
    std::string RecordNumber;
    std::string Title;
    std::string Memo;

    bool operator==(const PrintSpec&) const = default;
};

// Has always one element at least; the only one of a new program state is empty.
using PrintSpecTable = std::vector<PrintSpec>;

// The bytes of a file: the number of elements, then 15 quoted lines for each, all ended by CR LF.
std::string printSpecBytes(const PrintSpecTable& table);

// The elements of a file's bytes. A first item that is no number counts as 1. When the file ends early, `whole` is
// false and the table has the elements that are complete.
struct ParsedPrintSpecs {
    PrintSpecTable table;
    bool whole = true;
};
ParsedPrintSpecs parsePrintSpecs(std::string_view bytes);

// False for a text that the file has no way to hold: one with a double quote or a line break.
bool canBeStored(std::string_view text);

// The table of the file. A missing file gives one empty element. One that cannot be read or ends early is reported
// in the error dialog, and costs no more than what is missing.
PrintSpecTable ReadPrintSpecs(platform::Services& services);

// Writes the whole table, or leaves the old file and reports why in the error dialog; false then. Elements with a
// text that cannot be stored are left out.
bool WritePrintSpecs(const PrintSpecTable& table, platform::Services& services);

// The first element for a user and a database, both compared exactly; null for none.
const PrintSpec* findSpec(const PrintSpecTable& table, std::string_view user, std::string_view database);

// The same; without a match a new one at the end, with this key. Never removes anything.
PrintSpec& specFor(PrintSpecTable& table, const std::string& user, const std::string& database);

} // namespace tallybook::print
