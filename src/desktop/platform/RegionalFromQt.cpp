#include "desktop/platform/RegionalFromQt.h"

#include "core/platform/Ansi.h"
#include "desktop/platform/Text.h"

#include <QLocale>
#include <QString>
#include <QStringList>

namespace tallybook::desktop {

namespace {

using platform::DateOrder;
using platform::Regional;

// A pattern without its quoted words.
QString withoutQuoted(const QString& pattern) {
    QString plain;
    bool quoted = false;
    for (const QChar c : pattern) {
        if (c == QLatin1Char('\''))
            quoted = !quoted;
        else if (!quoted)
            plain += c;
    }
    return plain;
}

bool isDateLetter(QChar c) {
    return c == QLatin1Char('d') || c == QLatin1Char('M') || c == QLatin1Char('y');
}

// The runs of pattern letters, in order: "dd", "MM", "yyyy".
QStringList dateParts(const QString& pattern) {
    QStringList parts;
    QChar before;
    for (const QChar c : pattern) {
        if (isDateLetter(c) && c == before)
            parts.last() += c;
        else if (isDateLetter(c))
            parts += QString(c);
        before = c;
    }
    return parts;
}

bool inDigits(const QStringList& parts) {
    QString letters;
    for (const QString& part : parts) {
        if (part.at(0) != QLatin1Char('y') && part.size() > 2)
            return false;
        letters += part.at(0);
    }
    return letters.size() == 3 && letters.contains(QLatin1Char('d')) && letters.contains(QLatin1Char('M')) &&
           letters.contains(QLatin1Char('y'));
}

// The first character between two parts that may part a date.
char separatorOf(const QString& pattern) {
    bool begun = false;
    for (const QChar c : pattern) {
        begun = begun || isDateLetter(c);
        if (begun && QStringLiteral("/-. ").contains(c))
            return c.toLatin1();
    }
    return 0;
}

void takeDate(const QString& pattern, Regional& regional) {
    const QString plain = withoutQuoted(pattern);
    const QStringList parts = dateParts(plain);
    const char separator = separatorOf(plain);
    if (!inDigits(parts) || separator == 0)
        return; // the default stays
    QStringList rebuilt;
    for (const QString& part : parts)
        rebuilt += part.at(0) == QLatin1Char('y') ? QStringLiteral("yyyy") : part;
    regional.shortDate = rebuilt.join(QLatin1Char(separator)).toStdString();
    regional.dateSeparator = separator;
    const char first = parts.first().at(0).toLatin1();
    regional.dateOrder = first == 'd' ? DateOrder::DMY : first == 'M' ? DateOrder::MDY : DateOrder::YMD;
}

void takeTime(const QString& pattern, Regional& regional) {
    const QString plain = withoutQuoted(pattern);
    regional.twelveHours = plain.contains(QLatin1Char('a'), Qt::CaseInsensitive);
    if (regional.twelveHours)
        regional.longTime = "h:mm:ss tt";
    else
        regional.longTime =
            plain.contains(QStringLiteral("HH")) || plain.contains(QStringLiteral("hh")) ? "HH:mm:ss" : "H:mm:ss";
}

// The text in the code page, or nothing when a character has no byte of its own.
bool toAnsi(QString text, std::string& bytes) {
    text.replace(QChar(0xA0), QLatin1Char(' '));
    text.replace(QChar(0x202F), QLatin1Char(' '));
    for (const uint c : text.toUcs4())
        if (!platform::ansi::isExact(c))
            return false;
    bytes = fromQt(text);
    return true;
}

// An empty text is no name; the English one stays.
void takeName(const QString& text, std::string& name) {
    std::string bytes;
    if (!text.isEmpty() && toAnsi(text, bytes))
        name = bytes;
}

} // namespace

Regional regionalFrom(const QLocale& locale) {
    Regional regional;
    takeDate(locale.dateFormat(QLocale::ShortFormat), regional);
    takeTime(locale.timeFormat(QLocale::LongFormat), regional);
    regional.decimal = locale.decimalPoint() == QStringLiteral(",") ? ',' : '.';
    regional.group = regional.decimal == ',' ? '.' : ',';
    if (!toAnsi(locale.currencySymbol(), regional.currency))
        regional.currency.clear();
    takeName(locale.amText(), regional.am);
    takeName(locale.pmText(), regional.pm);
    for (std::size_t month = 0; month < 12; ++month) {
        takeName(locale.monthName(static_cast<int>(month) + 1, QLocale::LongFormat), regional.monthNames[month]);
        takeName(locale.monthName(static_cast<int>(month) + 1, QLocale::ShortFormat), regional.monthAbbrevs[month]);
    }
    return regional;
}

} // namespace tallybook::desktop
