#include "core/calc/values/Conversion.h"

#include "support/Records.h"
#include "support/Regions.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::calc {
namespace {

using model::Document;
using model::FieldType;
using model::Picture;
using test::columnLongs;
using test::columnPictures;
using test::columnTexts;
using test::fillColumn;
using test::recordKeys;
using test::TestServices;
using Texts = std::vector<std::string>;

constexpr int kSlot = 3;
constexpr int kNoChoice = -1;

std::string checked(FieldType type, std::string_view value) {
    return checkFormat(type, value, test::us(), 2003);
}

struct FormatCase {
    FieldType type;
    const char* value;
    const char* text;
};

TEST(CheckFormat, bringsAValueToTheFormOfItsType) {
    const FormatCase cases[] = {
        {FieldType::NotUsed, "abc", ""},
        {FieldType::Text, "abc", "abc"},
        {FieldType::Text, "", ""},
        {FieldType::Integer, "12", "12"},
        {FieldType::Integer, "", "0"},
        {FieldType::Integer, "2.5", "2"},
        {FieldType::Integer, "3.5", "4"},
        {FieldType::Integer, "-2.5", "-2"},
        {FieldType::Integer, "70000", "0"},
        {FieldType::Integer, "32767.5", "0"},
        {FieldType::Integer, "abc", "0"},
        {FieldType::Integer, " $1,000 ", "1000"},
        {FieldType::Long, "70000", "70000"},
        {FieldType::Long, "3.5", "4"},
        {FieldType::Long, "2.5", "2"},
        {FieldType::Long, "2147483648", "0"},
        {FieldType::Long, "abc", "0"},
        {FieldType::Long, "", "0"},
        {FieldType::DBJoin, "70000", "70000"},
        {FieldType::DBJoin, "abc", "0"},
        {FieldType::Float, "1.50", "1.5"},
        {FieldType::Float, "0.1", "0.1"},
        {FieldType::Float, "1e400", "0"},
        {FieldType::Float, "abc", "0"},
        {FieldType::Float, "", "0"},
        {FieldType::List, "abc", "abc"},
        {FieldType::Checkbox, "True", "True"},
        {FieldType::Checkbox, "false", "False"},
        {FieldType::Checkbox, "2", "True"},
        {FieldType::Checkbox, "0", "False"},
        {FieldType::Checkbox, "Yes", "0"},
        {FieldType::Checkbox, "", "0"},
        {FieldType::Date, "2003-01-02", "1/2/2003"},
        {FieldType::Date, "36526", "1/1/2000"},
        {FieldType::Date, "0", "12/30/1899"},
        {FieldType::Date, "12:30", "12/30/1899"},
        {FieldType::Date, "Mar 5", "3/5/2003"},
        {FieldType::Date, "abc", ""},
        {FieldType::Date, "", ""},
        {FieldType::Time, "13:05:09", "1:05:09 PM"},
        {FieldType::Time, "0.25", "12:25:00 AM"},
        {FieldType::Time, "1/2/2003", "12:00:00 AM"},
        {FieldType::Time, "930", "12:00:00 AM"},
        {FieldType::Time, "abc", "0"},
        {FieldType::Time, "", "0"},
        {FieldType::Expression, "5", ""},
        {FieldType::Memo, "two\nlines", "two\nlines"},
        {FieldType::Key, "5", ""},
        {FieldType::DBLookup, "abc", ""},
        {FieldType::OneToMany, "abc", ""},
        {FieldType::AddressBookJoin, "abc", ""},
        {FieldType::AddressBookLookup, "abc", ""},
        {FieldType::RadioButton, "abc", ""},
        {FieldType::Image, " {Image}", ""},
        {FieldType::ConditionalExpression, "abc", ""},
        {FieldType::AutoIncremental, "5", ""},
        {FieldType::Plugin, "abc", ""},
        {FieldType::AdvExpression, "5", ""},
        {static_cast<FieldType>(99), "5", ""},
    };
    for (const FormatCase& c : cases)
        EXPECT_EQ(checked(c.type, c.value), c.text) << "type " << static_cast<int>(c.type) << ", " << c.value;
}

TEST(CheckFormat, cutsTextsAndListItemsButNoMemo) {
    const std::string memo(300, 'x');
    EXPECT_EQ(checked(FieldType::Text, memo), std::string(250, 'x'));
    EXPECT_EQ(checked(FieldType::List, memo), std::string(200, 'x'));
    EXPECT_EQ(checked(FieldType::Memo, memo), memo);
}

TEST(CheckFormat, goesByTheRegion) {
    EXPECT_EQ(checkFormat(FieldType::Float, "1,5", test::german(), 2003), "1,5");
    EXPECT_EQ(checkFormat(FieldType::Date, "1.2.2003", test::german(), 2003), "01.02.2003");
    EXPECT_EQ(checkFormat(FieldType::Time, "7 PM", test::german(), 2003), "19:00:00");
}

TEST(ListItems, areFoundByTheIdThatARecordStores) {
    Document doc;
    model::resetRows(doc, 4);
    doc.CurrDB20.Lists[kSlot] = {{7, 2, 7}, {"seven", "two", "seven again"}};
    doc.CellLongs.set(0, kSlot, 2);
    doc.CellLongs.set(1, kSlot, 7);
    doc.CellLongs.set(2, kSlot, 9);
    EXPECT_EQ(getListInd(doc, kSlot, 0), 1);
    EXPECT_EQ(getListInd(doc, kSlot, 1), 0); // the first match wins
    EXPECT_EQ(getListInd(doc, kSlot, 2), -1);
    EXPECT_EQ(getListInd(doc, kSlot, 3), -1);     // id 0
    EXPECT_EQ(getListInd(doc, kSlot + 1, 0), -1); // no list at all
    doc.CellLongs.set(3, kSlot, -2);
    EXPECT_EQ(getListInd(doc, kSlot, 3), -1);
}

TEST(ListItems, haveTheTextOfTheirId) {
    model::DatabaseModel db;
    db.Lists[kSlot] = {{7, 2, 7}, {"seven", "two", "seven again"}};
    EXPECT_EQ(getListText(db, kSlot, 2), "two");
    EXPECT_EQ(getListText(db, kSlot, 7), "seven");
    EXPECT_EQ(getListText(db, kSlot, 9), "");
    EXPECT_EQ(getListText(db, kSlot, 0), "");
    EXPECT_EQ(getListText(db, kSlot, 258), ""); // ids are whole numbers, not bytes
    EXPECT_EQ(getListText(db, 0, 0), "Unfiled");
    EXPECT_EQ(getListText(db, 0, 1), "");
    EXPECT_EQ(getListText(db, kSlot + 1, 0), "");
}

class ConvertType : public testing::Test {
protected:
    // What the column holds after a change of its type.
    Texts converted(const Texts& before, FieldType oldType, FieldType newType, int decimalsChoice = kNoChoice) {
        fillColumn(doc, kSlot, before);
        convertType(doc, services, kSlot, oldType, newType, decimalsChoice);
        EXPECT_TRUE(services.user.atRest());
        EXPECT_TRUE(doc.GridReady);
        return columnTexts(doc, kSlot);
    }

