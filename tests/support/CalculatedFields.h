// A small table with calculated fields, its columns kept as after opening.
#pragma once

#include "core/calc/cells/CellCoders.h"
#include "core/calc/expressions/ExpressionTokens.h"
#include "core/model/Document.h"
#include "support/TestServices.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>

namespace tallybook::test {

struct CalculatedFields {
    explicit CalculatedFields(int records = 1) {
        model::clearDocument(doc);
        model::resetRows(doc, records);
        doc.NumDataRecs = records;
    }

    model::FieldDef& field(int slot, model::FieldType type, int decimals = 0) {
        model::FieldDef& made = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
        made.Type = type;
        made.Name = "Field " + std::to_string(slot);
        made.Decimals = static_cast<std::uint8_t>(decimals);
        keepColumn(slot);
        return made;
    }

    // A calculated field from its tokens.
    void expression(int slot, model::FieldType type, int resultType, std::initializer_list<calc::Token> tokens,
                    int decimals = 0) {
        model::ExprDef& made = doc.CurrDB20.Expressions[slot];
        made.ResultType = static_cast<std::uint8_t>(resultType);
        std::copy(tokens.begin(), tokens.end(), made.Tokens.begin());
        field(slot, type, decimals);
    }
    void constant(int slot, std::size_t position, const std::string& text) {
        doc.CurrDB20.Expressions[slot].TokenTexts[position] = text;
    }

    // Cells by record from 0 and slot.
    void set(int record, int slot, const std::string& text) {
        doc.grd.setText(record + model::kFirstDataRow, model::columnOfSlot(slot), text);
    }
    void check(int record, int slot, model::Picture picture) {
        doc.grd.setPicture(record + model::kFirstDataRow, model::columnOfSlot(slot), picture);
    }
    std::string cell(int record, int slot) const {
        return doc.grd.text(record + model::kFirstDataRow, model::columnOfSlot(slot));
    }

    void keepColumn(int slot) {
        doc.grd.column(model::columnOfSlot(slot)).setCoder(calc::coderForField(doc.CurrDB20, slot, t.regional));
    }

    TestServices t; // its clock stands at 2003-03-05 13:05:09
    model::Document doc;
};

} // namespace tallybook::test
