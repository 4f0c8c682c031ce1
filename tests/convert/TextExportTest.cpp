#include "convert/BridgeFixture.h"
#include "support/AnyDatabase.h"
#include "support/FailingFiles.h"
#include "support/Records.h"

#include <gmock/gmock.h>

namespace tallybook::convert {
namespace {

using model::FieldType;
using testing::HasSubstr;

class TextExportTest : public test::BridgeFixture {
protected:
    void saveOneRecord() {
        flags.WithTypeRow = 1;
        ASSERT_EQ(create("T,I,L,F,List,C,D,Ti,M,K,R,A\r\n"
                         "text,integer,long,float,list,checkbox,date,time,memo,key,radio,auto\r\n"
                         "\"a,\"\"b\"\"\",-7,70000,1.25,red,1,03/05/2003,01:05:09 PM,\"a\nb\",5,yes,3\r\n"
                         ",,,,,,,,,,,\r\n"),
                  0);
    }
};

TEST_F(TextExportTest, writesEveryTypeInItsForm) {
    saveOneRecord();
    flags.HasSeconds = 1;
    EXPECT_EQ(exported(), "T,I,L,F,List,C,D,Ti,M,K,R,A\r\n"
                          "text,integer,long,float,list,checkbox,date,time,memo,key,radio,auto\r\n"
                          "\"a,\"\"b\"\"\",-7,70000,1.25,red,1,03/05/2003,01:05:09 PM,\"a\nb\",5,yes,3\r\n"
                          ",,,,,0,,,,6,,\r\n");
    EXPECT_EQ(logFile(), "2 records exported");
}

TEST_F(TextExportTest, honoursEveryFlag) {
    saveOneRecord();
    flags = {.Delimiter = 1, .TimeFlag = 1, .DateFlag = 1, .DecimalFlag = 1};
    EXPECT_EQ(exported(), "\"a,\"\"b\"\"\";-7;70000;1,25;red;1;05/03/2003;13:05;\"a\nb\";5;yes;3\r\n"
                          ";;;;;0;;;;6;;\r\n");
    flags = {.WithCategories = 1, .ListsAsIndex = 1, .Delimiter = 2, .WithNameRow = 1};
    EXPECT_EQ(exported(), "Categories\tT\tI\tL\tF\tList\tC\tD\tTi\tM\tK\tR\tA\r\n"
                          "0\t\"a,\"\"b\"\"\"\t-7\t70000\t1.25\t1\t1\t03/05/2003\t01:05 PM\t\"a\nb\"\t5\t1\t3\r\n"
                          "0\t\t\t\t\t0\t0\t\t\t\t6\t0\t\r\n");
    flags = {.WithCategories = 1};
    EXPECT_THAT(exported(), testing::StartsWith("Unfiled,"));
}

TEST_F(TextExportTest, leavesOutFreeSlotsAndWhatDoesNotTravel) {
    ASSERT_EQ(create("A,B,C,D\nw,x,y,z\n"), 0);
    model::Document doc;
    load(doc);
    doc.CurrDB20.Fields[2].Type = FieldType::NotUsed;
    doc.CurrDB20.Fields[3].Type = FieldType::OneToMany;
    save(doc);
    EXPECT_EQ(exported(), "A,C,D\r\nw,,z\r\n");
}

TEST_F(TextExportTest, addsToAFileOrMakesItAnew) {
    ASSERT_EQ(create("A\nx\n"), 0);
    flags.WithNameRow = 0;
    const std::string before = "first";
    t.files.put("/books/out.csv", {before.begin(), before.end()});
    EXPECT_EQ(exportText(1), 0);
    EXPECT_EQ(textOf("/books/out.csv"), "first\r\nx\r\n");
    EXPECT_EQ(exportText(1), 0);
    EXPECT_EQ(textOf("/books/out.csv"), "first\r\nx\r\nx\r\n");
    EXPECT_EQ(exportText(0), 0);
    EXPECT_EQ(textOf("/books/out.csv"), "x\r\n");
    EXPECT_TRUE(t.files.remove("/books/out.csv").ok());
    EXPECT_EQ(exportText(1), 0);
    EXPECT_EQ(textOf("/books/out.csv"), "x\r\n");
}

TEST_F(TextExportTest, writesTheHeadingsOfADatabaseWithoutRecords) {
    ASSERT_EQ(create("A,B\n"), 0);
    EXPECT_EQ(exported(), "A,B\r\n");
}

TEST_F(TextExportTest, refusesArgumentsFilesAndFormats) {
    ASSERT_EQ(create("A,B\nx,1\n"), 0);
    EXPECT_EQ(exportText(2), 114);
    flags.Delimiter = 7;
    EXPECT_EQ(exportText(), 114);
    flags.Delimiter = 0;
    t.files.addFolder("/books/out.csv");
    EXPECT_EQ(exportText(), 101);
    call = newCall();
    EXPECT_EQ(numberOf(Tiny2Text(*call, "/books/MS2_No.pdb", "/books/x.csv", 0, flags)), 101);
    model::Document doc;
    load(doc);
    doc.CurrDB20.Fields[2].Type = FieldType::Expression;
    doc.CurrDB20.Expressions[2].ResultType = 14;
    save(doc);
    EXPECT_EQ(exportText(), 100);
}

TEST_F(TextExportTest, keepsTheOldTextWhateverFails) {
    ASSERT_EQ(create("A\nx\n"), 0);
    test::FailingFiles files(t.files);
    platform::Services services{t.user, t.user, files, t.clock, t.regional, "/app"};
    const auto run = [&] {
        BridgeCall failing{.services = services};
        return numberOf(Tiny2Text(failing, kPdb, "/books/out.csv", 0, flags));
    };
    ASSERT_EQ(run(), 0);
    const int calls = files.calls();
    for (int failing = 1; failing <= calls; ++failing) {
        t.files.put("/books/out.csv", {'o', 'l', 'd'});
        files.restart(failing);
        (void)run();
        const std::string left = textOf("/books/out.csv");
        EXPECT_TRUE(left == "old" || left == "A\r\nx\r\n") << failing;
    }
}

// The values that travel come back the same, under all flags.
TEST_F(TextExportTest, givesAnImportTheSameValues) {
    for (std::uint32_t round = 0; round < 24; ++round) {
        flags = {.HasSeconds = 1,
                 .WithCategories = static_cast<std::int16_t>(round / 4 % 2),
                 .ListsAsIndex = static_cast<std::int16_t>(round / 2 % 2),
                 .Delimiter = static_cast<std::int16_t>(round % 3),
                 .TimeFlag = static_cast<std::int16_t>(round % 2),
                 .DateFlag = static_cast<std::int16_t>(round / 3 % 2),
                 .WithNameRow = static_cast<std::int16_t>(1 - round % 2),
                 .DecimalFlag = static_cast<std::int16_t>(round / 5 % 2)};
        std::uint32_t seed = round * 7919 + 1;
        const auto random = [&seed](std::uint32_t below) {
            seed = seed * 1664525 + 1013904223;
            return (seed >> 8) % below;
        };
        flags.WithTypeRow = 0;
        model::Document doc;
        {
            const BridgeFlags kept = flags;
            flags = {.WithTypeRow = 1, .WithNameRow = 1};
            ASSERT_EQ(create("T,I,L,F,List,C,D,Ti,M,K,R,A\r\n"
                             "text,integer,long,float,list,checkbox,date,time,memo,key,radio,auto\r\n"),
                      0);
            flags = kept;
            load(doc);
        }
        const int records = static_cast<int>(random(40)) + 1;
        doc.CurrDB20.Fields[4].Decimals = 2;
        doc.CurrDB20.Lists[5] = {{4, 2, 9}, {"red", "a;b,c", "say \"hi\""}};
        doc.CurrDB20.Lists[11] = {{1, 2}, {"yes", "no"}};
        doc.CurrDB20.Lists[0] = {{7}, {"Fiction"}};
        model::resetRows(doc, records);
        const std::string pieces[] = {"a", "\"", ",", ";", "\t", " ", "\n", "\xE9", "", "0"};
        for (int record = 0; record < records; ++record) {
            const int row = record + model::kFirstDataRow;
            const auto set = [&](int slot, const std::string& text) {
                if (random(4) > 0)
                    doc.grd.setText(row, model::columnOfSlot(slot), text);
            };
            std::string text;
            for (std::uint32_t i = random(6); i > 0; --i)
                text += pieces[random(10)];
            set(1, text);
            set(2, std::to_string(static_cast<int>(random(65535)) - 32767));
            set(3, std::to_string(static_cast<std::int32_t>(random(16777216) * 255 + 1)));
            set(4, std::to_string(random(9999)) + "." + std::to_string(random(90) + 10));
            set(7, std::to_string(random(12) + 1) + "/" + std::to_string(random(28) + 1) + "/" +
                       std::to_string(1900 + random(199)));
            set(8, std::to_string(random(12) + 1) + ":" + std::to_string(random(50) + 10) + ":" +
                       std::to_string(random(50) + 10) + (random(2) == 0 ? " AM" : " PM"));
            set(9, text + "\n" + text);
            set(12, std::to_string(random(100000) + 1));
            doc.grd.setPicture(row, 7, random(2) == 0 ? model::Picture::CheckOn : model::Picture::CheckOff);
            const int ids[] = {0, 4, 2, 9};
            doc.CellLongs.set(record, 5, ids[random(4)]);
            doc.CellLongs.set(record, 11, static_cast<std::int32_t>(random(3)));
            doc.CellLongs.set(record, 0, flags.WithCategories == 1 && random(2) == 0 ? 7 : 0);
            doc.RecKeys.set(record, static_cast<std::int32_t>(random(100000)) + 1);
        }
        save(doc);
        const auto whole = t.files.bytes(kPdb);
        const std::string text = exported();
        ASSERT_EQ(replace(text), 0) << text;
        EXPECT_TRUE(logLines().empty()) << logLines()[0];
        model::Document again;
        load(again);
        model::Document before;
        t.files.put(kPdb, whole);
        load(before);
        for (const int slot : {1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12})
            EXPECT_EQ(test::columnTexts(again, slot), test::columnTexts(before, slot)) << round << ' ' << slot;
        EXPECT_EQ(test::columnPictures(again, 6), test::columnPictures(before, 6));
        for (const int slot : {0, 5, 11})
            EXPECT_EQ(test::columnLongs(again, slot), test::columnLongs(before, slot)) << round << ' ' << slot;
        EXPECT_EQ(test::recordKeys(again), test::recordKeys(before));
    }
}

} // namespace
} // namespace tallybook::convert