    TestServices services;
    Document doc;
};

TEST_F(ConvertType, givesEveryCellTheFormOfTheNewType) {
    const Texts before{"70000", "2.5", "abc", "", "1/2/2003"};
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::Integer), (Texts{"0", "2", "0", "0", "0"}));
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::Long), (Texts{"70000", "2", "0", "0", "0"}));
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::Date),
              (Texts{"8/25/2091", "12/30/1899", "", "", "1/2/2003"}));
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::Time),
              (Texts{"12:00:00 AM", "2:05:00 AM", "0", "0", "12:00:00 AM"}));
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::Memo), before);
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::Expression), Texts(5));
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::ConditionalExpression), Texts(5));
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::AdvExpression), Texts(5));
    EXPECT_EQ(converted({std::string(300, 'x')}, FieldType::Memo, FieldType::Text), Texts{std::string(250, 'x')});
}

TEST_F(ConvertType, formatsAFloatByTheDigitsChosen) {
    const Texts before{"1.2345", "2", "abc"};
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::Float, kNoChoice), (Texts{"1.2345", "2", "0"}));
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::Float, 0), (Texts{"1.2345", "2", "0"}));
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::Float, 1), (Texts{"1.2", "2.0", "0.0"}));
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::Float, 2), (Texts{"1.23", "2.00", "0.00"}));
    EXPECT_EQ(converted(before, FieldType::Text, FieldType::Float, 3), (Texts{"1.235", "2.000", "0.000"}));
    EXPECT_EQ(converted({"1.50"}, FieldType::Float, FieldType::Float, 0), Texts{"1.5"});
    EXPECT_EQ(converted({"1.50"}, FieldType::Float, FieldType::Long, 2), Texts{"2"});
}

