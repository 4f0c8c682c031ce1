// What the choices of view and filter, the button beside them and the grid of a view do.
#include "core/document/views/MultipleFilter.h"
#include "core/platform/OwnTexts.h"
#include "desktop/dialogs/dlgFilterDesg.h"
#include "desktop/dialogs/dlgMulFilter.h"
#include "desktop/dialogs/frmViewDesigner.h"
#include "desktop/document/frmDocument.h"
#include "desktop/platform/Combos.h"
#include "desktop/platform/Text.h"
#include "ui_frmDocument.h"

#include <QEvent>

namespace tallybook::desktop {

namespace {

using document::Choice;

} // namespace

GridView& frmDocument::viewGrid() const {
    return *m_ui->ViewGrd;
}

GridView& frmDocument::shownGrid() const {
    return m_doc != nullptr && document::isViewShown(*m_doc) ? viewGrid() : grid();
}

void frmDocument::connectChoices() {
    for (QComboBox* combo : {m_ui->CmbView, m_ui->CmbFilter})
        combo->installEventFilter(this);
    connect(m_ui->CmbView, &QComboBox::activated, this,
            operation("Tallybook Form : View Selection", &frmDocument::chooseView));
    connect(m_ui->CmbFilter, &QComboBox::activated, this,
            operation("Tallybook Form : Filter Selection", &frmDocument::chooseFilter));
    connect(m_ui->cmdEdit, &QPushButton::clicked, this,
            operation("Tallybook Form : Edit Data", &frmDocument::pressEdit));
}

// ViewGrd is there to be looked at: what would begin an edit opens the record in grd.
void frmDocument::connectView() {
    viewGrid().findChild<QWidget*>(QStringLiteral("cursor"))->setObjectName({}); // the name is that of grd's marker
    connect(&viewGrid(), &GridView::clicked, this,
            operation("Tallybook Form : Viewgrid Click", &frmDocument::clickView));
    connect(&viewGrid(), &GridView::keyTyped, this,
            operation("Tallybook Form : Key Presseed in Grid", &frmDocument::typeOnView));
    connect(&viewGrid(), &GridView::tabPressed, &viewGrid(), &GridView::moveSideways);
    connect(&viewGrid(), &GridView::deletePressed, this,
            operation("Tallybook Form : Key Board Action on Grid", &frmDocument::deleteByKey));
    connect(&viewGrid(), &GridView::currentCellChanged, this, &frmDocument::documentChanged);
    connect(&viewGrid(), &GridView::columnResized, this, &frmDocument::resizeViewColumn);
    connect(&viewGrid(), &GridView::bestFitRequested, this,
            operation("Tallybook Form : Best Fit (Procedure)", &frmDocument::bestFitViewColumn));
}

// The column of grd that a column of ViewGrd shows.
int frmDocument::gridColumn(int viewColumn) const {
    return model::columnOfSlot(document::shownSlot(*m_doc, viewColumn));
}

void frmDocument::showChoices() {
    fillCombo(*m_ui->CmbView, document::viewEntries(m_doc->CurrDB20), document::chosenView(*m_doc));
    fillCombo(*m_ui->CmbFilter, document::filterEntries(m_doc->CurrDB20), document::chosenFilter(*m_doc));
    const document::EditButton button = document::editButton(*m_doc);
    if (const QString caption = toQt(button.caption); m_ui->cmdEdit->text() != caption)
        m_ui->cmdEdit->setText(caption);
    m_ui->cmdEdit->setEnabled(button.enabled);
}

void frmDocument::showGrids() {
    GridView& shown = shownGrid();
    shown.setHint(toQt(document::gridHint(*m_doc)));
    shown.refresh();
    if (m_ui->grids->currentWidget() == &shown)
        return;
    setFocusProxy(&shown);
    m_ui->grids->setCurrentWidget(&shown);
}

void frmDocument::chooseView(int entry) {
    commit();
    afterChoice(document::chooseView(*m_doc, m_services, entry));
}

void frmDocument::chooseFilter(int entry) {
    commit();
    afterChoice(document::chooseFilter(*m_doc, m_services, entry));
}

// The boxes go back to what is in force before a question stands above them.
void frmDocument::afterChoice(Choice choice) {
    showDocument();
    if (choice == Choice::EditViews)
        editViews();
    else if (choice == Choice::EditFilters)
        editFilters();
    else if (choice == Choice::MultipleFilter)
        chooseFilters();
    if (!m_choosesByKey)
        shownGrid().setFocus();
}

void frmDocument::editViews() {
    frmViewDesigner(*m_doc, m_services, this).exec();
    document::AddViewFilterInfo(*m_doc, m_services);
    leaveHiddenRows();
    showDocument();
}

void frmDocument::editFilters() {
    dlgFilterDesg(*m_doc, m_services, this).exec();
    document::filtersEdited(*m_doc, m_services);
    leaveHiddenRows();
    showDocument();
}

void frmDocument::chooseFilters() {
    if (!document::mayChooseFilters(*m_doc, m_services))
        return;
    dlgMulFilter dialog(document::multipleFilterLines(*m_doc), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    document::acceptMultipleFilter(*m_doc, m_services, dialog.slotsChecked());
    showDocument();
}

void frmDocument::pressEdit() {
    commit();
    if (document::isViewShown(*m_doc))
        document::ModifyRecord(*m_doc, m_services);
    else
        document::doneEditing(*m_doc, m_services);
    showDocument();
    shownGrid().setFocus();
}

void frmDocument::editRecord() {
    document::ModifyRecord(*m_doc, m_services);
    showDocument();
}

void frmDocument::typeOnView(int code, const QString&) {
    if (code == '\r' || code == document::kKeyF2)
        editRecord();
}

// The view's next snapshot takes its widths from grd, so that is where they are kept.
void frmDocument::resizeViewColumn(int column, int twips) {
    m_doc->grd.setColumnWidth(gridColumn(column), twips);
    document::takeColumnLook(*m_doc);
    viewGrid().refresh();
}

void frmDocument::bestFitViewColumn(int column) {
    bestFitColumn(gridColumn(column));
}

void frmDocument::clickView(document::MousePlace place) {
    document::clickView(*m_doc, m_services, place);
    showDocument();
}

// A click on a choice commits what is being edited; a wheel scrolls the grid, it does not change a choice by the way.
bool frmDocument::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        m_choosesByKey = false;
        operation(kLeaveCell, &frmDocument::commit)();
        break;
    case QEvent::KeyPress:
        m_choosesByKey = true; // the arrows go through the entries one by one: the focus stays
        break;
    case QEvent::Wheel:
        return true;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace tallybook::desktop
