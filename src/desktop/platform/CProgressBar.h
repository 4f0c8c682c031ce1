// The bar in the status line that shows how far a long operation has come.
#pragma once

#include <QElapsedTimer>
#include <QProgressBar>

namespace tallybook::desktop {

class CProgressBar : public QProgressBar {
    Q_OBJECT

public:
    explicit CProgressBar(QWidget* parent = nullptr);

    // A maximum of 0 hides the bar. Painting takes longer than a step of most operations, so it is done at most
    // some 25 times a second; the operation's events are not let in.
    void show(const QString& caption, int value, int maximum);

private:
    QElapsedTimer m_sincePaint;
};

} // namespace tallybook::desktop
