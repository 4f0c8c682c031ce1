// What a field is called in the lists of the designers.
#pragma once

#include "core/model/DatabaseModel.h"
#include "core/pdb/Names.h"

#include <string>

namespace tallybook::design {

// The name of a slot's field. A field that a file gives no name, a free slot and a number beyond all slots are called
// by their number, as "Fld07".
inline std::string shownName(const model::DatabaseModel& db, int slot) {
    const bool isSlot = slot >= 0 && slot <= model::MaxUserFields;
    const model::FieldDef* field = isSlot ? &db.Fields[static_cast<std::size_t>(slot)] : nullptr;
    const bool hasName = field != nullptr && field->Type != model::FieldType::NotUsed && !field->Name.empty();
    return hasName ? field->Name : pdb::freeFieldName(slot);
}

} // namespace tallybook::design
