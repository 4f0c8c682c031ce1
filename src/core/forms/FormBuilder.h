// The working copy of a database's screens that the form designer changes, and its way from and to the database.
#pragma once

#include "core/model/DatabaseModel.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tallybook::forms {

inline constexpr int kParts = model::MaxForms; // the base part and the tabs
inline constexpr int kMostTabs = kParts - 1;
inline constexpr int kRows = model::MaxFormItems; // of each part
inline constexpr std::uint8_t kStaticText = 255;  // a row's field: a text without a field
inline constexpr int kLastStartRow = 9;           // the tab strip begins there at the latest, from 0
inline constexpr std::uint8_t kNewSplitter = 40;  // where values begin, of 160 pixels
inline constexpr int kFonts = 4;

// The base part, above the tab strip, or a tab.
struct FormPart {
    std::string Name; // a tab's caption
    std::uint8_t FormByte = kNewSplitter;
    std::array<std::uint8_t, 2> FormFlags{}; // the handheld's own, carried
    std::array<model::FormItem, kRows> rows;

    FormPart();
    bool operator==(const FormPart&) const = default;
};

struct FormBuilder {
    std::array<FormPart, kParts> parts; // part 0 is the base; one behind the tabs may hold a tab that was taken away
    int tabs = 0;                       // at most kMostTabs
    int startRow = 0;                   // where the tab strip begins, from 0

    FormPart& part(int number) { return parts[static_cast<std::size_t>(number)]; }
    const FormPart& part(int number) const { return parts[static_cast<std::size_t>(number)]; }
    model::FormItem& row(int number, int row) { return part(number).rows[static_cast<std::size_t>(row)]; }
    const model::FormItem& row(int number, int row) const { return part(number).rows[static_cast<std::size_t>(row)]; }
};

// A row without a field: fonts 0, black on white, no texts.
model::FormItem freeRow();
inline bool isFree(const model::FormItem& item) {
    return item.Field == 0;
}
inline bool isStaticText(const model::FormItem& item) {
    return item.Field == kStaticText;
}

// The screens of a database as a working copy. More tabs, or a later start, than a designer can show are cut.
FormBuilder TransferPDBInfoToFormBuilder(const model::DatabaseModel& db);

// The working copy as the screens of the database: rows that have a field, packed, with their new places. What is as
// it came from the database stays to the byte, the places of its rows included.
void PutBackFormBuilderInfoToPDB(const FormBuilder& builder, model::DatabaseModel& db);

// True when the two would be different screens; tabs that were taken away do not count.
bool differs(const FormBuilder& a, const FormBuilder& b);

// A tab's caption, for tabs from 1: its name, or "tab" and its number.
std::string tabCaption(const FormBuilder& builder, int tab);

// A line of the designer's list of fields.
struct FieldLine {
    std::string key;  // "K_" and the slot
    std::string text; // the slot, or "_" for a text without a field
    std::string name;
    std::string type;
    std::uint8_t slot = 0;
    model::FieldType fieldType = model::FieldType::NotUsed;

    bool isStatic() const { return slot == kStaticText; }
};

// One line for each slot in use, in order, and behind them the one for a static text.
std::vector<FieldLine> SetUpFldList(const model::DatabaseModel& db);

} // namespace tallybook::forms
