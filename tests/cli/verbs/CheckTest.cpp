// check: what it finds, with record number and byte.
#include "SampleBuilder.h"
#include "cli/CommandRunner.h"
#include "cli/TestBooks.h"
#include "cli/inspect/FileMap.h"
#include "cli/inspect/Findings.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::cli {
namespace {

using model::FieldType;
using platform::Bytes;
using samples::SampleBuilder;

// The small database, with verbs that do it harm.
class Victim {
public:
    Victim() : file(smallDatabase()) {}

    // Where a record, or its nth byte, stands.
    std::size_t at(int record, std::size_t byte = 0) const {
        return mapFile(file).entries[static_cast<std::size_t>(record)].bytes.start + byte;
    }
    std::size_t entry(int record) const { return 78 + static_cast<std::size_t>(record) * 8; }

    // Where the cell of a slot stands; cells are found by their type and slot.
    std::size_t cell(int record, FieldType type, int slot) const {
        const ByteRange range = mapFile(file).entries[static_cast<std::size_t>(record)].bytes;
        const std::vector<std::uint8_t> head = {static_cast<std::uint8_t>(type), static_cast<std::uint8_t>(slot)};
        const auto begin = file.begin() + static_cast<std::ptrdiff_t>(range.start) + 6;
        const auto found =
            std::search(begin, file.begin() + static_cast<std::ptrdiff_t>(range.end), head.begin(), head.end());
        return static_cast<std::size_t>(found - file.begin());
    }
    void set(std::size_t position, const Bytes& bytes) {
        std::copy(bytes.begin(), bytes.end(), file.begin() + static_cast<std::ptrdiff_t>(position));
    }
    // Puts bytes at the end of a record; the records behind it move.
    void grow(int record, const Bytes& bytes) {
        const FileMap map = mapFile(file);
        for (const ListEntry& moved : map.entries)
            if (moved.entry > record)
                setOffset(moved.entry, moved.offset + static_cast<std::uint32_t>(bytes.size()));
        const std::size_t end = map.entries[static_cast<std::size_t>(record)].bytes.end;
        file.insert(file.begin() + static_cast<std::ptrdiff_t>(end), bytes.begin(), bytes.end());
    }
    void setOffset(int record, std::uint32_t offset) {
        for (int byte = 0; byte < 4; ++byte)
            file[entry(record) + static_cast<std::size_t>(byte)] =
                static_cast<std::uint8_t>(offset >> (24 - 8 * byte));
    }
    void cut(std::size_t bytes) { file.resize(file.size() - bytes); }

    // What check says.
    std::vector<std::string> lines() const { return linesOf(file); }
    static std::vector<std::string> linesOf(const Bytes& bytes) {
        std::vector<std::string> all;
        for (const Finding& finding : checkFile(bytes, {}))
            all.push_back(findingLine(finding));
        return all;
    }

