#include "desktop/document/DatePicker.h"

#include <QCalendarWidget>
#include <QFrame>
#include <QKeyEvent>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tallybook::desktop {

namespace {

constexpr int kButtonWidth = 18; // pixels

bool asksForCalendar(const QKeyEvent& event) {
    const Qt::KeyboardModifiers keys = event.modifiers() & ~Qt::KeypadModifier;
    return (event.key() == Qt::Key_F4 && keys == Qt::NoModifier) ||
           (event.key() == Qt::Key_Down && keys == Qt::AltModifier);
}

} // namespace

DatePicker::DatePicker(QWidget* parent) : QLineEdit(parent), m_button(new QToolButton(this)) {
    setFrame(false);
    setTextMargins(1, 0, kButtonWidth, 0);
    m_button->setObjectName(QStringLiteral("CmdCalendar"));
    m_button->setArrowType(Qt::DownArrow);
    m_button->setAccessibleName(tr("Calendar"));
    m_button->setToolTip(tr("Calendar (F4)"));
    m_button->setFocusPolicy(Qt::NoFocus);
    m_button->setCursor(Qt::ArrowCursor);
    connect(m_button, &QToolButton::clicked, this, &DatePicker::calendarAsked);
}

void DatePicker::makeCalendar() {
    m_frame = new QFrame(this, Qt::Popup);
    m_frame->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Raised));
    m_calendar = new QCalendarWidget(m_frame);
    m_calendar->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 31));
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_calendar->setDateEditEnabled(false); // digits belong into the line
    auto* layout = new QVBoxLayout(m_frame);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(m_calendar);
    connect(m_calendar, &QCalendarWidget::clicked, this, &DatePicker::pick);
    connect(m_calendar, &QCalendarWidget::activated, this, &DatePicker::pick);
}

void DatePicker::openCalendar(QDate day) {
    if (m_frame == nullptr)
        makeCalendar();
    m_calendar->setSelectedDate(day);
    m_frame->adjustSize();
    placeCalendar();
    m_frame->show();
    m_calendar->setFocus();
}

void DatePicker::placeCalendar() {
    const QRect room = screen()->availableGeometry();
    const QRect line(mapToGlobal(QPoint()), size());
    const QSize size = m_frame->size();
    const bool below = line.bottom() + size.height() < room.bottom();
    const int top = below ? line.bottom() + 1 : line.top() - size.height();
    m_frame->move(std::clamp(line.left(), room.left(), std::max(room.left(), room.right() - size.width())),
                  std::max(room.top(), top));
}

// A click that activates comes twice.
void DatePicker::pick(QDate day) {
    if (!m_frame->isVisible())
        return;
    m_frame->close();
    emit dayPicked(day);
}

void DatePicker::keyPressEvent(QKeyEvent* event) {
    if (asksForCalendar(*event))
        emit calendarAsked();
    else
        QLineEdit::keyPressEvent(event);
}

void DatePicker::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    m_button->setGeometry(width() - kButtonWidth, 0, kButtonWidth, height());
}

void DatePicker::hideEvent(QHideEvent* event) {
    if (m_frame != nullptr)
        m_frame->close();
    QLineEdit::hideEvent(event);
}

} // namespace tallybook::desktop
