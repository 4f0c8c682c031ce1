#include "core/document/GridDisplay.h"
#include "core/document/OpenSave.h"
#include "core/document/Views.h"
#include "core/platform/Guards.h"

namespace tallybook::document {

namespace {

// The names that unused slots of a new database have: "Fld01" to "Fld80".
std::string freeName(int slot) {
    return (slot < 10 ? "Fld0" : "Fld") + std::to_string(slot);
}

void setDefaults(model::DatabaseModel& db) {
    db.Fields[0].Type = model::FieldType::List;
    db.Fields[0].Name = "Categories";
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        db.Fields[static_cast<std::size_t>(slot)].Name = freeName(slot);
        db.AutoIncNext[slot] = 1;
    }
    db.NumFields = 1;
    db.Views[0].Name = "View01";
    db.NumViews = 1;
}

} // namespace

void CreateNewDatabase(model::Document& doc, platform::Services& services) {
    const platform::HourGlass wait(services.ui);
    model::clearDocument(doc);
    setDefaults(doc.CurrDB20);
    doc.CurrFilePath.clear();
    doc.CurrFolder.clear();
    doc.TempCopyPath.clear();
    doc.CurrFileName = "MSA_New.pdb";
    doc.Caption = "New Database";
    gridLoadFieldNames20(doc, services.regional);
    doc.grd.setCell(model::kFirstDataRow, 1);
    AddViewFilterInfo(doc, services);
    doc.GridReady = true;
}

} // namespace tallybook::document
