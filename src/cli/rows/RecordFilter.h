// An advanced expression that is true of some records and not of others.
#pragma once

#include "core/calc/expressions/AdvancedField.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <optional>
#include <string>

namespace tallybook::cli {

// Compiled once and worked out for each record as a calculated field is. An expression that has no value for a record
// does not hold there.
class RecordFilter {
public:
    // Compiles a UTF-8 text over the document's fields and tries it out. Nothing with the reason in `reason` when it
    // is refused. The expression is kept in a slot of the document that no file has, so the document must outlive the
    // filter and not change meanwhile; one filter at a time.
    static std::optional<RecordFilter> compile(const std::string& text, model::Document& doc,
                                               const platform::Services& services, std::string& reason);

    // Whether it holds for the record of a row of the grid of all fields.
    bool holds(int row);

private:
    RecordFilter(const model::Document& doc, const platform::Services& services);

    const model::Document* m_doc;
    calc::AdvancedField m_field;
};

} // namespace tallybook::cli
