// Files of format 1.x, in its two layouts.
#include "core/pdb/OlderDatabase.h"

#include "core/pdb/Passwords.h"
#include "support/Hex.h"
#include "support/OlderFile.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using model::FieldType;
using platform::Bytes;
using test::hex;
using test::OlderFile;
using test::RawFile;

// Record 0 ---------------------------------------------------------------------------------------------------

const char* const kEmptyView = "00*98 "; // 21 name, 72 columns, 1, 4
const char* const kEmptyFilter = "00*96 ";

std::string times(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

// All of record 0 of format 1.0 behind the version, up to the form values.
std::string noViewsNoFilters() {
    return times(12, kEmptyView) + times(12, kEmptyFilter);
}

platform::Status read1(const std::string& text, OldDB& old) {
    const Bytes bytes = hex(text);
    ByteReader in(bytes);
    return loadDBProps1(in, old);
}

TEST(LoadDBProps1, readsEveryValueOfFormat10) {
    OldDB old;
    const std::string view = "'Lent' 00*17 0250 00*68 0328 07 EE*4 ";
    const std::string filter = "'Big' 00*18 010203040506 '10' 00*18 '20' 00*18 '30' 00*18 3C3D3E 0102 EE*4 ";
    const auto read = read1("05 02 64 " + view + times(11, kEmptyView) + filter + times(11, kEmptyFilter) +
                                "01 29 2A 2B  11 12 13 00 15  EE EE*6 EE*8  E1E6E7 5A*7  'a' 00 'bc' 00 00",
                            old);
    ASSERT_TRUE(read.ok()) << read.error().description();
    EXPECT_EQ(old.NumFields, 5);
    EXPECT_EQ(old.NumViews, 2);
    EXPECT_EQ(old.Version, 100);
    EXPECT_FALSE(old.isFormat099);
    EXPECT_EQ(old.Views[0].Name, "Lent");
    EXPECT_EQ(old.Views[0].Columns[0], (model::ViewColumn{.Field = 2, .Width = 0x50}));
    EXPECT_EQ(old.Views[0].Columns[35], (model::ViewColumn{.Field = 3, .Width = 0x28}));
    EXPECT_EQ(old.Views[0].ViewByte, 7);
    EXPECT_EQ(old.Views[11], OldView{});
    EXPECT_EQ(old.Filters[0].Name, "Big");
    EXPECT_EQ(old.Filters[0].CondFields, (std::array<std::uint8_t, 3>{1, 2, 3}));
    EXPECT_EQ(old.Filters[0].CondFields2, (std::array<std::uint8_t, 3>{4, 5, 6}));
    EXPECT_EQ(old.Filters[0].CondValues, (std::array<std::string, 3>{"10", "20", "30"}));
    EXPECT_EQ(old.Filters[0].CondOps, (std::array<std::uint8_t, 3>{'<', '=', '>'}));
    EXPECT_EQ(old.Filters[0].CondLinks, (std::array<std::uint8_t, 2>{1, 2}));
    EXPECT_EQ(old.Filters[0].CondTail, (std::array<std::uint8_t, 4>{}));
    EXPECT_EQ(old.FormFlag, 1);
    EXPECT_EQ(old.Splitters, (std::array<std::uint8_t, 3>{0x29, 0x2A, 0x2B}));
    EXPECT_EQ(old.HdrBytes, (std::array<std::uint8_t, 5>{0x11, 0x12, 0x13, 0, 0x15}));
    EXPECT_TRUE(matchPassword20("abc", old.Password));
    EXPECT_EQ(old.Texts[0], "a");
    EXPECT_EQ(old.Texts[1], "bc");
    EXPECT_EQ(old.Texts[2], "");
}

TEST(LoadDBProps1, hasAsManyTextsAsTheFourthHeaderByteSays) {
    struct Case {
        const char* headerByte;
        int texts;
    };
    for (const Case& c : {Case{"00", 3}, {"01", 3}, {"02", 8}, {"03", 14}, {"04", 3}, {"FF", 3}}) {
        const std::string head =
            "01 01 64 " + noViewsNoFilters() + "00 28*3 00 00 00 " + c.headerByte + " 00 00*15 00*10 ";
        OldDB old;
        EXPECT_TRUE(read1(head + times(c.texts, "'x' 00 "), old).ok()) << c.headerByte;
        for (int i = 0; i < 14; ++i)
            EXPECT_EQ(old.Texts[static_cast<std::size_t>(i)], i < c.texts ? "x" : "") << c.headerByte << ' ' << i;
        EXPECT_FALSE(read1(head + times(c.texts - 1, "'x' 00 "), old).ok()) << c.headerByte;
        EXPECT_FALSE(read1(head + times(c.texts + 1, "'x' 00 "), old).ok()) << c.headerByte;
    }
}

// Behind the version, up to the views.
const std::string kOldestHead = " 05 28*3 07 08 E1E6E7 5A*7 'a' 00 'b' 00 'c' 00 ";

TEST(LoadDBProps1, readsTheShorterLayoutOfFormat099) {
    OldDB old;
    const std::string view = "00*21 0250 00*70 09 EE*4 ";
    const std::string last = "'Mine' 00*17 00*72 00 00*4 ";
    const auto read = read1("03 05 63 " + kOldestHead + view + times(3, kEmptyView) + last, old);
    ASSERT_TRUE(read.ok()) << read.error().description();
    EXPECT_TRUE(old.isFormat099);
    EXPECT_EQ(old.Version, 199);
    EXPECT_EQ(old.NumFields, 3);
    EXPECT_EQ(old.NumViews, 5);
    EXPECT_EQ(old.FormFlag, 5);
    EXPECT_EQ(old.HdrBytes, (std::array<std::uint8_t, 5>{7, 8}));
    EXPECT_TRUE(matchPassword20("abc", old.Password));
    EXPECT_EQ(old.Texts[2], "c");
    EXPECT_EQ(old.Texts[3], "");
    EXPECT_EQ(old.Views[0].Name, "View00");
    EXPECT_EQ(old.Views[0].Columns[0], (model::ViewColumn{.Field = 2, .Width = 0x50}));
    EXPECT_EQ(old.Views[0].ViewByte, 9);
    EXPECT_EQ(old.Views[4].Name, "Mine");
    EXPECT_EQ(old.Views[11].Name, "View11");
    EXPECT_EQ(old.Filters[0].Name, "Filter00");
    EXPECT_EQ(old.Filters[11].Name, "Filter11");
    EXPECT_EQ(old.Filters[0].CondFields[0], 0);
}

TEST(LoadDBProps1, liftsEveryVersionBelow100) {
    for (const auto& [version, lifted] : {std::pair{"00", 100}, {"02", 102}, {"63", 199}}) {
        OldDB old;
        EXPECT_TRUE(read1("01 01 " + std::string(version) + kOldestHead + times(5, kEmptyView), old).ok());
        EXPECT_EQ(old.Version, lifted);
    }
    for (const auto& [version, kept] : {std::pair{"64", 100}, {"FF", 255}}) {
        OldDB old;
        EXPECT_TRUE(
            read1("01 01 " + std::string(version) + noViewsNoFilters() + "00 28*3 00*5 00*15 00*10 00*3", old).ok());
        EXPECT_EQ(old.Version, kept);
        EXPECT_FALSE(old.isFormat099);
    }
}

TEST(LoadDBProps1, refusesCountsThatTheFormatDoesNotHave) {
    const std::string rest = " 64 " + noViewsNoFilters() + "00 28*3 00*5 00*15 00*10 00*3";
    OldDB old;
    EXPECT_TRUE(read1("25 0C" + rest, old).ok()); // 37 slots, 12 views
    const auto fields = read1("26 0C" + rest, old);
    ASSERT_FALSE(fields.ok());
    EXPECT_EQ(fields.error().text, "38 fields, at most 37");
    const auto views = read1("25 0D" + rest, old);
    ASSERT_FALSE(views.ok());
    EXPECT_EQ(views.error().text, "13 views, at most 12");
}

// Record 1 ---------------------------------------------------------------------------------------------------

platform::Status read2(int entries, const std::string& text, OldDB& old) {
    old = {};
    old.NumFields = static_cast<std::uint8_t>(entries);
    const Bytes bytes = hex(text);
    ByteReader in(bytes);
    return loadDBProps2(in, old);
}

TEST(LoadDBProps2, readsAnEntryForEachField) {
    OldDB old;
    ASSERT_TRUE(read2(3, "00 00 00 00 'Categories' 00  02 04 07 03 'Price' 00  24 01 00 00 00", old).ok());
    EXPECT_EQ(old.Fields[0].Type, FieldType::List);
    EXPECT_EQ(old.Fields[0].Name, "Categories");
    EXPECT_EQ(old.Fields[1], model::FieldDef{});
    EXPECT_EQ(old.Fields[2],
              (model::FieldDef{
                  .Type = FieldType::Float, .HandheldByte = 7, .Decimals = 3, .Name = "Price", .Default = ""}));
    EXPECT_EQ(old.Fields[36].Type, FieldType::Text);
    ASSERT_TRUE(read2(0, "", old).ok());
    EXPECT_EQ(old.Fields[0].Type, FieldType::List);
}

TEST(LoadDBProps2, refusesWhatIsNoFieldTable) {
    struct Case {
        const char* name;
        int entries;
        const char* bytes;
        const char* reason;
    };
    const Case cases[] = {
        {"slot beyond the last", 1, "25 01 00 00 00", "field slot 37, at most 36"},
        {"One to Many", 1, "01 0E 00 00 00", "field type 14, which the format does not have"},
        {"Image", 1, "01 12 00 00 00", "field type 18, which the format does not have"},
        {"Adv Expression", 1, "01 16 00 00 00", "field type 22, which the format does not have"},
        {"an entry too few", 2, "01 01 00 00 00", "the file ends inside it"},
        {"an entry too many", 1, "01 01 00 00 00 02 01 00 00 00", "5 bytes are left over"},
        {"a name without its end", 1, "01 01 00 00 'Name'", "the file ends inside a text"},
    };
    for (const Case& c : cases) {
        OldDB old;
        const auto read = read2(c.entries, c.bytes, old);
        ASSERT_FALSE(read.ok()) << c.name;
        EXPECT_EQ(read.error().text, c.reason) << c.name;
        EXPECT_EQ(read.error().tag, "Load_DBProps : loadDBProps2") << c.name;
    }
}

// Whole files ------------------------------------------------------------------------------------------------

struct OlderDatabase : testing::Test {
    test::TestServices t;
    model::Document doc;

    platform::Status read(const Bytes& bytes) {
        model::clearDocument(doc);
        return readOlderDatabase(doc, bytes, t.regional);
    }
    void readWell(const Bytes& bytes) {
        const auto status = read(bytes);
        ASSERT_TRUE(status.ok()) << status.error().description();
    }
    // The reason of a refusal, with its record.
    std::string refusal(const Bytes& bytes) {
        const auto status = read(bytes);
        return status.ok() ? "read" : status.error().description();
    }
    std::string cell(int record, int slot) const { return doc.grd.text(record + 2, slot + 1); }
};

TEST_F(OlderDatabase, readsCellsOfEveryType) {
    readWell(test::smallOlder().bytes());
    EXPECT_EQ(doc.NumDataRecs, 3);
    EXPECT_EQ(doc.NumFileRecs, 90); // of the file that a save writes
    const std::vector<std::pair<int, const char*>> expected = {
        {0, "work"}, {1, "Ada"},      {2, "12"},         {3, "100000"}, {4, "3.50"}, {5, "green"},
        {6, ""},     {7, "2/1/2003"}, {8, "1:05:09 PM"}, {10, "note"},  {11, "7"},   {12, "5"},
        {13, ""},    {15, "Bob"},     {16, "555"},       {17, "large"}};
    for (const auto& [slot, text] : expected)
        EXPECT_EQ(cell(0, slot), text) << slot;
    EXPECT_EQ(doc.grd.picture(2, 7), model::Picture::CheckOn);
    EXPECT_EQ(doc.RecKeys[0], 7);
    EXPECT_EQ(doc.CellLongs.get(0, 0), 2);
    EXPECT_EQ(doc.CellLongs.get(0, 5), 7);
    EXPECT_EQ(doc.CellLongs.get(0, 15), 42);
    std::string scratch;
    EXPECT_EQ(doc.CellVals.get(0, 12, scratch), "5");
    EXPECT_EQ(cell(1, 0), "Unfiled");
    EXPECT_EQ(cell(1, 2), "-5");
    EXPECT_EQ(doc.grd.picture(3, 7), model::Picture::CheckOff);
    EXPECT_EQ(doc.grd.picture(4, 7), model::Picture::CheckOff); // no cell at all
    EXPECT_EQ(cell(2, 11), "9");
}

TEST_F(OlderDatabase, readsTheProperties) {
    readWell(test::smallOlder(true).bytes());
    const model::DatabaseModel& db = doc.CurrDB20;
    EXPECT_EQ(db.DBName, "MS2_Small");
    EXPECT_EQ(db.FormatVersion, 21);
    EXPECT_EQ(db.NumFields, 18);
    EXPECT_EQ(db.NumViews, 2);
    EXPECT_EQ(db.Views[1].Name, "Short");
    EXPECT_EQ(db.Filters[0].Name, "Done");
    EXPECT_EQ(db.LastKey, 9);
    EXPECT_EQ(db.Lists.at(5).Items[1], "green");
    EXPECT_EQ(db.Lists.at(0).ItemIds[1], 2);
    EXPECT_EQ(db.Externals.at(12), (model::ExternalDef{.Source = "MSA_Authors", .SourceField = 1, .MatchField = 2}));
    EXPECT_EQ(db.Externals.at(15).ABField1, 2);
    EXPECT_EQ(db.Externals.at(15).ABField2(), 9);
    EXPECT_TRUE(matchPassword20("secret", db.Passwords[0]));
    EXPECT_EQ(db.Fields[14].Type, FieldType::NotUsed);
    EXPECT_EQ(db.Fields[14].Name, "Fld14");
}

TEST_F(OlderDatabase, readsFormat099) {
    readWell(test::smallOldest().bytes());
    EXPECT_EQ(doc.CurrDB20.Views[0].Name, "View00");
    EXPECT_EQ(doc.CurrDB20.Views[11].Name, "View11");
    EXPECT_EQ(doc.CurrDB20.Filters[11].Name, "Filter11");
    EXPECT_EQ(cell(0, 1), "Ada");
}

TEST_F(OlderDatabase, expressionsHaveNoResultTypeAndKeepTheirOperators) {
    for (const int tokens : {7, 15}) {
        OlderFile file = test::smallOlder();
        file.expressionTokens = tokens;
        file.db.Expressions[9].Tokens = {42, '+', 43, '*', 86, '/', 47}; // fields 42, 43 and 47 are none here
        file.db.Expressions[9].TokenTexts = {"", "", "", "", "25"};
        readWell(file.bytes());
        EXPECT_EQ(doc.CurrDB20.Expressions.at(9).ResultType, 0);
        EXPECT_EQ(doc.CurrDB20.Expressions.at(9), file.db.Expressions.at(9)) << tokens;
    }
}

TEST_F(OlderDatabase, aFileOf40RecordsHasNoDataAndNoLastKey) {
    OlderFile file;
    file.db.LastKey = 55;
    readWell(file.bytes());
    EXPECT_EQ(doc.NumDataRecs, 0);
    EXPECT_EQ(doc.CurrDB20.LastKey, 1);
    file.record(0, 3, "");
    readWell(file.bytes());
    EXPECT_EQ(doc.NumDataRecs, 1);
    EXPECT_EQ(doc.CurrDB20.LastKey, 55);
}

TEST_F(OlderDatabase, dropsDeletedDataRecordsOnly) {
    RawFile raw = test::smallOlder().raw();
    raw.records[41].attributes |= 0x80;
    raw.records[39].attributes |= 0x80; // the last key
    readWell(raw.bytes());
    EXPECT_EQ(doc.NumDataRecs, 2);
    EXPECT_EQ(doc.RecKeys[0], 7);
    EXPECT_EQ(doc.RecKeys[1], 9);
    EXPECT_EQ(doc.CurrDB20.LastKey, 9);
}

TEST_F(OlderDatabase, leadingBytesAreNotLookedAt) {
    RawFile raw = test::smallOlder().raw();
    for (RawFile::Record& record : raw.records)
        record.bytes[0] = 0xEE;
    readWell(raw.bytes());
    EXPECT_EQ(cell(0, 1), "Ada");
}

TEST_F(OlderDatabase, skipsGapsBetweenRecords) {
    RawFile raw = test::smallOlder().raw();
    raw.records[1].gapAhead = 5;
    raw.records[41].gapAhead = 7;
    // What stands ahead of the next record belongs to this one, and must be as it should be.
    EXPECT_EQ(refusal(raw.bytes()), "Record 0: 5 bytes are left over");
    raw.records[1].gapAhead = 0;
    raw.records[0].gapAhead = 3;
    raw.records[41].gapAhead = 0;
    readWell(raw.bytes());
    EXPECT_EQ(cell(0, 1), "Ada");
}

TEST_F(OlderDatabase, refusesRecordsThatAreNotAsTold) {
    struct Case {
        const char* name;
        std::size_t record;
        const char* bytes;
        const char* reason;
    };
    const Case cases[] = {
        {"no field table", 1, "01", "Record 1: the file ends inside it"},
        {"attribute without its byte", 3, "03", "Record 3: the file ends inside it"},
        {"a list without its items", 7, "07 02 01 02 'a' 00", "Record 7: the file ends inside a text"},
        {"an expression cut", 11, "0B 01 00", "Record 11: the file ends inside it"},
        {"a join without its fields", 14, "0E 'MSA_B' 00 01", "Record 14: the file ends inside it"},
        {"no last key", 39, "27 00 00", "Record 39: the file ends inside it"},
        {"a data record without a key", 40, "28 00 00 00 00", "Record 40: 5 bytes, at least 6"},
        {"no end mark", 40, "28 00 00000001", "Record 40: it has no end mark"},
        {"half an end mark", 40, "28 00 00000001 00", "Record 40: it has no end mark"},
        {"another end mark", 40, "28 00 00000001 01 00", "Record 40: it has no end mark"},
        {"bytes behind the end mark", 40, "28 00 00000001 00 00 00",
         "Record 40: field type 0, which the format does not have"},
        {"a type without cells", 40, "28 00 00000001 0B 0B 00 00",
         "Record 40: field type 11, which the format does not have"},
        {"a type of the present format", 40, "28 00 00000001 14 01 00000005 00 00",
         "Record 40: field type 20, which the format does not have"},
        {"the categories' slot", 40, "28 00 00000001 01 00 01 'a' 00 00 00", "Record 40: field slot 0, at most 36"},
        {"a slot beyond the last", 40, "28 00 00000001 01 25 01 'a' 00 00 00",
         "Record 40: field slot 37, at most 36"},
        {"a cell cut", 40, "28 00 00000001 03 03 00 01", "Record 40: the file ends inside it"},
        {"a text without its end", 40, "28 00 00000001 01 01 03 'Ada'", "Record 40: it has no end mark"},
    };
    for (const Case& c : cases) {
        RawFile raw = test::smallOlder().raw();
        raw.set(c.record, c.bytes);
        EXPECT_EQ(refusal(raw.bytes()), c.reason) << c.name;
    }
}

TEST_F(OlderDatabase, refusesAListThatIsNotAllThere) {
    RawFile raw = OlderFile().raw();
    raw.records.pop_back();
    EXPECT_EQ(refusal(raw.bytes()), "39 records, at least 40");
    const Bytes whole = OlderFile().bytes();
    EXPECT_EQ(refusal({whole.begin(), whole.begin() + 77}), "77 bytes, at least 78");
    EXPECT_EQ(refusal({whole.begin(), whole.begin() + 100}), "40 records in the header, at most 2");
}

void setOffset(Bytes& file, std::size_t entry, std::size_t offset) {
    for (std::size_t i = 0; i < 4; ++i)
        file[78 + 8 * entry + i] = static_cast<std::uint8_t>(offset >> (24 - 8 * i));
}

TEST_F(OlderDatabase, refusesFixedRecordsOneInsideTheOther) {
    const RawFile raw = OlderFile().raw();
    Bytes bytes = raw.bytes();
    setOffset(bytes, 5, raw.offset(4));
    EXPECT_EQ(refusal(bytes), "Record 5: it starts inside another one");
    bytes = raw.bytes();
    setOffset(bytes, 0, 10);
    EXPECT_EQ(refusal(bytes), "Record 0: it starts inside another one");
    bytes = raw.bytes();
    setOffset(bytes, 39, bytes.size() + 1);
    EXPECT_NE(refusal(bytes).find("Record 39: it starts at byte"), std::string::npos);
}

TEST_F(OlderDatabase, leavesADataRecordThatStartsInsideAnotherEmpty) {
    RawFile raw = test::smallOlder().raw();
    raw.records[42].bytes.clear();
    Bytes bytes = raw.bytes();
    setOffset(bytes, 42, raw.offset(40));
    readWell(bytes);
    EXPECT_EQ(doc.NumDataRecs, 3);
    EXPECT_EQ(cell(1, 1), "Second");
    EXPECT_EQ(cell(2, 1), "");
    EXPECT_EQ(doc.RecKeys[2], 0);
}

TEST_F(OlderDatabase, callsItsStepsInTheirOrder) {
    std::vector<std::string> calls;
    ReadSteps steps;
    steps.onFormat099 = [&] { calls.emplace_back("0.99"); };
    steps.afterHeaderValues = [&](model::Document& opened) {
        calls.emplace_back("login " + std::to_string(passwordExists20(opened.CurrDB20.Passwords[0])));
        return true;
    };
    steps.afterFieldTable = [&](model::Document& opened) { calls.push_back(opened.CurrDB20.Fields[1].Name); };
    steps.onRecord = [&](int record, int total) {
        calls.push_back(std::to_string(record) + "/" + std::to_string(total));
    };
    OlderFile file = test::smallOlder(true);
    ASSERT_TRUE(readOlderDatabase(doc, file.bytes(), t.regional, steps).ok());
    EXPECT_EQ(calls, (std::vector<std::string>{"login 1", "Title", "0/3"}));
    calls.clear();
    file = test::smallOldest();
    ASSERT_TRUE(readOlderDatabase(doc, file.bytes(), t.regional, steps).ok());
    EXPECT_EQ(calls, (std::vector<std::string>{"0.99", "login 0", "Title", "0/3"}));
}

TEST_F(OlderDatabase, aRefusedLoginEndsTheRead) {
    ReadSteps steps;
    bool gridMade = false;
    steps.afterHeaderValues = [](model::Document&) { return false; };
    steps.afterFieldTable = [&](model::Document&) { gridMade = true; };
    const auto status = readOlderDatabase(doc, test::smallOlder().bytes(), t.regional, steps);
    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.error().kind, platform::ErrorKind::Refused);
    EXPECT_FALSE(gridMade);
}

