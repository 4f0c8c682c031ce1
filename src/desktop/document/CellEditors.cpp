#include "desktop/document/CellEditors.h"

#include "core/model/Limits.h"
#include "desktop/document/CellCombo.h"
#include "desktop/document/DatePicker.h"
#include "desktop/grid/GridView.h"
#include "desktop/platform/Text.h"
#include "desktop/platform/TypedText.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tallybook::desktop {

namespace {

using document::EditKey;
using model::EditorKind;

constexpr int kFrame = 2;           // of the current cell, round its editor
constexpr int kArrowWidth = 18;     // of UpDown1, pixels
constexpr int kLeastTextWidth = 60; // of an editor over a narrow column
constexpr int kLeastListWidth = 120;

const QDate kDayZero(1899, 12, 30);

} // namespace

CellEditors::CellEditors(GridView& grid) : QObject(&grid), m_grid(grid) {
    makeText();
    makeSpin();
    makeCombos();
    makeDate();
    for (QWidget* widget :
         {static_cast<QWidget*>(m_text), static_cast<QWidget*>(m_spin), m_upDown, static_cast<QWidget*>(m_combo),
          static_cast<QWidget*>(m_combo2), static_cast<QWidget*>(m_date)}) {
        widget->hide();
        widget->installEventFilter(this);
    }
}

void CellEditors::makeText() {
    m_text = new QLineEdit(m_grid.viewport());
    m_text->setObjectName(QStringLiteral("Text1"));
    m_text->setAccessibleName(tr("Cell"));
    m_text->setFrame(false);
    m_text->setTextMargins(1, 0, 0, 0);
    m_text->setMaxLength(model::kTextLength);
    connect(m_text, &QLineEdit::textEdited, this, &CellEditors::textTyped);
}

void CellEditors::makeSpin() {
    m_spin = new QLineEdit(m_grid.viewport());
    m_spin->setObjectName(QStringLiteral("MebSpin"));
    m_spin->setAccessibleName(tr("Number"));
    m_spin->setFrame(false);
    m_spin->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_upDown = new QWidget(m_grid.viewport());
    m_upDown->setObjectName(QStringLiteral("UpDown1"));
    m_upDown->setAccessibleName(tr("One more or less"));
    m_upDown->setBackgroundRole(QPalette::Base);
    m_upDown->setAutoFillBackground(true);
    auto* layout = new QVBoxLayout(m_upDown);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const int step : {1, -1}) {
        auto* arrow = new QToolButton(m_upDown);
        arrow->setArrowType(step > 0 ? Qt::UpArrow : Qt::DownArrow);
        arrow->setAccessibleName(step > 0 ? tr("One more") : tr("One less"));
        arrow->setFocusPolicy(Qt::NoFocus);
        arrow->setFocusProxy(m_spin); // a click must not hand the focus on to the grid
        arrow->setAutoRepeat(true);
        arrow->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
        connect(arrow, &QToolButton::clicked, this, [this, step] { emit spinAsked(step); });
        layout->addWidget(arrow);
    }
}

void CellEditors::makeCombos() {
    m_combo = new CellCombo(m_grid.viewport());
    m_combo->setObjectName(QStringLiteral("cmb1"));
    m_combo->setAccessibleName(tr("Item"));
    m_list = m_combo->view();
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);
    connect(m_combo, &QComboBox::activated, this, [this](int entry) {
        if (!m_lastWasKey)
            emit entryChosen(entry);
    });
    m_combo2 = new CellCombo(m_grid.viewport()); // the window carries it; nothing fills it
    m_combo2->setObjectName(QStringLiteral("cmb2"));
}

void CellEditors::makeDate() {
    m_date = new DatePicker(m_grid.viewport());
    m_date->setObjectName(QStringLiteral("DTPickerMS2"));
    m_date->setAccessibleName(tr("Date"));
    m_date->setMaxLength(model::kTextLength);
    connect(m_date, &DatePicker::calendarAsked, this, &CellEditors::calendarAsked);
    connect(m_date, &DatePicker::dayPicked, this,
            [this](QDate day) { emit dayPicked(static_cast<int>(kDayZero.daysTo(day))); });
}

void CellEditors::openCalendar(int day) {
    if (m_kind == EditorKind::DTPickerMS2)
        m_date->openCalendar(kDayZero.addDays(day));
}

QWidget* CellEditors::widgetOf(EditorKind kind) const {
    switch (kind) {
    case EditorKind::Text1:
        return m_text;
    case EditorKind::MebSpin:
        return m_spin;
    case EditorKind::cmb1:
        return m_combo;
    case EditorKind::DTPickerMS2:
        return m_date;
    case EditorKind::None:
        break;
    }
    return nullptr;
}

QLineEdit* CellEditors::openText() const {
    return m_kind == EditorKind::Text1 ? m_text : nullptr;
}

void CellEditors::show(const model::EditorState& state) {
    if (!state.open()) {
        hide();
        return;
    }
    const bool fresh = state.kind != m_kind || state.row != m_row || state.col != m_col;
    if (fresh)
        open(state);
    else
        update(state);
    place(state);
    if (fresh && m_kind == EditorKind::cmb1)
        m_combo->showPopup();
}

