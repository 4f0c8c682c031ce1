#include "desktop/platform/Text.h"

#include "core/platform/Ansi.h"

#include <QFile>
#include <QTextDocument>

namespace tallybook::desktop {

QString toQt(std::string_view bytes) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    QChar* out = text.data();
    for (const char byte : bytes)
        *out++ = QChar(static_cast<char16_t>(platform::ansi::toUnicode(static_cast<std::uint8_t>(byte))));
    return text;
}

std::string fromQt(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const uint codePoint : text.normalized(QString::NormalizationForm_C).toUcs4())
        bytes += static_cast<char>(platform::ansi::fromUnicode(codePoint));
    return bytes;
}

QString plainTip(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QString pathToQt(const std::filesystem::path& path) {
    return QFile::decodeName(path.c_str());
}

std::filesystem::path pathFromQt(const QString& path) {
    return {QFile::encodeName(path).toStdString()};
}

} // namespace tallybook::desktop