TEST_F(OlderDatabase, structureIsReadWithoutTheRecords) {
    RawFile raw = test::smallOlder(true).raw();
    raw.set(40, "28"); // which nobody looks at
    model::DatabaseModel db;
    ASSERT_TRUE(readOlderStructure(db, raw.bytes()).ok());
    readWell(test::smallOlder(true).bytes());
    EXPECT_EQ(db, doc.CurrDB20);
    raw.set(1, "01");
    EXPECT_FALSE(readOlderStructure(db, raw.bytes()).ok());
    EXPECT_FALSE(readOlderStructure(db, {}).ok());
}

TEST_F(OlderDatabase, onlyTheFieldsThatAreWantedAreRead) {
    ReadSteps steps;
    steps.onlyFields = [](const model::DatabaseModel&) { return FieldSet().set(1).set(10); };
    ASSERT_TRUE(readOlderDatabase(doc, test::smallOlder().bytes(), t.regional, steps).ok());
    EXPECT_EQ(cell(0, 1), "Ada");
    EXPECT_EQ(cell(0, 10), "note");
    for (const int slot : {0, 2, 5, 12, 15, 17})
        EXPECT_EQ(cell(0, slot), "") << slot;
}

TEST_F(OlderDatabase, creatorIsLookedAtAhead) {
    RawFile raw = OlderFile().raw();
    EXPECT_EQ(verifyOlder(raw.bytes()).value(), Verdict::Good);
    raw.creator = "MOSS";
    EXPECT_EQ(verifyOlder(raw.bytes()).value(), Verdict::WrongCreator);
    EXPECT_FALSE(verifyOlder(hex("00*77")).ok());
    EXPECT_EQ(verifyOlder(hex("00*78")).value(), Verdict::WrongCreator);
}

TEST_F(OlderDatabase, whatWasReadIsWrittenInThePresentFormat) {
    for (const OlderFile& file : {test::smallOlder(), test::smallOldest(), OlderFile()}) {
        readWell(file.bytes());
        const auto built = buildDatabase(doc, t);
        ASSERT_TRUE(built.ok()) << built.error().description();
        EXPECT_EQ(verifyRecords(built.value().bytes).value(), Verdict::Good);
        model::Document again;
        const auto status = readDatabase(again, built.value().bytes, "MS2_A.pdb", t.regional);
        ASSERT_TRUE(status.ok()) << status.error().description();
        EXPECT_EQ(again.NumDataRecs, doc.NumDataRecs);
        for (int record = 0; record < doc.NumDataRecs; ++record)
            for (int slot = 0; slot <= 17; ++slot)
                EXPECT_EQ(again.grd.text(record + 2, slot + 1), cell(record, slot)) << record << ' ' << slot;
    }
}

} // namespace
} // namespace tallybook::pdb