    Bytes file;
};

using Lines = std::vector<std::string>;

std::string place(int record, std::size_t byte) {
    return "record " + std::to_string(record) + ", byte " + std::to_string(byte) + ": ";
}

bool has(const Lines& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

TEST(CheckTest, findsNothingInAGoodFile) {
    EXPECT_EQ(Victim().lines(), Lines{});
}

// The container ----------------------------------------------------------------------------------------------

TEST(CheckContainerTest, findsANameWithoutItsNul) {
    Victim victim;
    for (std::size_t byte = 9; byte < 32; ++byte)
        victim.file[byte] = 'x';
    EXPECT_EQ(victim.lines(), Lines{"byte 0: the name has no NUL: its last character is lost when saved"});
}

TEST(CheckContainerTest, findsANameWithoutItsPrefix) {
    Victim victim;
    victim.file[0] = 'X';
    EXPECT_EQ(victim.lines(), Lines{"byte 0: the name \"XS2_Small\" has no MS2_: a save puts it in front"});
}

TEST(CheckContainerTest, findsAnotherTypeAndCreator) {
    Victim victim;
    victim.set(60, {'D', 'A', 'T', 'A'});
    victim.set(64, {'m', 'o', 's', 's'});
    const Lines lines = victim.lines();
    EXPECT_TRUE(has(lines, "byte 60: the type is \"DATA\", not \"data\""));
    EXPECT_TRUE(has(lines, "byte 64: the creator is \"moss\", not \"MOSS\": this is no Tallybook"));
}

TEST(CheckContainerTest, findsWhatASaveLeavesOutOfTheHeader) {
    Victim victim;
    victim.file[55] = 1;
    victim.file[59] = 1;
    victim.file[75] = 1;
    EXPECT_EQ(victim.lines(), (Lines{"byte 52: there is application info: a save leaves it out",
                                     "byte 56: there is sort info: a save leaves it out",
                                     "byte 72: there is a second record list, which is not read"}));
}

TEST(CheckContainerTest, findsACountThatTheFileHasNoRoomFor) {
    Victim victim;
    victim.set(76, {0xFF, 0xFF});
    const std::size_t room = (victim.file.size() - 78) / 8;
    EXPECT_TRUE(has(victim.lines(), "byte 76: 65535 records in the header, the file has room for " +
                                        std::to_string(room) + " entries"));
}

TEST(CheckContainerTest, findsTooFewRecords) {
    Victim victim;
    victim.set(76, {0, 50});
    EXPECT_TRUE(has(victim.lines(), "byte 78: 50 records, at least 87"));
}

TEST(CheckContainerTest, findsADeletedEntry) {
    Victim victim;
    victim.file[victim.entry(88) + 4] = 0xC0;
    EXPECT_EQ(victim.lines(), Lines{"byte 782: entry 88 is marked deleted: a save leaves it out"});
}

TEST(CheckContainerTest, findsAFixedRecordThatIsMarkedDeleted) {
    Victim victim;
    victim.file[victim.entry(5) + 4] = 0x80;
    EXPECT_EQ(victim.lines(), Lines{place(5, victim.entry(5)) +
                                    "it is marked deleted: it is read all the same, a save takes that away"});
}

TEST(CheckContainerTest, findsBytesOfNoRecord) {
    Victim victim;
    victim.file[799] = 7;
    EXPECT_EQ(victim.lines(), Lines{"byte 798: 2 bytes of no record: a save leaves them out"});
}

TEST(CheckContainerTest, findsOffsetsThatDoNotRise) {
    Victim victim;
    victim.setOffset(88, 800);
    EXPECT_TRUE(has(victim.lines(),
                    place(88, victim.entry(88)) + "its offset 800 is not behind that of the record before it"));
}

TEST(CheckContainerTest, findsARecordBeyondTheEnd) {
    Victim victim;
    const std::string size = std::to_string(victim.file.size());
    victim.setOffset(89, 0x7FFFFFFF);
    const Lines lines = victim.lines();
    EXPECT_TRUE(has(lines, place(89, victim.entry(89)) + "it starts at byte 2147483647, the file has " + size));
    EXPECT_FALSE(has(lines, place(89, victim.file.size()) + "it has no bytes")); // said once is enough
}

TEST(CheckContainerTest, findsWrongLeadingBytes) {
    Victim victim;
    victim.file[victim.at(40)] = 41;
    victim.file[victim.at(88)] = 0;
    const Lines lines = victim.lines();
    EXPECT_TRUE(has(lines, place(40, victim.at(40)) + "it begins with 41, not 40"));
    EXPECT_TRUE(has(lines, place(88, victim.at(88)) + "it begins with 0, not 87"));
}

TEST(CheckContainerTest, takesFilesOfAnyLength) {
    const Bytes whole = smallDatabase();
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_NE(Victim::linesOf({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)}), Lines{})
            << length;
    EXPECT_EQ(Victim::linesOf(Bytes(10)).front(), "byte 10: the file has 10 bytes, its header alone needs 78");
}

TEST(CheckContainerTest, takesEveryByteSetToAnything) {
    const Bytes whole = smallDatabase();
    for (std::size_t byte = 0; byte < whole.size(); byte += 3)
        for (const std::uint8_t value : {0x00, 0x7F, 0x80, 0xFF}) {
            Bytes damaged = whole;
            damaged[byte] = value;
            Victim::linesOf(damaged); // under sanitizers: whatever it says
        }
}

// The fixed records ------------------------------------------------------------------------------------------

TEST(CheckPropertiesTest, saysWhatTheReaderSays) {
    Victim victim;
    victim.file[victim.at(85, 1)] = 200;
    EXPECT_TRUE(has(victim.lines(), place(85, victim.at(85, 2)) + "200 views, at most 13"));
}

TEST(CheckPropertiesTest, findsBytesThatAreNotRead) {
    Victim victim;
    victim.grow(83, {1, 2, 3});
    EXPECT_EQ(victim.lines(),
              Lines{place(83, victim.at(83, 5)) + "3 bytes at its end not read: a save leaves them out"});
}

TEST(CheckPropertiesTest, findsContentThatRunsIntoTheNextRecord) {
    Victim victim;
    victim.setOffset(84, static_cast<std::uint32_t>(victim.at(84, 0)) - 2);
    EXPECT_TRUE(
        has(victim.lines(), place(83, victim.at(84, 0)) + "its content runs on 2 bytes into what stands behind it"));
}

TEST(CheckPropertiesTest, findsAWrongNumberOfFields) {
    Victim victim;
    // A field entry is 14 bytes and its name and default: the last one, "Changed" with "U", becomes a free slot.
    const std::size_t end = victim.at(2);
    victim.file[end - 12 - 8 - 2 + 1] = 0;
    EXPECT_TRUE(has(victim.lines(), place(1, victim.at(1)) + "NumFields is 15, a save writes 14"));
}

TEST(CheckPropertiesTest, findsAnUnknownType) {
    Victim victim;
    const std::size_t end = victim.at(2);
    victim.file[end - 12 - 8 - 2 + 1] = 23;
    EXPECT_TRUE(has(victim.lines(), place(1, victim.at(1)) + "field 14 \"Changed\" has the unknown type 23"));
}

TEST(CheckPropertiesTest, findsDoubledIdsInAList) {
    Victim victim;
    victim.set(victim.at(7, 2), {1, 1, 0}); // record 7 is slot 5
    const Lines lines = victim.lines();
    EXPECT_TRUE(has(lines, place(7, victim.at(7)) + "field 5 \"Kind\": item 2 has the id 1 of another item"));
    EXPECT_TRUE(has(lines, place(7, victim.at(7)) + "field 5 \"Kind\": item 3 has the id 0, which means none"));
}

// One field, and what the change makes of the database.
template <class Change> Lines linesAfter(Change change) {
    SampleBuilder sample("MS2_Small");
    sample.addField(FieldType::Text, "Title");
    sample.addView("Short", {1}, 1);
    sample.addFilter("Some", {{1, '=', "x"}});
    sample.addForm({1});
    change(sample.database());
    Lines lines = Victim::linesOf(sample.build());
    for (std::string& line : lines) // which record is enough here
        line.erase(line.find(", byte"), line.find(": ") - line.find(", byte"));
    return lines;
}

TEST(CheckReferencesTest, findsNothingInAGoodModel) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel&) {}), Lines{});
}

