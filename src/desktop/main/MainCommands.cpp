// What each command of the main window does: one call of the core, its result shown.
#include "core/design/FieldProps.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/edit/Records.h"
#include "core/document/file/OpenSave.h"
#include "core/document/file/SecuritySetting.h"
#include "core/document/grid/Cells.h"
#include "core/document/grid/Recalculate.h"
#include "core/document/views/Sort.h"
#include "core/document/views/ViewPlace.h"
#include "core/handheld/SaveInstall.h"
#include "core/pdb/Passwords.h"
#include "core/platform/Ansi.h"
#include "core/platform/OwnTexts.h"
#include "core/shell/OpenChoice.h"
#include "core/shell/ProgramSettings.h"
#include "core/shell/Version.h"
#include "desktop/dialogs/frmAbout.h"
#include "desktop/dialogs/frmFieldProp.h"
#include "desktop/dialogs/frmFindForm.h"
#include "desktop/dialogs/frmOpen.h"
#include "desktop/dialogs/frmPDBProps.h"
#include "desktop/dialogs/frmPwd.h"
#include "desktop/dialogs/frmUser.h"
#include "desktop/document/CellEditors.h"
#include "desktop/document/frmDocument.h"
#include "desktop/forms/frmDesignForm.h"
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

namespace {

constexpr int kMessageTime = 5000; // milliseconds in the status bar

using document::SortDirection;

} // namespace

std::span<const frmMain::Route> frmMain::routes() {
    static constexpr Route kRoutes[] = {
        {"mnuFileNew", &frmMain::mnuFileNew, "Tallybook Pocket : New"},
        {"mnuFileOpen", &frmMain::mnuFileOpen, "Tallybook Pocket : Open"},
        {"mnuFileClose", &frmMain::mnuFileClose, "Tallybook Pocket : Close"},
        {"mnuFileSave", &frmMain::mnuFileSave, "Tallybook Pocket : Save"},
        {"mnuFileSaveInstall", &frmMain::mnuFileSaveInstall, "Tallybook Pocket : Save & Install"},
        {"mnuFileSaveAs", &frmMain::mnuFileSaveAs, "Tallybook Pocket : Save As"},
        {"mnuFileExit", &frmMain::mnuFileExit, "Tallybook Pocket : Exit"},
        {"mnuEditCut", &frmMain::mnuEditCut, "Tallybook Pocket : Cut"},
        {"mnuEditCopy", &frmMain::mnuEditCopy, "Tallybook Pocket : Copy"},
        {"mnuEditPaste", &frmMain::mnuEditPaste, "Tallybook Pocket : Paste"},
        {"mnuFind", &frmMain::mnuFind, "Tallybook Pocket : Find"},
        {"mnuFindNext", &frmMain::mnuFindNext, "Tallybook Pocket : Find Next"},
        {"mnuFindPrevious", &frmMain::mnuFindPrevious, "Tallybook Pocket : Find Previous"},
        {"mnuRecordAdd", &frmMain::mnuRecordAdd, "Tallybook Pocket : Add Record"},
        {"mnuRecordDelete", &frmMain::mnuRecordDelete, "Tallybook Pocket : Delete Record"},
        {"mnuRecordDeleteAll", &frmMain::mnuRecordDeleteAll, "Tallybook Pocket : Delete All Records"},
        {"mnuRowDeleteRec", &frmMain::mnuRecordDelete, "Tallybook Pocket : Delete Record"},
        {"mnuViewToolbar", &frmMain::mnuViewToolbar, "Tallybook Pocket : Toolbar"},
        {"mnuViewStatusBar", &frmMain::mnuViewStatusBar, "Tallybook Pocket : Status Bar"},
        {"mnuViewNotUsedFields", &frmMain::changeDisplay, "Tallybook Pocket : Not Used Fields"},
        {"mnuViewFieldTypes", &frmMain::changeDisplay, "Tallybook Pocket : Field Types"},
        {"mnuViewFieldProp", &frmMain::fieldProps, "Tallybook Pocket : Field Properties"},
        {"mnuFieldProps", &frmMain::fieldProps, "Tallybook Pocket : Field Properties"},
        {"mnuFormDesigner", &frmMain::mnuFormDesigner, "Tallybook Pocket : Form Designer"},
        {"mnuToolsSecurity", &frmMain::mnuToolsSecurity, "Tallybook Pocket : Security Setting"},
        {"mnuToolsPDBPorps", &frmMain::mnuToolsPDBPorps, "Tallybook Pocket : Tallybook Properties"},
        {"mnuRecalculateExpressions", &frmMain::mnuRecalculateExpressions,
         "Tallybook Pocket : Recalculate Expressions"},
        {"mnuHelpContents", &frmMain::mnuHelp, "Tallybook Pocket : Help Contents"},
        {"mnuHelpSearchForHelpOn", &frmMain::mnuHelp, "Tallybook Pocket : Search for Help on"},
        {"mnuHelpAbout", &frmMain::mnuHelpAbout, "Tallybook Pocket : About"},
        {"mnuColumnConvertToKeys", &frmMain::mnuColumnConvertToKeys, "Tallybook Pocket : Convert to Keys"},
        {"mnuColumnSorta", &frmMain::mnuColumnSorta, "Tallybook Pocket : Sort Ascending"},
        {"mnuColumnSortd", &frmMain::mnuColumnSortd, "Tallybook Pocket : Sort Descending"},
        {"mnuCancel", &frmMain::doNothing, "Tallybook Pocket : Cancel"},
        {"mnuRowCancel", &frmMain::doNothing, "Tallybook Pocket : Cancel"},
        {"sorta", &frmMain::sortAscending, "Tallybook Pocket : Toolbar Clicked"},
        {"sortd", &frmMain::sortDescending, "Tallybook Pocket : Toolbar Clicked"},
        {"bestfit", &frmMain::bestFit, "Tallybook Pocket : Toolbar Clicked"},
    };
    return kRoutes;
}

