#include "desktop/main/frmMain.h"

#include "core/document/edit/CellEditing.h"
#include "core/document/file/OpenSave.h"
#include "core/document/views/Views.h"
#include "core/forms/ImageCell.h"
#include "core/platform/Operation.h"
#include "core/platform/OwnTexts.h"
#include "core/shell/OpenChoice.h"
#include "core/shell/ProgramSettings.h"
#include "core/shell/Version.h"
#include "desktop/document/frmDocument.h"
#include "desktop/main/CommandBars.h"
#include "desktop/main/ElidedLabel.h"
#include "desktop/platform/CProgressBar.h"
#include "desktop/platform/Resources.h"
#include "desktop/platform/ScreenFit.h"
#include "desktop/platform/Text.h"
#include "desktop/platform/Twips.h"
#include "desktop/platform/WheelGuard.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMimeData>
#include <QScreen>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QStatusBar>
#include <QToolBar>

namespace tallybook::desktop {

namespace {

constexpr int kPrinters = 1; // printing to a PDF file always works
constexpr std::string_view kOpenTag = "Tallybook Pocket : Open";
constexpr int kWindowMargin = 60; // pixels of a restored window that must be on a screen

using platform::Icon;

// The one file of a drag, or nothing.
std::optional<std::filesystem::path> draggedFile(const QMimeData& data) {
    if (data.urls().size() != 1 || !data.urls().first().isLocalFile())
        return std::nullopt;
    return pathFromQt(data.urls().first().toLocalFile());
}

std::filesystem::path pathOf(const shell::RecentFile& file) {
    const std::string path = file.path();
    return {std::u8string(path.begin(), path.end())};
}

// A place that can be reached: a screen may have gone since the place was saved.
QPoint reachable(const QScreen& screen, QRect window) {
    const QRect room = screen.virtualGeometry();
    return {std::clamp(window.left(), room.left(), std::max(room.left(), room.right() - kWindowMargin)),
            std::clamp(window.top(), room.top(), std::max(room.top(), room.bottom() - kWindowMargin))};
}

// Which record is current, and how many a filter leaves.
QString recordText(const model::Document& doc) {
    if (model::hasNoRecords(doc))
        return frmMain::tr("No records");
    const model::GridModel& grid = document::shownGrid(doc);
    const QString text =
        frmMain::tr("Record %1 of %2").arg(std::max(1, grid.row() - model::kFirstDataRow + 1)).arg(doc.NumDataRecs);
    const int shown = grid.visibleRows();
    return shown == doc.NumDataRecs ? text : frmMain::tr("%1, %2 shown").arg(text).arg(shown);
}

} // namespace

frmMain::frmMain(platform::Services& services, QtUserInterface& ui, platform::Settings& settings)
    : m_services(services), m_ui(ui), m_settings(settings) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowIcon(icon(QStringLiteral("tallybook")));
    setAcceptDrops(true);
    new ScreenFit(this);
    new WheelGuard(this);
    m_bars = new CommandBars(*this);
    connect(m_bars, &CommandBars::triggered, this, &frmMain::run);
    connect(m_bars, &CommandBars::recentFileChosen, this, &frmMain::openRecent);
    makeStatusBar();
    makeDocumentWindow();
    m_ui.setWindow(this);
    m_ui.setProgressBar(m_progress);
    m_ui.setGrid(&m_document->grid());
    restore();
    setDocState(0);
    showState();
}

void frmMain::setHandheld(handheld::HandheldDesktop& desktop, handheld::UserList users) {
    m_handheld = &desktop;
    m_users = std::move(users);
}

frmMain::~frmMain() {
    m_document->setDocument(nullptr);
}

