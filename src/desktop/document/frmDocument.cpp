#include "desktop/document/frmDocument.h"

#include "core/design/AutoWriter.h"
#include "core/design/Tags.h"
#include "core/document/edit/DeleteKey.h"
#include "core/document/joins/ExternalPicker.h"
#include "core/document/views/ViewPlace.h"
#include "core/platform/OwnTexts.h"
#include "desktop/dialogs/dlgAutoWriter.h"
#include "desktop/dialogs/dlgRadio.h"
#include "desktop/dialogs/frmExtView.h"
#include "desktop/dialogs/frmListEditor.h"
#include "desktop/dialogs/frmMemoAw.h"
#include "desktop/document/CellEditors.h"
#include "desktop/forms/PictureTip.h"
#include "desktop/forms/frmEditImage.h"
#include "desktop/platform/Text.h"
#include "ui_frmDocument.h"

#include <QLineEdit>
#include <QMenu>

namespace tallybook::desktop {

namespace {

using document::EditAction;

bool isTextField(model::FieldType type) {
    return type == model::FieldType::Text || type == model::FieldType::Memo;
}

// A line for a number or a time; a box with lines for everything else, whatever its field.
frmMemoAw::Screen screenFor(model::FieldType type, const std::string& text) {
    const bool lines = text.find_first_of("\r\n") != std::string::npos;
    return isTextField(type) || lines ? frmMemoAw::Screen::Text : frmMemoAw::Screen::Number;
}

} // namespace

frmDocument::frmDocument(platform::Services& services, QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::frmDocument>()), m_services(services) {
    m_ui->setupUi(this);
    m_measure = std::make_unique<QtTextMeasure>(grid());
    m_editors = new CellEditors(grid());
    connectGrid();
    connectEditors();
    connectChoices();
    connectView();
    setFocusProxy(&grid());
}

frmDocument::~frmDocument() = default;

GridView& frmDocument::grid() const {
    return *m_ui->grd;
}

void frmDocument::setPopUpMenus(QMenu* column, QMenu* row) {
    m_columnMenu = column;
    m_rowMenu = row;
}

void frmDocument::connectGrid() {
    m_pictureTip = new PictureTip(grid(), m_services);
    connect(&grid(), &GridView::leavingCell, this, operation(kLeaveCell, &frmDocument::commit));
    connect(&grid(), &GridView::scrolling, this, operation("Tallybook Form : Scroll Grid", &frmDocument::commit));
    connect(&grid(), &GridView::keyTyped, this,
            operation("Tallybook Form : Key Presseed in Grid", &frmDocument::typeOnCell));
    connect(&grid(), &GridView::clicked, this, operation("Tallybook Form : Click on Grid", &frmDocument::clickCell));
    connect(&grid(), &GridView::rightPressed, this,
            operation("Tallybook Form : Mouse Action on Grid", &frmDocument::popUp));
    connect(&grid(), &GridView::menuAsked, this,
            operation("Tallybook Form : Key Board Action on Grid", &frmDocument::popUpByKey));
    connect(&grid(), &GridView::deletePressed, this,
            operation("Tallybook Form : Key Board Action on Grid", &frmDocument::deleteByKey));
    connect(&grid(), &GridView::tabPressed, this,
            operation("Tallybook Form : Key Board Action on Grid", &frmDocument::tabOn));
    connect(&grid(), &GridView::currentCellChanged, this, &frmDocument::documentChanged);
    connect(&grid(), &GridView::bestFitRequested, this,
            operation("Tallybook Form : Best Fit (Procedure)", &frmDocument::bestFitColumn));
    connect(&grid(), &GridView::columnResized, this, [this](int column, int twips) {
        m_doc->grd.setColumnWidth(column, twips);
        grid().refresh();
    });
}

void frmDocument::connectEditors() {
    const auto keyInText = operation("Tallybook Form : Keyboard Action on Data Edit", &frmDocument::pressKey);
    const auto keyInList = operation("Tallybook Form : ListType(1) - KeyBoard Action", &frmDocument::pressKey);
    connect(m_editors, &CellEditors::keyPressed, this, [this, keyInText, keyInList](document::EditKey key) {
        if (m_doc != nullptr && m_doc->editor.kind == model::EditorKind::cmb1)
            keyInList(key);
        else
            keyInText(key);
    });
    connect(m_editors, &CellEditors::textTyped, this,
            operation("Tallybook Form : Text Change", &frmDocument::takeTyped));
    connect(m_editors, &CellEditors::spinAsked, this,
            operation("Tallybook Form : Key Press on Data Edit", &frmDocument::spin));
    connect(m_editors, &CellEditors::entryChosen, this,
            operation("Tallybook Form : ListType(1) - Clicked", &frmDocument::chooseEntry));
    connect(m_editors, &CellEditors::clearDateAsked, this,
            operation("Tallybook Form: MouseDown", &frmDocument::clearDate));
    connect(m_editors, &CellEditors::calendarAsked, this,
            operation("Tallybook Form : Calendar", &frmDocument::openCalendar));
    connect(m_editors, &CellEditors::dayPicked, this, operation("Tallybook Form : Calendar", &frmDocument::pickDay));
}

void frmDocument::setDocument(model::Document* doc) {
    m_doc = doc;
    m_pictureTip->setDocument(doc);
    m_editors->show({});
    grid().setModel(doc != nullptr ? &doc->grd : nullptr);
    viewGrid().setModel(doc != nullptr ? &doc->ViewGrd : nullptr);
    showDocument();
}

void frmDocument::takeEditor() {
    if (m_doc != nullptr && m_doc->editor.open())
        m_editors->read(m_doc->editor);
}

void frmDocument::showDocument() {
    showState(Sight::MoveToCell);
}

void frmDocument::showState(Sight sight) {
    if (m_doc == nullptr)
        return;
    setWindowTitle(toQt(m_doc->Caption));
    showChoices();
    showGrids();
    const model::EditorState& editor = m_doc->editor;
    const model::GridModel& shown = document::shownGrid(*m_doc);
    if (editor.open()) {
        grid().showCell(editor.row, editor.col);
        grid().placeMarker();
    } else if (sight == Sight::MoveToCell) {
        shownGrid().showCell(shown.row(), shown.col());
    }
    m_editors->show(editor);
    emit documentChanged();
}

void frmDocument::leaveHiddenRows() {
    if (m_doc != nullptr)
        document::leaveHiddenRows(*m_doc);
}

void frmDocument::perform(const EditAction& action) {
    showDocument();
    if (action.marksRow)
        grid().placeMarker();
    switch (action.open) {
    case EditAction::Open::MemoWindow:
        openMemo(action);
        break;
    case EditAction::Open::RadioDialog:
        openRadio(action);
        break;
    case EditAction::Open::ImageDialog:
        openImage();
        break;
    case EditAction::Open::ExternalPicker:
        openExternalPicker(action);
        break;
    case EditAction::Open::CellEditor:
    case EditAction::Open::Nothing:
        break;
    }
}

// The grid stays where it is: it may be on its way to another place, and the mouse on a cell.
void frmDocument::commit() {
    if (!ready() || !m_doc->editor.open())
        return;
    takeEditor();
    document::saveCell(*m_doc, m_services);
    showState(Sight::Stay);
}

void frmDocument::typeOnCell(int code, const QString& rest) {
    if (!ready())
        return;
    EditAction action = document::keyOnGrid(*m_doc, m_services, code);
    if (action.open == EditAction::Open::ExternalPicker)
        action.text += fromQt(rest);
    perform(action);
    if (m_doc->editor.open())
        m_editors->insert(rest);
}

void frmDocument::clickCell(document::MousePlace place) {
    if (m_doc == nullptr)
        return;
    takeEditor();
    perform(document::leftClick(*m_doc, m_services, place));
}

void frmDocument::popUp(document::MousePlace place, QPoint globalPosition) {
    if (m_doc == nullptr)
        return;
    takeEditor();
    const document::PopUp which = document::rightClick(*m_doc, m_services, place);
    showDocument();
    if (QMenu* menu = menuOf(which))
        menu->exec(globalPosition);
    if (m_doc == nullptr)
        return;
    document::rightClickDone(*m_doc, m_services, which);
    showDocument();
}

QMenu* frmDocument::menuOf(document::PopUp which) const {
    switch (which) {
    case document::PopUp::mnuColumn:
        return m_columnMenu;
    case document::PopUp::mnuRow:
        return m_rowMenu;
    case document::PopUp::None:
        break;
    }
    return nullptr;
}

void frmDocument::popUpByKey(QPoint globalPosition) {
    if (!ready())
        return;
    takeEditor();
    const document::PopUp which = document::menuKey(*m_doc, m_services);
    showDocument();
    if (QMenu* menu = menuOf(which))
        menu->exec(globalPosition);
}

void frmDocument::deleteByKey() {
    if (!ready())
        return;
    document::deleteKey(*m_doc, m_services);
    showDocument();
}

void frmDocument::tabOn(bool back) {
    if (!ready())
        return;
    commit();
    if (back)
        document::moveLeft(*m_doc);
    else
        document::moveRight(*m_doc);
    showDocument();
}

void frmDocument::pressKey(document::EditKey key) {
    takeEditor();
    perform(document::editorKey(*m_doc, m_services, key));
}

void frmDocument::takeTyped() {
    QLineEdit* line = m_editors->openText();
    QString typed = line->text();
    for (const QChar lineEnd : {QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator), QChar(u'\n')})
        typed.replace(lineEnd, QLatin1Char(' '));
    const QString shown = toQt(document::textChanged(*m_doc, fromQt(typed)));
    if (shown == line->text())
        return;
    const int caret = line->cursorPosition();
    line->setText(shown);
    line->setCursorPosition(caret);
}

