#include "desktop/platform/TypedText.h"

#include "core/platform/Ansi.h"
#include "core/platform/OwnTexts.h"

#include <QLineEdit>
#include <QPlainTextEdit>

namespace tallybook::desktop {

namespace {

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
