#include "core/pdb/Database.h"

#include "core/pdb/Passwords.h"
#include "support/RawFile.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using model::Document;
using model::FieldType;
using platform::Bytes;
using test::hex;
using test::RawFile;
using test::TestServices;
using test::toHex;

// One Text field "Name" in slot 1 and one record with "Ada", saved at 2003-03-05 13:05:09: every byte of the file.
const char* const kTinyFile =
    "'MS2_A' 00*27 8000 0001 BA8BA685 BA8BA685 00000000 00000001 00000000 00000000 'data' 'MOSS' 00000000 00000000 "
    "0058 "
    "00000310 40 000000  0000038D 40 000000  000003B9 40 000000  000003BB 40 000000 "
    "000003BD 40 000000  000003BF 40 000000  000003C1 40 000000  000003C3 40 000000 "
    "000003C5 40 000000  000003C7 40 000000  000003C9 40 000000  000003CB 40 000000 "
    "000003CD 40 000000  000003CF 40 000000  000003D1 40 000000  000003D3 40 000000 "
    "000003D5 40 000000  000003D7 40 000000  000003D9 40 000000  000003DB 40 000000 "
    "000003DD 40 000000  000003DF 40 000000  000003E1 40 000000  000003E3 40 000000 "
    "000003E5 40 000000  000003E7 40 000000  000003E9 40 000000  000003EB 40 000000 "
    "000003ED 40 000000  000003EF 40 000000  000003F1 40 000000  000003F3 40 000000 "
    "000003F5 40 000000  000003F7 40 000000  000003F9 40 000000  000003FB 40 000000 "
    "000003FD 40 000000  000003FF 40 000000  00000401 40 000000  00000403 40 000000 "
    "00000405 40 000000  00000407 40 000000  00000409 40 000000  0000040B 40 000000 "
    "0000040D 40 000000  0000040F 40 000000  00000411 40 000000  00000413 40 000000 "
    "00000415 40 000000  00000417 40 000000  00000419 40 000000  0000041B 40 000000 "
    "0000041D 40 000000  0000041F 40 000000  00000421 40 000000  00000423 40 000000 "
    "00000425 40 000000  00000427 40 000000  00000429 40 000000  0000042B 40 000000 "
    "0000042D 40 000000  0000042F 40 000000  00000431 40 000000  00000433 40 000000 "
    "00000435 40 000000  00000437 40 000000  00000439 40 000000  0000043B 40 000000 "
    "0000043D 40 000000  0000043F 40 000000  00000441 40 000000  00000443 40 000000 "
    "00000445 40 000000  00000447 40 000000  00000449 40 000000  0000044B 40 000000 "
    "0000044D 40 000000  0000044F 40 000000  00000451 40 000000  00000453 40 000000 "
    "00000455 40 000000  00000457 40 000000  00000459 40 000000  0000045B 40 000000 "
    "00000460 40 000000  00000468 40 000000  0000046A 40 000000  0000052C 40 000000 "
    "0000 "
    "00 00 00 00 0000 00 15 00 00 00 00 0000 00  00*9 00*60 00*40 00 "
    "01 02  00 00 00 00 00 00 00 00 00000000 'Categories' 00 00  01 01 00 00 00 00 00 00 00000000 'Name' 00 00 "
    "02 00 "
    "0301 0401 0501 0601 0701 0801 0901 0A01 0B01 0C01 0D01 0E01 0F01 1001 1101 1201 "
    "1301 1401 1501 1601 1701 1801 1901 1A01 1B01 1C01 1D01 1E01 1F01 2001 2101 2201 "
    "2301 2401 2501 2601 2701 2801 2901 2A01 2B01 2C01 2D01 2E01 2F01 3001 3101 3201 "
    "3301 3401 3501 3601 3701 3801 3901 3A01 3B01 3C01 3D01 3E01 3F01 4001 4101 4201 "
    "4301 4401 4501 4601 4701 4801 4901 4A01 4B01 4C01 4D01 4E01 4F01 5001 5101 5201 "
    "53 00000001 "
    "54 01 01  00 28 0000 00 "
    "55 00 "
    "56 00 00*192 "
    "57 00 00000001  01 01 03 'Ada' 00  00 00";

