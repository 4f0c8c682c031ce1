// The program's frame: menus, tool bars, status bar, and the one document window in it.
#pragma once

#include "core/document/find/Find.h"
#include "core/document/grid/GridDisplay.h"
#include "core/handheld/Users.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"
#include "core/platform/Settings.h"
#include "core/shell/Commands.h"
#include "core/shell/RecentFiles.h"
#include "desktop/dialogs/QtUserInterface.h"

#include <QMainWindow>

#include <filesystem>
#include <memory>
#include <span>

class QLabel;
class QStackedWidget;

namespace tallybook::desktop {

class CommandBars;
class CProgressBar;
class ElidedLabel;
class frmDocument;

class frmMain : public QMainWindow {
    Q_OBJECT

public:
    // All three outlive the window. `ui` must be the one of `services`.
    frmMain(platform::Services& services, QtUserInterface& ui, platform::Settings& settings);
    ~frmMain() override;

    // The handheld's desktop software, which outlives the window, and its users. Without them there is no user.
    void setHandheld(handheld::HandheldDesktop& desktop, handheld::UserList users);
    const handheld::UserList& users() const { return m_users; }

    shell::DocState DocState() const { return m_docState; }
    frmDocument& documentWindow() const { return *m_document; }
    model::Document* document() const { return m_doc.get(); } // nothing when none is open

    // Opens a file after closing what is open. A path of no Tallybook is refused by its name.
    void openFile(const std::filesystem::path& path);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // The commands, by the name in the table.
    void mnuFileNew();
    void mnuFileOpen();
    void mnuFileClose();
    void mnuFileSave();
    void mnuFileSaveInstall();
    void mnuFileSaveAs();
    void mnuFileExit() { close(); }
    void mnuEditCut();
    void mnuEditCopy();
    void mnuEditPaste();
    void mnuFind();
    void mnuFindNext();
    void mnuFindPrevious();
    void mnuRecordAdd();
    void mnuRecordDelete();
    void mnuRecordDeleteAll();
    void mnuViewToolbar();
    void mnuViewStatusBar();
    void changeDisplay(); // mnuViewNotUsedFields, mnuViewFieldTypes
    void fieldProps();    // mnuViewFieldProp, mnuFieldProps
    void mnuFormDesigner();
    void mnuToolsSecurity();
    void mnuToolsPDBPorps();
    void mnuRecalculateExpressions();
    void mnuHelp();
    void mnuHelpAbout();
    void mnuColumnConvertToKeys();
    void mnuColumnSorta();
    void mnuColumnSortd();
    void sortAscending(); // the buttons refuse while a view is shown
    void sortDescending();
    void bestFit();
    void doNothing() {} // the Cancel of a pop-up menu

    using Handler = void (frmMain::*)();
    struct Route {
        std::string_view name;
        Handler handler;
        std::string_view tag; // heads the error dialog when something unexpected happens
    };
    static std::span<const Route> routes();

    void makeStatusBar();
    void makeDocumentWindow();
    void restore();
    void run(const QString& name);
    void findAgain(bool forward);
    void askWhatToFind(const document::FindMemory& shown);
    void showHit();
    void loadDocument(std::unique_ptr<model::Document> doc);
    bool closeDocument();
    bool mayCloseDocument();
    void dropDocument();
    void HandleDocumentClose();
    void setDocState(shell::DocState state);
    void showState();
    void openRecent(int number);
    void noteRecent(const std::filesystem::path& path);
    void keepUser(const std::string& UserID);
    void saveSettings();
    void savePlacement();

    platform::Services& m_services;
    QtUserInterface& m_ui;
    platform::Settings& m_settings;
    handheld::HandheldDesktop* m_handheld = nullptr;
    handheld::UserList m_users;
    std::unique_ptr<model::Document> m_doc;
    CommandBars* m_bars;
    QStackedWidget* m_pages = nullptr; // nothing open, or the document
    frmDocument* m_document = nullptr;
    CProgressBar* m_progress = nullptr;
    ElidedLabel* m_path = nullptr;
    QLabel* m_record = nullptr;
    QLabel* m_readOnly = nullptr;
    shell::DocState m_docState = 0;
    document::DisplayChoices m_choices;
    document::FindMemory m_find;
    shell::RecentList m_recent;
    std::filesystem::path m_folder; // where the open dialog begins
};

} // namespace tallybook::desktop