void frmMain::mnuFileNew() {
    if (!closeDocument())
        return;
    auto fresh = std::make_unique<model::Document>();
    document::CreateNewDatabase(*fresh, m_services);
    if (const int user = m_users.shownPosition(); user >= 0) // where the save dialog begins
        fresh->CurrFolder = m_users.UserFolders[static_cast<std::size_t>(user)];
    loadDocument(std::move(fresh));
}

void frmMain::mnuFileOpen() {
    if (!closeDocument())
        return;
    const auto saveUser = [this](const std::string& UserID) { keepUser(UserID); };
    frmOpen form(m_services, m_ui, m_users, saveUser, m_folder, this);
    const bool accepted = form.exec() == QDialog::Accepted;
    m_folder = form.folder();
    if (accepted && form.chosen())
        openFile(form.chosen()->CurrFilePath);
    else if (accepted)
        mnuFileNew();
}

void frmMain::keepUser(const std::string& UserID) {
    shell::saveUserId(platform::ansi::toUtf8(UserID), m_settings);
    saveSettings();
}

void frmMain::mnuFileClose() {
    closeDocument();
}

void frmMain::mnuFileSave() {
    if (document::saveDocument(*m_doc, m_services, m_users.currentFolder()) == document::Outcome::Done)
        noteRecent(m_doc->CurrFilePath);
}

void frmMain::mnuFileSaveInstall() {
    if (m_handheld == nullptr)
        return mnuFileSave();
    const auto askForWhom = [this] {
        frmUser form(m_users, this);
        form.exec();
        return form.InstallTarget();
    };
    if (handheld::saveAndInstall(*m_doc, m_services, *m_handheld, m_users, askForWhom) !=
        handheld::SaveInstallEnd::NotSaved)
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
    if (!document::refuseBlock(*m_doc, m_services) && text != nullptr && clipboardHasText())
        text->paste();
}

void frmMain::mnuFind() {
    askWhatToFind(m_find);
}

void frmMain::mnuFindNext() {
    findAgain(true);
}

void frmMain::mnuFindPrevious() {
    findAgain(false);
}