TEST(CheckReferencesTest, findsViewsOfFieldsThatAreNotUsed) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Views[0].Columns[0].Field = 2;
                  db.Views[0].SortFields = {1, 81, 0};
              }),
              (Lines{"record 85: view 0 \"Short\" names field 2, which is not used",
                     "record 85: view 0 \"Short\" names field 81, which is not used"}));
}

TEST(CheckReferencesTest, findsViewsOfFiltersThatDoNotExist) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) { db.Views[0].FilterMask = 0x9001; }),
              (Lines{"record 85: view 0 \"Short\" names filter 12, which does not exist",
                     "record 85: view 0 \"Short\" names filter 15, which does not exist"}));
}

TEST(CheckReferencesTest, findsAViewsNameWithoutItsNul) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) { db.Views[0].Name = std::string(21, 'v'); }),
              Lines{"record 85: view 0 \"" + std::string(21, 'v') + "\" has no NUL behind its name"});
}

TEST(CheckReferencesTest, findsFaultsOfFilters) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Filters[0].CondFields = {1, 7, 0};
                  db.Filters[0].CondOps[0] = '?';
                  db.Filters[0].CondLinks = {'X', 0};
              }),
              (Lines{"record 86: filter 0 \"Some\" names field 7, which is not used",
                     "record 86: filter 0 \"Some\": condition 1 has the unknown operator 63",
                     "record 86: filter 0 \"Some\" has the unknown link 88"}));
}

TEST(CheckReferencesTest, findsAFilterWithoutItsFirstCondition) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Filters[1] = db.Filters[0];
                  db.Filters[0].CondFields[0] = 0;
              }),
              Lines{"record 86: filter 0 \"Some\" has no first condition"});
}

TEST(CheckReferencesTest, findsFormsOfFieldsThatAreNotUsed) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) { db.Forms[0].Items[0].Field = 3; }),
              Lines{"record 84: form 0 \"\" names field 3, which is not used"});
}

TEST(CheckReferencesTest, allowsStaticTextInForms) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) { db.Forms[0].Items[0].Field = 255; }), Lines{});
}

