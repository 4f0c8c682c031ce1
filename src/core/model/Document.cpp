#include "core/model/Document.h"

#include <algorithm>

namespace tallybook::model {

namespace {

void clearTables(Document& doc) {
    doc.RecKeys.clear();
    doc.CellLongs.clear();
    doc.CellVals.clear();
}

void clearTableEntries(Document& doc, std::uint32_t id) {
    doc.RecKeys.setById(id, 0);
    doc.CellLongs.clearById(id);
    doc.CellVals.clearById(id);
}

void setCounts(Document& doc, int records) {
    doc.NumDataRecs = records;
    doc.NumFileRecs = records + kFixedRecords;
}

} // namespace

bool hasNoRecords(const Document& doc) {
    return doc.NumDataRecs == 0;
}

void clearDocument(Document& doc) {
    Clearg_CurrDB20(doc.CurrDB20);
    doc.External.clear();
    doc.DocModified = false;
    doc.FileOK = false;
    doc.Is2xFormat = true;
    doc.GridReady = false;
    doc.CurrField = 0;
    doc.CurrentView.clear();
    doc.ViewGrd.reset(1);
    doc.ViewShown = false;
    doc.RecordOfView = false;
    doc.ViewFields.clear();
    doc.CurrentFilter = 0;
    doc.MultiFilterSel.reset();
    doc.ViewColWidths.fill(0);
    doc.LastRowInView = 0;
    doc.SessionPwd.fill({});
    doc.editor = {};
    resetRows(doc, 0);
}

void resetRows(Document& doc, int records) {
    clearTables(doc);
    setCounts(doc, records);
    doc.grd.reset(std::max(records, 1));
    if (records == 0)
        doc.grd.setRowHeight(kFirstDataRow, 0);
    doc.grd.setColumnWidth(kNumberColumn, kNumberColumnWidth);
    doc.grd.setColumnWidth(kScratchColumn, 0);
}

int appendRecord(Document& doc) {
    if (hasNoRecords(doc)) {
        doc.grd.setRowHeight(kFirstDataRow, kDefaultSize);
        doc.grd.clearRow(kFirstDataRow);
    } else {
        doc.grd.appendRow();
    }
    const int row = doc.grd.rows() - 1;
    clearTableEntries(doc, doc.grd.rowId(row));
    setCounts(doc, doc.NumDataRecs + 1);
    return row;
}

void removeRecord(Document& doc, int row) {
    const std::uint32_t id = doc.grd.rowId(row);
    if (doc.grd.dataRows() == 1) {
        doc.grd.clearRow(row);
        doc.grd.setRowHeight(row, 0);
    } else {
        doc.grd.clearRow(row);
        doc.grd.removeRow(row);
    }
    clearTableEntries(doc, id);
    setCounts(doc, doc.NumDataRecs - 1);
}

} // namespace tallybook::model