// Reads a file that must be good.
void open(Document& doc, const Bytes& file, const ReadSteps& steps = {}) {
    const auto status = readDatabase(doc, file, "MS2_A.pdb", {}, steps);
    ASSERT_TRUE(status.ok()) << status.error().tag << ": " << status.error().description();
}

std::string descriptionOf(const Bytes& file) {
    Document doc;
    const auto status = readDatabase(doc, file, "MS2_A.pdb", {});
    return status.ok() ? "read" : status.error().tag + ": " + status.error().description();
}

TEST(TinyFile, isReadWhole) {
    Document doc;
    open(doc, hex(kTinyFile));
    EXPECT_EQ(doc.CurrDB20.DBName, "MS2_A");
    EXPECT_EQ(doc.NumFileRecs, 88);
    EXPECT_EQ(doc.NumDataRecs, 1);
    EXPECT_EQ(doc.CurrDB20.NumFields, 2);
    EXPECT_EQ(doc.CurrDB20.Fields[0].Type, FieldType::List);
    EXPECT_EQ(doc.CurrDB20.Fields[0].Name, "Categories");
    EXPECT_EQ(doc.CurrDB20.Fields[1].Type, FieldType::Text);
    EXPECT_EQ(doc.CurrDB20.Fields[1].Name, "Name");
    EXPECT_EQ(doc.CurrDB20.LastKey, 1);
    EXPECT_EQ(doc.RecKeys[0], 1);
    EXPECT_EQ(doc.grd.rows(), 3);
    EXPECT_EQ(doc.grd.text(2, 0), "1");
    EXPECT_EQ(doc.grd.text(2, 1), "Unfiled");
    EXPECT_EQ(doc.grd.text(2, 2), "Ada");
}

TEST(TinyFile, isWrittenByteForByte) {
    Document doc;
    open(doc, hex(kTinyFile));
    TestServices test;
    const auto built = buildDatabase(doc, test);
    ASSERT_TRUE(built.ok());
    EXPECT_EQ(test::difference(built.value().bytes, hex(kTinyFile)), "");
    EXPECT_TRUE(built.value().images.empty());
    EXPECT_TRUE(built.value().usedPictures.empty());
}

TEST(TinyFile, isRefusedAtEveryLengthBelowItsCells) {
    const Bytes whole = hex(kTinyFile);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        const bool hasHeaderOfRecord = length >= 0x52C + 6; // cells may end early
        Document doc;
        const auto status = readDatabase(doc, part, "x", {});
        ASSERT_EQ(status.ok(), hasHeaderOfRecord) << length << " bytes";
        if (!status.ok()) {
            EXPECT_EQ(status.error().kind, platform::ErrorKind::Format);
        }
    }
}

TEST(RawFile, isTheTinyFileWithoutFieldsAndRecords) {
    Document doc;
    open(doc, RawFile().bytes());
    EXPECT_EQ(doc.NumDataRecs, 0);
}

TEST(ReadDatabase, fileOf87RecordsHasThePlaceholderRow) {
    RawFile file;
    file.set(83, "53 00000063");
    Document doc;
    open(doc, file.bytes());
    EXPECT_EQ(doc.NumDataRecs, 0);
    EXPECT_EQ(doc.NumFileRecs, 87);
    EXPECT_EQ(doc.grd.rows(), 3);
    EXPECT_EQ(doc.grd.rowHeight(2), 0);
    EXPECT_EQ(doc.CurrDB20.LastKey, 1); // and not 99
}

TEST(ReadDatabase, singleRecordWithoutACellIsARecord) {
    RawFile file;
    file.add("57 00 00000001 00 00");
    Document doc;
    open(doc, file.bytes());
    EXPECT_EQ(doc.NumDataRecs, 1);
    EXPECT_EQ(doc.grd.rowHeight(2), model::kDefaultSize);
    TestServices test;
    const Bytes saved = buildDatabase(doc, test).value().bytes;
    EXPECT_EQ(toHex(platform::ByteSpan(saved).last(8)), "57 00 00 00 00 01 00 00");
}

