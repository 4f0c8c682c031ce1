#include "core/pdb/Screens.h"

#include "support/Hex.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using model::DatabaseModel;
using platform::Bytes;
using test::hex;
using test::toHex;

std::string built(void (*build)(const DatabaseModel&, ByteWriter&), const DatabaseModel& db) {
    ByteWriter out;
    build(db, out);
    return toHex(out.take());
}

std::string reasonOf(platform::Status (*load)(ByteReader&, DatabaseModel&), const Bytes& bytes) {
    ByteReader in(bytes);
    DatabaseModel db;
    const auto status = load(in, db);
    return status.ok() ? "read" : status.error().tag + ": " + status.error().text;
}

platform::Status loadFilters(ByteReader& in, DatabaseModel& db) {
    return LoadFilterProp20(in, db, 0);
}

TEST(Forms, areReadAndWritten) {
    const Bytes bytes = hex("02 02"
                            "'Main' 00 28 0102 01"
                            "05 06 07 00112233 00445566 08 00778899 00AABBCC 09 0A0B 'Title' 00 'text' 00"
                            "'Empty' 00 29 0304 00");
    ByteReader in(bytes);
    DatabaseModel db;
    ASSERT_TRUE(LoadFormProp20(in, db).ok());
    EXPECT_EQ(in.left(), 0u);
    EXPECT_EQ(db.StartForm, 2);
    EXPECT_EQ(db.NumForms, 2);
    EXPECT_EQ(db.Forms[0].Name, "Main");
    EXPECT_EQ(db.Forms[0].FormByte, 0x28);
    EXPECT_EQ(toHex(db.Forms[0].FormFlags), "01 02");
    ASSERT_EQ(db.Forms[0].NumItems, 1);
    const model::FormItem expected{5,
                                   6,
                                   7,
                                   {0x11, 0x22, 0x33},
                                   {0x44, 0x55, 0x66},
                                   8,
                                   {0x77, 0x88, 0x99},
                                   {0xAA, 0xBB, 0xCC},
                                   9,
                                   {10, 11},
                                   "Title",
                                   "text"};
    EXPECT_EQ(db.Forms[0].Items[0], expected);
    EXPECT_EQ(db.Forms[1].Name, "Empty");
    EXPECT_EQ(db.Forms[1].NumItems, 0); // legal
    EXPECT_EQ(db.Forms[2], model::FormDef{});
    EXPECT_EQ(built(buildForms, db), toHex(bytes));
}

TEST(Forms, firstByteOfAColourIsNotKept) {
    const Bytes bytes = hex("01 01 00 28 0000 01  01 01 00 FF112233 FF445566 00 FF778899 FFAABBCC 00 0000 00 00");
    ByteReader in(bytes);
    DatabaseModel db;
    ASSERT_TRUE(LoadFormProp20(in, db).ok());
    EXPECT_EQ(built(buildForms, db), toHex(hex("01 01 00 28 0000 01  01 01 00 00112233 00445566 00"
                                               "00778899 00AABBCC 00 0000 00 00")));
}

TEST(Forms, countsAreLimited) {
    EXPECT_EQ(reasonOf(LoadFormProp20, hex("01 10 00*80")), "read"); // the sixteenth slot exists
    EXPECT_EQ(reasonOf(LoadFormProp20, hex("01 11 00*100")), "Load_DBProps : LoadFormProp20: 17 forms, at most 16");
    EXPECT_EQ(reasonOf(LoadFormProp20, hex("01 02  00 00 0000 00  00 00 0000 0D 00*500")),
              "Load_DBProps : LoadFormProp20: 13 items in form 2, at most 12");
    EXPECT_EQ(reasonOf(LoadFormProp20, hex("01 01  00 00 0000 0C 00*299")),
              "Load_DBProps : LoadFormProp20: the file ends inside a text");
    EXPECT_EQ(reasonOf(LoadFormProp20, hex("01 01  00 00 0000 0C 00*300")), "read");
}

TEST(Forms, newDatabaseHasOneEmptyForm) {
    EXPECT_EQ(built(buildForms, DatabaseModel{}), toHex(hex("01 01  00 28 0000 00")));
}

TEST(Views, areReadAndWritten) {
    const Bytes bytes = hex("02"
                            "'By name' 00*14 010203 040506 0708 09 0A 0B0C0D0E0F10 02"
                            "05 3C AABBCC  51 00 000000"
                            "00*21 000000 000000 0000 00 00 000000000000 00");
    ByteReader in(bytes);
    DatabaseModel db;
    ASSERT_TRUE(LoadViewProp20(in, db).ok());
    EXPECT_EQ(in.left(), 0u);
    EXPECT_EQ(db.NumViews, 2);
    model::ViewDef expected;
    expected.Name = "By name";
    expected.SortFields = {1, 2, 3};
    expected.SortDirs = {4, 5, 6};
    expected.FilterMask = 0x0708;
    expected.FrozenCols = 9;
    expected.ViewByte = 10;
    expected.ViewTail = {11, 12, 13, 14, 15, 16};
    expected.NumCols = 2;
    expected.Columns[0] = {5, 60, {0xAA, 0xBB, 0xCC}};
    expected.Columns[1] = {81, 0, {0, 0, 0}};
    EXPECT_EQ(db.Views[0], expected);
    EXPECT_EQ(db.Views[1], model::ViewDef{}); // a blank name and no columns: the slot stays
    EXPECT_EQ(built(buildViews, db), toHex(bytes));
}

