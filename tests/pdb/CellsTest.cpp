// Cells that come back byte for byte: what the bytes show, and what the save makes of it.
#include "pdb/OneField.h"
#include "support/Regions.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using model::FieldType;
using test::builtCells;
using test::hex;
using test::OneField;
using test::TestServices;
using test::toHex;

const std::string kList = "03 03 05 07 FF 'red' 00 'blue' 00 'last' 00"; // ids 5, 7, 255
std::string shortExpression(const std::string& resultType) {
    return "03 " + resultType + " 00*181";
}
std::string advExpression(const std::string& resultType) {
    return "03 " + resultType + " 00*577";
}

struct CellCase {
    const char* name;
    OneField field;
    std::string bytes;
    std::string text;
    std::int32_t number = 0; // of CellLongs
};

std::vector<CellCase> cellCases() {
    const OneField text{FieldType::Text};
    const OneField integer{FieldType::Integer};
    const OneField wide{FieldType::Long};
    const OneField next{FieldType::AutoIncremental, 0, "03 00000001"};
    const OneField list{FieldType::List, 0, kList};
    const OneField radio{FieldType::RadioButton, 0, kList};
    const OneField date{FieldType::Date};
    const OneField time{FieldType::Time};
    const OneField memo{FieldType::Memo};
    const OneField address{FieldType::AddressBookJoin, 0, "03 00*6"};
    const OneField lookup{FieldType::AddressBookLookup, 0, "03 00*6"};
    const OneField conditional{FieldType::ConditionalExpression, 0, "03 00*142"};
    const auto floating = [](int decimals) { return OneField{FieldType::Float, decimals}; };
    const auto join = [](const std::string& keyType) {
        return OneField{FieldType::DBJoin, 0, "03 'MS2_x' 00 01 02 00 " + keyType + " 00"};
    };
    const auto result = [](const std::string& type, int decimals = 0) {
        return OneField{FieldType::Expression, decimals, shortExpression(type)};
    };
    const auto adv = [](const std::string& type, int decimals = 0) {
        return OneField{FieldType::AdvExpression, decimals, advExpression(type)};
    };
    return {
        {"text", text, "01 01 03 'Ada' 00", "Ada"},
        {"text of one blank", text, "01 01 01 20 00", " "},
        {"integer", integer, "02 01 0102", "258"},
        {"negative integer", integer, "02 01 FFFE", "-2"},
        {"least integer", integer, "02 01 8000", "-32768"},
        {"greatest integer", integer, "02 01 7FFF", "32767"},
        {"long", wide, "03 01 01020304", "16909060"},
        {"negative long", wide, "03 01 FFFFFFFF", "-1"},
        {"least long", wide, "03 01 80000000", "-2147483648"},
        {"auto incremental", next, "14 01 0000002A", "42"},
        {"negative auto incremental", next, "14 01 FFFFFFD6", "-42"},
        {"float without digits", floating(0), "04 01 42280000", "42"},
        {"float with one digit", floating(1), "04 01 3FC00000", "1.5"},
        {"float with two digits", floating(2), "04 01 3DCCCCCD", "0.10"},
        {"float with three digits", floating(3), "04 01 C0491687", "-3.142"},
        {"large float", floating(0), "04 01 4B800000", "16777216"},
        {"list", list, "05 01 07", "blue", 7},
        {"list, first item", list, "05 01 05", "red", 5},
        {"list, greatest id", list, "05 01 FF", "last", 255},
        {"list item that is gone", list, "05 01 63", "", 99},
        {"radio button", radio, "11 01 05", "red", 5},
        {"date", date, "07 01 07D30102", "1/2/2003"},
        {"first date", date, "07 01 00640101", "1/1/0100"},
        {"last date", date, "07 01 270F0C1F", "12/31/9999"},
        {"date of serial 0", date, "07 01 076B0C1E", "12/30/1899"},
        {"leap day", date, "07 01 07D4021D", "2/29/2004"},
        {"time", time, "08 01 000D0509", "1:05:09 PM"},
        {"midnight", time, "08 01 00000000", "12:00:00 AM"},
        {"last second", time, "08 01 00173B3B", "11:59:59 PM"},
        {"memo", memo, "0A 01 0005 'a' 0A 'b' 0D 'c' 00", "a\nb\rc"},
        {"text key", join("01"), "0C 01 01 03 'key' 00", "key"},
        {"integer key", join("02"), "0C 01 02 FFFE", "-2"},
        {"integer key of 0", join("02"), "0C 01 02 0000", "0"},
        {"long key", join("03"), "0C 01 03 00010000", "65536"},
        {"record key", join("0B"), "0C 01 0B 0000002A", "42"},
        {"auto incremental key", join("14"), "0C 01 14 FFFFFFFF", "-1"},
        {"address", address, "0F 01 00000123 03 'Ada' 00", "Ada", 0x123},
        {"address lookup", lookup, "10 01 03 'Ada' 00", "Ada"},
        {"conditional", conditional, "13 01 00 03 'due' 00", "due"},
        {"number result", result("00", 2), "09 01 3FC00000", "1.50"},
        {"date result", result("01"), "09 01 07D30102", "1/2/2003"},
        {"date result by months", result("02"), "09 01 07D30102", "1/2/2003"},
        {"date result by years", result("03"), "09 01 07D30102", "1/2/2003"},
        {"days", result("04", 2), "09 01 42280000", "42"},
        {"months", result("05", 2), "09 01 C2280000", "-42"},
        {"years", result("06", 2), "09 01 3F800000", "1"},
        {"time result", result("07"), "09 01 000D0509", "1:05:09 PM"},
        {"time result at midnight", result("07"), "09 01 00000000", "12:00:00 AM"},
        {"hours", result("08"), "09 01 42280000", "42"},
        {"minutes", result("09"), "09 01 42280000", "42"},
        {"seconds", result("0A"), "09 01 42280000", "42"},
        {"h:m:s", result("0B"), "09 01 45636000", "1:0:38"}, // 3638 seconds
        {"h:m", result("0C"), "09 01 45A8C000", "1:30"},     // 5400 seconds
        {"longest h:m:s", result("0B"), "09 01 47A8BF80", "23:59:59"},
        {"advanced number", adv("00", 1), "16 01 00 3FC00000 00", "1.5"},
        {"advanced number of 0", adv("00", 1), "16 01 00 00000000 00", "0.0"},
        {"advanced date", adv("01"), "16 01 00 07D30102 00", "1/2/2003"},
        {"advanced whole number", adv("04"), "16 01 00 42280000 00", "42"},
        {"advanced time", adv("07"), "16 01 00 000D0509 00", "1:05:09 PM"},
        {"advanced h:m:s", adv("0B"), "16 01 00 45636000 00", "1:0:38"},
        {"advanced h:m", adv("0C"), "16 01 00 45A8C000 00", "1:30"},
        {"advanced text", adv("0D"), "16 01 00 00000000 03 'yes' 00", "yes"},
    };
}

