#include "core/pdb/Properties.h"

#include "support/Hex.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using model::DatabaseModel;
using model::FieldType;
using platform::Bytes;
using test::hex;
using test::toHex;

const platform::LocalTime kNow{2003, 3, 5, 13, 5, 9};

model::FieldDef& field(DatabaseModel& db, int slot) {
    return db.Fields[static_cast<std::size_t>(slot)];
}

// The bytes of each fixed record as buildDBProps20 makes them.
std::vector<Bytes> builtRecords(DatabaseModel& db) {
    OutRecords out("MS2_x", kNow, model::kFixedRecords);
    buildDBProps20(db, out);
    const Bytes file = out.finish().value();
    ByteReader in(file);
    const auto header = readheader20(in);
    const RecordList list = readRecordList(in, header.value()).value();
    std::vector<Bytes> records;
    for (int i = 0; i < list.count(); ++i)
        records.emplace_back(file.begin() + list.offset(i), file.begin() + static_cast<std::ptrdiff_t>(list.end(i)));
    return records;
}

std::string builtAttribute(const DatabaseModel& db, int slot) {
    ByteWriter out;
    buildAttribute(db, slot, out);
    return toHex(out.take());
}

TEST(HeaderValues, areReadInTheirOrder) {
    const Bytes bytes = hex("01 02 03 0405 06 07 08 09 0A 0B 0C0D 0E"
                            "10 11 12 13 14 15 16 17 18"
                            "'login' 00*5 'modify' 00*4 'view' 00*6 'design' 00*4 'beam' 00*6 '0123456789'"
                            "20*39 21  'Hello' 00");
    ByteReader in(bytes);
    DatabaseModel db;
    ASSERT_TRUE(loadDBProps120(in, db).ok());
    EXPECT_EQ(in.left(), 0u);
    EXPECT_EQ(db.HdrByte1, 1);
    EXPECT_EQ(db.HdrByte2, 2);
    EXPECT_EQ(db.HdrByte3, 3);
    EXPECT_EQ(db.HdrWord1, 0x0405);
    EXPECT_EQ(db.HdrByte4, 6);
    EXPECT_EQ(db.FormatVersion, 7);
    EXPECT_EQ(db.HdrByte5, 8);
    EXPECT_EQ(db.NoBackup, 9);
    EXPECT_EQ(db.ReadOnly, 10);
    EXPECT_EQ(db.ShowStartup, 11);
    EXPECT_EQ(db.DefaultFilterMask, 0x0C0D);
    EXPECT_EQ(db.SearchFlags, 14);
    EXPECT_EQ(toHex(db.OpaqueHeader9), "10 11 12 13 14 15 16 17 18");
    const std::array<std::string, 6> passwords = {"login", "modify", "design", "view", "beam", "0123456789"};
    EXPECT_EQ(db.Passwords, passwords); // the file has View ahead of Design
    EXPECT_EQ(db.OpaqueHeader40[0], 0x20);
    EXPECT_EQ(db.OpaqueHeader40[39], 0x21);
    EXPECT_EQ(db.StartupText, "Hello");

    Bytes expected = bytes;
    expected[6] = 21; // the format version of every save
    expected.insert(expected.begin(), 0);
    EXPECT_EQ(toHex(builtRecords(db)[0]), toHex(expected));
    EXPECT_EQ(db.FormatVersion, 21);
}

TEST(HeaderValues, emptyPasswordIsTenNuls) {
    DatabaseModel db;
    const Bytes record = builtRecords(db)[0];
    EXPECT_EQ(record.size(), 1u + 14 + 9 + 60 + 40 + 1);
    EXPECT_EQ(toHex(platform::ByteSpan(record).subspan(24, 60)), toHex(Bytes(60)));
}

TEST(HeaderValues, cutShortAreRefused) {
    for (const std::size_t length : {0u, 13u, 122u}) {
        const Bytes bytes(length);
        ByteReader in(bytes);
        DatabaseModel db;
        const auto status = loadDBProps120(in, db);
        ASSERT_FALSE(status.ok()) << length;
        EXPECT_EQ(status.error().tag, "Load_DBProps : loadDBProps120");
    }
}

TEST(FieldTable, placesEntriesByTheirSlot) {
    const Bytes bytes = hex("03"
                            "00 00 00 00 00 00 00 00 00000000 'Category' 00 00"
                            "07 02 01 02 03 01 01 80 AABBCCDD 'Count' 00 '5' 00"
                            "02 FE 00 00 00 00 00 00 00000000 00 00");
    ByteReader in(bytes);
    DatabaseModel db;
    ASSERT_TRUE(loadDBProps220(in, db).ok());
    EXPECT_EQ(db.NumFields, 3);
    EXPECT_EQ(field(db, 0).Name, "Category");
    EXPECT_EQ(field(db, 1), model::FieldDef{});
    model::FieldDef count;
    count.Type = FieldType::Integer;
    count.HandheldByte = 1;
    count.Decimals = 2;
    count.AutoWriter = 3;
    count.IncDec = 1;
    count.SearchField = 1;
    count.FieldFlags = 0x80;
    count.Reserved = {0xAA, 0xBB, 0xCC, 0xDD};
    count.Name = "Count";
    count.Default = "5";
    EXPECT_EQ(field(db, 7), count);
    EXPECT_EQ(static_cast<int>(field(db, 2).Type), 0xFE); // a code that is no type is kept
}

