// What a save makes of texts as the grid may hold them.
#include "pdb/OneField.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using model::FieldType;
using test::builtCells;
using test::hex;
using test::OneField;
using test::TestServices;
using test::toHex;

struct BuildCase {
    OneField field;
    std::string text;
    std::string bytes;
};

void expectBuilt(const std::vector<BuildCase>& cases) {
    for (const BuildCase& c : cases) {
        model::Document doc;
        c.field.open(doc);
        doc.grd.setText(2, 2, c.text);
        TestServices test;
        EXPECT_EQ(builtCells(doc, test), toHex(hex(c.bytes)))
            << "type " << static_cast<int>(c.field.type) << ", text \"" << c.text.substr(0, 40) << '"';
    }
}

std::string many(std::size_t count) {
    return std::string(count, 'x');
}
std::string xs(std::size_t count) {
    return "'x'*" + std::to_string(count);
}

TEST(BuildRecord, leavesOutWhatHasNothingToSay) {
    const OneField next{FieldType::AutoIncremental, 0, "03 00000001"};
    expectBuilt({
        {{FieldType::Text}, "", ""},
        {{FieldType::Memo}, "", ""},
        {{FieldType::Integer}, "0", ""},
        {{FieldType::Long}, "0", ""},
        {{FieldType::Float, 2}, "0.00", ""},
        {next, "0", ""},
        {{FieldType::Date}, "", ""},
        {{FieldType::Date}, "0", ""},
        {{FieldType::Time}, "", ""},
        {{FieldType::Expression, 2, "03 00*182"}, "0.00", ""},
        {{FieldType::Expression, 2, "03 00*182"}, "", ""},
        {{FieldType::Expression, 0, "03 0B 00*181"}, "0:0:0", ""},
        {{FieldType::AdvExpression, 0, "03 00*578"}, "", ""},
        {{FieldType::AddressBookLookup, 0, "03 00*6"}, "", ""},
        {{FieldType::ConditionalExpression, 0, "03 00*142"}, "", ""},
        {{FieldType::Image}, "", ""},
    });
}

TEST(BuildRecord, typesWithoutCellsAreNeverWritten) {
    const struct {
        FieldType type;
        std::string attribute;
    } cases[] = {{FieldType::NotUsed, "03 01"},         {FieldType::Key, "03 01"},
                 {FieldType::DBLookup, "03 00*6"},      {FieldType::OneToMany, "03 00*84"},
                 {FieldType::Plugin, "03 00*20"},       {static_cast<FieldType>(23), "03 01"},
                 {static_cast<FieldType>(255), "03 01"}};
    for (const auto& c : cases)
        expectBuilt({{{c.type, 0, c.attribute}, "1", ""}});
}

TEST(BuildRecord, cutsTextsTo254) {
    expectBuilt({
        {{FieldType::Text}, many(254), "01 01 FE " + xs(254) + " 00"},
        {{FieldType::Text}, many(255), "01 01 FE " + xs(254) + " 00"},
        {{FieldType::Text}, many(5000), "01 01 FE " + xs(254) + " 00"},
        {{FieldType::AddressBookLookup, 0, "03 00*6"}, many(255), "10 01 FE " + xs(254) + " 00"},
        {{FieldType::ConditionalExpression, 0, "03 00*142"}, many(255), "13 01 00 FE " + xs(254) + " 00"},
        {{FieldType::AdvExpression, 0, "03 0D 00*577"}, many(255), "16 01 00 00000000 FE " + xs(254) + " 00"},
    });
}

TEST(BuildRecord, memosKeepTheirLength) {
    expectBuilt({
        {{FieldType::Memo}, many(4096), "0A 01 1000 " + xs(4096) + " 00"},
        {{FieldType::Memo}, many(5000), "0A 01 1388 " + xs(5000) + " 00"},
        {{FieldType::Memo}, many(70000), "0A 01 FFFF " + xs(65535) + " 00"}, // what its length can tell
    });
}

TEST(BuildRecord, aNulEndsAText) {
    expectBuilt({
        {{FieldType::Text}, std::string("a\0b", 3), "01 01 01 'a' 00"},
        {{FieldType::Text}, std::string("\0b", 2), ""},
        {{FieldType::Memo}, std::string("a\0b", 3), "0A 01 0001 'a' 00"},
        {{FieldType::AdvExpression, 0, "03 0D 00*577"}, std::string("\0b", 2), "16 01 00 00000000 00"},
    });
}

