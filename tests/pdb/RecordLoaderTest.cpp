// What a read makes of cells that do not come back as they are.
#include "pdb/OneField.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using model::FieldType;
using test::OneField;
using test::RawFile;

const std::string kTwoFields = "01 03 00 00 00*10 00 00  01 01 00*10 00 00  02 01 00*10 00 00";

// Two Text fields in slots 1 and 2; gives what they show, with "|" between, after the cells were read.
std::string shownOfTwo(const std::string& cells, const std::string& end = "00 00") {
    RawFile file;
    file.set(1, kTwoFields);
    file.add("57 00 00000001 " + cells + " " + end);
    model::Document doc;
    const auto status = readDatabase(doc, file.bytes(), "x", {});
    return status.ok() ? doc.grd.text(2, 2) + "|" + doc.grd.text(2, 3) : status.error().description();
}

TEST(LoadRecord, readsCategoryAndKey) {
    RawFile file;
    file.set(2, "02 02 01 09 'Home' 00 'Work' 00");
    file.add("57 00 00000001 00 00");
    file.add("57 09 FFFFFFFE 00 00");
    file.add("57 08 00000003 00 00"); // an item that is gone
    file.add("99 01 00000004 00 00"); // the first byte is not looked at
    model::Document doc;
    ASSERT_TRUE(readDatabase(doc, file.bytes(), "x", {}).ok());
    EXPECT_EQ(doc.grd.text(2, 1), "Unfiled");
    EXPECT_EQ(doc.grd.text(3, 1), "Work");
    EXPECT_EQ(doc.grd.text(4, 1), "");
    EXPECT_EQ(doc.grd.text(5, 1), "Home");
    EXPECT_EQ(doc.CellLongs.get(0, 0), 0);
    EXPECT_EQ(doc.CellLongs.get(1, 0), 9);
    EXPECT_EQ(doc.CellLongs.get(2, 0), 8);
    EXPECT_EQ(doc.RecKeys[1], -2);
}

// Records that follow each other are read a block of 256 at a time: one that is unlike the others must neither be
// lost nor change what stands around it. Slot 1 is a Text, slot 2 an Integer.
TEST(LoadRecord, keepsItsNeighboursWhereOneIsUnlikeThem) {
    const struct {
        const char* cells;
        const char* shown;
    } odd[] = {
        {"01 01 01 'a' 00  01 01 01 'b' 00  02 02 0007", "b|7"}, // a slot twice
        {"01 01 01 'a' 00  01 01 00 00  02 02 0007", "|7"},      // and empty the second time
        {"03 01 00000009  02 02 0007", "|7"},                    // a cell of another type
        {"02 01 0009  01 02 02 '12' 00", "9|12"},                // two of them, changed for each other
        {"02 02 0007  01 01 01 'a' 00", "a|7"},                  // slots in another order
        {"01 01 05 'ab' 00  02 02 0007", "ab|7"},                // a length that is none
        {"01 01 00 00  02 02 0000", "|0"},
    };
    for (const auto& [cells, shown] : odd) {
        for (const int place : {0, 1, 255, 256, 299}) {
            RawFile file;
            file.set(1, "01 03 00 00 00*10 00 00  01 01 00*10 00 00  02 02 00*10 00 00");
            for (int record = 0; record < 300; ++record)
                file.add("57 00 00000001 " + std::string(record == place ? cells : "01 01 02 'xy' 00  02 02 0005") +
                         " 00 00");
            model::Document doc;
            ASSERT_TRUE(readDatabase(doc, file.bytes(), "x", {}).ok());
            for (int record = 0; record < 300; ++record)
                ASSERT_EQ(doc.grd.text(record + 2, 2) + "|" + doc.grd.text(record + 2, 3),
                          record == place ? shown : "xy|5")
                    << cells << ": record " << record << " beside " << place;
        }
    }
}

