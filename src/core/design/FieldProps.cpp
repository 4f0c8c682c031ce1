#include "core/design/FieldProps.h"

#include "core/document/edit/CellEditing.h"
#include "core/document/grid/Cells.h"
#include "core/document/grid/Recalculate.h"
#include "core/document/views/Views.h"
#include "core/pdb/Passwords.h"

namespace tallybook::design {

using model::FieldType;

std::optional<int> fieldPropsSlot(const model::Document& doc) {
    const int slot = document::shownSlot(doc, document::shownGrid(doc).col());
    return slot >= 0 ? std::optional(slot) : std::nullopt;
}

bool mayOpenFieldProps(model::Document& doc, platform::Services& services, int slot) {
    document::saveCell(doc, services);
    if (document::refuseReadOnly(doc, services) || !pdb::AuthorizeDB(doc, services, model::PasswordKind::Design))
        return false;
    const FieldType type = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type;
    const bool calculates = type == FieldType::Expression || type == FieldType::ConditionalExpression;
    if (calculates && doc.NumDataRecs > 0)
        document::recalcExpressions(doc, services);
    return true;
}

void fieldPropsAccepted(model::Document& doc, platform::Services& services, const document::DisplayChoices& choices) {
    document::recalcExpressions(doc, services);
    document::FormatGrid(doc, choices);
    if (document::isViewShown(doc))
        document::filtersEdited(doc, services);
}

} // namespace tallybook::design
