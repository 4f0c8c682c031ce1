// What the grid shows, for the verbs and scripts that print it.
#pragma once

#include "cli/rows/RowText.h"
#include "core/model/Document.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::cli {

// The columns of the used fields in grid order, the category first.
std::vector<int> usedColumns(const model::Document& doc);

// The text of a data cell, in Windows-1252; Y or N for a check box. The view lies in the grid or in `scratch`.
std::string_view shownCell(const model::Document& doc, int row, int column, std::string& scratch);

// A Windows-1252 text as UTF-8: itself when it is plain ASCII, otherwise made in `scratch`.
std::string_view utf8(std::string_view text, std::string& scratch);

// The header row and each visible record as the grid shows them, in CSV or TSV; as JSON an object with the
// members "fields" (slot, name, type) and "records" (an array of texts for each). With numbers, each row begins
// with the number of its record, under the header "#"; in JSON there is no field for it.
enum class RecordNumbers : std::uint8_t { No, Yes };
void writeRows(const model::Document& doc, RowForm form, RecordNumbers numbers, std::ostream& out,
               Audience audience = Audience::Program);

} // namespace tallybook::cli