TEST(Cells, areShownAndComeBackByteForByte) {
    for (const CellCase& c : cellCases()) {
        SCOPED_TRACE(c.name);
        model::Document doc;
        c.field.read(doc, c.bytes);
        EXPECT_EQ(doc.grd.text(2, 2), c.text);
        EXPECT_EQ(doc.CellLongs.get(0, 1), c.number);
        TestServices test;
        EXPECT_EQ(builtCells(doc, test), toHex(hex(c.bytes)));
    }
}

// The same with texts instead of the words that a read puts into the columns.
TEST(Cells, areMadeFromTheirTexts) {
    for (const CellCase& c : cellCases()) {
        SCOPED_TRACE(c.name);
        model::Document doc;
        c.field.open(doc);
        std::string scratch;
        {
            model::Document read;
            c.field.read(read, c.bytes);
            doc.CellVals.set(0, 1, read.CellVals.get(0, 1, scratch));
        }
        doc.CellLongs.set(0, 1, c.number);
        doc.grd.column(2).setCoder(nullptr);
        doc.grd.setText(2, 2, c.text);
        TestServices test;
        EXPECT_EQ(builtCells(doc, test), toHex(hex(c.bytes)));
    }
}

// A coder that does not belong to the field must not turn its words into other values.
TEST(Cells, areMadeFromTextsUnderAnyCoder) {
    const platform::Regional us;
    using Make = std::unique_ptr<model::CellCoder> (*)(const platform::Regional&);
    const Make coders[] = {
        [](const platform::Regional&) { return calc::makeWholeCoder(); },
        [](const platform::Regional& region) { return calc::makeDecimalCoder(0, region); },
        [](const platform::Regional& region) { return calc::makeDecimalCoder(2, region); },
        [](const platform::Regional& region) { return calc::makeDateCoder(region); },
        [](const platform::Regional& region) { return calc::makeTimeCoder(region); },
        [](const platform::Regional&) { return calc::makeItemCoder(); },
    };
    for (const CellCase& c : cellCases())
        for (const Make& make : coders) {
            SCOPED_TRACE(c.name);
            model::Document doc;
            c.field.read(doc, c.bytes);
            doc.grd.column(2).setCoder(make(us));
            EXPECT_EQ(doc.grd.text(2, 2), c.text);
            TestServices test;
            EXPECT_EQ(builtCells(doc, test), toHex(hex(c.bytes)));
        }
}