TEST(ReadDatabase, deletedRecordsDisappear) {
    RawFile file;
    file.set(83, "53 00000063");
    for (const char* key : {"01", "02", "03"})
        file.add("57 00 000000" + std::string(key) + " 00 00");
    file.records[88].attributes = 0x80;
    Document doc;
    open(doc, file.bytes());
    EXPECT_EQ(doc.NumDataRecs, 2);
    EXPECT_EQ(doc.RecKeys[0], 1);
    EXPECT_EQ(doc.RecKeys[1], 3);
    EXPECT_EQ(doc.CurrDB20.LastKey, 99);
}

TEST(ReadDatabase, onlyDeletedRecordsAreNone) {
    RawFile file;
    file.set(83, "53 00000063");
    file.add("57 00 00000001 00 00");
    file.records[87].attributes = 0xC0;
    Document doc;
    open(doc, file.bytes());
    EXPECT_EQ(doc.NumDataRecs, 0);
    EXPECT_EQ(doc.CurrDB20.LastKey, 1); // counted after the deleted ones were dropped
}

TEST(ReadDatabase, gapsAreSkipped) {
    RawFile file;
    file.add("57 00 00000005 00 00");
    for (RawFile::Record& record : file.records)
        record.gapAhead = 3;
    Document doc;
    open(doc, file.bytes());
    EXPECT_EQ(doc.RecKeys[0], 5);
    EXPECT_EQ(doc.CurrDB20.Fields[0].Name, "Categories");
}

// Puts another offset into the record list.
void setOffset(Bytes& file, std::size_t record, std::size_t offset) {
    for (std::size_t i = 0; i < 4; ++i)
        file[78 + 8 * record + i] = static_cast<std::uint8_t>(offset >> (24 - 8 * i));
}

TEST(ReadDatabase, recordBehindThePositionIsNotParsed) {
    RawFile file;
    file.set(1, "01 02 00 00 00*10 00 00  01 01 00*10 00 00");
    file.add("57 00 00000005 01 01 01 'a' 00 00 00");
    file.add("57 00 00000006 01 01 01 'b' 00 00 00");
    file.add("57 00 00000007 01 01 01 'c' 00 00 00");
    Bytes bytes = file.bytes();
    setOffset(bytes, 88, file.offset(87));
    Document doc;
    open(doc, bytes);
    EXPECT_EQ(doc.NumDataRecs, 3);
    EXPECT_EQ(doc.RecKeys[0], 5);
    EXPECT_EQ(doc.grd.text(2, 2), "a"); // its bytes go on to the next offset behind it
    EXPECT_EQ(doc.RecKeys[1], 0);
    EXPECT_EQ(doc.grd.text(3, 2), "");
    EXPECT_EQ(doc.RecKeys[2], 7);
}