void frmMain::makeStatusBar() {
    statusBar()->setObjectName(QStringLiteral("sbStatusBar"));
    m_path = new ElidedLabel(this);
    m_path->setObjectName(QStringLiteral("lblPath"));
    m_record = new QLabel(this);
    m_record->setObjectName(QStringLiteral("lblRecord"));
    m_readOnly = new QLabel(toQt(platform::texts::kReadOnly), this);
    m_readOnly->setObjectName(QStringLiteral("lblReadOnly"));
    m_progress = new CProgressBar(this);
    m_progress->setMaximumWidth(260);
    statusBar()->addWidget(m_path, 1);
    statusBar()->addPermanentWidget(m_readOnly);
    statusBar()->addPermanentWidget(m_record);
    statusBar()->addPermanentWidget(m_progress);
}

void frmMain::makeDocumentWindow() {
    m_document = new frmDocument(m_services, this);
    m_document->setPopUpMenus(m_bars->menu("mnuColumn"), m_bars->menu("mnuRow"));
    connect(m_document, &frmDocument::documentChanged, this, &frmMain::showState);
    m_pages = new QStackedWidget(this);
    auto* hint = new QLabel(toQt(platform::texts::kNothingOpen), m_pages);
    hint->setObjectName(QStringLiteral("lblNothingOpen"));
    hint->setAlignment(Qt::AlignCenter);
    hint->setWordWrap(true);
    m_pages->addWidget(hint);
    m_pages->addWidget(m_document);
    setCentralWidget(m_pages);
}