TEST_F(ConvertType, emptiesAListWithItsIds) {
    fillColumn(doc, kSlot, {"one", "two"});
    doc.CellLongs.set(0, kSlot, 1);
    doc.CellLongs.set(1, kSlot, 2);
    convertType(doc, services, kSlot, FieldType::RadioButton, FieldType::List, kNoChoice);
    EXPECT_EQ(columnTexts(doc, kSlot), Texts(2));
    EXPECT_EQ(columnLongs(doc, kSlot), (std::vector<int>{0, 0}));
}

TEST_F(ConvertType, leavesNoIdBesideACellThatItEmpties) {
    for (const FieldType newType : {FieldType::RadioButton, FieldType::Expression, FieldType::Image}) {
        fillColumn(doc, kSlot, {"one"});
        doc.CellLongs.set(0, kSlot, 1);
        convertType(doc, services, kSlot, FieldType::List, newType, kNoChoice);
        EXPECT_EQ(columnTexts(doc, kSlot), Texts{""});
        EXPECT_EQ(columnLongs(doc, kSlot), std::vector<int>{0});
    }
}

TEST_F(ConvertType, checksABoxWhoseTextIsTrueOrANumberOtherThanZero) {
    const Texts texts = converted({"True", "2", "0", "no", "", "-0.5"}, FieldType::Text, FieldType::Checkbox);
    EXPECT_EQ(texts, Texts(6));
    EXPECT_EQ(columnPictures(doc, kSlot), (std::vector{Picture::CheckOn, Picture::CheckOn, Picture::CheckOff,
                                                       Picture::CheckOff, Picture::CheckOff, Picture::CheckOn}));
}

TEST_F(ConvertType, takesThePicturesOfACheckboxAway) {
    fillColumn(doc, kSlot, {"", ""});
    doc.grd.setPicture(2, 4, Picture::CheckOn);
    doc.grd.setPicture(3, 4, Picture::CheckOff);
    doc.grd.setPicture(3, 5, Picture::CheckOff);
    convertType(doc, services, kSlot, FieldType::Checkbox, FieldType::Integer, kNoChoice);
    EXPECT_EQ(columnPictures(doc, kSlot), (std::vector{Picture::None, Picture::None}));
    EXPECT_EQ(doc.grd.picture(3, 5), Picture::CheckOff);
    EXPECT_EQ(columnTexts(doc, kSlot), (Texts{"0", "0"}));
}

TEST_F(ConvertType, paintsACalculatedColumnBlackAgain) {
    for (const FieldType coloured : {FieldType::ConditionalExpression, FieldType::AdvExpression}) {
        fillColumn(doc, kSlot, {"due", "paid"});
        doc.grd.setColour(2, 4, 255);
        doc.grd.setColour(2, 5, 255);
        convertType(doc, services, kSlot, coloured, FieldType::Text, kNoChoice);
        EXPECT_EQ(doc.grd.colour(2, 4), 0u);
        EXPECT_EQ(doc.grd.colour(2, 5), 255u);
        EXPECT_EQ(columnTexts(doc, kSlot), (Texts{"due", "paid"}));
    }
}

TEST_F(ConvertType, writesTheKeysWhateverTheCellsHeld) {
    fillColumn(doc, kSlot, {"abc", ""});
    doc.RecKeys.set(0, 17);
    doc.RecKeys.set(1, -4);
    convertType(doc, services, kSlot, FieldType::Text, FieldType::Key, kNoChoice);
    EXPECT_EQ(columnTexts(doc, kSlot), (Texts{"17", "-4"}));
}

TEST_F(ConvertType, showsTheBarForMoreThanOneRecord) {
    converted({"1", "2", "3"}, FieldType::Text, FieldType::Long);
    const std::vector<test::ScriptedUser::Progress> expected{{"Converting data...", 3, 3},
                                                             {"Converting data...", 1, 3},
                                                             {"Converting data...", 2, 3},
                                                             {"Converting data...", 3, 3},
                                                             {"", 0, 0}};
    EXPECT_EQ(services.user.progresses, expected);
    EXPECT_EQ(services.user.waits, 1);
    EXPECT_EQ(services.user.freezes, 1);
}