TEST(BuildRecord, readsWholeNumbersFromTexts) {
    const OneField next{FieldType::AutoIncremental, 0, "03 00000001"};
    expectBuilt({
        {{FieldType::Integer}, "12", "02 01 000C"},
        {{FieldType::Integer}, "012", "02 01 000C"},
        {{FieldType::Integer}, "1,000", "02 01 03E8"},
        {{FieldType::Integer}, "2.5", "02 01 0002"}, // ties to even
        {{FieldType::Integer}, "3.5", "02 01 0004"},
        {{FieldType::Integer}, "0.5", ""},
        {{FieldType::Integer}, "-32768.5", "02 01 8000"},
        {{FieldType::Integer}, "32767.5", ""}, // out of range
        {{FieldType::Integer}, "40000", ""},
        {{FieldType::Integer}, "70000", ""},
        {{FieldType::Integer}, "-32769", ""},
        {{FieldType::Integer}, "abc", ""},
        {{FieldType::Integer}, "12 apples", ""},
        {{FieldType::Long}, "70000", "03 01 00011170"},
        {{FieldType::Long}, "$70,000", "03 01 00011170"},
        {{FieldType::Long}, "2147483647.4", "03 01 7FFFFFFF"},
        {{FieldType::Long}, "2147483647.5", ""},
        {{FieldType::Long}, "2147483648", ""},
        {{FieldType::Long}, "abc", ""},
        {next, "2.5", "14 01 00000002"},
        {next, "2147483648", ""},
    });
}

TEST(BuildRecord, readsSinglesFromTexts) {
    const OneField result{FieldType::Expression, 2, "03 00*182"};
    const OneField adv{FieldType::AdvExpression, 2, "03 00*578"};
    expectBuilt({
        {{FieldType::Float, 2}, "1.5", "04 01 3FC00000"},
        {{FieldType::Float, 2}, "1.50", "04 01 3FC00000"},
        {{FieldType::Float, 2}, "1.257", "04 01 3FA0E560"}, // a text may have more digits than are shown
        {{FieldType::Float, 9}, "1.5", "04 01 3FC00000"},
        {{FieldType::Float, 0}, "1e400", ""},
        {{FieldType::Float, 0}, "1e39", ""},
        {{FieldType::Float, 0}, "abc", ""},
        {result, "abc", ""},
        {result, "1.5", "09 01 3FC00000"},
        {adv, "abc", "16 01 00 00000000 00"},
        {adv, "0", "16 01 00 00000000 00"},
    });
}

// Numbers whose display differs from their value lose what is not shown, as they would when typed again.
TEST(BuildRecord, floatsKeepTheDigitsTheyShow) {
    const struct {
        int decimals;
        const char* read;
        const char* written;
    } cases[] = {
        {0, "04 01 40200000", "04 01 40400000"}, // 2.5 becomes 3
        {2, "04 01 3EAAAAAB", "04 01 3EA8F5C3"}, // a third becomes 0.33
        {2, "04 01 3DCCCCCD", "04 01 3DCCCCCD"}, // 0.1 stays
        {2, "04 01 3E000000", "04 01 3E051EB8"}, // 0.125 becomes 0.13
        {3, "04 01 3E000000", "04 01 3E000000"}, //
        {2, "04 01 3A83126F", ""},               // 0.001 becomes nothing
        {2, "04 01 80000000", ""},               // minus zero
        {4, "04 01 3F800000", ""},               // what is not shown is not kept
        {2, "04 01 7F800000", ""},               //
        {0, "04 01 7F7FFFFF", "04 01 7F7FFFFF"}, // the largest single
        {0, "04 01 4E6E6B28", "04 01 4E6E6B28"}, // 1000000000
        {3, "04 01 49742400", "04 01 49742400"}, // 1000000
        {3, "04 01 4B000001", "04 01 4B000001"}, // 8388609
        {2, "04 01 C2F6E979", "04 01 C2F6EB85"}, // -123.456 becomes -123.46
    };
    for (const auto& c : cases) {
        model::Document doc;
        OneField{FieldType::Float, c.decimals}.read(doc, c.read);
        TestServices test;
        EXPECT_EQ(builtCells(doc, test), toHex(hex(c.written))) << c.decimals << " digits of " << c.read;
    }
}

