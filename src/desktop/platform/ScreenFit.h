// Windows that are larger than a small screen.
#pragma once

#include <QObject>
#include <QSize>

class QDialog;

namespace tallybook::desktop {

// Sees to it that no dialog of the program opens larger than its screen. What cannot be made that small is put into a
// scroll area. One object serves the whole program, as long as it lives.
class ScreenFit : public QObject {
    Q_OBJECT

public:
    // `room` stands for what the screen has left for a window, in pixels; by default the screen is asked.
    explicit ScreenFit(QObject* parent, QSize room = {});

    // What the screen of a window leaves for it, without the frame that the desktop draws round it.
    static QSize roomOn(const QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit(QDialog& dialog) const;

    QSize m_room;
};

} // namespace tallybook::desktop
