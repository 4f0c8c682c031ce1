#include "desktop/dialogs/frmViewDesigner.h"

#include "core/design/Tags.h"
#include "core/platform/Operation.h"
#include "desktop/platform/Combos.h"
#include "desktop/platform/ListInCell.h"
#include "desktop/platform/TypedText.h"
#include "ui_frmViewDesigner.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcut>

#include <utility>

namespace tallybook::desktop {

namespace {

namespace tags = design::tags;

constexpr int kSortWidth = 150; // pixels

void setCell(QTableWidget& table, int row, int column, const std::string& text) {
    QTableWidgetItem* item = table.item(row, column);
    if (item == nullptr) {
        item = new QTableWidgetItem;
        table.setItem(row, column, item);
    }
    item->setText(toQt(text));
    item->setToolTip(plainTip(item->text())); // a long name is cut in the cell
}

} // namespace

frmViewDesigner::frmViewDesigner(model::Document& doc, platform::Services& services, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmViewDesigner>()), m_services(services), m_design(doc, services) {
    m_ui->setupUi(this);
    makeLists();
    m_ui->Grid->horizontalHeader()->setSectionResizeMode(kFields, QHeaderView::Stretch);
    m_ui->Grid->horizontalHeader()->setSectionResizeMode(kSort, QHeaderView::Fixed);
    m_ui->Grid->horizontalHeader()->resizeSection(kSort, kSortWidth);
    m_ui->Grid->horizontalHeader()->setHighlightSections(false);
    m_ui->Grid->verticalHeader()->setHighlightSections(false);
    platform::runOperation(services.ui, tags::kViewLoading, [this] { showDesign(); });
    m_ui->Grid->setCurrentCell(0, kFields);
    connectControls();
    connectButtons();
    connectKeys();
    m_ui->Grid->setFocus();
}

frmViewDesigner::~frmViewDesigner() = default;

void frmViewDesigner::makeLists() {
    m_fields = new ListInCell(*m_ui->Grid);
    m_fields->setObjectName(QStringLiteral("CmbFields"));
    m_fields->setAccessibleName(tr("Field of the column"));
    m_sort = new ListInCell(*m_ui->Grid);
    m_sort->setObjectName(QStringLiteral("CmbSort"));
    m_sort->setAccessibleName(tr("Sort key of the column"));
    connect(m_fields, &QComboBox::activated, this, [this](int position) {
        perform(tags::kViewFieldList, [this, position] { m_design.chooseField(position); });
    });
    connect(m_sort, &QComboBox::activated, this, [this](int position) {
        perform(tags::kViewSortList, [this, position] { m_design.chooseSort(position); });
    });
}

void frmViewDesigner::connectControls() {
    connect(m_ui->CmbView, &QComboBox::activated, this,
            [this](int position) { perform(tags::kViewViewList, [this, position] { chooseView(position); }); });
    connect(m_ui->TxtView, &QLineEdit::textEdited, this,
            [this] { m_design.TxtView = fromQt(typedText(*m_ui->TxtView)); });
    connect(m_ui->CmbCols, &QComboBox::currentIndexChanged, this, [this](int position) { m_design.cols = position; });
    connect(m_ui->CmbFilter, &QComboBox::activated, this, [this](int position) { m_design.chooseFilter(position); });
    connect(m_ui->Grid, &QTableWidget::currentCellChanged, this, [this](int row) { m_design.selectRow(row); });
    connect(m_ui->Grid, &QTableWidget::cellClicked, this, [this](int row, int column) {
        platform::runOperation(m_services.ui, tags::kViewGridClick, [this, row, column] { clickGrid(row, column); });
    });
    connect(m_ui->Grid->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        platform::runOperation(m_services.ui, tags::kViewGridScroll, [this] {
            m_fields->hidePopup();
            m_sort->hidePopup();
        });
    });
}

void frmViewDesigner::connectButtons() {
    connect(m_ui->CmdAdd, &QPushButton::clicked, this,
            [this] { platform::runOperation(m_services.ui, tags::kViewAdd, [this] { add(); }); });
    connect(m_ui->CmdRemove, &QPushButton::clicked, this,
            [this] { perform(tags::kViewRemove, [this] { m_design.CmdRemove(); }); });
    connect(m_ui->cmdClear, &QPushButton::clicked, this,
            [this] { perform(tags::kViewClear, [this] { m_design.cmdClear(); }); });
    connect(m_ui->cmdUp, &QPushButton::clicked, this,
            [this] { perform(tags::kViewUp, [this] { m_design.cmdUp(); }); });
    connect(m_ui->cmdDown, &QPushButton::clicked, this,
            [this] { perform(tags::kViewDown, [this] { m_design.cmdDown(); }); });
    connect(m_ui->cmdOK, &QPushButton::clicked, this, [this] { perform(tags::kViewSave, [this] { save(); }); });
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmViewDesigner::reject);
}