// A field that was given another type elsewhere: the number is not shown, and the next save has none to write.
TEST(Cells, longOfAnotherFieldTypeIsGoneWithTheNextSave) {
    for (const auto& [type, cell] :
         {std::pair(FieldType::Long, "14 01 00000007"), std::pair(FieldType::Text, "03 01 00000007")}) {
        model::Document doc;
        OneField{type}.read(doc, cell);
        EXPECT_EQ(doc.grd.text(2, 2), "");
        TestServices test;
        EXPECT_EQ(builtCells(doc, test), "");
    }
}

TEST(Cells, followTheRegion) {
    const struct {
        OneField field;
        std::string bytes;
        std::string text;
    } cases[] = {
        {{FieldType::Float, 2}, "04 01 449A5000", "1234,50"},
        {{FieldType::Date}, "07 01 07D30102", "02.01.2003"},
        {{FieldType::Time}, "08 01 00010509", "01:05:09"},
        {{FieldType::Expression, 1, shortExpression("00")}, "09 01 3FC00000", "1,5"},
    };
    for (const auto& c : cases) {
        model::Document doc;
        c.field.read(doc, c.bytes, test::german());
        EXPECT_EQ(doc.grd.text(2, 2), c.text);
        TestServices test;
        test.regional = test::german();
        EXPECT_EQ(builtCells(doc, test), toHex(hex(c.bytes)));
    }
}

TEST(Cells, checkboxIsAPictureAndAlwaysWritten) {
    const OneField check{FieldType::Checkbox};
    const struct {
        std::string bytes;
        model::Picture picture;
        std::string written;
    } cases[] = {
        {"06 01 01", model::Picture::CheckOn, "06 01 01"},
        {"06 01 00", model::Picture::CheckOff, "06 01 00"},
        {"06 01 02", model::Picture::CheckOff, "06 01 00"},
        {"", model::Picture::CheckOff, "06 01 00"},
    };
    for (const auto& c : cases) {
        model::Document doc;
        check.read(doc, c.bytes);
        EXPECT_EQ(doc.grd.picture(2, 2), c.picture) << c.bytes;
        EXPECT_EQ(doc.grd.text(2, 2), "");
        TestServices test;
        EXPECT_EQ(builtCells(doc, test), c.written);
    }
}

TEST(Cells, uncheckedIsWrittenForARowWithoutAPicture) {
    model::Document doc;
    OneField{FieldType::Checkbox}.open(doc);
    doc.grd.setPicture(2, 2, model::Picture::None);
    TestServices test;
    EXPECT_EQ(builtCells(doc, test), "06 01 00");
}

