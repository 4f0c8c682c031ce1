// The database that is open: its record, the records' cells and the tables beside them. Nothing of a window: what
// converts, prints or runs in a batch takes one of its own.
#pragma once

#include "core/model/DatabaseModel.h"
#include "core/model/ExternalTables.h"
#include "core/model/GridModel.h"
#include "core/model/RecordTables.h"

namespace tallybook::model {

struct Tallybook {
    Tallybook() = default;
    Tallybook(const Tallybook&) = delete;
    Tallybook& operator=(const Tallybook&) = delete;

    DatabaseModel CurrDB20;
    GridModel grd;
    RecordKeys RecKeys{grd.order()};
    CellLongTable CellLongs{grd.order()};
    CellValTable CellVals{grd.order()};
    ExternalTables External; // what joins and lookups show, read when the file was opened
    int NumDataRecs = 0;     // records; the grid has one row more than none
    int NumFileRecs = 0;     // NumDataRecs and the 87 fixed ones
};

// True when the database has no record, so that row 2 is the hidden placeholder.
bool hasNoRecords(const Tallybook& book);

// Rows for `records` empty records, or the placeholder for 0. Every cell and table entry is emptied; headers,
// widths and alignments too.
void resetRows(Tallybook& book, int records);

// An empty record at the end, in the placeholder when there is none yet. Gives its grid row. The counts of
// records are updated.
int appendRecord(Tallybook& book);

// Takes out the record of a grid row with its table entries; the last record's row becomes the placeholder. The
// counts of records are updated.
void removeRecord(Tallybook& book, int row);

} // namespace tallybook::model