TEST(FieldTable, laterEntryOfASlotWins) {
    const Bytes bytes = hex("02  01 01 00*10 'a' 00 00  01 02 00*10 'b' 00 00");
    ByteReader in(bytes);
    DatabaseModel db;
    ASSERT_TRUE(loadDBProps220(in, db).ok());
    EXPECT_EQ(field(db, 1).Name, "b");
}

TEST(FieldTable, slot81IsTheLast) {
    const Bytes good = hex("01  51 01 00*10 'a' 00 00");
    ByteReader in(good);
    DatabaseModel db;
    EXPECT_TRUE(loadDBProps220(in, db).ok());
    EXPECT_EQ(field(db, 81).Name, "a");

    const Bytes bad = hex("01  52 01 00*10 'a' 00 00");
    ByteReader badIn(bad);
    badIn.setRecord(1);
    const auto status = loadDBProps220(badIn, db);
    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.error().tag, "Load_DBProps : loadDBProps220");
    EXPECT_EQ(status.error().description(), "Record 1: field slot 82, at most 81");
    EXPECT_EQ(status.error().offset, 2u);
}

TEST(FieldTable, isWrittenFromSlot0ToTheHighestUsedOne) {
    DatabaseModel db;
    db.NumFields = 55; // whatever it was
    field(db, 0).Type = FieldType::List;
    field(db, 0).Name = "Category";
    field(db, 1).HandheldByte = 0x77; // a free slot between used ones keeps its bytes
    field(db, 1).Name = "old";
    field(db, 2).Type = FieldType::Text;
    field(db, 2).Default = "d";
    field(db, 3).Name = "behind the last used one";
    EXPECT_EQ(toHex(builtRecords(db)[1]), toHex(hex("01 03"
                                                    "00 00 00*10 'Category' 00 00"
                                                    "01 00 77 00*9 'old' 00 00"
                                                    "02 01 00*10 00 'd' 00")));
    EXPECT_EQ(db.NumFields, 3);
}

TEST(FieldTable, alwaysHasTheCategoryList) {
    DatabaseModel db;
    EXPECT_EQ(toHex(builtRecords(db)[1]), toHex(hex("01 01  00 00 00*10 00 00")));
    EXPECT_EQ(db.NumFields, 1);
}

TEST(FieldTable, holdsSlot80ButNot81) {
    DatabaseModel db;
    field(db, 80).Type = FieldType::Text;
    field(db, 81).Type = FieldType::Text;
    EXPECT_EQ(builtRecords(db)[1][1], 81);
}

TEST(FieldTable, everyCharacterSurvivesInNames) {
    DatabaseModel db;
    field(db, 1).Type = FieldType::Text;
    field(db, 1).Name = test::allCharacters();
    field(db, 1).Default = test::allCharacters();
    Bytes record = builtRecords(db)[1];
    record.erase(record.begin());
    ByteReader in(record);
    DatabaseModel read;
    ASSERT_TRUE(loadDBProps220(in, read).ok());
    EXPECT_EQ(field(read, 1), field(db, 1));
}

// Which block each type has, told by its bytes for a slot with default attributes.
TEST(Attributes, blockGoesByTheType) {
    const std::string empty = "01";
    const std::string list = "00";
    const std::string external = "00 00 00 00 0B 00";
    const std::string conditional = toHex(Bytes(142));
    const struct {
        int type;
        std::uint8_t autoWriter;
        std::string bytes;
    } cases[] = {
        {0, 0, empty},
        {0, 3, empty},
        {1, 0, empty},
        {1, 3, list},
        {2, 0, empty},
        {2, 3, list},
        {3, 0, empty},
        {3, 7, list},
        {4, 0, empty},
        {4, 3, list},
        {5, 0, list},
        {6, 0, empty},
        {6, 3, empty},
        {7, 3, empty},
        {8, 3, empty},
        {9, 3, toHex(Bytes(182))},
        {10, 0, empty},
        {10, 1, list},
        {11, 1, empty},
        {12, 0, external},
        {13, 0, external},
        {14, 0, toHex(Bytes(84))},
        {15, 0, external},
        {16, 0, external},
        {17, 0, list},
        {18, 1, empty},
        {19, 0, conditional},
        {20, 0, "00 00 00 00"},
        {20, 5, "00 00 00 00"},
        {21, 0, toHex(Bytes(20))},
        {22, 0, toHex(Bytes(578))},
        {23, 1, empty},
        {255, 0, empty},
    };
    for (const auto& c : cases) {
        DatabaseModel db;
        field(db, 4).Type = static_cast<FieldType>(c.type);
        field(db, 4).AutoWriter = c.autoWriter;
        EXPECT_EQ(builtAttribute(db, 4), c.bytes) << "type " << c.type << ", auto-writer " << int{c.autoWriter};
    }
}

