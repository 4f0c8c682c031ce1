// A line for a date, with a calendar to pick one from.
#pragma once

#include <QDate>
#include <QLineEdit>

class QCalendarWidget;
class QFrame;
class QToolButton;

namespace tallybook::desktop {

// What is typed stays a text: whether it names a day, and which, is decided when it is taken. Its button, F4 and
// Alt+Down ask for the calendar.
class DatePicker : public QLineEdit {
    Q_OBJECT

public:
    explicit DatePicker(QWidget* parent);

    // Opens the calendar below the line, or above it where there is no room.
    void openCalendar(QDate day);

signals:
    void calendarAsked();
    void dayPicked(QDate day); // with the mouse or Enter; the calendar is closed

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void makeCalendar();
    void placeCalendar();
    void pick(QDate day);

    QToolButton* m_button;
    QFrame* m_frame = nullptr; // made when it is first asked for
    QCalendarWidget* m_calendar = nullptr;
};

} // namespace tallybook::desktop
