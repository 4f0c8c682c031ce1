#include "core/model/Document.h"

namespace tallybook::model {

void clearDocument(Document& doc) {
    Clearg_CurrDB20(doc.CurrDB20);
    doc.External.clear();
    doc.DocModified = false;
    doc.FileOK = false;
    doc.Is2xFormat = true;
    doc.ReadOnlyInFile = false;
    doc.GridReady = false;
    doc.CurrField = 0;
    doc.CurrentView.clear();
    doc.ViewGrd.reset(1);
    doc.ViewShown = false;
    doc.RecordOfView = false;
    doc.ViewFields.clear();
    doc.CurrentFilter = 0;
    doc.MultiFilterSel.reset();
    doc.ViewColWidths.fill(0);
    doc.LastRowInView = 0;
    doc.SessionPwd.fill({});
    doc.editor = {};
    resetRows(doc, 0);
}

} // namespace tallybook::model
