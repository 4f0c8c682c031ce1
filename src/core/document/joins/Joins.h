// Joins: a field whose cell stores a key shows the record of another database that has the key, and lookups show
// further fields of that record. The other database is read when the file is opened, and never written.
#pragma once

#include "core/model/Document.h"
#include "core/pdb/Database.h"
#include "core/platform/Services.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::document {

// Reads the other databases of all joins, each file once, and fills the columns of the joins and their lookups. A
// join without its database keeps its stored keys on show; a missing one gives a message for each join, an invalid
// one a question, and the document opens all the same. Called while the rows stand in the order of the file. A join
// that has no display field keeps its key in the cell, where it is typed.
void loadExternalData(model::Document& doc, platform::Services& services);

// Fills the lookups of a join in one record from a row of the tables. Lookups without tables become empty.
void getLookups(model::Document& doc, int joinSlot, std::uint32_t extRow, int record);

// Empties the lookups of a join in one record.
void eraseLookups(model::Document& doc, int joinSlot, int record);

// The part of a display text that a cell takes over: up to its first character 255, which parts the texts of ExtRows.
std::string_view shownPart(std::string_view display);

// The first row of the tables whose shown part is the text.
std::optional<std::uint32_t> findDisplayText(const model::ExternalSlot& slot, std::string_view text);

// A text typed into a record's cell of a join: the key of the row that shows it, else the text itself, is stored. The
// first row of the tables counts as none to the lookups, which are erased. DocModified is set; the record is not
// stamped, as the fields of the other database are not its own.
void typeJoinKey(model::Document& doc, int joinSlot, int record, const std::string& text);

// A row of the tables chosen for a record's cell of a join, the first one included. Otherwise the same.
void chooseJoinRow(model::Document& doc, int joinSlot, int record, std::uint32_t extRow);

// The fields of the other database that a join and its lookups show, the key among them.
pdb::FieldSet fieldsOfJoin(const model::DatabaseModel& db, int joinSlot);

// Puts records that were read into the tables of a join and its lookups.
void setJoinTables(model::Document& doc, int joinSlot, const std::shared_ptr<const model::ExternalRecords>& records);

} // namespace tallybook::document