TEST(CheckReferencesTest, findsExpressionsOfFieldsThatAreNotUsed) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Fields[2].Type = FieldType::Expression;
                  db.Fields[2].Name = "Sum";
                  db.Expressions[2].Tokens = {1, 90, 5, 90, 106};
              }),
              (Lines{"record 4: field 2 \"Sum\" names field 5, which is not used",
                     "record 4: field 2 \"Sum\" names field 6, which is not used"}));
}

TEST(CheckReferencesTest, takesThePresentTimeOfASimpleExpressionForNoField) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Fields[2].Type = FieldType::Expression;
                  db.Expressions[2].Tokens = {79, 90, 1};
              }),
              Lines{});
}

TEST(CheckReferencesTest, findsStartFiltersThatDoNotExist) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.HdrWord1 = 3;
                  db.DefaultFilterMask = 4;
              }),
              (Lines{"record 0: HdrWord1 names filter 1, which does not exist",
                     "record 0: DefaultFilterMask names filter 2, which does not exist"}));
}

TEST(CheckReferencesTest, findsConditionsOfFieldsThatAreNotUsed) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Fields[2].Type = FieldType::ConditionalExpression;
                  db.Fields[2].Name = "If";
                  db.CondExprs[2].CondFields[0] = 9;
                  db.CondExprs[2].CondOps[0] = '=';
                  db.CondExprs[2].TrueField = 8;
              }),
              (Lines{"record 4: field 2 \"If\" names field 9, which is not used",
                     "record 4: field 2 \"If\" names field 8, which is not used"}));
}

TEST(CheckReferencesTest, findsLookupsWithoutTheirJoin) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Fields[2].Type = FieldType::DBLookup;
                  db.Fields[2].Name = "Town";
                  db.Externals[2].Source = "MS2_Towns";
                  db.Externals[2].SourceField = 3;
              }),
              Lines{"record 4: field 2 \"Town\" names field 3, which is not used"});
}

TEST(CheckReferencesTest, findsViewsAndFiltersWithoutAName) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Views[0].Name.clear();
                  db.Filters[0].Name.clear();
              }),
              (Lines{"record 85: view 0 \"\" has no name", "record 86: filter 0 \"\" has no name"}));
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) { // a slot that is free is no fault
                  db.Views[1] = db.Views[0];
                  db.Views[0] = {};
                  db.NumViews = 2;
              }),
              Lines{});
}

TEST(CheckReferencesTest, findsJoinsWithoutSourceOrKey) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Fields[2].Type = FieldType::DBJoin;
                  db.Fields[2].Name = "Town";
                  db.Externals[2].KeyType = 7;
                  db.Fields[3].Type = FieldType::OneToMany;
                  db.Fields[3].Name = "Loans";
              }),
              (Lines{"record 4: field 2 \"Town\" names no other Tallybook",
                     "record 4: field 2 \"Town\" has the key type 7, which no key has",
                     "record 5: field 3 \"Loans\" names no other Tallybook"}));
}

TEST(CheckReferencesTest, findsLookupsThatFollowNoJoin) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  for (const int slot : {2, 3}) {
                      db.Fields[static_cast<std::size_t>(slot)].Type = FieldType::DBLookup;
                      db.Fields[static_cast<std::size_t>(slot)].Name = "Town " + std::to_string(slot);
                      db.Externals[slot].Source = "MS2_Towns";
                  }
                  db.Externals[3].SourceField = 1;
              }),
              (Lines{"record 4: field 2 \"Town 2\" follows no join",
                     "record 5: field 3 \"Town 3\" follows field 1, which is no join"}));
}

TEST(CheckReferencesTest, findsTokensAndFormatsThatMeanNothing) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Fields[2].Type = FieldType::Expression;
                  db.Fields[2].Name = "Sum";
                  db.Expressions[2].ResultType = 13; // texts are for advanced ones
                  db.Expressions[2].Tokens = {1, 94, 88, 91, 86};
                  db.Fields[3].Type = FieldType::AdvExpression;
                  db.Fields[3].Name = "Adv";
                  db.Expressions[3].ResultType = 14;
                  db.Expressions[3].Tokens = {94, 1, 98, 85, 89, 200};
                  db.Expressions[3].TokenTexts[0] = "\x12"; // functions have codes to 17
                  db.Expressions[3].TokenTexts[2] = "\x0D"; // operators to 12
                  db.Expressions[3].TokenTexts[4] = "\x05"; // colours to 4
              }),
              (Lines{"record 4: field 2 \"Sum\" has the unknown result format 13",
                     "record 4: field 2 \"Sum\": token 2 is 94, which means nothing there",
                     "record 4: field 2 \"Sum\": token 3 is 88, which means nothing there",
                     "record 5: field 3 \"Adv\" has the unknown result format 14",
                     "record 5: field 3 \"Adv\": token 1 is 94 with 18, which means nothing there",
                     "record 5: field 3 \"Adv\": token 3 is 98 with 13, which means nothing there",
                     "record 5: field 3 \"Adv\": token 4 is 85, which means nothing there",
                     "record 5: field 3 \"Adv\": token 5 is 89 with 5, which means nothing there",
                     "record 5: field 3 \"Adv\": token 6 is 200, which means nothing there"}));
}