void CellEditors::open(const model::EditorState& state) {
    hide();
    m_kind = state.kind;
    m_row = state.row;
    m_col = state.col;
    m_lastWasKey = false;
    if (m_kind == EditorKind::cmb1) {
        m_combo->clear();
        for (const std::string& entry : state.entries)
            m_combo->addItem(toQt(entry));
    }
    m_text->setAlignment((state.rightAligned ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    update(state);
    place(state);
    QWidget* widget = widgetOf(m_kind);
    widget->show();
    m_upDown->setVisible(m_kind == EditorKind::MebSpin);
    widget->setFocus();
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        line->end(false);
        if (state.allSelected)
            line->selectAll();
    }
}

void CellEditors::update(const model::EditorState& state) {
    if (m_kind == EditorKind::cmb1)
        m_combo->setCurrentIndex(state.entry);
    else if (auto* line = qobject_cast<QLineEdit*>(widgetOf(m_kind)); line->text() != toQt(state.text)) {
        line->setText(toQt(state.text));
        if (state.allSelected)
            line->selectAll();
    }
}

void CellEditors::place(const model::EditorState& state) {
    QRect cell = m_grid.cellRect(state.row, state.col);
    const bool number = m_kind == EditorKind::MebSpin;
    const int least = m_kind == EditorKind::Text1 ? kLeastTextWidth
                      : number                    ? kLeastTextWidth + kArrowWidth
                                                  : kLeastListWidth;
    cell.setWidth(std::max(cell.width(), least));
    if (cell.right() >= m_grid.viewport()->width())
        cell.moveLeft(std::max(0, m_grid.viewport()->width() - cell.width()));
    m_grid.setEditorFrame(cell);
    cell.adjust(kFrame - 1, kFrame - 1, -kFrame, -kFrame);
    if (number) {
        m_upDown->setGeometry(cell.right() - kArrowWidth + 1, cell.top(), kArrowWidth, cell.height());
        cell.setWidth(cell.width() - kArrowWidth);
    }
    widgetOf(m_kind)->setGeometry(cell);
}

void CellEditors::hide() {
    if (m_kind == EditorKind::None)
        return;
    QWidget* widget = widgetOf(m_kind);
    m_kind = EditorKind::None;
    if (widget == m_combo)
        m_combo->hidePopup();
    // Before it hides, or the focus would wander along the window's tab order.
    if (widget->isAncestorOf(m_grid.window()->focusWidget()))
        m_grid.setFocus();
    widget->hide();
    m_upDown->hide();
    m_grid.setEditorFrame({});
}

void CellEditors::read(model::EditorState& state) const {
    if (state.kind != m_kind)
        return;
    if (m_kind == EditorKind::cmb1)
        state.entry = m_combo->currentIndex();
    else if (m_kind == EditorKind::DTPickerMS2)
        state.text = fromQt(typedText(*m_date));
    else if (const auto* line = qobject_cast<QLineEdit*>(widgetOf(m_kind)))
        state.text = fromQt(line->text());
}

void CellEditors::insert(const QString& text) {
    if (auto* line = qobject_cast<QLineEdit*>(widgetOf(m_kind)); line != nullptr && !text.isEmpty()) {
        line->insert(text);
        if (line == m_text)
            emit textTyped();
    }
}

std::optional<EditKey> CellEditors::keyOf(const QObject* watched, const QKeyEvent& event) const {
    const Qt::KeyboardModifiers command = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if ((event.modifiers() & command) != 0)
        return std::nullopt;
    const bool moves = watched == m_text || watched == m_spin || watched == m_date; // Up and Down leave, or count
    switch (event.key()) {
    case Qt::Key_Escape:
        return EditKey::Escape;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return EditKey::Enter;
    case Qt::Key_Backtab:
        return EditKey::BackTab;
    case Qt::Key_Tab:
        return event.modifiers().testFlag(Qt::ShiftModifier) ? EditKey::BackTab : EditKey::Tab;
    case Qt::Key_F2:
        return watched == m_text ? std::optional(EditKey::F2) : std::nullopt;
    case Qt::Key_Up:
        return moves || watched == m_combo ? std::optional(EditKey::Up) : std::nullopt;
    case Qt::Key_Down:
        return moves ? std::optional(EditKey::Down) : std::nullopt;
    default:
        return std::nullopt;
    }
}

bool clipboardHasText() {
    const QMimeData* contents = QGuiApplication::clipboard()->mimeData();
    return contents != nullptr && !contents->text().isEmpty();
}

bool CellEditors::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list || watched->parent() == m_list)
        return filterPopup(event);
    if (event->type() == QEvent::ContextMenu && watched == m_date) {
        emit clearDateAsked();
        return true;
    }
    if (event->type() == QEvent::Wheel) {
        // It is for the grid below, and does not change a value by the way.
        QCoreApplication::sendEvent(m_grid.viewport(), event);
        return true;
    }
    // Deletes to the end of the word, and not the record.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::DeleteEndOfWord)) {
        event->accept();
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    // A line of text would give up its selection for the nothing that it gets.
    if (static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste) && !clipboardHasText())
        return true;
    m_lastWasKey = watched == m_combo;
    const auto key = keyOf(watched, *static_cast<QKeyEvent*>(event));
    if (key)
        emit keyPressed(*key);
    return key.has_value();
}

// In the open list the arrows belong to the list; Tab and Escape are the cell's.
bool CellEditors::filterPopup(QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease)
        m_lastWasKey = false;
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* press = static_cast<QKeyEvent*>(event);
    m_lastWasKey = false;
    if (press->key() != Qt::Key_Escape && press->key() != Qt::Key_Tab && press->key() != Qt::Key_Backtab)
        return false;
    if (press->key() != Qt::Key_Escape)
        m_combo->setCurrentIndex(m_combo->view()->currentIndex().row());
    m_combo->hidePopup();
    emit keyPressed(*keyOf(m_combo, *press));
    return true;
}

} // namespace tallybook::desktop
