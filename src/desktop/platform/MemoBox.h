// A text box for texts of many lines.
#pragma once

#include <QPlainTextEdit>

namespace tallybook::desktop {

// Gives back the very text that it was given as long as nobody types: the box has its own idea of line ends.
class MemoBox {
public:
    explicit MemoBox(QPlainTextEdit& box) : m_box(box) {}

    void setText(const QString& text);
    // What was typed has its lines parted by line feeds.
    QString text() const;

private:
    QString lines() const;

    QPlainTextEdit& m_box;
    QString m_original;
    QString m_shown; // the original as the box has it
};

} // namespace tallybook::desktop