TEST(BuildRecord, readsDatesFromTexts) {
    const OneField result{FieldType::Expression, 0, "03 01 00*181"};
    const OneField adv{FieldType::AdvExpression, 0, "03 01 00*577"};
    expectBuilt({
        {{FieldType::Date}, "1/2/2003", "07 01 07D30102"},
        {{FieldType::Date}, "01/02/03", "07 01 07D30102"},
        {{FieldType::Date}, "2003-01-02", "07 01 07D30102"},
        {{FieldType::Date}, "2 January 2003", "07 01 07D30102"},
        {{FieldType::Date}, "12/25", "07 01 07D30C19"}, // this year
        {{FieldType::Date}, "36526", "07 01 07D00101"}, // a serial
        {{FieldType::Date}, "0.0", "07 01 076B0C1E"},
        {{FieldType::Date}, "abc", ""},
        {{FieldType::Date}, "2/30/2003", ""},
        {{FieldType::Date}, "9999999", ""},
        {result, "0", "09 01 076B0C1E"}, // what a failed calculation leaves
        {result, "abc", ""},
        {adv, "abc", ""},
        {adv, "1/2/2003", "16 01 00 07D30102 00"},
    });
}

TEST(BuildRecord, readsTimesFromTexts) {
    const OneField result{FieldType::Expression, 0, "03 07 00*181"};
    expectBuilt({
        {{FieldType::Time}, "1:05:09 PM", "08 01 000D0509"},
        {{FieldType::Time}, "13:05:09", "08 01 000D0509"},
        {{FieldType::Time}, "13:05", "08 01 000D0500"},
        {{FieldType::Time}, "7 pm", "08 01 00130000"},
        {{FieldType::Time}, "0", "08 01 00000000"},
        {{FieldType::Time}, "0.75", "08 01 00120000"},
        {{FieldType::Time}, "1/2/2003 1:00 PM", "08 01 000D0000"},
        {{FieldType::Time}, "abc", ""},
        {{FieldType::Time}, "25:00", ""},
        {result, "0", "09 01 00000000"},
        {result, "abc", ""},
    });
}

TEST(BuildRecord, readsDurationsFromTexts) {
    const OneField seconds{FieldType::Expression, 0, "03 0B 00*181"};
    const OneField minutes{FieldType::Expression, 0, "03 0C 00*181"};
    const OneField adv{FieldType::AdvExpression, 0, "03 0B 00*577"};
    expectBuilt({
        {seconds, "1:0:38", "09 01 45636000"},
        {seconds, "1:30", "09 01 45A8C000"},
        {seconds, "24:0:0", ""}, // no valid time
        {seconds, "0", ""},
        {seconds, "abc", ""},
        {minutes, "1:30", "09 01 45A8C000"},
        {minutes, "1:30:59", "09 01 45A8C000"}, // hours and minutes alone
        {minutes, "24:0", ""},
        {adv, "24:0:0", "16 01 00 00000000 00"},
    });
}

TEST(BuildRecord, unknownResultTypesHaveNoCell) {
    expectBuilt({
        {{FieldType::Expression, 0, "03 0D 00*181"}, "abc", ""},
        {{FieldType::Expression, 0, "03 0E 00*181"}, "1", ""},
        {{FieldType::AdvExpression, 0, "03 0E 00*577"}, "1", ""},
    });
}

TEST(BuildRecord, joinsWriteTheirKey) {
    const struct {
        const char* keyType;
        std::string key;
        std::string bytes;
    } cases[] = {
        {"01", "abc", "0C 01 01 03 'abc' 00"},
        {"01", many(255), "0C 01 01 FF " + xs(255) + " 00"},
        {"01", many(256), "0C 01 01 FE " + xs(254) + " 00"},
        {"02", "7", "0C 01 02 0007"},
        {"02", "abc", "0C 01 02 0000"},
        {"02", "70000", "0C 01 02 0000"},
        {"03", "70000", "0C 01 03 00011170"},
        {"03", "abc", "0C 01 03 00000000"},
        {"0B", "-1", "0C 01 0B FFFFFFFF"},
        {"14", "2.5", "0C 01 14 00000002"},
        {"00", "7", ""}, // no type of a key
        {"04", "7", ""},
        {"05", "7", ""},
        {"FF", "7", ""},
        {"01", "", ""},
    };
    for (const auto& c : cases) {
        model::Document doc;
        OneField{FieldType::DBJoin, 0, std::string("03 'x' 00 01 02 00 ") + c.keyType + " 00"}.open(doc);
        doc.CellVals.set(0, 1, c.key);
        doc.grd.setText(2, 2, "joined text, which is not written");
        TestServices test;
        EXPECT_EQ(builtCells(doc, test), toHex(hex(c.bytes))) << c.keyType << " " << c.key.substr(0, 20);
    }
}