void frmDocument::spin(int step) {
    takeEditor();
    document::spinBy(*m_doc, m_services, step);
    showDocument();
}

void frmDocument::chooseEntry(int entry) {
    takeEditor();
    const bool editsItems = document::chooseEntry(*m_doc, m_services, entry);
    showDocument();
    if (editsItems)
        openListEditor();
}

void frmDocument::clearDate() {
    takeEditor();
    document::clearDate(*m_doc, m_services);
    showDocument();
}

void frmDocument::openCalendar() {
    takeEditor();
    m_editors->openCalendar(document::calendarDay(*m_doc, m_services));
}

void frmDocument::pickDay(int day) {
    takeEditor();
    document::pickDay(*m_doc, m_services, day);
    showDocument();
}

void frmDocument::bestFitColumn(int column) {
    document::bestFitColumn(*m_doc, m_services, *m_measure, column);
    showDocument();
}

void frmDocument::openMemo(const EditAction& action) {
    const model::FieldDef& field = m_doc->CurrDB20.Fields[m_doc->CurrField];
    frmMemoAw::Contents contents;
    contents.fieldName = toQt(field.Name);
    contents.text = toQt(action.text);
    contents.screen = screenFor(field.Type, action.text);
    contents.longest = field.Type == model::FieldType::Memo ? model::kMemoLength : model::kTextLength;
    contents.autoWriter = action.showAutoWriter;
    contents.readOnly = m_doc->CurrDB20.ReadOnly != 0;
    frmMemoAw window(contents, this);
    connect(&window, &frmMemoAw::autoWriterAsked, this, [this, &window] { openAutoWriter(window); });
    if (window.exec() == QDialog::Accepted)
        document::acceptMemo(*m_doc, m_services, fromQt(window.text()));
    showDocument();
}