TEST_F(ConvertType, showsNoBarForASingleRecord) {
    converted({"1"}, FieldType::Text, FieldType::Long);
    EXPECT_EQ(services.user.progresses, (std::vector<test::ScriptedUser::Progress>{{"", 0, 0}}));
}

TEST_F(ConvertType, leavesTheHiddenRowOfAnEmptyDatabaseAlone) {
    model::clearDocument(doc);
    convertType(doc, services, kSlot, FieldType::Text, FieldType::Checkbox, kNoChoice);
    EXPECT_EQ(doc.grd.picture(2, 4), Picture::None);
    EXPECT_EQ(doc.grd.text(2, 4), "");
}

TEST_F(ConvertType, changesNoOtherColumn) {
    fillColumn(doc, kSlot, {"1.5"});
    fillColumn(doc, kSlot + 1, {"1.5"});
    convertType(doc, services, kSlot, FieldType::Text, FieldType::Long, kNoChoice);
    EXPECT_EQ(columnTexts(doc, kSlot), Texts{"2"});
    EXPECT_EQ(columnTexts(doc, kSlot + 1), Texts{"1.5"});
}

// So many texts, all different.
Texts differentTexts(int count) {
    Texts texts;
    for (int i = 1; i <= count; ++i)
        texts.push_back("item " + std::to_string(i));
    return texts;
}

class CreateList : public testing::Test {
protected:
    bool create(int slot = kSlot) {
        const bool stands = createList(doc, services, slot);
        EXPECT_TRUE(services.user.atRest());
        EXPECT_TRUE(doc.GridReady);
        return stands;
    }
    const model::ListDef& list(int slot = kSlot) { return doc.CurrDB20.Lists.at(slot); }

    TestServices services;
    Document doc;
};

TEST_F(CreateList, numbersTextsInTheOrderOfTheirFirstAppearance) {
    fillColumn(doc, kSlot, {"pear", "apple", "", "pear", "Pear", "Unfiled"});
    EXPECT_TRUE(create());
    EXPECT_EQ(list().Items, (Texts{"pear", "apple", "Pear", "Unfiled"}));
    EXPECT_EQ(list().ItemIds, (std::vector<std::uint8_t>{1, 2, 3, 4}));
    EXPECT_EQ(columnLongs(doc, kSlot), (std::vector<int>{1, 2, 0, 1, 3, 4}));
    EXPECT_EQ(columnTexts(doc, kSlot), (Texts{"pear", "apple", "", "pear", "Pear", "Unfiled"}));
    EXPECT_EQ(doc.grd.col(), model::columnOfSlot(kSlot));
}

TEST_F(CreateList, takesUnfiledForNoCategory) {
    fillColumn(doc, 0, {"Unfiled", "Business", "unfiled"});
    doc.CellLongs.set(0, 0, 5);
    EXPECT_TRUE(create(0));
    EXPECT_EQ(list(0).Items, (Texts{"Business", "unfiled"}));
    EXPECT_EQ(columnLongs(doc, 0), (std::vector<int>{0, 1, 2}));
}

TEST_F(CreateList, standsWith59DifferentTexts) {
    fillColumn(doc, kSlot, differentTexts(59));
    EXPECT_TRUE(create());
    EXPECT_EQ(list().Count(), 59);
    EXPECT_EQ(list().ItemIds.back(), 59);
}

// The list and the ids of the records may be another type's: they stay until there is something to put in their
// place.
TEST_F(CreateList, leavesAllAsItWasAtTheSixtiethText) {
    fillColumn(doc, kSlot, differentTexts(60));
    doc.CurrDB20.Lists[kSlot] = {{8}, {"old"}};
    for (int record = 0; record < 60; ++record)
        doc.CellLongs.set(record, kSlot, 5000 + record);
    EXPECT_FALSE(create());
    EXPECT_EQ(list(), (model::ListDef{{8}, {"old"}}));
    for (int record = 0; record < 60; ++record)
        EXPECT_EQ(doc.CellLongs.get(record, kSlot), 5000 + record);
    EXPECT_TRUE(services.user.messages.empty()); // its caller speaks
}

TEST_F(CreateList, putsItselfInThePlaceOfAnother) {
    fillColumn(doc, kSlot, {"new"});
    doc.CurrDB20.Lists[kSlot] = {{8}, {"old"}};
    doc.CellLongs.set(0, kSlot, 8);
    EXPECT_TRUE(create());
    EXPECT_EQ(list().Items, Texts{"new"});
    EXPECT_EQ(columnLongs(doc, kSlot), std::vector<int>{1});
}

