#include "core/document/Seams.h"

#include "core/pdb/Passwords.h"

namespace tallybook::document {

void loadExternalData(model::Document&, platform::Services&) {}

void AddViewFilterInfo(model::Document& doc, platform::Services&) {
    doc.CurrentView.clear();
    doc.CurrentFilter = 0;
    doc.MultiFilterSel.reset();
    for (int column = 0; column < model::kGridColumns; ++column)
        doc.ViewColWidths[static_cast<std::size_t>(column)] = static_cast<std::int16_t>(doc.grd.columnWidth(column));
}

bool ModifyRecord(model::Document& doc, platform::Services& services) {
    return pdb::AuthorizeDB(doc, services, model::PasswordKind::Modify);
}

bool isViewShown(const model::Document& doc) {
    return !doc.CurrentView.empty();
}

} // namespace tallybook::document
