#include "core/document/views/Sort.h"

#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"
#include "core/document/edit/CellEditing.h"
#include "document/DocumentFixture.h"
#include "support/Records.h"

#include <algorithm>
#include <random>

namespace tallybook::document {
namespace {

using model::FieldType;
using enum SortDirection;
using Texts = std::vector<std::string>;

constexpr int kSlot = 3;

struct Sort : test::DocumentFixture {
    // One record for each text, in the column of a field.
    void column(FieldType type, const Texts& texts) {
        field(kSlot, type, "Sorted");
        records(static_cast<int>(texts.size()));
        test::fillColumn(doc, kSlot, texts);
        for (int record = 0; record < doc.NumDataRecs; ++record)
            doc.RecKeys.set(record, record + 1);
        go(0, kSlot);
    }

    Texts sorted(SortDirection direction) {
        EXPECT_TRUE(sortCol(doc, t, direction));
        return test::columnTexts(doc, kSlot);
    }
    std::vector<int> keysSorted(SortDirection direction) {
        EXPECT_TRUE(sortCol(doc, t, direction));
        return test::recordKeys(doc);
    }
};

struct SortCase {
    const char* what;
    FieldType type;
    Texts given;
    Texts ascending;
    Texts descending;
};

class SortByType : public Sort, public testing::WithParamInterface<SortCase> {};

TEST_P(SortByType, ordersTheRecordsByTheRuleOfTheType) {
    const SortCase& c = GetParam();
    column(c.type, c.given);
    EXPECT_EQ(sorted(Ascending), c.ascending) << c.what;
    column(c.type, c.given);
    EXPECT_EQ(sorted(Descending), c.descending) << c.what;
}

const SortCase kCases[] = {
    {"text by its bytes, the empty one first",
     FieldType::Text,
     {"apple", "Zebra", "", "apples", "\xC9t\xE9", "10", "9"},
     {"", "10", "9", "Zebra", "apple", "apples", "\xC9t\xE9"},
     {"\xC9t\xE9", "apples", "apple", "Zebra", "9", "10", ""}},
    {"text beyond the first eight bytes",
     FieldType::Text,
     {"customer 20", "customer 1", "customer", "customer 100", "customer 10"},
     {"customer", "customer 1", "customer 10", "customer 100", "customer 20"},
     {"customer 20", "customer 100", "customer 10", "customer 1", "customer"}},
    {"memo", FieldType::Memo, {"b", "B", "a"}, {"B", "a", "b"}, {"b", "a", "B"}},
    {"address book join", FieldType::AddressBookJoin, {"b", "B", "a"}, {"B", "a", "b"}, {"b", "a", "B"}},
    {"address book lookup", FieldType::AddressBookLookup, {"b", "B", "a"}, {"B", "a", "b"}, {"b", "a", "B"}},
    {"integer as a number, empty as 0",
     FieldType::Integer,
     {"10", "9", "-3", "", "-20"},
     {"-20", "-3", "", "9", "10"},
     {"10", "9", "", "-3", "-20"}},
    {"a text that is no number: its leading number, else 0",
     FieldType::Long,
     {"12 apples", "5", "abc", "-1", "11x"},
     {"-1", "abc", "5", "11x", "12 apples"},
     {"12 apples", "11x", "5", "abc", "-1"}},
    {"float",
     FieldType::Float,
     {"2.50", "10.00", "-0.75", "0.25"},
     {"-0.75", "0.25", "2.50", "10.00"},
     {"10.00", "2.50", "0.25", "-0.75"}},
    {"key", FieldType::Key, {"10", "9", "1"}, {"1", "9", "10"}, {"10", "9", "1"}},
    {"auto incremental", FieldType::AutoIncremental, {"10", "9", "1"}, {"1", "9", "10"}, {"10", "9", "1"}},
    {"expression as a number", FieldType::Expression, {"10", "9", "x"}, {"x", "9", "10"}, {"10", "9", "x"}},
    {"date by the calendar, no date before all",
     FieldType::Date,
     {"2/1/2003", "12/31/2002", "", "1/15/2003", "soon", "1/2/1950"},
     {"", "soon", "1/2/1950", "12/31/2002", "1/15/2003", "2/1/2003"},
     {"2/1/2003", "1/15/2003", "12/31/2002", "1/2/1950", "", "soon"}},
    {"time by the clock, no time as midnight",
     FieldType::Time,
     {"1:05:09 PM", "12:00:00 AM", "9:30:00 AM", "", "12:00:01 AM"},
     {"12:00:00 AM", "", "12:00:01 AM", "9:30:00 AM", "1:05:09 PM"},
     {"1:05:09 PM", "9:30:00 AM", "12:00:01 AM", "12:00:00 AM", ""}},
    {"list: numbers as numbers and first, texts without case",
     FieldType::List,
     {"pear", "10", "Apple", "9", "", "apricot"},
     {"9", "10", "", "Apple", "apricot", "pear"},
     {"pear", "apricot", "Apple", "", "10", "9"}},
    {"join", FieldType::DBJoin, {"b", "10", "A", "9"}, {"9", "10", "A", "b"}, {"b", "A", "10", "9"}},
    {"lookup", FieldType::DBLookup, {"b", "10", "A", "9"}, {"9", "10", "A", "b"}, {"b", "A", "10", "9"}},
    {"radio button", FieldType::RadioButton, {"b", "10", "A", "9"}, {"9", "10", "A", "b"}, {"b", "A", "10", "9"}},
    {"conditional expression",
     FieldType::ConditionalExpression,
     {"b", "10", "A", "9"},
     {"9", "10", "A", "b"},
     {"b", "A", "10", "9"}},
    {"advanced expression",
     FieldType::AdvExpression,
     {"b", "10", "A", "9"},
     {"9", "10", "A", "b"},
     {"b", "A", "10", "9"}},
    {"a free slot keeps the order", FieldType::NotUsed, {"b", "a"}, {"b", "a"}, {"b", "a"}},
};

INSTANTIATE_TEST_SUITE_P(Sort, SortByType, testing::ValuesIn(kCases));

TEST_F(Sort, ordersCheckBoxesByTheirPictures) {
    column(FieldType::Checkbox, {"", "", "", ""});
    for (int record = 0; record < 4; ++record)
        doc.grd.setPicture(record + model::kFirstDataRow, model::columnOfSlot(kSlot),
                           record % 2 == 0 ? model::Picture::CheckOn : model::Picture::CheckOff);
    EXPECT_EQ(keysSorted(Ascending), (std::vector<int>{2, 4, 1, 3}));
    EXPECT_EQ(keysSorted(Descending), (std::vector<int>{1, 3, 2, 4}));
}

TEST_F(Sort, equalKeysKeepTheirOrderInBothDirections) {
    column(FieldType::List, {"a", "B", "A", "b", "a"});
    EXPECT_EQ(keysSorted(Descending), (std::vector<int>{2, 4, 1, 3, 5}));
    EXPECT_EQ(keysSorted(Descending), (std::vector<int>{2, 4, 1, 3, 5}));
    EXPECT_EQ(keysSorted(Ascending), (std::vector<int>{1, 3, 5, 2, 4}));
}

TEST_F(Sort, equalNumbersOfManyRecordsKeepTheirOrder) {
    Texts texts;
    for (int i = 0; i < 3000; ++i)
        texts.push_back(std::to_string(i % 3));
    column(FieldType::Integer, texts);
    const std::vector<int> keys = keysSorted(Descending);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(keys[static_cast<std::size_t>(i)], 3 * i + 3);
        EXPECT_EQ(keys[static_cast<std::size_t>(i) + 1000], 3 * i + 2);
        EXPECT_EQ(keys[static_cast<std::size_t>(i) + 2000], 3 * i + 1);
    }
}

TEST_F(Sort, manyTextsOfOneBeginningAreOrderedToTheirEnds) {
    Texts texts;
    for (int i = 0; i < 2000; ++i)
        texts.push_back("The same beginning of every text, " +
                        calc::zeroPadded(static_cast<std::uint64_t>(i * 7919 % 2000), 4));
    texts.push_back("The same beginning of every text, ");
    texts.push_back("The same");
    texts.push_back(std::string("The same\0", 9));
    Texts expected = texts;
    std::sort(expected.begin(), expected.end());
    column(FieldType::Text, texts);
    EXPECT_EQ(sorted(Ascending), expected);
    std::reverse(expected.begin(), expected.end());
    EXPECT_EQ(sorted(Descending), expected);
}

TEST_F(Sort, categoriesAreSortedByTheirTexts) {
    field(0, FieldType::NotUsed, "Categories"); // as other programs may leave it
    items(0, {{1, "Work"}, {2, "home"}});
    field(kSlot, FieldType::Text);
    records(3);
    const int ids[] = {1, 0, 2};
    const char* names[] = {"Work", "Unfiled", "home"};
    for (int record = 0; record < 3; ++record) {
        setCell(record, 0, names[record]);
        doc.CellLongs.set(record, 0, ids[record]);
    }
    go(0, 0);
    EXPECT_TRUE(sortCol(doc, t, Ascending));
    EXPECT_EQ(test::columnTexts(doc, 0), (Texts{"home", "Unfiled", "Work"}));
    EXPECT_EQ(test::columnLongs(doc, 0), (std::vector<int>{2, 0, 1}));
}

// A column keeps 4,096 different texts as its items' numbers.
TEST_F(Sort, listOfMoreTextsThanAColumnHasItemsIsSortedToo) {
    Texts texts;
    for (int number = 9999; number > 5000; --number)
        texts.push_back("Item " + std::to_string(number));
    texts.insert(texts.end(), {"12", "", "9"});
    Texts expected = {"9", "12", ""};
    for (int number = 5001; number < 10000; ++number)
        expected.push_back("Item " + std::to_string(number));
    column(FieldType::List, texts);
    EXPECT_EQ(sorted(Ascending), expected);
    std::reverse(expected.begin(), expected.end());
    EXPECT_EQ(sorted(Descending), expected);
}

TEST_F(Sort, columnOfTheRecordNumbersStandsForTheFirst) {
    field(kSlot, FieldType::Text);
    records(2);
    setCell(0, 0, "b");
    setCell(1, 0, "a");
    doc.grd.setCell(3, 0);
    EXPECT_TRUE(sortCol(doc, t, Ascending));
    EXPECT_EQ(cell(0, 0), "a");
    EXPECT_EQ(doc.grd.row(), 3);
    EXPECT_EQ(doc.grd.col(), 1);
}

TEST_F(Sort, fieldsWithoutAnOrderAreRefusedByName) {
    for (const FieldType type : {FieldType::OneToMany, FieldType::Image, FieldType::Plugin}) {
        column(type, {"b", "a"});
        EXPECT_FALSE(sortCol(doc, t, Ascending));
        EXPECT_EQ(lastMessage().text, "Sort utility is not available for the field : Sorted");
        EXPECT_EQ(lastMessage().icon, platform::Icon::Information);
        EXPECT_EQ(test::columnTexts(doc, kSlot), (Texts{"b", "a"}));
    }
}

TEST_F(Sort, everythingOfARecordTravelsWithIt) {
    column(FieldType::Text, {"c", "a", "b"});
    field(4, FieldType::Image);
    field(5, FieldType::DBJoin);
    field(6, FieldType::Checkbox);
    for (int record = 0; record < 3; ++record) {
        const int row = record + model::kFirstDataRow;
        doc.CellLongs.set(record, 4, 100 + record);
        doc.CellVals.set(record, 5, "key" + std::to_string(record));
        doc.grd.setColour(row, 4, static_cast<std::uint32_t>(255 + record));
        doc.grd.setPicture(row, 7, record == 0 ? model::Picture::CheckOn : model::Picture::CheckOff);
    }
    doc.grd.setRowHeight(model::kFirstDataRow, 0); // a filter hides "c"
    EXPECT_TRUE(sortCol(doc, t, Ascending));
    std::string scratch;
    const int before[] = {1, 2, 0};
    for (int record = 0; record < 3; ++record) {
        const int row = record + model::kFirstDataRow;
        EXPECT_EQ(doc.RecKeys[record], before[record] + 1);
        EXPECT_EQ(doc.CellLongs.get(record, 4), 100 + before[record]);
        EXPECT_EQ(doc.CellVals.get(record, 5, scratch), "key" + std::to_string(before[record]));
        EXPECT_EQ(doc.grd.colour(row, 4), static_cast<std::uint32_t>(255 + before[record]));
        EXPECT_EQ(picture(record, 6), before[record] == 0 ? model::Picture::CheckOn : model::Picture::CheckOff);
        EXPECT_EQ(doc.grd.rowHeight(row), before[record] == 0 ? 0 : model::kDefaultSize);
        EXPECT_EQ(doc.grd.text(row, model::kNumberColumn), std::to_string(record + 1));
        EXPECT_EQ(doc.grd.text(row, model::kScratchColumn), "");
    }
}

TEST_F(Sort, keyColumnStaysRight) {
    column(FieldType::Text, {"c", "a", "b"});
    field(4, FieldType::Key);
    gridLoadFieldNames20(doc, services.regional);
    for (int record = 0; record < 3; ++record)
        setCell(record, 4, std::to_string(doc.RecKeys[record]));
    EXPECT_TRUE(sortCol(doc, t, Ascending));
    for (int record = 0; record < 3; ++record)
        EXPECT_EQ(cell(record, 4), std::to_string(doc.RecKeys[record]));
}

TEST_F(Sort, sameCellIsCurrentAfterwardsAndNothingIsMarkedAsChanged) {
    column(FieldType::Text, {"c", "a", "b"});
    doc.grd.setPlace({3, 4, 4, 4});
    const model::GridPlace place = doc.grd.place();
    EXPECT_TRUE(sortCol(doc, t, Ascending));
    EXPECT_EQ(doc.grd.place(), place);
    EXPECT_FALSE(doc.DocModified);
    EXPECT_TRUE(doc.GridReady);
    EXPECT_EQ(t.user.freezes, 1);
    EXPECT_TRUE(t.user.atRest());
}

TEST_F(Sort, openEditIsCommittedFirst) {
    column(FieldType::Text, {"c", "a", "b"});
    edit(0, kSlot);
    doc.editor.text = "aa";
    EXPECT_TRUE(sortCol(doc, t, Ascending));
    EXPECT_FALSE(doc.editor.open());
    EXPECT_EQ(test::columnTexts(doc, kSlot), (Texts{"a", "aa", "b"}));
    EXPECT_TRUE(doc.DocModified); // by the edit
}

TEST_F(Sort, readOnlyDatabaseIsSortedAllTheSame) {
    column(FieldType::Text, {"b", "a"});
    doc.CurrDB20.ReadOnly = 1;
    EXPECT_EQ(sorted(Ascending), (Texts{"a", "b"}));
}

TEST_F(Sort, databaseWithoutRecordsKeepsItsPlaceholder) {
    field(kSlot, FieldType::Text);
    records(0);
    go(0, kSlot);
    EXPECT_TRUE(sortCol(doc, t, Descending));
    EXPECT_TRUE(model::hasNoRecords(doc));
    EXPECT_EQ(doc.grd.rowHeight(model::kFirstDataRow), 0);
}

TEST_F(Sort, byASlotLeavesTheCurrentCell) {
    column(FieldType::Text, {"b", "a"});
    go(1, 0);
    SortGrid(doc, t, kSlot, Ascending);
    EXPECT_EQ(test::columnTexts(doc, kSlot), (Texts{"a", "b"}));
    EXPECT_EQ(at(), (std::pair{1, 0}));
    SortGrid(doc, t, 81, Ascending);
    SortGrid(doc, t, -1, Ascending);
    SortGrid(doc, t, 255, Descending);
    EXPECT_EQ(test::columnTexts(doc, kSlot), (Texts{"a", "b"}));
}

TEST_F(Sort, datesOfAnotherRegionAreOrderedByTheCalendarToo) {
    t.regional.shortDate = "dd.MM.yyyy";
    t.regional.dateOrder = platform::DateOrder::DMY;
    t.regional.dateSeparator = '.';
    column(FieldType::Date, {"02.01.2003", "01.02.2003", "31.12.2002"});
    EXPECT_EQ(sorted(Ascending), (Texts{"31.12.2002", "02.01.2003", "01.02.2003"}));
}

TEST_F(Sort, toolBarRefusesWhileAViewIsShown) {
    column(FieldType::Text, {"b", "a"});
    EXPECT_TRUE(sortFromToolBar(doc, t, Ascending));
    EXPECT_EQ(test::columnTexts(doc, kSlot), (Texts{"a", "b"}));
    doc.CurrentView = "Short";
    doc.ViewShown = true;
    EXPECT_FALSE(sortFromToolBar(doc, t, Descending));
    EXPECT_EQ(lastMessage().text, "Sort not available in the Views.");
    EXPECT_EQ(test::columnTexts(doc, kSlot), (Texts{"a", "b"}));
    EXPECT_TRUE(sortCol(doc, t, Descending)); // the column's menu does not ask
    EXPECT_EQ(test::columnTexts(doc, kSlot), (Texts{"b", "a"}));
}

// Whatever the texts, a sort is a permutation of whole records, in the order that the rule gives.
class AnySort : public Sort, public testing::WithParamInterface<FieldType> {
protected:
    std::string anyText(std::mt19937& random) {
        static const char* const kTexts[] = {
            "",           "a",   "A",    "\xE9", "b b",        "zz",         "10",        "9",          "-1",
            "1e3",        "2.5", "2.50", "(5)",  "$7",         "1/2/2003",   "2/1/2003",  "12/31/1999", "1:00:00 PM",
            "1:00:00 AM", "0",   "x9",   "9x",   "customer 1", "customer 2", "CUSTOMER 1"};
        std::string text = kTexts[random() % std::size(kTexts)];
        return random() % 3 == 0 ? text + std::to_string(random() % 50) : text;
    }