TEST(Attributes, slot0IsAlwaysTheCategoryList) {
    DatabaseModel db;
    field(db, 0).Type = FieldType::Plugin;
    db.Lists[0] = {{1}, {"Home"}};
    EXPECT_EQ(builtAttribute(db, 0), toHex(hex("01 01 'Home' 00")));
}

TEST(Attributes, emptyBlockIsReadAndIgnored) {
    const Bytes bytes = hex("63 99");
    ByteReader in(bytes);
    DatabaseModel db;
    ASSERT_TRUE(readAttribute(in, db, 4, {}).ok());
    EXPECT_EQ(in.position(), 1u);
    EXPECT_EQ(db, DatabaseModel{});
}

TEST(Attributes, areReadIntoTheirSlot) {
    const struct {
        FieldType type;
        std::string bytes;
        bool (*has)(const DatabaseModel&);
    } cases[] = {
        {FieldType::List, "01 05 'x' 00", [](const DatabaseModel& db) { return db.Lists.at(4).Items[0] == "x"; }},
        {FieldType::RadioButton, "01 05 'x' 00", [](const DatabaseModel& db) { return db.Lists.has(4); }},
        {FieldType::Expression, "03 00*181",
         [](const DatabaseModel& db) { return db.Expressions.at(4).ResultType == 3; }},
        {FieldType::AdvExpression, "03 00*577",
         [](const DatabaseModel& db) { return db.Expressions.at(4).ResultType == 3; }},
        {FieldType::DBJoin, "'x' 00 01 02 03 04 05",
         [](const DatabaseModel& db) { return db.Externals.at(4).KeyType == 4; }},
        {FieldType::OneToMany, "'x' 00*83",
         [](const DatabaseModel& db) { return db.OneToManys.at(4).Source == "x"; }},
        {FieldType::Plugin, "00000009 00*16", [](const DatabaseModel& db) { return db.Plugins.at(4).PluginId == 9; }},
        {FieldType::ConditionalExpression, "'x' 00*141",
         [](const DatabaseModel& db) { return db.CondExprs.at(4).Name == "x"; }},
        {FieldType::AutoIncremental, "FFFFFFFF", [](const DatabaseModel& db) { return db.AutoIncNext.at(4) == -1; }},
    };
    for (const auto& c : cases) {
        const Bytes bytes = hex(c.bytes);
        ByteReader in(bytes);
        DatabaseModel db;
        field(db, 4).Type = c.type;
        ASSERT_TRUE(readAttribute(in, db, 4, {static_cast<std::int64_t>(bytes.size()) + 1}).ok()) << c.bytes;
        EXPECT_TRUE(c.has(db)) << c.bytes;
        if (c.type != FieldType::ConditionalExpression) { // whose links move
            EXPECT_EQ(builtAttribute(db, 4), toHex(bytes));
        }
    }
}

TEST(Attributes, cutShortAreRefusedWithTheTagOfTheirReader) {
    const struct {
        FieldType type;
        const char* tag;
    } cases[] = {
        {FieldType::Text, "Load_DBProps : readPDBFile20"},
        {FieldType::List, "Load_DBProps : readLists"},
        {FieldType::Expression, "Load_DBProps : readExpression"},
        {FieldType::DBLookup, "Load_DBProps : readExternal"},
        {FieldType::OneToMany, "Load_DBProps : ReadOneToMany"},
        {FieldType::Plugin, "Load_DBProps : ReadPlugin"},
        {FieldType::ConditionalExpression, "Load_DBProps : ReadConditionalExp"},
        {FieldType::AutoIncremental, "Load_DBProps : readPDBFile20"},
    };
    for (const auto& c : cases) {
        ByteReader in(platform::ByteSpan{});
        in.setRecord(6);
        DatabaseModel db;
        field(db, 4).Type = c.type;
        const auto status = readAttribute(in, db, 4, {});
        ASSERT_FALSE(status.ok());
        EXPECT_EQ(status.error().tag, c.tag);
        EXPECT_EQ(status.error().record, 6);
    }
}

