#include "cli/rows/GridRows.h"

#include "core/calc/values/Ansi.h"
#include "core/document/views/Views.h"

#include <algorithm>
#include <ostream>

namespace tallybook::cli {

namespace {

using model::Document;
using model::FieldType;
using model::GridModel;

// A column that is printed, its kind settled once for all records.
struct PrintedColumn {
    int column; // of the grid that is shown
    int slot;
    bool checkbox;
};

PrintedColumn printedColumn(const Document& doc, int column, int slot) {
    return {column, slot, doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type == FieldType::Checkbox};
}

// The columns of the view that is shown, or those of the used fields.
std::vector<PrintedColumn> printedColumns(const Document& doc) {
    std::vector<PrintedColumn> columns;
    if (document::isViewShown(doc)) {
        for (int column = model::kNumberColumn; const int slot : doc.ViewFields)
            columns.push_back(printedColumn(doc, ++column, slot));
        return columns;
    }
    for (const int column : usedColumns(doc))
        columns.push_back(printedColumn(doc, column, model::slotOfColumn(column)));
    return columns;
}

void addRecord(const GridModel& grid, const std::vector<PrintedColumn>& columns, int row, RecordNumbers numbers,
               RowText& line) {
    std::string scratch;
    std::string converted;
    if (numbers == RecordNumbers::Yes)
        line.add(grid.text(row, model::kNumberColumn, scratch));
    for (const PrintedColumn& printed : columns) {
        if (printed.checkbox)
            line.add(grid.picture(row, printed.column) == model::Picture::CheckOn ? "Y" : "N");
        else
            line.add(utf8(grid.text(row, printed.column, scratch), converted));
    }
}

void writeTable(const Document& doc, RowForm form, RecordNumbers numbers, std::ostream& out, Audience audience) {
    const GridModel& grid = document::shownGrid(doc);
    const std::vector<PrintedColumn> columns = printedColumns(doc);
    RowText line(form, audience);
    if (numbers == RecordNumbers::Yes)
        line.add("#");
    for (const PrintedColumn& printed : columns)
        line.add(calc::ansi::toUtf8(grid.text(0, printed.column)));
    out << line.finish();
    for (int at = 0; at < grid.visibleRows(); ++at) {
        addRecord(grid, columns, grid.visibleRow(at), numbers, line);
        out << line.finish();
    }
}

void writeJson(const Document& doc, RecordNumbers numbers, std::ostream& out) {
    const GridModel& grid = document::shownGrid(doc);
    const std::vector<PrintedColumn> columns = printedColumns(doc);
    out << "{\"fields\": [";
    std::string field;
    for (const PrintedColumn& printed : columns) {
        field += field.empty() ? "\n" : ",\n";
        field += "{\"slot\": " + std::to_string(printed.slot) + ", \"name\": ";
        appendJsonString(calc::ansi::toUtf8(grid.text(0, printed.column)), field);
        field += ", \"type\": ";
        appendJsonString(calc::ansi::toUtf8(grid.text(1, printed.column)), field);
        field += '}';
    }
    out << field << "\n],\n\"records\": [";
    RowText line(RowForm::Json);
    for (int at = 0; at < grid.visibleRows(); ++at) {
        addRecord(grid, columns, grid.visibleRow(at), numbers, line);
        out << (at == 0 ? "\n[" : ",\n[") << line.finish() << ']';
    }
    out << "\n]}\n";
}

} // namespace

std::vector<int> usedColumns(const Document& doc) {
    std::vector<int> columns;
    for (int slot = 0; slot <= model::MaxUserFields; ++slot)
        if (doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type != FieldType::NotUsed)
            columns.push_back(model::columnOfSlot(slot));
    return columns;
}

std::string_view shownCell(const Document& doc, int row, int column, std::string& scratch) {
    const auto slot = static_cast<std::size_t>(model::slotOfColumn(column));
    if (doc.CurrDB20.Fields[slot].Type == FieldType::Checkbox)
        return doc.grd.picture(row, column) == model::Picture::CheckOn ? "Y" : "N";
    return doc.grd.text(row, column, scratch);
}

std::string_view utf8(std::string_view text, std::string& scratch) {
    if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return text;
    scratch = calc::ansi::toUtf8(text);
    return scratch;
}

void writeRows(const Document& doc, RowForm form, RecordNumbers numbers, std::ostream& out, Audience audience) {
    if (form == RowForm::Json)
        writeJson(doc, numbers, out);
    else
        writeTable(doc, form, numbers, out, audience);
}

} // namespace tallybook::cli
