#include "core/model/Tallybook.h"

#include <algorithm>

namespace tallybook::model {

namespace {

void clearTables(Tallybook& book) {
    book.RecKeys.clear();
    book.CellLongs.clear();
    book.CellVals.clear();
}

void clearTableEntries(Tallybook& book, std::uint32_t id) {
    book.RecKeys.setById(id, 0);
    book.CellLongs.clearById(id);
    book.CellVals.clearById(id);
}

void setCounts(Tallybook& book, int records) {
    book.NumDataRecs = records;
    book.NumFileRecs = records + kFixedRecords;
}

} // namespace

bool hasNoRecords(const Tallybook& book) {
    return book.NumDataRecs == 0;
}

void resetRows(Tallybook& book, int records) {
    clearTables(book);
    setCounts(book, records);
    book.grd.reset(std::max(records, 1));
    if (records == 0)
        book.grd.setRowHeight(kFirstDataRow, 0);
    book.grd.setColumnWidth(kNumberColumn, kNumberColumnWidth);
    book.grd.setColumnWidth(kScratchColumn, 0);
}

int appendRecord(Tallybook& book) {
    if (hasNoRecords(book)) {
        book.grd.setRowHeight(kFirstDataRow, kDefaultSize);
        book.grd.clearRow(kFirstDataRow);
    } else {
        book.grd.appendRow();
    }
    const int row = book.grd.rows() - 1;
    clearTableEntries(book, book.grd.rowId(row));
    setCounts(book, book.NumDataRecs + 1);
    return row;
}

void removeRecord(Tallybook& book, int row) {
    const std::uint32_t id = book.grd.rowId(row);
    if (book.grd.dataRows() == 1) {
        book.grd.clearRow(row);
        book.grd.setRowHeight(row, 0);
    } else {
        book.grd.clearRow(row);
        book.grd.removeRow(row);
    }
    clearTableEntries(book, id);
    setCounts(book, book.NumDataRecs - 1);
}

} // namespace tallybook::model