// Before anything was sought there is nothing to repeat: the dialog asks, set to the direction of the command.
void frmMain::findAgain(bool forward) {
    if (m_find.settings.text.empty()) {
        document::FindMemory asked = m_find;
        asked.settings.optForward = forward;
        askWhatToFind(asked);
        return;
    }
    document::takePlaceFromView(*m_doc);
    if (document::findAgain(*m_doc, m_services, m_find, forward))
        showHit();
}

void frmMain::askWhatToFind(const document::FindMemory& shown) {
    document::saveCell(*m_doc, m_services);
    m_document->showDocument();
    document::takePlaceFromView(*m_doc);
    frmFindForm form(shown, this);
    form.setAcceptor([this](const document::FindSettings& settings) {
        return document::findFromDialog(*m_doc, m_services, m_find, settings);
    });
    if (form.exec() == QDialog::Accepted)
        showHit();
}

void frmMain::showHit() {
    document::givePlaceToView(*m_doc);
    const int row = m_doc->grd.row();
    if (m_doc->grd.rowHeight(row) == 0)
        statusBar()->showMessage(toQt(platform::texts::foundHidden(row - model::kFirstDataRow + 1)), kMessageTime);
}

void frmMain::mnuRecordAdd() {
    if (!document::RecordAdd(*m_doc, m_services))
        return;
    m_document->showDocument();
    m_document->setFocus();
}

// The question stands above the record that it is about.
void frmMain::mnuRecordDelete() {
    document::saveCell(*m_doc, m_services);
    m_document->leaveHiddenRows();
    m_document->showDocument();
    document::deleteRecord(*m_doc, m_services);
    m_document->leaveHiddenRows();
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

void frmMain::fieldProps() {
    const std::optional<int> slot = design::fieldPropsSlot(*m_doc);
    if (!slot || !design::mayOpenFieldProps(*m_doc, m_services, *slot))
        return;
    m_document->showDocument();
    design::OtherFolder otherFolder(*m_doc, m_services, m_users,
                                    [this](const std::string& UserID) { keepUser(UserID); });
    frmFieldProp form(*m_doc, m_services, otherFolder, *slot, design::FieldPropMode::Document, this);
    if (form.exec() == QDialog::Accepted)
        design::fieldPropsAccepted(*m_doc, m_services, m_choices);
    m_document->leaveHiddenRows();
}

void frmMain::mnuFormDesigner() {
    document::saveCell(*m_doc, m_services);
    if (!document::refuseReadOnly(*m_doc, m_services) &&
        pdb::AuthorizeDB(*m_doc, m_services, model::PasswordKind::Design))
        frmDesignForm(*m_doc, m_services, this).exec();
}

void frmMain::mnuToolsSecurity() {
    document::saveCell(*m_doc, m_services);
    if (document::SecuritySetting::mayOpen(*m_doc, m_services))
        frmPwd(*m_doc, m_services, this).exec();
}

void frmMain::mnuToolsPDBPorps() {
    document::saveCell(*m_doc, m_services);
    if (!pdb::AuthorizeDB(*m_doc, m_services, model::PasswordKind::Design))
        return;
    const auto saveUser = [this](const std::string& UserID) { keepUser(UserID); };
    frmPDBProps(*m_doc, m_services, m_users, saveUser, this).exec();
    document::recalcExpressions(*m_doc, m_services);
}

void frmMain::mnuRecalculateExpressions() {
    document::saveCell(*m_doc, m_services);
    document::recalcExpressions(*m_doc, m_services);
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

void frmMain::mnuColumnSorta() {
    document::sortCol(*m_doc, m_services, SortDirection::Ascending);
    m_document->leaveHiddenRows();
}

void frmMain::mnuColumnSortd() {
    document::sortCol(*m_doc, m_services, SortDirection::Descending);
    m_document->leaveHiddenRows();
}

void frmMain::sortAscending() {
    document::sortFromToolBar(*m_doc, m_services, SortDirection::Ascending);
    m_document->leaveHiddenRows();
}

void frmMain::sortDescending() {
    document::sortFromToolBar(*m_doc, m_services, SortDirection::Descending);
    m_document->leaveHiddenRows();
}

void frmMain::bestFit() {
    document::bestFit1(*m_doc, m_services, m_document->measure());
    m_document->leaveHiddenRows();
}

} // namespace tallybook::desktop
