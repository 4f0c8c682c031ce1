#include "core/design/Dialog.h"

#include "core/platform/OwnTexts.h"

namespace tallybook::design {

void say(platform::Services& services, std::string_view text, std::string_view title, platform::Icon icon) {
    services.ui.message({.text = std::string(text), .icon = icon, .title = std::string(title)});
}

bool asks(platform::Services& services, std::string_view text, std::string_view title, platform::Icon icon) {
    return services.ui.message({.text = std::string(text),
                                .icon = icon,
                                .buttons = platform::Buttons::YesNo,
                                .title = std::string(title)}) == platform::Answer::Yes;
}

bool asksToDestroy(platform::Services& services, std::string_view text, std::string_view title, platform::Icon icon) {
    return services.ui.message({.text = std::string(text),
                                .icon = icon,
                                .buttons = platform::Buttons::YesNo,
                                .title = std::string(title),
                                .preferred = platform::Answer::No}) == platform::Answer::Yes;
}

Leaving asksToKeep(platform::Services& services, std::string_view text) {
    switch (services.ui.message(
        {.text = std::string(text), .icon = platform::Icon::Question, .buttons = platform::Buttons::YesNoCancel})) {
    case platform::Answer::Yes:
        return Leaving::SaveFirst;
    case platform::Answer::No:
        return Leaving::Leave;
    default:
        return Leaving::Stay;
    }
}

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

bool refusesText(platform::Services& services, std::string_view what, std::string_view text, std::size_t most) {
    if (text.find('\0') != std::string_view::npos) {
        say(services, platform::texts::holdsNul(what));
        return true;
    }
    if (text.size() <= most)
        return false;
    say(services, platform::texts::tooManyCharacters(what, most));
    return true;
}

} // namespace tallybook::design
