// What the form designer may set of a row, and what setting it does.
#pragma once

#include "core/forms/FormBuilder.h"

#include <string>

namespace tallybook::forms {

enum class Side : std::uint8_t { Label, Value }; // "L" and "V"

// How a row's value is shown; the bits of ItemByte2. Others are carried.
inline constexpr std::uint8_t kLocked = 1;
inline constexpr std::uint8_t kAsCombo = 2;
inline constexpr std::uint8_t kAsLabel = 4;

// Of a static text, which has no value: its place in the row, the two low bits of ItemByte2.
enum class Alignment : std::uint8_t { Left = 0, Centre = 1, Right = 2 };
inline constexpr std::uint8_t kAlignmentBits = 3;

// Which settings can be used, by the names of their controls.
struct FormLimits {
    bool display = false; // DisplayAsCombo, DisplayAsLabel
    bool lock = false;    // FldLock
    bool alignment = false;
    bool font = false;
    bool colours = false; // cmdForecolor, cmdBackcolor
    bool help = false;    // Cmdpophlp

    bool operator==(const FormLimits&) const = default;
};

// The settings for a side of a row, which shows a field of this type or a static text. Two of them stay as they were
// for some types of value.
FormLimits SetFormLimits(const model::DatabaseModel& db, const model::FormItem& item, Side side,
                         const FormLimits& before);

// The type of the field that a row shows; NotUsed for a static text and for a field that is gone.
model::FieldType typeOf(const model::DatabaseModel& db, const model::FormItem& item);

// What the settings show of one side of a row.
struct ItemSettings {
    std::string text; // of a label
    int font = 0;     // 0 to 3
    model::Colour fore;
    model::Colour back{255, 255, 255};
    bool locked = false;
    bool asCombo = false;
    bool asLabel = false;
    Alignment alignment = Alignment::Left;

    bool operator==(const ItemSettings&) const = default;
};

inline constexpr std::string_view kNoLabel = "(none)"; // shown for a label without text

// The text that stands on the screen for a row's label.
std::string shownLabel(const model::FormItem& item);

// A row for a field, or for a static text, with everything else at its default.
model::FormItem newRow(const model::DatabaseModel& db, std::uint8_t field);

// The settings of a side, and those stored into it. Of the value's display byte, the bits that no setting has stay.
ItemSettings settingsOf(const model::FormItem& item, Side side);
void setValue(model::FormItem& item, Side side, const ItemSettings& settings);

// A font's number as a file may hold it, cut to the four that there are.
int shownFont(std::uint8_t font);

} // namespace tallybook::forms
