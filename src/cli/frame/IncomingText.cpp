#include "cli/frame/IncomingText.h"

#include "cli/frame/Texts.h"
#include "core/calc/values/Ansi.h"

#include <algorithm>

namespace tallybook::cli {

namespace ansi = calc::ansi;

std::string faultOfText(std::string_view utf8) {
    if (const auto foreign = ansi::firstForeign(utf8))
        return cannotBeStored(foreign->position + 1, foreign->name);
    const std::size_t nul = utf8.find('\0');
    return nul == std::string_view::npos ? std::string()
                                         : cannotBeStored(ansi::fromUtf8(utf8.substr(0, nul)).size() + 1, "U+0000");
}

std::optional<std::string> storedText(std::string_view utf8) {
    return faultOfText(utf8).empty() ? std::optional(checkedText(utf8)) : std::nullopt;
}

std::string checkedText(std::string_view utf8) {
    return ansi::fromUtf8(utf8);
}

NearestText nearestText(std::string_view utf8) {
    const ansi::Replacements found = ansi::replacements(utf8);
    std::string bytes = ansi::fromUtf8(utf8);
    const auto nuls = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\0'));
    std::replace(bytes.begin(), bytes.end(), '\0', '?');
    return {ansi::toUtf8(bytes), found.bestFits + found.questionMarks + nuls, found.questionMarks + nuls};
}

} // namespace tallybook::cli