TEST(LoadRecord, stopsAtItsEndMarkOrABadSlot) {
    const struct {
        const char* name;
        const char* cells;
        const char* shown;
    } cases[] = {
        {"both", "01 01 01 'a' 00  01 02 01 'b' 00", "a|b"},
        {"slots in any order", "01 02 01 'b' 00  01 01 01 'a' 00", "a|b"},
        {"type 0", "01 01 01 'a' 00  00  01 02 01 'b' 00", "a|"},
        {"slot 0", "01 01 01 'a' 00  01 00  01 02 01 'b' 00", "a|"},
        {"slot 82", "01 01 01 'a' 00  01 52  01 02 01 'b' 00", "a|"},
        {"slot 255", "01 01 01 'a' 00  01 FF  01 02 01 'b' 00", "a|"},
        {"slot 81 is read over", "01 51 01 'x' 00  01 02 01 'b' 00", "|b"},
        {"cell of a slot that is free", "01 03 01 'x' 00  01 02 01 'b' 00", "|b"},
        {"last cell of a slot wins", "01 01 01 'a' 00  01 01 01 'c' 00  01 02 01 'b' 00", "c|b"},
        {"no cells", "", "|"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(shownOfTwo(c.cells), c.shown) << c.name;
}

TEST(LoadRecord, unknownTypesHaveNoBody) {
    for (const char* type : {"0B", "0D", "0E", "15", "17", "63", "FF"})
        EXPECT_EQ(shownOfTwo(std::string(type) + " 01  01 02 01 'b' 00"), "|b") << type;
}

TEST(LoadRecord, textsGoByTheirNul) {
    const struct {
        const char* name;
        const char* cells;
        const char* shown;
    } cases[] = {
        {"stored length too small", "01 01 01 'abc' 00  01 02 01 'd' 00", "abc|d"},
        {"stored length too large", "01 01 FF 'abc' 00  01 02 01 'd' 00", "abc|d"},
        {"length 0 skips one byte", "01 01 00 00  01 02 01 'd' 00", "|d"},
        {"whatever that byte is", "01 01 00 FF  01 02 01 'd' 00", "|d"},
        {"empty although the length is not 0", "01 01 05 00  01 02 01 'd' 00", "|d"},
        {"memo", "0A 01 0001 'abc' 00  01 02 01 'd' 00", "abc|d"},
        {"memo of length 0 has nothing behind it", "0A 01 0000  01 02 01 'd' 00", "|d"},
        {"memo, length in its high byte", "0A 01 0100 'abc' 00  01 02 01 'd' 00", "abc|d"},
        {"tail of an advanced result", "16 01 00 00000000 01 'abc' 00  01 02 01 'd' 00", "abc|d"},
        {"no tail", "16 01 00 00000000 00  01 02 01 'd' 00", "0|d"},
        {"conditional of length 0", "13 01 00 00 00  01 02 01 'd' 00", "|d"},
        {"address of length 0", "0F 01 00000005 00 00  01 02 01 'd' 00", "|d"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(shownOfTwo(c.cells), c.shown) << c.name;
}

TEST(LoadRecord, cellsEndWhereTheRecordsBytesEnd) {
    const struct {
        const char* name;
        const char* cells;
        const char* shown;
    } cases[] = {
        {"without an end mark", "01 01 01 'a' 00  01 02 01 'b' 00", "a|b"},
        {"half an end mark", "01 01 01 'a' 00  00", "a|"},
        {"a type alone", "01 01 01 'a' 00  01", "a|"},
        {"a type and a slot alone", "01 01 01 'a' 00  01 02", "a|"},
        {"a length alone", "01 01 01 'a' 00  01 02 05", "a|"},
        {"a text without its NUL", "01 01 01 'a' 00  01 02 05 'bcd'", "a|bcd"},
        {"half a number", "01 01 01 'a' 00  02 02 00", "a|"},
        {"most of a long", "01 01 01 'a' 00  04 02 3F8000", "a|"},
        {"a date", "01 01 01 'a' 00  07 02 07D301", "a|"},
        {"half a memo's length", "01 01 01 'a' 00  0A 02 00", "a|"},
        {"a join without its key", "01 01 01 'a' 00  0C 02 03 0000", "a|"},
        {"a picture", "01 01 01 'a' 00  12 02 0005 00 01 02", "a|"},
        {"an item", "01 01 01 'a' 00  05 02", "a|"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(shownOfTwo(c.cells, ""), c.shown) << c.name << ", at the file's end";

        RawFile file;
        file.set(1, kTwoFields);
        file.add(std::string("57 00 00000001 ") + c.cells);
        file.add("57 00 00000002 01 01 01 'z' 00 00 00"); // never read into
        model::Document doc;
        ASSERT_TRUE(readDatabase(doc, file.bytes(), "x", {}).ok());
        EXPECT_EQ(doc.grd.text(2, 2) + "|" + doc.grd.text(2, 3), c.shown) << c.name << ", ahead of another record";
        EXPECT_EQ(doc.RecKeys[1], 2) << c.name;
        EXPECT_EQ(doc.grd.text(3, 2), "z") << c.name;
    }
}

TEST(LoadRecord, longsOfAnotherFieldTypeAreSkipped) {
    const std::string next = "03 00000001";
    EXPECT_EQ((OneField{FieldType::Long}.shown("14 01 00000007")), "");
    EXPECT_EQ((OneField{FieldType::AutoIncremental, 0, next}.shown("03 01 00000007")), "");
    EXPECT_EQ((OneField{FieldType::Text}.shown("03 01 00000007")), "");
    EXPECT_EQ(shownOfTwo("03 01 00000007  01 02 01 'b' 00"), "|b");
    EXPECT_EQ(shownOfTwo("14 01 00000007  01 02 01 'b' 00"), "|b");
}

TEST(LoadRecord, otherCellsAreReadByTheirOwnType) {
    const struct {
        FieldType type;
        const char* cell;
        const char* shown;
    } cases[] = {
        {FieldType::Long, "02 01 0007", "7"},
        {FieldType::Text, "02 01 FFFF", "-1"},
        {FieldType::Text, "04 01 40200000", "3"}, // 2.5 with no digits
        {FieldType::Date, "01 01 03 'abc' 00", "abc"},
        {FieldType::Integer, "01 01 03 'abc' 00", "abc"},
        {FieldType::Integer, "01 01 02 '42' 00", "42"},
        {FieldType::Text, "07 01 07D30102", "1/2/2003"},
        {FieldType::Text, "08 01 00000000", "12:00:00 AM"},
        {FieldType::Text, "09 01 40200000", "3"},
        {FieldType::Memo, "0C 01 03 00000007", "7"},
        {FieldType::Text, "05 01 07", ""},
        {FieldType::Integer, "12 01 0002 00 01 00", " {Image}"},
        {FieldType::NotUsed, "01 01 01 'a' 00", "a"},
    };
    for (const auto& c : cases)
        EXPECT_EQ((OneField{c.type}.shown(c.cell)), c.shown) << c.cell;
}

TEST(LoadRecord, checkCellSetsThePictureOfAnyField) {
    model::Document doc;
    OneField{FieldType::Text}.read(doc, "06 01 01");
    EXPECT_EQ(doc.grd.picture(2, 2), model::Picture::CheckOn);
}

TEST(LoadRecord, floatsAreShownWithTheirDigits) {
    const struct {
        int decimals;
        const char* bytes;
        const char* shown;
    } cases[] = {
        {0, "40200000", "3"},                                       // 2.5, halves away from zero
        {0, "C0200000", "-3"},                                      // -2.5
        {1, "3E000000", "0.1"},                                     // 0.125
        {2, "3E000000", "0.13"},                                    // 0.125
        {3, "3E000000", "0.125"},                                   //
        {2, "00000000", "0.00"},                                    //
        {2, "80000000", "0.00"},                                    // minus zero
        {2, "BA83126F", "0.00"},                                    // -0.001
        {4, "3F800000", ""},                                        // digits that no format has
        {255, "3F800000", ""},                                      //
        {2, "7F800000", ""},                                        // infinity
        {2, "7FC00000", ""},                                        // no number
        {0, "7F7FFFFF", "340282346638528859811704183484516925440"}, // the largest
        {3, "00000001", "0.000"},                                   // the smallest
    };
    for (const auto& c : cases)
        EXPECT_EQ((OneField{FieldType::Float, c.decimals}.shown(std::string("04 01 ") + c.bytes)), c.shown)
            << c.decimals << " digits of " << c.bytes;
}

TEST(LoadRecord, datesThatNoCalendarHasLeaveTheCellEmpty) {
    for (const char* date :
         {"07D3021D", "07D30D01", "07D30001", "07D30100", "00630101", "27100101", "FFFFFFFF", "00000000"})
        EXPECT_EQ((OneField{FieldType::Date}.shown(std::string("07 01 ") + date)), "") << date;
}

TEST(LoadRecord, timesThatNoClockHasAreShownAsZero) {
    for (const char* time : {"00180000", "00003C00", "0000003C", "01000000", "FFFFFFFF"})
        EXPECT_EQ((OneField{FieldType::Time}.shown(std::string("08 01 ") + time)), "0") << time;
}

TEST(LoadRecord, durationsAreNumbersWithoutLeadingZeros) {
    const struct {
        const char* type;
        const char* bytes;
        const char* shown;
    } cases[] = {
        {"0B", "00000000", "0:0:0"},  {"0B", "42700000", "0:1:0"}, // 60
        {"0B", "47A8C000", "24:0:0"},                              // 86400
        {"0B", "3FA00000", "0:0:1"},                               // 1.25
        {"0C", "45636000", "1:0"},                                 // 3638, seconds left out
        {"0B", "BF800000", ""},       {"0B", "7FC00000", ""},      {"0C", "7F7FFFFF", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ((OneField{FieldType::Expression, 0, std::string("03 ") + c.type + " 00*181"}.shown(
                      std::string("09 01 ") + c.bytes)),
                  c.shown)
            << c.type << " " << c.bytes;
}

TEST(LoadRecord, resultTypesThatAreNoneHaveNoValue) {
    for (const char* type : {"0D", "0E", "FF"}) {
        RawFile file;
        file.set(1, "01 03 00 00 00*10 00 00  01 09 00*10 00 00  02 01 00*10 00 00");
        file.set(3, std::string("03 ") + type + " 00*181");
        file.add("57 00 00000001  09 01  01 02 01 'b' 00  00 00");
        model::Document doc;
        ASSERT_TRUE(readDatabase(doc, file.bytes(), "x", {}).ok());
        EXPECT_EQ(doc.grd.text(2, 2), "") << type;
        EXPECT_EQ(doc.grd.text(2, 3), "b") << type;
    }
    // an advanced one still has its colour and tail
    EXPECT_EQ((OneField{FieldType::AdvExpression, 0, "03 0E 00*577"}.shown("16 01 00 03 'abc' 00")), "abc");
}

TEST(LoadRecord, tailReplacesTheValueOfAnAdvancedResult) {
    const OneField number{FieldType::AdvExpression, 2, "03 00 00*577"};
    EXPECT_EQ(number.shown("16 01 00 3FC00000 00"), "1.50");
    EXPECT_EQ(number.shown("16 01 00 3FC00000 05 'Error' 00"), "Error");
}

TEST(LoadRecord, joinKeepsItsKey) {
    const struct {
        const char* cell;
        const char* key;
    } cases[] = {
        {"0C 01 01 03 'key' 00", "key"},
        {"0C 01 01 00 00", ""},
        {"0C 01 02 8000", "-32768"},
        {"0C 01 03 00000000", "0"},
        {"0C 01 0B 00000007", "7"},
        {"0C 01 14 00000007", "7"},
        {"0C 01 00", ""},
        {"0C 01 04", ""},
    };
    for (const auto& c : cases) {
        model::Document doc;
        // the field's own key type does not matter to the read
        OneField{FieldType::DBJoin, 0, "03 'x' 00 01 02 00 02 00"}.read(doc, c.cell);
        std::string scratch;
        EXPECT_EQ(doc.CellVals.get(0, 1, scratch), c.key) << c.cell;
        EXPECT_EQ(doc.grd.text(2, 2), c.key) << c.cell;
    }
}

TEST(LoadRecord, pictureIsKeptByItsPlace) {
    RawFile file;
    file.set(1, "01 03 00 00 00*10 00 00  01 12 00*10 00 00  02 01 00*10 00 00");
    file.add("57 00 00000001  12 01 0003 00 AABB 00  01 02 01 'b' 00  00 00");
    file.add("57 00 00000002  12 01 0000 00  01 02 01 'c' 00  00 00"); // L of 0: one byte behind it
    model::Document doc;
    const platform::Bytes bytes = file.bytes();
    ASSERT_TRUE(readDatabase(doc, bytes, "x", {}).ok());
    EXPECT_EQ(doc.grd.text(2, 2), " {Image}");
    EXPECT_EQ(doc.grd.text(2, 3), "b");
    EXPECT_EQ(doc.CellLongs.get(0, 1), static_cast<int>(file.offset(87)) + 6 + 1); // counted from 1
    EXPECT_EQ(bytes[file.offset(87) + 6], 0x12);
    EXPECT_EQ(doc.grd.text(3, 2), " {Image}");
    EXPECT_EQ(doc.grd.text(3, 3), "c");
}

TEST(LoadRecord, onlyPicturesStandInAColumnOfPictures) {
    test::TestServices services;
    for (const char* cell : {"01 01 01 'a' 00", "01 01 08 ' {Image}' 00", "02 01 0007", "0A 01 0001 'a' 00"}) {
        model::Document doc;
        OneField{FieldType::Image}.read(doc, cell);
        EXPECT_EQ(doc.grd.text(2, 2), "") << cell;
        EXPECT_EQ(doc.CellLongs.get(0, 1), 0) << cell;
        EXPECT_EQ(builtCells(doc, services), "") << cell;
    }
}

TEST(LoadRecord, duplicateIdsTakeTheFirstItem) {
    EXPECT_EQ((OneField{FieldType::List, 0, "03 02 05 05 'one' 00 'two' 00"}.shown("05 01 05")), "one");
}

TEST(LoadRecord, idZeroOfAListIsEmpty) {
    model::Document doc;
    OneField{FieldType::List, 0, "03 01 00 'zero' 00"}.read(doc, "05 01 00");
    EXPECT_EQ(doc.grd.text(2, 2), "");
    EXPECT_EQ(doc.CellLongs.get(0, 1), 0);
}

} // namespace
} // namespace tallybook::pdb