TEST_F(CreateList, showsTheBar) {
    fillColumn(doc, kSlot, {"a", "b"});
    create();
    const std::vector<test::ScriptedUser::Progress> expected{
        {"Creating list...", 0, 2}, {"Creating list...", 1, 2}, {"Creating list...", 2, 2}, {"", 0, 0}};
    EXPECT_EQ(services.user.progresses, expected);
    EXPECT_EQ(services.user.waits, 1);
}

class Keys : public testing::Test {
protected:
    bool create(KeepPosition keep = KeepPosition::No) {
        const bool done = CreateKeys(doc, services, kSlot, keep);
        EXPECT_TRUE(services.user.atRest());
        EXPECT_TRUE(doc.GridReady);
        return done;
    }

    TestServices services;
    Document doc;
};

TEST_F(Keys, takeTheNumbersOfTheColumn) {
    fillColumn(doc, kSlot, {"2.5", "3.5", "-7", "0", "2", "$1,000"});
    doc.CurrDB20.Fields[5].Type = FieldType::Key;
    doc.CurrDB20.Fields[80].Type = FieldType::Key;
    doc.CurrDB20.LastKey = 90;
    EXPECT_TRUE(create());
    EXPECT_EQ(recordKeys(doc), (std::vector<int>{2, 4, -7, 0, 2, 1000}));
    EXPECT_EQ(doc.CurrDB20.LastKey, 1000);
    const Texts keys{"2", "4", "-7", "0", "2", "1000"};
    EXPECT_EQ(columnTexts(doc, 5), keys);
    EXPECT_EQ(columnTexts(doc, 80), keys);
    EXPECT_EQ(columnTexts(doc, kSlot)[0], "2.5");
    EXPECT_EQ(columnTexts(doc, 6), Texts(6));
}

TEST_F(Keys, neverLowerTheLastKey) {
    fillColumn(doc, kSlot, {"5"});
    doc.CurrDB20.LastKey = 90;
    EXPECT_TRUE(create());
    EXPECT_EQ(doc.CurrDB20.LastKey, 90);
}

TEST_F(Keys, areRefusedWhenACellIsNotNumeric) {
    for (const char* bad : {"", "abc"}) {
        fillColumn(doc, kSlot, {"1", bad, "3"});
        doc.RecKeys.set(0, 100);
        services.user.messages.clear();
        EXPECT_FALSE(create());
        EXPECT_EQ(recordKeys(doc)[0], 100);
        EXPECT_EQ(doc.CurrDB20.LastKey, 0);
        ASSERT_EQ(services.user.messages.size(), 1u);
        EXPECT_EQ(services.user.messages[0].text,
                  "Column must have numeric fields greater than zero.  Conversion not performed.");
        EXPECT_EQ(services.user.messages[0].icon, platform::Icon::Critical);
    }
}

TEST_F(Keys, areNotTakenFromANumberOf33Bits) {
    fillColumn(doc, kSlot, {"1", "2147483647.5"});
    doc.RecKeys.set(0, 100);
    services.user.errorAnswers = {platform::ErrorAnswer::Leave};
    EXPECT_FALSE(create());
    EXPECT_EQ(recordKeys(doc), (std::vector<int>{100, 0}));
    ASSERT_EQ(services.user.errors.size(), 1u);
    EXPECT_EQ(services.user.errors[0].tag, "CreateKeys");
    EXPECT_EQ(services.user.errors[0].record, 1);
}

TEST_F(Keys, leaveTheCurrentCellWhereItWas) {
    fillColumn(doc, kSlot, {"1", "2"});
    doc.grd.setCell(3, 7);
    EXPECT_TRUE(create(KeepPosition::No));
    EXPECT_EQ(doc.grd.place(), (model::GridPlace{3, 7, 3, 7}));
    EXPECT_TRUE(create(KeepPosition::Yes));
    EXPECT_EQ(doc.grd.col(), model::columnOfSlot(kSlot));
    doc.grd.setCell(3, 7);
    doc.grd.setText(2, 4, "x");
    EXPECT_FALSE(create(KeepPosition::No));
    EXPECT_EQ(doc.grd.place(), (model::GridPlace{3, 7, 3, 7}));
}

} // namespace
} // namespace tallybook::calc
