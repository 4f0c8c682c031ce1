#include "desktop/platform/TypedText.h"

#include "core/platform/Ansi.h"
#include "core/platform/OwnTexts.h"
#include "desktop/platform/Text.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextDocument>

namespace tallybook::desktop {

namespace {

QString withLineEnds(QString text) {
    for (const QChar lineEnd : {QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)})
        text.replace(lineEnd, QLatin1Char('\n'));
    return text;
}

QString textOf(const QWidget& box) {
    if (const auto* line = qobject_cast<const QLineEdit*>(&box))
        return line->text();
    const auto* text = qobject_cast<const QPlainTextEdit*>(&box);
    return text != nullptr ? text->toPlainText() : QString();
}

} // namespace

QString typedText(const QLineEdit& line) {
    QString text = line.text();
    for (const QChar lineEnd : {QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator), QChar(u'\n')})
        text.replace(lineEnd, QLatin1Char(' '));
    return text;
}

void takeTyped(const QLineEdit& line, std::string& text) {
    if (!line.isModified())
        return;
    const bool lines = text.find('\n') != std::string::npos;
    text = fromQt(lines ? withLineEnds(line.text()) : typedText(line));
}

QString typedText(const QPlainTextEdit& box) {
    return withLineEnds(box.document()->toRawText());
}

std::string foreignIn(const QString& text) {
    QString composed = text.normalized(QString::NormalizationForm_C);
    composed.remove(QChar(QChar::LineSeparator)).remove(QChar(QChar::ParagraphSeparator));
    return platform::ansi::foreignCharacter(composed.toStdString());
}

bool refusesForeign(platform::Services& services, const QString& text) {
    const std::string foreign = foreignIn(text);
    if (foreign.empty())
        return false;
    services.ui.message({.text = platform::texts::foreignCharacter(foreign), .title = {}});
    return true;
}

bool refusesForeignIn(platform::Services& services, const QWidget& window) {
    for (QWidget* box : window.findChildren<QWidget*>())
        if (box->isVisible() && refusesForeign(services, textOf(*box))) {
            box->setFocus();
            return true;
        }
    return false;
}

} // namespace tallybook::desktop
