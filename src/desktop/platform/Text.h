// The one place where the core's texts, one Windows-1252 byte a character, become Qt's and come back.
#pragma once

#include <QString>

#include <filesystem>
#include <string>
#include <string_view>

namespace tallybook::desktop {

// Every byte has its character; none is lost.
QString toQt(std::string_view bytes);

// Composed first (NFC), then each character to its byte, its best fit, or "?".
std::string fromQt(const QString& text);

// A tool tip that shows the very text, and does not take it for HTML.
QString plainTip(const QString& text);

// Paths stay what the system calls them.
QString pathToQt(const std::filesystem::path& path);
std::filesystem::path pathFromQt(const QString& path);

} // namespace tallybook::desktop