TEST(BuildRecord, joinKeyIsConvertedToTheFieldsType) {
    model::Document doc;
    OneField{FieldType::DBJoin, 0, "03 'x' 00 01 02 00 03 00"}.read(doc, "0C 01 01 02 '42' 00");
    TestServices test;
    EXPECT_EQ(builtCells(doc, test), toHex(hex("0C 01 03 0000002A")));
}

TEST(BuildRecord, addressWithoutATextHasNothingBehindItsId) {
    const OneField address{FieldType::AddressBookJoin, 0, "03 00*6"};
    const struct {
        std::int32_t id;
        std::string text;
        std::string bytes;
    } cases[] = {
        {5, "Ada", "0F 01 00000005 03 'Ada' 00"},
        {5, many(255), "0F 01 00000005 FE " + xs(254) + " 00"},
        {5, "", "0F 01 00000005"},
        {0, "Ada", ""},
        {-1, "Ada", ""},
    };
    for (const auto& c : cases) {
        model::Document doc;
        address.open(doc);
        doc.CellLongs.set(0, 1, c.id);
        doc.grd.setText(2, 2, c.text);
        TestServices test;
        EXPECT_EQ(builtCells(doc, test), toHex(hex(c.bytes))) << c.id;
    }
}

// The end mark serves as the missing text when the cell is the last one; another cell behind it is misread.
TEST(BuildRecord, addressWithoutATextReadsBackAtTheEndAlone) {
    test::RawFile file;
    file.set(1, "01 03 00 00 00*10 00 00  01 0F 00*10 00 00  02 01 00*10 00 00");
    file.set(3, "03 00*6");
    file.add("57 00 00000001 0F 01 00000005 00 00");
    file.add("57 00 00000002 0F 01 00000005  01 02 01 'b' 00  00 00");
    model::Document doc;
    ASSERT_TRUE(readDatabase(doc, file.bytes(), "x", {}).ok());
    EXPECT_EQ(doc.CellLongs.get(0, 1), 5);
    EXPECT_EQ(doc.grd.text(2, 2), "");
    EXPECT_EQ(doc.grd.text(3, 2), "\x02\x01"
                                  "b"); // type 1 was taken for the length
    EXPECT_EQ(doc.grd.text(3, 3), "");
}

TEST(BuildRecord, itemsAreWrittenByTheirIdAlone) {
    model::Document doc;
    const OneField list{FieldType::List, 0, "03 01 05 'red' 00"};
    list.open(doc);
    doc.grd.setText(2, 2, "red"); // the text says nothing
    TestServices test;
    EXPECT_EQ(builtCells(doc, test), "");
    doc.CellLongs.set(0, 1, 5);
    EXPECT_EQ(builtCells(doc, test), "05 01 05");
}

TEST(BuildRecord, followsTheOrderOfTheGrid) {
    model::Document doc;
    OneField{FieldType::Integer}.open(doc);
    for (int i = 0; i < 200; ++i) {
        const int row = i == 0 ? 2 : model::appendRecord(doc);
        doc.grd.setText(row, 2, i % 3 == 0 ? "" : std::to_string(i));
        doc.RecKeys.set(i, i);
    }
    std::vector<std::uint32_t> order;
    for (std::uint32_t i = 0; i < 200; ++i)
        order.push_back(i * 77 % 200); // 77 and 200 have no common factor
    doc.grd.permuteRows(order);
    TestServices test;
    model::Document again;
    ASSERT_TRUE(readDatabase(again, buildDatabase(doc, test).value().bytes, "x", {}).ok());
    for (int i = 0; i < 200; ++i) {
        const auto was = static_cast<int>(order[static_cast<std::size_t>(i)]);
        EXPECT_EQ(again.RecKeys[i], was);
        EXPECT_EQ(again.grd.text(i + 2, 2), was % 3 == 0 ? "" : std::to_string(was));
    }
}

TEST(BuildRecord, writesCategoryAndKey) {
    model::Document doc;
    OneField{FieldType::Text}.open(doc);
    doc.CellLongs.set(0, 0, 7);
    doc.RecKeys.set(0, -2);
    TestServices test;
    const platform::Bytes file = buildDatabase(doc, test).value().bytes;
    EXPECT_EQ(toHex(platform::ByteSpan(file).last(8)), "57 07 FF FF FF FE 00 00");
}

} // namespace
} // namespace tallybook::pdb