TEST(Views, withoutColumnsIs38BytesAndValid) {
    EXPECT_EQ(reasonOf(LoadViewProp20, hex("01 00*38")), "read");
    EXPECT_EQ(reasonOf(LoadViewProp20, hex("01 00*37")), "Load_DBProps : LoadViewProp20: the file ends inside it");
}

TEST(Views, countsAreLimited) {
    EXPECT_EQ(reasonOf(LoadViewProp20, hex("0D 00*494")), "read");
    EXPECT_EQ(reasonOf(LoadViewProp20, hex("C8 00*900")), "Load_DBProps : LoadViewProp20: 200 views, at most 13");
    EXPECT_EQ(reasonOf(LoadViewProp20, hex("01 00*37 51 00*405")), "read");
    EXPECT_EQ(reasonOf(LoadViewProp20, hex("01 00*37 52 00*900")),
              "Load_DBProps : LoadViewProp20: 82 columns in view 1, at most 81");
}

TEST(Views, nameMayFillItsArea) {
    const std::string name = "123456789012345678901";
    Bytes bytes = hex("01 '" + name + "' 00*17");
    ByteReader in(bytes);
    DatabaseModel db;
    ASSERT_TRUE(LoadViewProp20(in, db).ok());
    EXPECT_EQ(db.Views[0].Name, name);
    EXPECT_EQ(built(buildViews, db), toHex(bytes));
    db.Views[0].Name += "x"; // longer: cut
    EXPECT_EQ(built(buildViews, db), toHex(bytes));
}

const std::string kFilter = "'Late' 00*17 010203 040506 'T' 00*19 00*20 '01234567890123456789' 070809 0A0B 0C0D0E0F ";

TEST(Filters, areReadAndWritten) {
    const Bytes bytes = hex("01" + kFilter + "00*192");
    EXPECT_EQ(bytes.size(), 1u + 96 + 192);
    ByteReader in(bytes);
    DatabaseModel db;
    ASSERT_TRUE(loadFilters(in, db).ok());
    EXPECT_EQ(in.position(), 97u);
    EXPECT_EQ(db.NumFilters, 1);
    model::FilterDef expected;
    expected.Name = "Late";
    expected.CondFields = {1, 2, 3};
    expected.CondFields2 = {4, 5, 6};
    expected.CondValues = {"T", "", "01234567890123456789"};
    expected.CondOps = {7, 8, 9};
    expected.CondLinks = {10, 11};
    expected.CondTail = {12, 13, 14, 15};
    EXPECT_EQ(db.Filters[0], expected);
    EXPECT_EQ(built(buildFilters, db), toHex(bytes));
}

TEST(Filters, countsAreLimited) {
    EXPECT_EQ(reasonOf(loadFilters, hex("0D 00*1248")), "read"); // the thirteenth slot exists
    EXPECT_EQ(reasonOf(loadFilters, hex("0E 00*1344")), "Load_DBProps : LoadFilterProp20: 14 filters, at most 13");
    EXPECT_EQ(reasonOf(loadFilters, hex("0D 00*1247")), "Load_DBProps : LoadFilterProp20: the file ends inside it");
}

TEST(Filters, spareOnesNeedAllTheirBytesAheadOfTheFirstDataRecord) {
    const Bytes bytes = hex("00" + kFilter + kFilter + "00*20");
    const struct {
        std::uint32_t end;
        bool taken;
    } cases[] = {{0, false}, {1, false}, {192, false}, {193, true}, {200, true}, {0xFFFFFFFF, true}};
    for (const auto& c : cases) {
        ByteReader in(bytes);
        DatabaseModel db;
        ASSERT_TRUE(LoadFilterProp20(in, db, c.end).ok());
        EXPECT_EQ(db.SpareFilters[0].Name, c.taken ? "Late" : "") << c.end;
        EXPECT_EQ(db.SpareFilters[1].CondTail[3], c.taken ? 15 : 0) << c.end;
        EXPECT_EQ(in.position(), c.taken ? 193u : 1u) << c.end;
    }
}

TEST(Filters, spareOnesAreAlwaysWritten) {
    EXPECT_EQ(built(buildFilters, DatabaseModel{}), toHex(hex("00 00*192")));
}

} // namespace
} // namespace tallybook::pdb
