#include "desktop/dialogs/frmExtView.h"

#include "desktop/dialogs/ExtViewModel.h"
#include "desktop/platform/Text.h"
#include "desktop/platform/Twips.h"
#include "desktop/platform/TypedText.h"
#include "ui_frmExtView.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace tallybook::desktop {

namespace {

constexpr int kRowSpace = 6; // pixels

// Keys of the find box that move in the list.
bool movesInList(const QKeyEvent& event) {
    static constexpr std::array kKeys = {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown};
    return std::find(kKeys.begin(), kKeys.end(), event.key()) != kKeys.end();
}

// Keys of the list that are typed into the find box.
bool isTyped(const QKeyEvent& event) {
    const bool command = (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    const bool text = !event.text().isEmpty() && event.text().at(0).isPrint();
    return !command && (text || event.key() == Qt::Key_Backspace);
}

} // namespace

frmExtView::frmExtView(const document::ExtView& view, const Contents& contents, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmExtView>()), m_view(view),
      m_model(new ExtViewModel(view, fontMetrics().height() + kRowSpace, this)) {
    m_ui->setupUi(this);
    m_ui->lblField->setTextFormat(Qt::PlainText);
    m_ui->lblField->setText(contents.fieldName + QLatin1Char(':'));
    m_ui->lstRecords->setModel(m_model);
    makeColumns();
    m_ui->txtFind->setText(contents.find);
    find();
    if (const int row = contents.record ? m_model->rowOf(*contents.record) : -1; row >= 0)
        select(row);
    m_ui->txtFind->installEventFilter(this);
    m_ui->lstRecords->installEventFilter(this);
    connect(m_ui->txtFind, &QLineEdit::textChanged, this, &frmExtView::find);
    connect(m_ui->lstRecords->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmExtView::showSelected);
    connect(m_ui->lstRecords, &QTreeView::doubleClicked, this, &QDialog::accept);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ui->cmdNone, &QPushButton::clicked, this, [this] {
        m_wantsNone = true;
        accept();
    });
    m_ui->cmdNone->setEnabled(contents.mayBeEmptied);
    showSelected();
    m_ui->txtFind->setFocus();
}

frmExtView::~frmExtView() = default;

std::optional<std::uint32_t> frmExtView::SelectedExtRow() const {
    const QModelIndexList rows = m_ui->lstRecords->selectionModel()->selectedRows();
    return rows.isEmpty() ? std::nullopt : std::optional(m_model->record(rows.first().row()));
}

// A dialog selects the text of its first box; this one is in the middle of being typed.
void frmExtView::setVisible(bool visible) {
    QDialog::setVisible(visible);
    m_ui->txtFind->end(false);
}

void frmExtView::makeColumns() {
    QHeaderView& header = *m_ui->lstRecords->header();
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const int twips = m_view.columns()[static_cast<std::size_t>(column)].width;
        header.resizeSection(column, std::max(header.minimumSectionSize(), pixelsOf(twips, logicalDpiX())));
    }
}

// The selected record stays selected while it is listed; otherwise the first that is found takes its place.
void frmExtView::find() {
    const auto selected = SelectedExtRow();
    const QString text = typedText(*m_ui->txtFind);
    m_model->showRecords(m_view.rowsWith(fromQt(text)));
    const int row = selected ? m_model->rowOf(*selected) : -1;
    select(row < 0 && !text.isEmpty() ? 0 : row);
    m_ui->lblCount->setText(countText());
    showSelected();
}

// -1, or a row that there is not, selects nothing.
void frmExtView::select(int row) {
    m_ui->lstRecords->setCurrentIndex(m_model->index(row, 0));
}

void frmExtView::showSelected() {
    m_ui->cmdOK->setEnabled(SelectedExtRow().has_value());
}

QString frmExtView::countText() const {
    const auto all = static_cast<int>(m_view.rows());
    const int listed = m_model->rowCount();
    if (listed != all)
        return tr("%1 of %2 records").arg(locale().toString(listed), locale().toString(all));
    return all == 1 ? tr("1 record") : tr("%1 records").arg(locale().toString(all));
}

// One hand does for both: what is typed goes to the text, what moves goes to the list.
bool frmExtView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (watched == m_ui->txtFind && movesInList(key))
            return QCoreApplication::sendEvent(m_ui->lstRecords, event);
        if (watched == m_ui->lstRecords && isTyped(key)) {
            m_ui->txtFind->setFocus();
            return QCoreApplication::sendEvent(m_ui->txtFind, event);
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tallybook::desktop
