#include "core/forms/FormItems.h"

#include <gtest/gtest.h>

namespace tallybook::forms {
namespace {

using model::DatabaseModel;
using model::FieldType;
using model::FormItem;

// A letter for each of display, lock, alignment, font, colours, help: + on, - off, = as it was.
struct Limits {
    int type;
    const char* label;
    const char* value;
};

constexpr int kStatic = -1;
const Limits kLimits[] = {
    {0, "---+++", "++--=-"},  // Not Used
    {1, "---+++", "-+-+-="},  // Text
    {2, "---+++", "-+-+-="},  // Integer
    {3, "---+++", "-+-+-="},  // Long
    {4, "---+++", "-+-+-="},  // Float
    {5, "---+++", "++--=-"},  // List
    {6, "---+++", "++--=-"},  // Checkbox
    {7, "---+++", "++--=-"},  // Date
    {8, "---+++", "++--=-"},  // Time
    {9, "---+++", "---++="},  // Expression
    {10, "---+++", "++--=-"}, // Memo
    {11, "---+++", "---++="}, // Key
    {12, "---+++", "-+-+-="}, // DB Join
    {13, "---+++", "---+-="}, // DB Lookup
    {14, "------", "---+-="}, // One to Many
    {15, "---+++", "-+-+-="}, // Address Book Join
    {16, "---+++", "---+-="}, // Address Book Lookup
    {17, "---+++", "-+-+-="}, // Radio Button
    {18, "---+++", "-+-++="}, // Image
    {19, "---+++", "---++="}, // Conditional Expression
    {20, "---+++", "-+-+-="}, // Auto Incremental
    {21, "------", "---+-="}, // Plugin
    {22, "---+++", "---++="}, // Adv Expression
    {kStatic, "--++++", "------"},
};

std::string lettersOf(const DatabaseModel& db, const FormItem& item, Side side) {
    const FormLimits on{true, true, true, true, true, true};
    const FormLimits afterOn = SetFormLimits(db, item, side, on);
    const FormLimits afterOff = SetFormLimits(db, item, side, {});
    const auto letter = [](bool fromOn, bool fromOff) { return fromOn == fromOff ? (fromOn ? '+' : '-') : '='; };
    return {letter(afterOn.display, afterOff.display),     letter(afterOn.lock, afterOff.lock),
            letter(afterOn.alignment, afterOff.alignment), letter(afterOn.font, afterOff.font),
            letter(afterOn.colours, afterOff.colours),     letter(afterOn.help, afterOff.help)};
}

TEST(SetFormLimits, allTypes) {
    for (const Limits& expected : kLimits) {
        DatabaseModel db;
        FormItem item = freeRow();
        item.Field = expected.type == kStatic ? kStaticText : std::uint8_t{5};
        if (expected.type != kStatic)
            db.Fields[5].Type = static_cast<FieldType>(expected.type);
        EXPECT_EQ(lettersOf(db, item, Side::Label), expected.label) << "label of " << expected.type;
        EXPECT_EQ(lettersOf(db, item, Side::Value), expected.value) << "value of " << expected.type;
    }
}

TEST(SetFormLimits, freeRowHasNothingToSet) {
    const FormLimits on{true, true, true, true, true, true};
    EXPECT_EQ(SetFormLimits({}, freeRow(), Side::Label, on), FormLimits());
}

TEST(SetFormLimits, fieldThatIsGoneIsLikeAnyOther) {
    FormItem item = freeRow();
    item.Field = 200;
    EXPECT_EQ(lettersOf({}, item, Side::Label), "---+++");
    DatabaseModel db;
    db.Fields[7].Type = static_cast<FieldType>(99); // of a damaged file
    item.Field = 7;
    EXPECT_EQ(lettersOf(db, item, Side::Value), "++--=-");
}

TEST(FormItems, newRowTakesTheFieldsName) {
    DatabaseModel db;
    db.Fields[3].Type = FieldType::Date;
    db.Fields[3].Name = "Bought";
    const FormItem item = newRow(db, 3);
    EXPECT_EQ(item.Field, 3);
    EXPECT_EQ(item.Caption, "Bought");
    EXPECT_EQ(item.ItemByte1, 0);
    EXPECT_EQ(item.ItemByte2, 0);
    EXPECT_EQ(item.DataFore, (model::Colour{0, 0, 0}));
    EXPECT_EQ(item.DataBack, (model::Colour{255, 255, 255}));
    EXPECT_EQ(newRow(db, kStaticText).Caption, "Label");
}

TEST(FormItems, emptyLabelShowsNone) {
    FormItem item = freeRow();
    EXPECT_EQ(shownLabel(item), "(none)");
    ItemSettings settings = settingsOf(item, Side::Label);
    settings.text = "Name";
    setValue(item, Side::Label, settings);
    EXPECT_EQ(item.Caption, "Name");
    settings.text = "(none)";
    setValue(item, Side::Label, settings);
    EXPECT_EQ(item.Caption, "");
}

TEST(FormItems, sidesHaveTheirOwnFontAndColours) {
    FormItem item = freeRow();
    item.Field = 1;
    setValue(item, Side::Label, {.text = "L", .font = 1, .fore = {1, 2, 3}, .back = {4, 5, 6}});
    setValue(item, Side::Value,
             {.text = {}, .font = 3, .fore = {7, 8, 9}, .back = {10, 11, 12}, .locked = true, .asLabel = true});
    EXPECT_EQ(item.ItemKind, 1);
    EXPECT_EQ(item.ItemByte1, 3);
    EXPECT_EQ(item.LabelFore, (model::Colour{1, 2, 3}));
    EXPECT_EQ(item.LabelBack, (model::Colour{4, 5, 6}));
    EXPECT_EQ(item.DataFore, (model::Colour{7, 8, 9}));
    EXPECT_EQ(item.DataBack, (model::Colour{10, 11, 12}));
    EXPECT_EQ(item.ItemByte2, kLocked | kAsLabel);
    EXPECT_EQ(item.Caption, "L");
}

// Bits of the display byte and fonts that we do not know stay while something else is set.
TEST(FormItems, whatIsNotKnownStays) {
    FormItem item = freeRow();
    item.Field = 1;
    item.ItemByte1 = 9;
    item.ItemByte2 = 0xF0;
    ItemSettings settings = settingsOf(item, Side::Value);
    EXPECT_EQ(settings.font, 3);
    setValue(item, Side::Value, settings);
    EXPECT_EQ(item.ItemByte1, 9);
    settings.locked = true;
    setValue(item, Side::Value, settings);
    EXPECT_EQ(item.ItemByte1, 9);
    EXPECT_EQ(item.ItemByte2, 0xF1);
    settings.font = 0;
    setValue(item, Side::Value, settings);
    EXPECT_EQ(item.ItemByte1, 0);
}

TEST(FormItems, staticTextHasAPlaceInItsRow) {
    FormItem item = newRow({}, kStaticText);
    EXPECT_EQ(settingsOf(item, Side::Label).alignment, Alignment::Left);
    ItemSettings settings = settingsOf(item, Side::Label);
    settings.alignment = Alignment::Right;
    setValue(item, Side::Label, settings);
    EXPECT_EQ(item.ItemByte2, 2);
    EXPECT_EQ(settingsOf(item, Side::Label).alignment, Alignment::Right);
}

} // namespace
} // namespace tallybook::forms