void frmMain::restore() {
    const shell::WindowPlacement placement = shell::loadPlacement(m_settings);
    const double dpi = logicalDpiX();
    QRect window(pixelsOf(placement.left, dpi), pixelsOf(placement.top, dpi), pixelsOf(placement.width, dpi),
                 pixelsOf(placement.height, dpi));
    window.setSize(window.size().boundedTo(ScreenFit::roomOn(*this)));
    window.moveTopLeft(reachable(*screen(), window));
    setGeometry(window);
    m_recent = shell::GetLatestList(m_settings);
    m_bars->setRecentFiles(m_recent);
    m_folder = m_recent.empty() ? pathFromQt(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
                                : pathOf(m_recent.front()).parent_path();
    m_choices = shell::loadDisplayChoices(m_settings);
    m_bars->action("mnuViewNotUsedFields")->setChecked(m_choices.notUsedFields);
    m_bars->action("mnuViewFieldTypes")->setChecked(m_choices.fieldTypes);
    m_bars->action("mnuViewToolbar")->setChecked(true);
    m_bars->action("mnuViewStatusBar")->setChecked(true);
}

void frmMain::run(const QString& name) {
    const std::string key = fromQt(name);
    for (const Route& route : routes())
        if (route.name == key) {
            platform::runOperation(m_ui, route.tag, [this, &route] {
                m_document->takeEditor();
                (this->*route.handler)();
            });
            m_document->showDocument();
            return;
        }
}

void frmMain::setDocState(shell::DocState state) {
    m_docState = state;
    m_bars->enable(state, kPrinters); // UpdateToolbar
}

void frmMain::showState() {
    const QString program = toQt(shell::kProgramName);
    const bool open = m_doc != nullptr;
    setWindowTitle(open ? QStringLiteral("%1[*] - %2").arg(toQt(m_doc->Caption), program) : program);
    setWindowModified(open && m_doc->DocModified);
    m_path->setFullText(open ? pathToQt(m_doc->CurrFilePath) : QString());
    m_readOnly->setVisible(open && m_doc->CurrDB20.ReadOnly != 0);
    if (!open)
        m_record->clear();
    else
        m_record->setText(recordText(*m_doc));
}

// Shows a document that has been made or read; what was open before is gone.
void frmMain::loadDocument(std::unique_ptr<model::Document> doc) {
    m_document->setDocument(nullptr);
    dropDocument();
    m_doc = std::move(doc);
    document::FormatGrid(*m_doc, m_choices);
    document::bestFit1(*m_doc, m_services, m_document->measure());
    m_pages->setCurrentWidget(m_document);
    m_document->setDocument(m_doc.get());
    m_document->leaveHiddenRows();
    m_document->setFocus();
    setDocState(1);
    showState();
}

bool frmMain::mayCloseDocument() {
    if (m_doc == nullptr)
        return true;
    m_document->takeEditor();
    document::saveCell(*m_doc, m_services);
    const bool changed = m_doc->DocModified;
    const bool may = document::CheckSaveChanges(*m_doc, m_services, m_users.currentFolder());
    if (may && changed && !m_doc->DocModified)
        noteRecent(m_doc->CurrFilePath); // the question's Yes has saved it
    m_document->showDocument();
    return may && !m_ui.aborted();
}

bool frmMain::closeDocument() {
    if (!mayCloseDocument())
        return false;
    HandleDocumentClose();
    return true;
}

// Pictures that were not saved go with it.
void frmMain::dropDocument() {
    if (m_doc != nullptr)
        forms::dropPictures(*m_doc, m_services);
    m_doc.reset();
}

void frmMain::HandleDocumentClose() {
    m_document->setDocument(nullptr);
    m_pages->setCurrentIndex(0);
    dropDocument();
    setDocState(0);
    showState();
}

// Reads into a document of its own, so that a file that cannot be read leaves what is open as it was. A login that
// was refused leaves nothing open.
void frmMain::openFile(const std::filesystem::path& path) {
    if (!shell::isTallybookName(fromQt(pathToQt(path.filename())))) {
        m_ui.message({std::string(shell::kNoValidFile), Icon::Critical});
        return;
    }
    if (!mayCloseDocument())
        return;
    auto fresh = std::make_unique<model::Document>();
    switch (document::OpenDatabase(*fresh, m_services, path)) {
    case document::Outcome::Done:
        loadDocument(std::move(fresh));
        noteRecent(m_doc->CurrFilePath); // on the disk its blanks may be underscores
        break;
    case document::Outcome::Cancelled:
        HandleDocumentClose();
        break;
    case document::Outcome::Refused:
        break;
    }
}

void frmMain::openRecent(int number) {
    const std::filesystem::path path = pathOf(m_recent[static_cast<std::size_t>(number)]); // opening changes the list
    platform::runOperation(m_ui, kOpenTag, [this, &path] { openFile(path); });
}

void frmMain::noteRecent(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    m_recent = shell::BuildUsableFileList(std::string(text.begin(), text.end()), m_recent);
    m_bars->setRecentFiles(m_recent);
    shell::SaveMRUListToRegistry(m_recent, m_settings);
    m_folder = path.parent_path();
    saveSettings();
}

void frmMain::saveSettings() {
    if (const platform::Status saved = m_settings.save(); !saved)
        statusBar()->showMessage(toQt(saved.error().text), 5000);
}

void frmMain::savePlacement() {
    const auto state = isMinimized()                     ? shell::WindowState::Minimised
                       : isMaximized() || isFullScreen() ? shell::WindowState::Maximised
                                                         : shell::WindowState::Normal;
    const double dpi = logicalDpiX();
    const auto twips = [dpi](int pixels) { return static_cast<float>(twipsOf(pixels, dpi)); };
    const QRect place = geometry();
    shell::savePlacement({twips(place.left()), twips(place.top()), twips(place.width()), twips(place.height())},
                         state, m_settings);
    saveSettings();
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (!m_ui.aborted() && !closeDocument()) {
        event->ignore();
        return;
    }
    savePlacement();
    event->accept();
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    if (draggedFile(*event->mimeData()))
        event->acceptProposedAction();
}

// The file is opened when the drop is over: a question in its middle would hold up the program that it came from.
void frmMain::dropEvent(QDropEvent* event) {
    const auto path = draggedFile(*event->mimeData());
    if (!path)
        return;
    event->acceptProposedAction();
    QMetaObject::invokeMethod(
        this, [this, path] { platform::runOperation(m_ui, kOpenTag, [this, &path] { openFile(*path); }); },
        Qt::QueuedConnection);
}

} // namespace tallybook::desktop