    double numberOf(const std::string& text) const {
        return calc::parseNumber(text, t.regional).value_or(calc::val(text));
    }

    // Negative, 0 or positive as the rule of the type says.
    int compare(FieldType type, const std::string& a, const std::string& b) const {
        const auto sign = [](double x, double y) { return (x > y) - (x < y); };
        switch (type) {
        case FieldType::Text:
            return a.compare(b);
        case FieldType::Float:
            return sign(numberOf(a), numberOf(b));
        case FieldType::Date: {
            const auto x = calc::readDate(a, t.regional, 2003);
            const auto y = calc::readDate(b, t.regional, 2003);
            const auto day = [](const auto& serial) {
                return serial ? calc::dayNumber(calc::dateOf(*serial)) : -1000000;
            };
            return sign(day(x), day(y));
        }
        default: {
            const auto x = calc::parseNumber(a, t.regional);
            const auto y = calc::parseNumber(b, t.regional);
            if (x && y)
                return sign(*x, *y);
            if (x || y)
                return x ? -1 : 1;
            return calc::compareText(a, b, calc::TextCase::Folded);
        }
        }
    }
};

TEST_P(AnySort, isAPermutationOfWholeRecordsInOrder) {
    for (unsigned seed = 0; seed < 12; ++seed) {
        std::mt19937 random(seed);
        Texts texts(1 + random() % 2000);
        for (std::string& text : texts)
            text = anyText(random);
        column(GetParam(), texts);
        for (int record = 0; record < doc.NumDataRecs; ++record) {
            setCell(record, 5, "own " + std::to_string(record));
            doc.CellLongs.set(record, 6, record + 1);
        }
        const SortDirection direction = seed % 2 == 0 ? Ascending : Descending;
        const Texts result = sorted(direction);
        std::vector<bool> seen(texts.size());
        for (int record = 0; record < doc.NumDataRecs; ++record) {
            const auto before = static_cast<std::size_t>(doc.RecKeys[record] - 1);
            ASSERT_FALSE(seen[before]) << "seed " << seed;
            seen[before] = true;
            ASSERT_EQ(result[static_cast<std::size_t>(record)], texts[before]) << "seed " << seed;
            ASSERT_EQ(cell(record, 5), "own " + std::to_string(before)) << "seed " << seed;
            ASSERT_EQ(doc.CellLongs.get(record, 6), static_cast<int>(before) + 1) << "seed " << seed;
            if (record == 0)
                continue;
            const int key = doc.RecKeys[record - 1];
            const int order = compare(GetParam(), texts[static_cast<std::size_t>(key - 1)], texts[before]);
            ASSERT_TRUE(direction == Ascending ? order <= 0 : order >= 0)
                << "seed " << seed << ": \"" << texts[static_cast<std::size_t>(key - 1)] << "\" before \""
                << texts[before] << '"';
            if (order == 0) {
                ASSERT_LT(key, doc.RecKeys[record]) << "seed " << seed;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Sort, AnySort,
                         testing::Values(FieldType::Text, FieldType::Float, FieldType::Date, FieldType::List,
                                         FieldType::AdvExpression));

} // namespace
} // namespace tallybook::document
