#include "core/document/file/OpenSave.h"
#include "core/document/grid/GridDisplay.h"
#include "core/document/views/Views.h"
#include "core/pdb/OldDB.h"
#include "core/platform/Guards.h"

namespace tallybook::document {

void CreateNewDatabase(model::Document& doc, platform::Services& services) {
    const platform::HourGlass wait(services.screen);
    model::clearDocument(doc);
    pdb::initDB(doc.CurrDB20);
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