TEST(Attributes, expressionsBranchOnTheFormatVersion) {
    const Bytes bytes = hex("00 01 2B 02 00*12 00*165 00");
    for (const int version : {20, 21}) {
        ByteReader in(bytes);
        DatabaseModel db;
        db.FormatVersion = static_cast<std::uint8_t>(version);
        field(db, 4).Type = FieldType::Expression;
        ASSERT_TRUE(readAttribute(in, db, 4, {183}).ok());
        EXPECT_EQ(db.Expressions.at(4).Tokens[1], version == 20 ? 90u : 43u);
    }
}

TEST(Attributes, olderNextValueIsATextInDefault) {
    const struct {
        const char* bytes;
        std::int32_t next;
        std::string defaultText;
    } cases[] = {
        {"00 00 00 05", 1, "before"}, // the present layout of value 5 reads as 1
        {"01 '25' 00", 25, "25"},     {"01 00", 1, ""}, {"01 'abc' 00", 1, "abc"}, {"02 '25' 00", 1, "before"},
    };
    for (const auto& c : cases) {
        const Bytes bytes = hex(c.bytes);
        ByteReader in(bytes);
        DatabaseModel db;
        field(db, 4).Type = FieldType::AutoIncremental;
        field(db, 4).Default = "before";
        ASSERT_TRUE(readAttribute(in, db, 4, {5, NextValueLayout::Older}).ok());
        EXPECT_EQ(db.AutoIncNext.at(4), c.next) << c.bytes;
        EXPECT_EQ(field(db, 4).Default, c.defaultText) << c.bytes;
    }
}

TEST(LastKey, isReadWhenThereIsADataRecord) {
    const Bytes bytes = hex("00012345");
    ByteReader in(bytes);
    DatabaseModel db;
    ASSERT_TRUE(getLastKey(in, db, 88).ok());
    EXPECT_EQ(db.LastKey, 0x12345);
    EXPECT_EQ(in.position(), 4u);
    EXPECT_EQ(toHex(builtRecords(db)[83]), "53 00 01 23 45");
}

TEST(LastKey, is1WithoutDataRecords) {
    const Bytes bytes = hex("00012345");
    ByteReader in(bytes);
    DatabaseModel db;
    ASSERT_TRUE(getLastKey(in, db, 87).ok());
    EXPECT_EQ(db.LastKey, 1);
    EXPECT_EQ(in.position(), 0u);
}

TEST(FixedRecords, are87AndStartWithTheirNumbers) {
    DatabaseModel db;
    const auto records = builtRecords(db);
    ASSERT_EQ(records.size(), 87u);
    for (std::size_t i = 0; i < records.size(); ++i)
        EXPECT_EQ(records[i][0], i);
    EXPECT_EQ(toHex(records[2]), "02 00"); // the empty list of categories
    EXPECT_EQ(toHex(records[3]), "03 01"); // the empty block
    EXPECT_EQ(toHex(records[82]), "52 01");
}

TEST(FixedRecords, filterWithoutAFieldGoesWhenItIsTheLast) {
    DatabaseModel db;
    db.NumFilters = 9;
    db.Filters[0].Name = "unused, but not the last";
    db.Filters[1].Name = "used";
    db.Filters[1].CondFields[0] = 1;
    db.Filters[2].Name = "its name goes with it";
    db.Filters[2].CondFields[1] = 1;
    db.Filters[12].CondFields[0] = 1; // the slot behind the named ones is never written
    const Bytes record = builtRecords(db)[86];
    EXPECT_EQ(record[1], 2);
    EXPECT_EQ(record.size(), 2u + 2 * 96 + 192);
    EXPECT_EQ(db.NumFilters, 2);
}

TEST(FixedRecords, columnsOfAViewEndAtTheLastField) {
    DatabaseModel db;
    db.NumViews = 2;
    db.Views[0].NumCols = 81;
    db.Views[0].Columns[2].Field = 5;
    db.Views[0].Columns[3].Width = 60;
    db.Views[1].Columns[80].Field = 1;
    const Bytes record = builtRecords(db)[85];
    EXPECT_EQ(record.size(), 2u + 38 + 3 * 5 + 38 + 81 * 5);
    EXPECT_EQ(db.Views[0].NumCols, 3);
    EXPECT_EQ(db.Views[1].NumCols, 81);
    EXPECT_EQ(db.NumViews, 2); // as it was
}

TEST(FixedRecords, autoWriterTurnsTheEmptyBlockIntoAList) {
    DatabaseModel db;
    field(db, 1).Type = FieldType::Text;
    EXPECT_EQ(toHex(builtRecords(db)[3]), "03 01");
    field(db, 1).AutoWriter = 2;
    db.Lists[1] = {{1}, {"a"}};
    EXPECT_EQ(toHex(builtRecords(db)[3]), "03 01 01 61 00");
}

} // namespace
} // namespace tallybook::pdb