// What the mouse does in the table and with its buttons.
void frmViewDesigner::connectKeys() {
    m_ui->Grid->installEventFilter(this);
    const std::pair<int, QPushButton*> keys[] = {
        {Qt::Key_Insert, m_ui->CmdAdd},
        {Qt::Key_Delete, m_ui->CmdRemove},
        {static_cast<int>(Qt::CTRL) | static_cast<int>(Qt::Key_Up), m_ui->cmdUp},
        {static_cast<int>(Qt::CTRL) | static_cast<int>(Qt::Key_Down), m_ui->cmdDown},
    };
    for (const auto& [key, button] : keys) {
        auto* shortcut = new QShortcut(QKeySequence(key), m_ui->Grid);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
        button->setToolTip(QKeySequence(key).toString(QKeySequence::NativeText));
    }
}

// The keys that open a list. Shortcuts would not do: Return closes the list, and were one at once for the table.
bool frmViewDesigner::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool opens = key->key() == Qt::Key_Space || key->key() == Qt::Key_F2 || key->key() == Qt::Key_Return ||
                           key->key() == Qt::Key_Enter;
        if (opens && (key->modifiers() & ~Qt::KeypadModifier) == 0) {
            clickGrid(m_ui->Grid->currentRow(), m_ui->Grid->currentColumn());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmViewDesigner::perform(std::string_view tag, const std::function<void()>& operation) {
    platform::runOperation(m_services.ui, tag, operation);
    showDesign();
}

void frmViewDesigner::showDesign() {
    fillCombo(*m_ui->CmbView, m_design.CmbView(), m_design.viewPosition());
    if (fromQt(m_ui->TxtView->text()) != m_design.TxtView)
        m_ui->TxtView->setText(toQt(m_design.TxtView));
    fillCombo(*m_ui->CmbCols, design::ViewDesign::CmbCols(), m_design.cols);
    fillCombo(*m_ui->CmbFilter, m_design.CmbFilter(), m_design.filter);
    fillCombo(*m_fields, m_design.CmbFields(), 0);
    fillCombo(*m_sort, design::ViewDesign::CmbSort(), 0);
    showGrid();
}

void frmViewDesigner::showGrid() {
    QTableWidget& grid = *m_ui->Grid;
    const QSignalBlocker quiet(&grid);
    const auto rows = m_design.Grid();
    grid.setRowCount(static_cast<int>(rows.size()));
    for (int row = 0; row < grid.rowCount(); ++row) {
        setCell(grid, row, kFields, rows[static_cast<std::size_t>(row)].Fields);
        setCell(grid, row, kSort, rows[static_cast<std::size_t>(row)].Sort);
    }
    grid.setCurrentCell(m_design.currentRow(), std::max(grid.currentColumn(), static_cast<int>(kFields)));
}

// The list opens on what the cell holds.
void frmViewDesigner::clickGrid(int row, int column) {
    m_design.selectRow(row);
    if (column == kSort && !m_design.opensSort())
        return;
    ListInCell* list = column == kSort ? m_sort : m_fields;
    list->setCurrentIndex(column == kSort ? m_design.sortEntry() : m_design.fieldEntry());
    list->openAt(row, column);
}

bool frmViewDesigner::mayLeave() {
    switch (m_design.leave()) {
    case design::Leaving::Leave:
        return true;
    case design::Leaving::SaveFirst:
        return save();
    case design::Leaving::Stay:
        break;
    }
    return false;
}

// The list goes back to the view shown before a question stands above it.
void frmViewDesigner::chooseView(int position) {
    const int slot = m_design.slotAt(position); // saving may give the views other places in the list
    showDesign();
    if (slot != m_design.viewSlot() && mayLeave())
        m_design.showSlot(slot);
}

void frmViewDesigner::add() {
    m_design.CmdAdd();
    showGrid();
    clickGrid(m_design.currentRow(), kFields);
}

bool frmViewDesigner::save() {
    if (refusesForeignIn(m_services, *this))
        return false;
    const bool saved = m_design.cmdOK();
    if (!saved) {
        m_ui->TxtView->setFocus();
        m_ui->TxtView->selectAll();
    }
    return saved;
}

void frmViewDesigner::reject() {
    bool leaves = true;
    perform(tags::kViewCancel, [this, &leaves] { leaves = mayLeave(); });
    if (leaves)
        QDialog::reject();
}

} // namespace tallybook::desktop