TEST(CheckReferencesTest, findsColoursOfConditionsThatAreNone) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Fields[2].Type = FieldType::ConditionalExpression;
                  db.Fields[2].Name = "If";
                  db.CondExprs[2].TrueKind = 9;
                  db.CondExprs[2].FalseKind = 4;
              }),
              Lines{"record 4: field 2 \"If\" has the unknown colour 9"});
}

TEST(CheckReferencesTest, findsANextValueOfZero) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Fields[2].Type = FieldType::AutoIncremental;
                  db.Fields[2].Name = "No";
                  db.AutoIncNext[2] = 0;
              }),
              Lines{"record 4: field 2 \"No\" has the next value 0, which no record keeps"});
}

TEST(CheckReferencesTest, findsAStartFormThatIsNotThere) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) { db.StartForm = 16; }),
              Lines{"record 84: StartForm is 16, NumForms 1"});
}

TEST(CheckReferencesTest, findsTwoFieldsOfOneName) {
    EXPECT_EQ(linesAfter([](model::DatabaseModel& db) {
                  db.Fields[2].Type = FieldType::Text;
                  db.Fields[2].Name = "Title";
              }),
              Lines{"record 1: field 2 \"Title\" has the name of field 1"});
}

// The data records -------------------------------------------------------------------------------------------

struct CellCase {
    const char* name;
    int record;
    FieldType type; // the cell that is changed
    int slot;
    std::size_t byte; // of the cell, from its type byte
    Bytes bytes;
    std::string text; // of the first finding, at the cell
};

class CheckCellTest : public testing::TestWithParam<CellCase> {};

TEST_P(CheckCellTest, findsIt) {
    const CellCase& tested = GetParam();
    Victim victim;
    const std::size_t cell = victim.cell(tested.record, tested.type, tested.slot);
    victim.set(cell + tested.byte, tested.bytes);
    const Lines lines = victim.lines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front(), place(tested.record, cell) + tested.text);
}