TEST(Cells, coloursAreIndexes) {
    const struct {
        const char* index;
        std::uint32_t colour;
        const char* written;
    } cases[] = {{"00", 0, "00"},      {"01", 0xFF, "01"}, {"02", 0xFF00, "02"}, {"03", 0xFF0000, "03"},
                 {"04", 0xFFFF, "04"}, {"05", 0, "00"},    {"FF", 0, "00"}};
    for (const auto& c : cases) {
        const std::string index = c.index;
        const std::string written = c.written;
        TestServices test;
        model::Document adv;
        OneField{FieldType::AdvExpression, 0, advExpression("0D")}.read(adv,
                                                                        "16 01 " + index + " 00000000 01 'x' 00");
        EXPECT_EQ(adv.grd.colour(2, 2), c.colour) << index;
        EXPECT_EQ(builtCells(adv, test), toHex(hex("16 01 " + written + " 00000000 01 'x' 00")));
        model::Document conditional;
        OneField{FieldType::ConditionalExpression, 0, "03 00*142"}.read(conditional, "13 01 " + index + " 01 'x' 00");
        EXPECT_EQ(conditional.grd.colour(2, 2), c.colour) << index;
        EXPECT_EQ(builtCells(conditional, test), toHex(hex("13 01 " + written + " 01 'x' 00")));
    }
}

TEST(Cells, otherColoursAreBlackOrHaveNoByte) {
    TestServices test;
    model::Document adv;
    OneField{FieldType::AdvExpression, 0, advExpression("0D")}.read(adv, "16 01 00 00000000 01 'x' 00");
    adv.grd.setColour(2, 2, 0x123456);
    EXPECT_EQ(builtCells(adv, test), toHex(hex("16 01 00 00000000 01 'x' 00")));
    model::Document conditional;
    OneField{FieldType::ConditionalExpression, 0, "03 00*142"}.read(conditional, "13 01 00 01 'x' 00");
    conditional.grd.setColour(2, 2, 0x123456);
    EXPECT_EQ(builtCells(conditional, test), toHex(hex("13 01 01 'x' 00"))); // as the handheld's files have it
}

TEST(Cells, everyCharacterSurvives) {
    const std::string all = test::allCharacters().substr(0, 254);
    const std::string last = test::allCharacters().substr(200);
    for (const FieldType type : {FieldType::Text, FieldType::Memo, FieldType::AddressBookLookup}) {
        for (const std::string& text : {all, last}) {
            model::Document doc;
            const OneField field{type, 0, type == FieldType::AddressBookLookup ? "03 00*6" : "03 01"};
            field.open(doc);
            doc.grd.setText(2, 2, text);
            TestServices test;
            const platform::Bytes saved = buildDatabase(doc, test).value().bytes;
            model::Document again;
            ASSERT_TRUE(readDatabase(again, saved, "x", {}).ok());
            EXPECT_EQ(again.grd.text(2, 2), text);
        }
    }
}

TEST(Cells, ofAllSlotsStandInSlotOrder) {
    test::RawFile file;
    std::string table = "01 51";
    std::string cells;
    for (int slot = 0; slot <= 80; ++slot) {
        const std::uint8_t number[] = {static_cast<std::uint8_t>(slot)};
        table += " " + toHex(number) + " 02 00*10 00 00";
        if (slot > 0)
            cells = "02 " + toHex(number) + " 0001 " + cells; // from the last one to the first
    }
    file.set(1, table);
    file.add("57 00 00000001 " + cells + " 00 00");
    model::Document doc;
    ASSERT_TRUE(readDatabase(doc, file.bytes(), "x", {}).ok());
    TestServices test;
    const platform::Bytes written = hex(builtCells(doc, test));
    ASSERT_EQ(written.size(), 80u * 4);
    for (std::size_t slot = 1; slot <= 80; ++slot)
        EXPECT_EQ(written[4 * slot - 3], slot);
}

} // namespace
} // namespace tallybook::pdb
