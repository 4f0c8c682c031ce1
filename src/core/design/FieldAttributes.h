// What Field Properties stores of a slot when its OK was accepted.
#pragma once

#include "core/design/FieldProperties.h"
#include "core/model/DatabaseModel.h"

#include <cstdint>
#include <string>

namespace tallybook::design {

// All that a file holds of a field, apart from its records.
struct FieldAttributes {
    model::FieldDef field;
    model::ListDef list;
    std::int32_t nextValue = 0;
    model::ExprDef expression;
    model::ExternalDef external;
    model::OneToManyDef oneToMany;
    model::CondExprDef condition;
    bool operator==(const FieldAttributes&) const = default;
};
FieldAttributes attributesOf(const model::DatabaseModel& db, int slot);

// The controls of the dialog at its OK, and what they showed when it opened: what was not changed keeps what is
// stored, which may be more than a control can show.
struct FieldChange {
    const FieldPropDraft& draft;
    const FieldPropDraft& shown;
    model::FieldType oldType;
    model::FieldType newType;
    FieldPropMode mode;

    // While a database is being made there is nothing of another program's to be kept.
    bool keepsType() const { return oldType == newType && mode == FieldPropMode::Document; }
    // True when the field keeps its type and this part of the draft was not changed.
    template <class Part> bool keeps(Part FieldPropDraft::*part) const {
        return keepsType() && draft.*part == shown.*part;
    }
    bool keepsOptions() const {
        return keepsType() && draft.FrmRadio.CmbNobuton == shown.FrmRadio.CmbNobuton &&
               draft.FrmRadio.Optxt == shown.FrmRadio.Optxt;
    }
    // The digits of cmbDecDigs; those of the field when the list has no selection.
    std::uint8_t decimals(const model::FieldDef& field) const {
        return draft.cmbDecDigs >= 0 ? static_cast<std::uint8_t>(draft.cmbDecDigs) : field.Decimals;
    }
};

// What was made of texts while they were checked.
struct CheckedTexts {
    std::string name;
    model::ExprDef expression; // of both calculated types
    std::int32_t nextValue = 1;
};

// Stores the attributes of the new type in the slot; the type itself stays. True when both the display field and the
// join field of a join are others now, so that the values of its records mean nothing any more.
bool storeAttributes(const FieldChange& change, CheckedTexts texts, model::DatabaseModel& db, int slot);

} // namespace tallybook::design