void frmDocument::openAutoWriter(frmMemoAw& editor) {
    const model::DatabaseModel& db = m_doc->CurrDB20;
    const int slot = m_doc->CurrField;
    const bool text = isTextField(db.Fields[m_doc->CurrField].Type);
    dlgAutoWriter dialog(design::autoWriterItems(db, slot),
                         text ? dlgAutoWriter::Choice::Several : dlgAutoWriter::Choice::One, &editor);
    if (dialog.exec() != QDialog::Accepted || dialog.selected().empty())
        return;
    platform::runOperation(m_services.ui, design::tags::kAutoWriterOk, [&] {
        editor.replaceText(
            toQt(design::autoWriterOk(db, slot, dialog.selected(), dialog.action(), fromQt(editor.text()))));
    });
}

void frmDocument::openRadio(const EditAction& action) {
    const model::FieldDef& field = m_doc->CurrDB20.Fields[m_doc->CurrField];
    QStringList options;
    for (const std::string& item : m_doc->CurrDB20.Lists.at(m_doc->CurrField).Items)
        options += toQt(item);
    dlgRadio dialog(toQt(field.Name), options, action.selected, this);
    dialog.setAcceptor([this](int option) { return document::acceptRadio(*m_doc, m_services, option); });
    dialog.exec();
    showDocument();
}

void frmDocument::openExternalPicker(const EditAction& action) {
    using document::ExtView;
    ExtView view(*m_doc);
    frmExtView::Contents contents;
    const bool read = platform::runOperation(m_services.ui, ExtView::kAddRecords, [&] {
        view.AddRecordsToView(*m_doc, m_services);
        contents.fieldName = toQt(m_doc->CurrDB20.Fields[m_doc->CurrField].Name);
        contents.find = toQt(action.text);
        contents.record = view.rowOfCell(*m_doc, m_services.regional);
        contents.mayBeEmptied = !m_doc->grd.text(m_doc->grd.row(), m_doc->grd.col()).empty();
    });
    if (!read)
        return;
    frmExtView window(view, contents, this);
    if (window.exec() == QDialog::Accepted)
        platform::runOperation(m_services.ui, ExtView::kOk, [&] {
            if (window.wantsNone())
                view.cmdNone(*m_doc);
            else
                view.cmdOK(*m_doc, window.SelectedExtRow());
        });
    showDocument();
}

// The lists can be those of other columns, and the categories, too.
void frmDocument::openListEditor() {
    frmListEditor(*m_doc, m_services, m_doc->CurrField, this).exec();
    showDocument();
}

void frmDocument::openImage() {
    frmEditImage(*m_doc, m_services, m_doc->grd.row(), model::slotOfColumn(m_doc->grd.col()), this).exec();
    showDocument();
}

void frmDocument::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (m_doc == nullptr || !isVisible())
        return;
    document::gridResized(*m_doc);
    leaveHiddenRows();
    showDocument();
}

} // namespace tallybook::desktop
