// What the grid shows, for the verbs and scripts that print it.
#pragma once

#include "cli/rows/RowText.h"
#include "core/model/Document.h"

#include <cstdint>
#include <iosfwd>
#include <optional>
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

// The slots of the columns that are shown, those of the view or of the used fields, in their order.
std::vector<int> shownSlots(const model::Document& doc);

// A record that is shown: its row in the grid of all fields, and the number that is shown beside it, from 1. A view
// numbers its records anew.
struct ShownRow {
    int row = 0;
    int number = 0;
};
std::vector<ShownRow> shownRows(const model::Document& doc); // in the order in which they are shown

// What is printed of the records, and how.
struct RowsRequest {
    RowForm form = RowForm::Csv;
    bool jsonLines = false; // instead of the form: an object for each record
    Audience audience = Audience::Program;
    std::vector<int> slots;
    std::vector<ShownRow> rows;
    std::optional<std::string> file; // the first column, UTF-8
    bool numbers = false;            // a column with the numbers of the records
    bool ids = false;                // columns with the key, the category's id and the ids of items
    bool header = true;              // of Csv and Tsv
};

// The names of the columns, UTF-8.
std::vector<std::string> columnNames(const model::Document& doc, const RowsRequest& request);

// The header row and each record as the grid shows it, in Csv or Tsv. As Json an object with the members "fields"
// (slot, name, type) and "records" (an array of texts for each), the number of the record ahead of its texts when it
// is wanted; ids are not among them. With `jsonLines` an object for each record on a line of its own, with values of
// their types: numbers, true and false, null for nothing; dates and times are the grid's texts.
void writeRows(const model::Document& doc, const RowsRequest& request, std::ostream& out);

} // namespace tallybook::cli
