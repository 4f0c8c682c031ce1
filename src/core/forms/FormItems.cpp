#include "core/forms/FormItems.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tallybook::forms {

namespace {

using model::FieldType;
using model::FormItem;

// On, off, or as it was before.
enum class Use : std::uint8_t { Off, On, Kept };

struct Rule {
    Use display, lock, alignment, font, colours, help;
};

constexpr Use kOff = Use::Off;
constexpr Use kOn = Use::On;
constexpr Use kKept = Use::Kept;

constexpr Rule kNothing = {kOff, kOff, kOff, kOff, kOff, kOff};
constexpr Rule kTextLabel = {kOff, kOff, kOn, kOn, kOn, kOn};
constexpr Rule kLabel = {kOff, kOff, kOff, kOn, kOn, kOn};
constexpr Rule kTyped = {kOff, kOn, kOff, kOn, kOff, kKept};
constexpr Rule kCalculated = {kOff, kOff, kOff, kOn, kOn, kKept};
constexpr Rule kForeign = {kOff, kOff, kOff, kOn, kOff, kKept};
constexpr Rule kPicture = {kOff, kOn, kOff, kOn, kOn, kKept};
constexpr Rule kChosen = {kOn, kOn, kOff, kOff, kKept, kOff};

// Of values, by type code.
constexpr std::array<Rule, model::kFieldTypes> kValues = {{
    kChosen,     // Not Used
    kTyped,      // Text
    kTyped,      // Integer
    kTyped,      // Long
    kTyped,      // Float
    kChosen,     // List
    kChosen,     // Checkbox
    kChosen,     // Date
    kChosen,     // Time
    kCalculated, // Expression
    kChosen,     // Memo
    kCalculated, // Key
    kTyped,      // DB Join
    kForeign,    // DB Lookup
    kForeign,    // One to Many
    kTyped,      // Address Book Join
    kForeign,    // Address Book Lookup
    kTyped,      // Radio Button
    kPicture,    // Image
    kCalculated, // Conditional Expression
    kTyped,      // Auto Incremental
    kForeign,    // Plugin
    kCalculated, // Adv Expression
}};

const Rule& ruleOf(FieldType type, const FormItem& item, Side side) {
    if (isStaticText(item))
        return side == Side::Label ? kTextLabel : kNothing;
    if (side == Side::Label)
        return type == FieldType::OneToMany || type == FieldType::Plugin ? kNothing : kLabel;
    return kValues[std::min<std::size_t>(static_cast<std::size_t>(type), kValues.size() - 1)];
}

bool decided(Use use, bool before) {
    return use == Use::Kept ? before : use == Use::On;
}

} // namespace

FieldType typeOf(const model::DatabaseModel& db, const FormItem& item) {
    const bool isSlot = item.Field < model::MaxFieldSlots;
    const FieldType type = isSlot ? db.Fields[item.Field].Type : FieldType::NotUsed;
    return static_cast<int>(type) < model::kFieldTypes ? type : FieldType::NotUsed;
}

FormLimits SetFormLimits(const model::DatabaseModel& db, const FormItem& item, Side side, const FormLimits& before) {
    if (isFree(item))
        return {};
    const Rule& rule = ruleOf(typeOf(db, item), item, side);
    return {.display = decided(rule.display, before.display),
            .lock = decided(rule.lock, before.lock),
            .alignment = decided(rule.alignment, before.alignment),
            .font = decided(rule.font, before.font),
            .colours = decided(rule.colours, before.colours),
            .help = decided(rule.help, before.help)};
}

std::string shownLabel(const FormItem& item) {
    return item.Caption.empty() ? std::string(kNoLabel) : item.Caption;
}

FormItem newRow(const model::DatabaseModel& db, std::uint8_t field) {
    FormItem item = freeRow();
    item.Field = field;
    if (field == kStaticText)
        item.Caption = "Label";
    else if (field < model::MaxFieldSlots)
        item.Caption = db.Fields[field].Name;
    return item;
}

int shownFont(std::uint8_t font) {
    return std::min<int>(font, kFonts - 1);
}

ItemSettings settingsOf(const FormItem& item, Side side) {
    if (side == Side::Label) {
        const int alignment = isStaticText(item) ? item.ItemByte2 & kAlignmentBits : 0;
        return {.text = item.Caption,
                .font = shownFont(item.ItemKind),
                .fore = item.LabelFore,
                .back = item.LabelBack,
                .alignment = static_cast<Alignment>(std::min(alignment, static_cast<int>(Alignment::Right)))};
    }
    return {.text = {},
            .font = shownFont(item.ItemByte1),
            .fore = item.DataFore,
            .back = item.DataBack,
            .locked = (item.ItemByte2 & kLocked) != 0,
            .asCombo = (item.ItemByte2 & kAsCombo) != 0,
            .asLabel = (item.ItemByte2 & kAsLabel) != 0};
}

void setValue(FormItem& item, Side side, const ItemSettings& settings) {
    if (settings == settingsOf(item, side))
        return; // a font that there is not stays, too
    const auto font = static_cast<std::uint8_t>(settings.font);
    if (side == Side::Label) {
        item.Caption = settings.text == kNoLabel ? std::string() : settings.text;
        if (settings.font != shownFont(item.ItemKind))
            item.ItemKind = font;
        item.LabelFore = settings.fore;
        item.LabelBack = settings.back;
        if (isStaticText(item))
            item.ItemByte2 = static_cast<std::uint8_t>((item.ItemByte2 & ~kAlignmentBits) |
                                                       static_cast<std::uint8_t>(settings.alignment));
        return;
    }
    if (settings.font != shownFont(item.ItemByte1))
        item.ItemByte1 = font;
    item.DataFore = settings.fore;
    item.DataBack = settings.back;
    constexpr int kBits = kLocked | kAsCombo | kAsLabel;
    const int display =
        (settings.locked ? kLocked : 0) | (settings.asCombo ? kAsCombo : 0) | (settings.asLabel ? kAsLabel : 0);
    item.ItemByte2 = static_cast<std::uint8_t>((item.ItemByte2 & ~kBits) | display);
}

} // namespace tallybook::forms
