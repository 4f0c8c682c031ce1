#include "core/shell/ProgramSettings.h"

#include "core/calc/values/Numbers.h"

namespace tallybook::shell {

namespace {

constexpr std::string_view kSection = "Settings";

// Settings are written and read alike on every machine, whatever the user's region.
const platform::Regional& fixedRegion() {
    static const platform::Regional region;
    return region;
}

float measure(const platform::Settings& settings, std::string_view key, float preset) {
    return calc::toSingle(settings.get(kSection, key, ""), fixedRegion()).value_or(preset);
}

void setMeasure(platform::Settings& settings, std::string_view key, float value) {
    settings.set(kSection, key, calc::decimalText(value, fixedRegion()));
}

bool choice(const platform::Settings& settings, std::string_view key) {
    return calc::toBoolean(settings.get(kSection, key, "True"), fixedRegion()).value_or(true);
}

void setChoice(platform::Settings& settings, std::string_view key, bool on) {
    settings.set(kSection, key, on ? "True" : "False");
}

} // namespace

WindowPlacement loadPlacement(const platform::Settings& settings) {
    const WindowPlacement preset;
    return {measure(settings, "MainLeft", preset.left), measure(settings, "MainTop", preset.top),
            measure(settings, "MainWidth", preset.width), measure(settings, "MainHeight", preset.height)};
}

void savePlacement(const WindowPlacement& placement, WindowState state, platform::Settings& settings) {
    if (state != WindowState::Normal)
        return;
    setMeasure(settings, "MainLeft", placement.left);
    setMeasure(settings, "MainTop", placement.top);
    setMeasure(settings, "MainWidth", placement.width);
    setMeasure(settings, "MainHeight", placement.height);
}

document::DisplayChoices loadDisplayChoices(const platform::Settings& settings) {
    return {.notUsedFields = choice(settings, "ViewNotUsed"), .fieldTypes = choice(settings, "ViewFieldTypes")};
}

void saveDisplayChoices(const document::DisplayChoices& choices, platform::Settings& settings) {
    setChoice(settings, "ViewNotUsed", choices.notUsedFields);
    setChoice(settings, "ViewFieldTypes", choices.fieldTypes);
}

std::string loadUserId(const platform::Settings& settings) {
    return settings.get(kSection, "UserID", "");
}

std::string loadHandheldFolder(const platform::Settings& settings) {
    return settings.get("Handheld", "Folder", "");
}

void saveUserId(const std::string& user, platform::Settings& settings) {
    settings.set(kSection, "UserID", user);
}

} // namespace tallybook::shell