TEST(ReadDatabase, fixedRecordBehindThePositionIsNotParsed) {
    RawFile file;
    file.set(2, "02 03 01 02 03 'a' 00 'b' 00 'c' 00"); // a count that runs on into record 3
    Bytes bytes = file.bytes();
    setOffset(bytes, 3, file.offset(3) - 2);
    Document doc;
    open(doc, bytes);
    EXPECT_EQ(doc.CurrDB20.Lists.at(0).Items, (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(doc.CurrDB20.LastKey, 1);
}

TEST(ReadDatabase, refusesRecordShorterThanItsHeader) {
    RawFile file;
    file.add("57 00 0000");
    file.add("57 00 00000001 00 00");
    EXPECT_EQ(descriptionOf(file.bytes()), "Load_DB : loadRecord20: Record 87: 4 bytes, at least 6");
    file.records.pop_back();
    EXPECT_EQ(descriptionOf(file.bytes()), "Load_DB : loadRecord20: Record 87: 4 bytes, at least 6");
}

TEST(ReadDatabase, refusalsNameRecordAndReason) {
    const struct {
        std::size_t record;
        const char* bytes;
        const char* description;
    } cases[] = {
        {1, "01 01 60 00*14", "Load_DBProps : loadDBProps220: Record 1: field slot 96, at most 81"},
        {84, "54 01 20", "Load_DBProps : LoadFormProp20: Record 84: 32 forms, at most 16"},
        {85, "55 C8", "Load_DBProps : LoadViewProp20: Record 85: 200 views, at most 13"},
        {86, "56 14", "Load_DBProps : LoadFilterProp20: Record 86: 20 filters, at most 13"},
    };
    for (const auto& c : cases) {
        RawFile file;
        file.set(c.record, c.bytes);
        EXPECT_EQ(descriptionOf(file.bytes()), c.description);
    }
}

TEST(ReadDatabase, refusesWhatIsNoTallybook) {
    RawFile file;
    file.creator = "ABCD";
    EXPECT_EQ(descriptionOf(file.bytes()), "Load_DB : readPDBFile20: The selected file MS2_A.pdb is not a Tallybook");
    EXPECT_EQ(descriptionOf(hex("00*77")), "Load_DB : readheader20: 77 bytes, at least 78");
}

TEST(ReadDatabase, refusesMissingFixedRecords) {
    RawFile file;
    file.records.pop_back();
    EXPECT_EQ(descriptionOf(file.bytes()), "Load_DB : readPDBFile20: 86 records, at least 87");
}

TEST(ReadDatabase, refusesOffsetsBeyondTheFile) {
    RawFile file;
    file.add("57 00 00000001 00 00");
    Bytes bytes = file.bytes();
    setOffset(bytes, 40, 0xFFFFFFFF);
    EXPECT_EQ(descriptionOf(bytes),
              "Load_DB : readPDBFile20: Record 40: it starts at byte 4294967295, the file has " +
                  std::to_string(bytes.size()) + " bytes");
    bytes = file.bytes();
    setOffset(bytes, 87, bytes.size() + 1);
    EXPECT_EQ(descriptionOf(bytes).substr(0, 35), "Load_DB : readPDBFile20: Record 87:");
}

TEST(ReadDatabase, loginComesAheadOfEverythingElse) {
    RawFile file;
    file.set(0, "00 00*6 15 00*7 00*9 E1E6E75A5A5A5A5A5A5A 00*50 00*40 00");
    file.set(85, "55 C8"); // never reached
    Document doc;
    ReadSteps steps;
    std::string stored;
    steps.afterHeaderValues = [&](Document& open) {
        stored = open.CurrDB20.Passwords[0];
        EXPECT_EQ(open.CurrDB20.NumFields, 0);
        return false;
    };
    const auto status = readDatabase(doc, file.bytes(), "x", {}, steps);
    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.error().kind, platform::ErrorKind::Refused);
    EXPECT_TRUE(matchPassword20("abc", stored));
}

TEST(ReadDatabase, stepsComeInOrder) {
    RawFile file;
    for (int i = 0; i < 25; ++i)
        file.add("57 00 00000001 00 00");
    Document doc;
    std::string order;
    ReadSteps steps;
    steps.afterHeaderValues = [&](Document&) {
        order += "login ";
        return true;
    };
    steps.afterFieldTable = [&](Document& open) {
        EXPECT_EQ(open.CurrDB20.Fields[0].Type, FieldType::List);
        EXPECT_EQ(open.grd.dataRows(), 25);
        order += "columns ";
    };
    steps.onRecord = [&](int record, int total) {
        order += std::to_string(record) + "/" + std::to_string(total) + " ";
    };
    open(doc, file.bytes(), steps);
    EXPECT_EQ(order, "login columns 0/25 10/25 20/25 ");
}

TEST(ReadDatabase, keysGoIntoKeyFields) {
    RawFile file;
    file.set(1, "01 03 00 00 00*10 00 00  01 0B 00*10 00 00  02 0B 00*10 00 00");
    file.add("57 00 FFFFFFFF 00 00");
    file.add("57 00 00000000 00 00");
    Document doc;
    open(doc, file.bytes());
    EXPECT_EQ(doc.grd.text(2, 2), "-1");
    EXPECT_EQ(doc.grd.text(2, 3), "-1");
    EXPECT_EQ(doc.grd.text(3, 2), "0");
    EXPECT_EQ(doc.CellLongs.get(0, 1), -1);
    EXPECT_EQ(doc.CellLongs.get(0, 2), -1);
}

TEST(ReadDatabase, olderFormatVersionStaysUntilTheNextSave) {
    RawFile file;
    file.set(0, "00 00*6 14 00*7 00*9 00*60 00*40 00");
    file.set(1, "01 02 00 00 00*10 00 00  01 09 00*10 00 00");
    file.set(3, "03 00  01 2B 02 00*4 00*77"); // the block of 7 tokens
    Document doc;
    open(doc, file.bytes());
    EXPECT_EQ(doc.CurrDB20.FormatVersion, 20);
    EXPECT_EQ(doc.CurrDB20.Expressions.at(1).Tokens[1], 90u);
    TestServices test;
    const Bytes saved = buildDatabase(doc, test).value().bytes;
    EXPECT_EQ(doc.CurrDB20.FormatVersion, 21);
    Document again;
    open(again, saved);
    EXPECT_EQ(again.CurrDB20.FormatVersion, 21);
    EXPECT_EQ(again.CurrDB20.Expressions, doc.CurrDB20.Expressions);
}

TEST(ReadDatabase, spareFiltersNeedADataRecord) {
    RawFile file;
    file.set(86, "56 00 'spare' 00*187");
    Document without;
    open(without, file.bytes());
    EXPECT_EQ(without.CurrDB20.SpareFilters[0].Name, "");
    file.add("57 00 00000001 00 00");
    Document with;
    open(with, file.bytes());
    EXPECT_EQ(with.CurrDB20.SpareFilters[0].Name, "spare");
    file.set(86, "56 00"); // an old file without the block
    Document old;
    open(old, file.bytes());
    EXPECT_EQ(old.CurrDB20.SpareFilters[0].Name, "");
    file.records.insert(file.records.end() - 1, {hex("57 'd'*300"), 0x80}); // a deleted record is no filter
    Document deleted;
    open(deleted, file.bytes());
    EXPECT_EQ(deleted.NumDataRecs, 1);
    EXPECT_EQ(deleted.CurrDB20.SpareFilters[0].Name, "");
}

Verdict verdictOf(const Bytes& file) {
    const auto verdict = verifyRecords(file);
    EXPECT_TRUE(verdict.ok());
    return verdict.ok() ? verdict.value() : Verdict::WrongCreator;
}

TEST(Verify, acceptsRecordsThatBeginWithTheirNumbers) {
    EXPECT_EQ(verdictOf(hex(kTinyFile)), Verdict::Good);
    EXPECT_EQ(verdictOf(RawFile().bytes()), Verdict::Good);
}

TEST(Verify, refusesAnyFixedRecordOutOfItsPlace) {
    for (std::size_t record = 0; record < 87; ++record) {
        RawFile file;
        file.records[record].bytes[0] = static_cast<std::uint8_t>(record + 1);
        EXPECT_EQ(verdictOf(file.bytes()), Verdict::OutOfOrder) << record;
    }
}

TEST(Verify, looksAtNothingButTheLeadingByte) {
    RawFile file;
    for (std::size_t record = 0; record < 87; ++record)
        file.records[record].bytes = {static_cast<std::uint8_t>(record), 0xFF};
    file.add("99"); // data records are not looked at
    EXPECT_EQ(verdictOf(file.bytes()), Verdict::Good);
}

TEST(Verify, readsAPassedRecordWhereItStands) {
    RawFile file;
    file.add("57 00 00000001 00 00");
    Bytes bytes = file.bytes();
    setOffset(bytes, 3, 10); // passed: the byte behind the number of record 2 must be 3
    EXPECT_EQ(verdictOf(bytes), Verdict::OutOfOrder);
    bytes[file.offset(2) + 1] = 3;
    EXPECT_EQ(verdictOf(bytes), Verdict::Good);
}

TEST(Verify, refusesAnotherCreator) {
    RawFile file;
    file.creator = "MOSA";
    file.records.clear();
    EXPECT_EQ(verdictOf(file.bytes()), Verdict::WrongCreator);
}

TEST(Verify, refusesADeletedFilterRecord) {
    RawFile file;
    file.records[86].attributes = 0xC0;
    EXPECT_EQ(verdictOf(file.bytes()), Verdict::OutOfOrder);
    file.add("57 00 00000001 00 00");
    EXPECT_EQ(verdictOf(file.bytes()), Verdict::OutOfOrder);
}

TEST(Verify, failsOnAFileThatEndsTooEarly) {
    const Bytes whole = RawFile().bytes();
    for (const std::size_t length : {0u, 77u, 78u, 700u, 776u, 900u}) {
        const auto verdict = verifyRecords(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
        ASSERT_FALSE(verdict.ok()) << length;
        EXPECT_EQ(verdict.error().kind, platform::ErrorKind::Format);
    }
}

TEST(ReadStructure, leavesGridAndRecordsAlone) {
    model::DatabaseModel db;
    ASSERT_TRUE(readStructure(db, hex(kTinyFile), "x").ok());
    EXPECT_EQ(db.DBName, "MS2_A");
    EXPECT_EQ(db.Fields[0].Type, FieldType::List);
    EXPECT_EQ(db.Fields[1].Name, "Name");
    EXPECT_EQ(db.LastKey, 1);
}

TEST(ReadStructure, readsTheOlderLayoutOfNextValues) {
    RawFile file;
    file.set(1, "01 02 00 00 00*10 00 00  01 14 00*10 00 00");
    file.set(3, "03 00000007");
    Document doc;
    open(doc, file.bytes());
    EXPECT_EQ(doc.CurrDB20.AutoIncNext.at(1), 7);
    model::DatabaseModel db;
    ASSERT_TRUE(readStructure(db, file.bytes(), "x").ok());
    EXPECT_EQ(db.AutoIncNext.at(1), 1);
    file.set(3, "03 01 '25' 00");
    model::DatabaseModel older;
    ASSERT_TRUE(readStructure(older, file.bytes(), "x").ok());
    EXPECT_EQ(older.AutoIncNext.at(1), 25);
    EXPECT_EQ(older.Fields[1].Default, "25");
}

TEST(ReadStructure, refusesWhatIsNoTallybook) {
    model::DatabaseModel db;
    EXPECT_FALSE(readStructure(db, Bytes{}, "x").ok());
}

TEST(BuildDatabase, nameGetsThePrefixOrTheStem) {
    TestServices test;
    Document doc;
    doc.CurrDB20.DBName = "My Books";
    doc.CurrFileName = "MS2_Other.pdb";
    const auto nameOf = [&] {
        const Bytes bytes = buildDatabase(doc, test).value().bytes;
        return std::string(reinterpret_cast<const char*>(bytes.data()));
    };
    EXPECT_EQ(nameOf(), "MS2_My Books");
    doc.CurrDB20.DBName.clear();
    EXPECT_EQ(nameOf(), "MS2_Other");
    doc.CurrFileName = "x";
    EXPECT_EQ(nameOf(), "MS2_");
}

TEST(BuildDatabase, tellsEachRecord) {
    TestServices test;
    Document doc;
    for (int i = 0; i < 3; ++i)
        model::appendRecord(doc);
    std::string told;
    const BuildSteps steps{
        [&](int record, int total) { told += std::to_string(record) + "/" + std::to_string(total) + " "; }};
    ASSERT_TRUE(buildDatabase(doc, test, steps).ok());
    EXPECT_EQ(told, "0/3 1/3 2/3 ");
}

TEST(BuildDatabase, holds65448RecordsAndNoMore) {
    TestServices test;
    Document doc;
    model::resetRows(doc, 65448);
    const auto built = buildDatabase(doc, test);
    ASSERT_TRUE(built.ok());
    EXPECT_EQ(toHex(platform::ByteSpan(built.value().bytes).subspan(76, 2)), "FF FF");
    Document again;
    open(again, built.value().bytes);
    EXPECT_EQ(again.NumDataRecs, 65448);

    model::appendRecord(doc);
    const auto refused = buildDatabase(doc, test);
    ASSERT_FALSE(refused.ok());
    EXPECT_EQ(refused.error().text, "A Tallybook cannot hold more than 65448 records.");
}

} // namespace
} // namespace tallybook::pdb
