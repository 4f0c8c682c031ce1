// The check of a default against the field's type.
#include "core/calc/values/Numbers.h"
#include "core/design/Dialog.h"
#include "core/design/FieldProperties.h"

namespace tallybook::design {

namespace {

using model::FieldType;

bool warn(platform::Services& services, std::string_view text) {
    say(services, text, "Warning", platform::Icon::Warning);
    return false;
}

struct WholeTexts {
    std::string_view notWhole;
    double lowest;
    double highest;
    std::string_view outOfRange;
};

constexpr WholeTexts kInteger = {"Integer value expected", -32768, 32767, "Value cannot exceed 32767 or -32768"};
constexpr WholeTexts kLong = {"Long value expected", -2147483648.0, 2147483647.0,
                              "Value cannot exceed 2147483647 or -2147483648!"};

bool checkWhole(std::string_view text, const WholeTexts& texts, platform::Services& services) {
    const auto number = calc::parseNumber(text, services.regional);
    if (!number || text.find('.') != std::string_view::npos ||
        text.find(services.regional.decimal) != std::string_view::npos)
        return warn(services, texts.notWhole);
    if (*number < texts.lowest || *number > texts.highest)
        return warn(services, texts.outOfRange);
    return true;
}

std::size_t digitsBehindPoint(std::string_view text, char point) {
    const std::size_t place = text.find(point);
    if (place == std::string_view::npos)
        return 0;
    const std::size_t end = text.find_first_not_of("0123456789", place + 1);
    return (end == std::string_view::npos ? text.size() : end) - place - 1;
}

bool checkFloat(const FieldPropDraft& draft, platform::Services& services) {
    if (!calc::isNumeric(draft.txtDefault, services.regional))
        return warn(services, "Floating value expected");
    if (draft.cmbDecDigs >= 0 &&
        digitsBehindPoint(draft.txtDefault, services.regional.decimal) > static_cast<std::size_t>(draft.cmbDecDigs))
        return warn(services, "Decimal Digits exceed!");
    return true;
}

} // namespace

bool checkDefault(const FieldPropDraft& draft, platform::Services& services) {
    if (draft.txtDefault.empty() || draft.txtDefault == "-")
        return true;
    switch (draft.type()) {
    case FieldType::Integer:
        return checkWhole(draft.txtDefault, kInteger, services);
    case FieldType::Long:
        return checkWhole(draft.txtDefault, kLong, services);
    case FieldType::Float:
        return checkFloat(draft, services);
    default:
        return true;
    }
}

} // namespace tallybook::design