INSTANTIATE_TEST_SUITE_P(
    Cells, CheckCellTest,
    testing::Values(
        CellCase{"typeWithoutCells", 88, FieldType::Text, 1, 0, {21}, "cell of field 1: the type 21 has no cells"},
        CellCase{
            "otherType", 89, FieldType::Integer, 2, 1, {3}, "cell of field 3: its type 2 is not the field's type 3"},
        CellCase{"freeField",
                 89,
                 FieldType::Integer,
                 2,
                 1,
                 {20},
                 "cell of field 20: the field is not used: a save leaves it out"},
        CellCase{"item", 87, FieldType::List, 5, 2, {9}, "cell of field 5: the item 9 does not exist"},
        CellCase{"radioItem", 87, FieldType::RadioButton, 10, 2, {3}, "cell of field 10: the item 3 does not exist"},
        CellCase{
            "checkState", 87, FieldType::Checkbox, 6, 2, {2}, "cell of field 6: the check state is 2, not 0 or 1"},
        CellCase{"month", 87, FieldType::Date, 7, 4, {13}, "cell of field 7: it is no date"},
        CellCase{"hour", 87, FieldType::Time, 8, 3, {24}, "cell of field 8: it is no time of day"},
        CellCase{"digits",
                 87,
                 FieldType::Float,
                 4,
                 2,
                 {0x40, 0x60, 0x51, 0xEC},
                 "cell of field 4: its value 3.505 is saved as 3.51"},
        CellCase{"notANumber", 87, FieldType::Float, 4, 2, {0x7F, 0xC0, 0, 0}, "cell of field 4: it is no number"},
        CellCase{"length", 88, FieldType::Text, 1, 2, {5}, "cell of field 1: its text has 6 characters, not 5"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(CheckRecordsTest, findsCategoriesThatDoNotExist) {
    Victim victim;
    victim.file[victim.at(88, 1)] = 9;
    EXPECT_EQ(victim.lines(), Lines{place(88, victim.at(88, 1)) + "the category 9 does not exist"});
}

TEST(CheckRecordsTest, findsDoubledKeys) {
    Victim victim;
    victim.file[victim.at(89, 5)] = 1;
    EXPECT_EQ(victim.lines(), Lines{place(89, victim.at(89, 2)) + "the key 1 is also that of record 87"});
}

TEST(CheckRecordsTest, findsAKeyAboveTheLastOne) {
    Victim victim;
    victim.file[victim.at(89, 5)] = 9;
    EXPECT_EQ(victim.lines(), Lines{place(89, victim.at(89, 2)) + "the key 9 is above the last key 3"});
}

TEST(CheckRecordsTest, findsAMissingEndMark) {
    Victim victim;
    victim.cut(2);
    EXPECT_EQ(victim.lines(), Lines{place(89, victim.file.size()) + "the record has no end mark"});
}

TEST(CheckRecordsTest, findsARecordThatEndsInsideACell) {
    Victim victim;
    victim.cut(3); // the end mark and the last byte of the Auto Incremental value
    EXPECT_EQ(victim.lines(),
              Lines{place(89, victim.cell(89, FieldType::AutoIncremental, 11)) + "the record ends inside this cell"});
}

TEST(CheckRecordsTest, findsARecordShorterThanItsHeader) {
    Victim victim;
    victim.file.resize(victim.at(89) + 5);
    EXPECT_TRUE(has(victim.lines(), place(89, victim.at(89)) + "shorter than the header of a data record"));
}

TEST(CheckRecordsTest, findsBytesBehindTheEndMark) {
    Victim victim;
    const std::size_t size = victim.file.size();
    victim.grow(89, {1, 2, 3});
    EXPECT_EQ(victim.lines(),
              Lines{place(89, size) + "3 bytes behind the end mark not read: a save leaves them out"});
}

TEST(CheckRecordsTest, findsTextsThatASaveCuts) {
    SampleBuilder sample("MS2_Small");
    sample.addField(FieldType::Text, "Title");
    sample.addRecord();
    sample.set(1, std::string(254, 'x'));
    Victim victim;
    victim.file = sample.build();
    const std::size_t cell = victim.at(87, 6);
    victim.file[cell + 2] = 255;
    victim.file.insert(victim.file.begin() + static_cast<std::ptrdiff_t>(cell) + 3, 'x');
    EXPECT_EQ(victim.lines(),
              Lines{place(87, cell) + "cell of field 1: its text has 255 characters: a save cuts it to 254"});
}

TEST(CheckRecordsTest, findsValuesOfAFieldWithTooManyDecimals) {
    Victim victim;
    // Decimals is the fourth byte of a field's entry, and the name behind the twelfth.
    const std::string name = "Price";
    const auto found = std::search(victim.file.begin(), victim.file.end(), name.begin(), name.end());
    *(found - 12 + 3) = 4;
    EXPECT_EQ(victim.lines(),
              (Lines{place(1, victim.at(1)) +
                         "field 4 \"Price\" has 4 decimals, at most 3: its values are not shown and not saved",
                     place(87, victim.cell(87, FieldType::Float, 4)) +
                         "cell of field 4: its value is lost when saved, as its field has 4 decimals"}));
}

// The verb ---------------------------------------------------------------------------------------------------

TEST(CheckVerbTest, endsWithOneAndALineForEachFinding) {
    const CommandTest test;
    Victim victim;
    victim.file[0] = 'X';
    victim.file[799] = 7;
    test.put("damaged.pdb", victim.file);
    const CommandResult result = test.run({"check", "damaged.pdb"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "byte 0: the name \"XS2_Small\" has no MS2_: a save puts it in front\n"
                          "byte 798: 2 bytes of no record: a save leaves them out\n");
}

TEST(CheckVerbTest, needsNoPassword) {
    const CommandTest test;
    test.put("MS2_Locked.pdb", lockedDatabase());
    EXPECT_EQ(test.run({"check", "MS2_Locked.pdb"}).code, 0);
}

TEST(CheckVerbTest, saysWhenThereIsNoFile) {
    const CommandTest test;
    const CommandResult result = test.run({"check", "none.pdb"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("none.pdb"), std::string::npos);
}

} // namespace
} // namespace tallybook::cli
