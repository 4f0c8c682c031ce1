#include "desktop/platform/MemoBox.h"

#include <QTextDocument>

namespace tallybook::desktop {

void MemoBox::setText(const QString& text) {
    m_original = text;
    m_box.setPlainText(text);
    m_shown = lines();
}

QString MemoBox::text() const {
    const QString typed = lines();
    return typed == m_shown ? m_original : typed;
}

// Not the plain text, which has blanks for no-break spaces.
QString MemoBox::lines() const {
    QString text = m_box.document()->toRawText();
    text.replace(QChar(QChar::ParagraphSeparator), QLatin1Char('\n'));
    text.replace(QChar(QChar::LineSeparator), QLatin1Char('\n'));
    return text;
}

} // namespace tallybook::desktop
