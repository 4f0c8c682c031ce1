// What may stand in a cell, by the field's type.
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/edit/TimeFormats.h"
#include "core/document/grid/Cells.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace tallybook::document {

namespace {

using model::FieldType;

constexpr std::string_view kNotATime = "Please specify the valid Time Input (e.g. 10:10:10 PM or 22:10:10).";

// What a validator works on: the text of Text1, which it may rewrite.
struct Typed {
    std::string& text;
    const model::FieldDef& field;
    platform::Services& services;
    Separators separators;

    std::string tested() const { return withoutGroups(text, separators); }
};

// The first doubled separator becomes a single one: a key held too long.
void undouble(std::string& text, char separator) {
    const auto place = text.find(std::string(2, separator));
    if (place != std::string::npos)
        text.erase(place, 1);
}

std::string validateWhole(const Typed& typed, std::string_view expected) {
    const std::string tested = typed.tested();
    if (tested.empty())
        return {};
    const auto value = calc::parseNumber(tested, typed.services.regional);
    if (!value || tested.find(typed.separators.decimal) != std::string::npos)
        return std::string(expected);
    const WholeRange& range = rangeOf(typed.field.Type);
    return range.holds(*value) ? std::string{} : std::string(range.message);
}

// Digits directly behind the decimal separator.
int decimalsOf(std::string_view text, char separator) {
    const auto place = text.find(separator);
    if (place == std::string_view::npos)
        return 0;
    const auto digits = text.substr(place + 1);
    const auto end = std::find_if_not(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    return static_cast<int>(end - digits.begin());
}

std::string validateFloat(const Typed& typed) {
    undouble(typed.text, typed.separators.group);
    if (typed.text.empty())
        return {};
    if (typed.text.front() == '.')
        typed.text.insert(0, 1, '0');
    const std::string tested = typed.tested();
    if (!calc::isNumeric(tested, typed.services.regional))
        return "Only Floating value allowed";
    if (decimalsOf(tested, typed.separators.decimal) > typed.field.Decimals)
        return "Only " + std::to_string(typed.field.Decimals) + " decimals are allowed";
    return {};
}

std::string validateTime(const Typed& typed) {
    if (readsBackAsTime(typed.text, typed.services))
        return {};
    return CheckTijd(typed.text, typed.services.regional) ? std::string{} : std::string(kNotATime);
}

std::string validate(const Typed& typed) {
    switch (typed.field.Type) {
    case FieldType::Integer:
        return validateWhole(typed, "Only Integer value allowed");
    case FieldType::Long:
        return validateWhole(typed, "Only Long value allowed");
    case FieldType::Float:
        return validateFloat(typed);
    case FieldType::Time:
        return validateTime(typed);
    default:
        return {};
    }
}

bool isTimeCharacter(char c) {
    return (c >= '0' && c <= '9') || c == '.' || c == ':';
}

// The missing parts of a short time: hour alone, or digits without a colon.
std::string completedTime(const std::string& text) {
    const bool colon = text.find(':') != std::string::npos;
    switch (text.size()) {
    case 1:
        return "0" + text + ":00";
    case 2:
        return text + ":00";
    case 3:
        return colon ? text : text.substr(0, 1) + ":" + text.substr(1);
    case 4:
    case 5: // of five digits the one in the middle is dropped
        return colon ? text : text.substr(0, 2) + ":" + text.substr(text.size() - 2);
    default:
        return text;
    }
}

} // namespace

std::string ValidateData(model::Document& doc, platform::Services& services) {
    std::string& text = doc.editor.text;
    if (text == "-")
        return {};
    const Typed typed{text, fieldOfColumn(doc, doc.editor.col), services, separatorsOf(services.regional)};
    undouble(text, typed.separators.decimal);
    return validate(typed);
}

std::string ValidateDate(model::Document& doc, platform::Services& services) {
    std::string& text = doc.editor.text;
    if (text.empty())
        return {};
    const auto day = calc::readDay(text, services.regional, services.clock.now().year);
    if (!day)
        return platform::texts::noDate(calc::shortDate({2003, 12, 31}, services.regional));
    text = calc::shortDate(*day, services.regional);
    return {};
}

bool CheckTijd(std::string& text, const platform::Regional& regional) {
    if (!std::all_of(text.begin(), text.end(), isTimeCharacter))
        return false;
    std::replace(text.begin(), text.end(), '.', ':');
    if (text.empty())
        return true;
    text = completedTime(text);
    return calc::isDate(text, regional, platform::LocalTime{}.year); // a time needs no year
}

bool readsBackAsTime(std::string_view text, platform::Services& services) {
    static constexpr std::array<std::string_view, 3> kFormats = {"hh:mm:ss", "h:mm:ss AM/PM", "hh:mm:ss AM/PM"};
    const auto serial = calc::readDate(text, services.regional, services.clock.now().year);
    if (!serial)
        return false;
    const std::string shown = calc::upper(text);
    return std::any_of(kFormats.begin(), kFormats.end(), [&](std::string_view format) {
        return shown == calc::formatDate(*serial, format, services.regional);
    });
}

void FormatFloatEdit(model::Document& doc, platform::Services& services) {
    const model::FieldDef& field = fieldOfColumn(doc, doc.editor.col);
    if (field.Type == FieldType::Float && field.Decimals <= 3)
        doc.editor.text = calc::formatDecimals(doc.editor.text, field.Decimals, services.regional);
}

} // namespace tallybook::document
