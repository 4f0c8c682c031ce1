// What each command of the main window does: one call of the core, its result shown.
#include "core/document/CellEditing.h"
#include "core/document/OpenSave.h"
#include "core/document/Records.h"
#include "core/document/SecuritySetting.h"
#include "core/shell/OpenChoice.h"
#include "core/shell/ProgramSettings.h"
#include "core/shell/Version.h"
#include "desktop/dialogs/frmAbout.h"
#include "desktop/dialogs/frmPwd.h"
#include "desktop/document/CellEditors.h"
#include "desktop/document/frmDocument.h"
#include "desktop/main/CommandBars.h"
#include "desktop/main/frmMain.h"
#include "desktop/platform/Text.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QStatusBar>
#include <QToolBar>

namespace tallybook::desktop {

std::span<const frmMain::Route> frmMain::routes() {
    static constexpr Route kRoutes[] = {
        {"mnuFileNew", &frmMain::mnuFileNew},
        {"mnuFileOpen", &frmMain::mnuFileOpen},
        {"mnuFileClose", &frmMain::mnuFileClose},
        {"mnuFileSave", &frmMain::mnuFileSave},
        {"mnuFileSaveAs", &frmMain::mnuFileSaveAs},
        {"mnuFileExit", &frmMain::mnuFileExit},
        {"mnuEditCut", &frmMain::mnuEditCut},
        {"mnuEditCopy", &frmMain::mnuEditCopy},
        {"mnuEditPaste", &frmMain::mnuEditPaste},
        {"mnuRecordAdd", &frmMain::mnuRecordAdd},
        {"mnuRecordDelete", &frmMain::mnuRecordDelete},
        {"mnuRecordDeleteAll", &frmMain::mnuRecordDeleteAll},
        {"mnuRowDeleteRec", &frmMain::mnuRecordDelete},
        {"mnuViewToolbar", &frmMain::mnuViewToolbar},
        {"mnuViewStatusBar", &frmMain::mnuViewStatusBar},
        {"mnuViewNotUsedFields", &frmMain::changeDisplay},
        {"mnuViewFieldTypes", &frmMain::changeDisplay},
        {"mnuToolsSecurity", &frmMain::mnuToolsSecurity},
        {"mnuHelpContents", &frmMain::mnuHelp},
        {"mnuHelpSearchForHelpOn", &frmMain::mnuHelp},
        {"mnuHelpAbout", &frmMain::mnuHelpAbout},
        {"mnuColumnConvertToKeys", &frmMain::mnuColumnConvertToKeys},
        {"mnuCancel", &frmMain::doNothing},
        {"mnuRowCancel", &frmMain::doNothing},
        {"bestfit", &frmMain::bestFit},
    };
    return kRoutes;
}

void frmMain::mnuFileNew() {
    if (!closeDocument())
        return;
    auto fresh = std::make_unique<model::Document>();
    document::CreateNewDatabase(*fresh, m_services);
    loadDocument(std::move(fresh));
}

void frmMain::mnuFileOpen() {
    const auto path = m_ui.askOpenName("Open Tallybook", "PDB file (*.pdb)|MS2_*.pdb", m_folder);
    if (path)
        openFile(*path);
}

void frmMain::mnuFileClose() {
    closeDocument();
}

void frmMain::mnuFileSave() {
    if (document::saveDocument(*m_doc, m_services) == document::Outcome::Done)
        noteRecent(m_doc->CurrFilePath);
}

void frmMain::mnuFileSaveAs() {
    if (document::saveAsSub(*m_doc, m_services) == document::Outcome::Done)
        noteRecent(m_doc->CurrFilePath);
}

void frmMain::mnuEditCut() {
    QLineEdit* text = m_document->editors().openText();
    if (!document::refuseBlock(*m_doc, m_services) && text != nullptr)
        text->cut();
}

void frmMain::mnuEditCopy() {
    QLineEdit* text = m_document->editors().openText();
    if (document::hasBlock(*m_doc))
        QGuiApplication::clipboard()->setText(toQt(document::CopyGridCells(*m_doc, m_services)));
    else if (text != nullptr)
        text->copy();
}

void frmMain::mnuEditPaste() {
    QLineEdit* text = m_document->editors().openText();
    if (!document::refuseBlock(*m_doc, m_services) && text != nullptr)
        text->paste();
}

void frmMain::mnuRecordAdd() {
    if (!document::RecordAdd(*m_doc, m_services))
        return;
    m_document->showDocument();
    m_document->grid().setFocus();
}

void frmMain::mnuRecordDelete() {
    document::deleteRecord(*m_doc, m_services);
}

void frmMain::mnuRecordDeleteAll() {
    document::deleteAllRecords(*m_doc, m_services);
}

void frmMain::mnuViewToolbar() {
    m_bars->toolBar()->setVisible(m_bars->action("mnuViewToolbar")->isChecked());
}

void frmMain::mnuViewStatusBar() {
    statusBar()->setVisible(m_bars->action("mnuViewStatusBar")->isChecked());
}

void frmMain::changeDisplay() {
    m_choices = {.notUsedFields = m_bars->action("mnuViewNotUsedFields")->isChecked(),
                 .fieldTypes = m_bars->action("mnuViewFieldTypes")->isChecked()};
    shell::saveDisplayChoices(m_choices, m_settings);
    saveSettings();
    document::FormatGrid(*m_doc, m_choices);
}

void frmMain::mnuToolsSecurity() {
    document::saveCell(*m_doc, m_services);
    if (document::SecuritySetting::mayOpen(*m_doc, m_services))
        frmPwd(*m_doc, m_services, this).exec();
}

void frmMain::mnuHelp() {
    m_ui.message({std::string(shell::kNoHelp), platform::Icon::Information});
}

void frmMain::mnuHelpAbout() {
    frmAbout(this).exec();
}

void frmMain::mnuColumnConvertToKeys() {
    document::convertColumnToKeys(*m_doc, m_services);
}

void frmMain::bestFit() {
    document::bestFit1(*m_doc, m_services, m_document->measure());
}

} // namespace tallybook::desktop
