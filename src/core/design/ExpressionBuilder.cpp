#include "core/design/ExpressionBuilder.h"

#include "core/calc/expressions/ExpressionEngine.h"
#include "core/design/Dialog.h"

#include <algorithm>

namespace tallybook::design {

namespace {

using Entries = std::vector<std::string>;

std::string bracketed(const std::string& name) {
    return calc::FieldNameRequiresBrackets(name) ? '[' + name + ']' : name;
}

// The heading, then an entry for each used field. One without a name cannot be called in a text.
template <class Entry> Entries fieldEntries(std::string_view heading, const model::DatabaseModel& db, Entry entry) {
    Entries entries{std::string(heading)};
    for (std::size_t slot = 1; slot <= model::MaxUserFields; ++slot)
        if (db.Fields[slot].Type != model::FieldType::NotUsed && !db.Fields[slot].Name.empty())
            entries.push_back(entry(db.Fields[slot].Name));
    return entries;
}

// The entries of cmbAdvOper end with a word on what they do. What is inserted ends with the first blank behind the
// first two characters.
std::string_view operatorPart(std::string_view entry) {
    const std::size_t blank = entry.find(' ', 2);
    return blank == std::string_view::npos ? entry : entry.substr(0, blank + 1);
}

} // namespace

SimpleChoices ResetExpression(const SimpleChoices& choices) {
    SimpleChoices empty;
    empty.format = choices.format;
    return empty;
}

SimpleChoices selectFormat(const SimpleChoices& choices, int format) {
    SimpleChoices changed = choices;
    changed.format = format;
    for (int list = 0; list < kOperators; ++list) {
        int& sign = changed.operators[static_cast<std::size_t>(list)];
        const auto before = operatorEntries(choices.format, list);
        const auto now = operatorEntries(format, list);
        const bool chosen = sign > 0 && sign < static_cast<int>(before.size());
        const auto same =
            chosen ? std::find(now.begin(), now.end(), before[static_cast<std::size_t>(sign)]) : now.end();
        sign = same == now.end() ? 0 : static_cast<int>(same - now.begin());
    }
    return changed;
}

std::string_view ShowFormat(int format) {
    static constexpr std::array<std::string_view, 13> kTexts = {
        "Operation(s) with Checkbox, Integer, Long, Floating, Expression, External Lookup",
        "Date +/- Days(Integer, Long, AutoIncremental, Float, Checkbox, Expression, Adv. Expression, External "
        "Lookup, "
        "List, Radio Button)",
        "Date +/- Months(Integer, Long, AutoIncremental, Float, Checkbox, Expression, Adv. Expression, External "
        "Lookup, List, Radio Button)",
        "Date +/- Years(Integer, Long, AutoIncremental, Float, Checkbox, Expression, Adv. Expression, External "
        "Lookup, "
        "List, Radio Button)",
        "Date - Date\n",
        "Date - Date\n",
        "Date - Date\n",
        "Time +/- Seconds(Integer, Long, AutoIncremental, Float, Checkbox, Expression, Adv. Expression, External "
        "Lookup, List, Radio Button)",
        "Time - Time\n",
        "Time - Time\n",
        "Time - Time\n",
        "Time - Time\n",
        "Time - Time\n"};
    if (format < 0 || format >= static_cast<int>(kTexts.size()))
        return {};
    return kTexts[static_cast<std::size_t>(format)];
}

Entries insertionEntries(InsertionList list, const model::DatabaseModel& db) {
    switch (list) {
    case InsertionList::cmbAdvField:
        return fieldEntries("(Fields)", db, bracketed);
    case InsertionList::cmbAdvPrev:
        return fieldEntries("(Prev. record)", db, [](const std::string& name) { return "Prev(" + name + ')'; });
    case InsertionList::cmbAdvFunc:
        return {"(Functions)", "If( )",   "Sel( )",     "Sqrt( )",     "Round( )",    "Abs( )",
                "Sign( )",     "Ceil( )", "Floor( )",   "Date( , , )", "Time( , , )", "Year( )",
                "Month( )",    "Day( )",  "Weekday( )", "Hour( )",     "Minute( )",   "Second( )"};
    case InsertionList::cmbAdvOper:
        return {"(Operators)", " + ", " - ",  " * ",  " / ",      " ** (power)", " % (mod)", " = ",     " <> ",
                " < ",         " > ", " <= ", " >= ", " & (and)", " | (or)",     " ^ (xor)", " ! (not)"};
    case InsertionList::cmbAdvColor:
        return {"(Colors)", "{black}", "{red}", "{green}", "{blue}", "{yellow}"};
    case InsertionList::cmbAdvConst:
        return {"(Constants)", "Today", "Now", "PI", "PrevIndex"};
    }
    return {};
}

bool insertEntry(InsertionList list, int position, std::string_view entry, TextBox& box) {
    if (position < 1 || entry.empty())
        return false;
    const std::string_view inserted = list == InsertionList::cmbAdvOper ? operatorPart(entry) : entry;
    const std::size_t start = std::min(box.selStart, box.text.size());
    box.text.replace(start, box.selLength, inserted);
    box.selStart = start + inserted.size();
    box.selLength = 0;
    return true;
}

bool ClearExpression(platform::Services& services) {
    return asksToDestroy(services, "Clear the entire expression", "Are you sure");
}

} // namespace tallybook::design
