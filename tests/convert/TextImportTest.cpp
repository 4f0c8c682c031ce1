#include "convert/BridgeFixture.h"
#include "core/pdb/Passwords.h"
#include "support/FailingFiles.h"
#include "support/Records.h"

#include <gmock/gmock.h>

namespace tallybook::convert {
namespace {

using model::FieldType;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

class TextImportTest : public test::BridgeFixture {
protected:
    static Texts column(const model::Document& doc, int slot) { return test::columnTexts(doc, slot); }

    // A database of a field of each importable type, without records.
    void saveEveryType() {
        flags.WithTypeRow = 1;
        ASSERT_EQ(create("T,I,L,F,List,C,D,Ti,M,K,R,A\r\n"
                         "text,integer,long,float,list,checkbox,date,time,memo,key,radio,auto\r\n"),
                  0);
        flags.WithTypeRow = 0;
    }
};

TEST_F(TextImportTest, makesADatabaseWithFieldsOfTheNamedTypes) {
    flags.WithTypeRow = 1;
    flags.HasSeconds = 1;
    ASSERT_EQ(create("T,I,L,F,List,C,D,Ti,M,K,R,A\r\n"
                     "text,integer,long,float,list,checkbox,date,time,memo,key,radio,auto\r\n"
                     "one,-7,70000,1.25,red,1,03/05/2003,01:05:09 PM,\"a\r\nb\",5,yes,3\r\n"
                     "two,,,,blue,0,,,,9,no,\r\n"),
              0);
    model::Document doc;
    load(doc);
    const std::vector<FieldType> types = {FieldType::Text,  FieldType::Integer,     FieldType::Long,
                                          FieldType::Float, FieldType::List,        FieldType::Checkbox,
                                          FieldType::Date,  FieldType::Time,        FieldType::Memo,
                                          FieldType::Key,   FieldType::RadioButton, FieldType::AutoIncremental};
    for (std::size_t slot = 1; slot <= types.size(); ++slot)
        EXPECT_EQ(doc.CurrDB20.Fields[slot].Type, types[slot - 1]) << slot;
    EXPECT_EQ(doc.CurrDB20.DBName, "MS2_Books");
    EXPECT_EQ(doc.CurrDB20.Fields[4].Decimals, 2);
    EXPECT_THAT(column(doc, 1), ElementsAre("one", "two"));
    EXPECT_THAT(column(doc, 2), ElementsAre("-7", ""));
    EXPECT_THAT(column(doc, 3), ElementsAre("70000", ""));
    EXPECT_THAT(column(doc, 4), ElementsAre("1.25", ""));
    EXPECT_THAT(column(doc, 5), ElementsAre("red", "blue"));
    EXPECT_THAT(test::columnPictures(doc, 6), ElementsAre(model::Picture::CheckOn, model::Picture::CheckOff));
    EXPECT_THAT(column(doc, 7), ElementsAre("3/5/2003", ""));
    EXPECT_THAT(column(doc, 8), ElementsAre("1:05:09 PM", ""));
    EXPECT_THAT(column(doc, 9), ElementsAre("a\nb", ""));
    EXPECT_THAT(column(doc, 10), ElementsAre("5", "9"));
    EXPECT_THAT(test::recordKeys(doc), ElementsAre(5, 9));
    EXPECT_THAT(column(doc, 11), ElementsAre("yes", "no"));
    EXPECT_THAT(column(doc, 12), ElementsAre("3", ""));
    EXPECT_EQ(doc.CurrDB20.AutoIncNext.at(12), 4);
    EXPECT_EQ(doc.CurrDB20.LastKey, 9);
    EXPECT_EQ(logFile(), "2 records imported");
}

TEST_F(TextImportTest, findsTheTypesFromTheValues) {
    ASSERT_EQ(create("Name,Pages,Price,Bought,Lent,Code\nDune,412,9.90,5/4/1999,Y,007\nEmma,,12.5,,N,\n"), 0);
    model::Document doc;
    load(doc);
    EXPECT_EQ(doc.CurrDB20.Fields[1].Type, FieldType::Text);
    EXPECT_EQ(doc.CurrDB20.Fields[2].Type, FieldType::Integer);
    EXPECT_EQ(doc.CurrDB20.Fields[3].Type, FieldType::Float);
    EXPECT_EQ(doc.CurrDB20.Fields[4].Type, FieldType::Date);
    EXPECT_EQ(doc.CurrDB20.Fields[5].Type, FieldType::Checkbox);
    EXPECT_EQ(doc.CurrDB20.Fields[6].Type, FieldType::Text);
    EXPECT_THAT(column(doc, 3), ElementsAre("9.90", "12.50"));
}

TEST_F(TextImportTest, namesFieldsWithoutALineOfNames) {
    flags.WithNameRow = 0;
    ASSERT_EQ(create("a,1\nb,2,later\n"), 0);
    model::Document doc;
    load(doc);
    EXPECT_EQ(doc.CurrDB20.Fields[1].Name, "Fld01");
    EXPECT_EQ(doc.CurrDB20.Fields[3].Name, "Fld03");
    EXPECT_THAT(column(doc, 3), ElementsAre("", "later"));
}

TEST_F(TextImportTest, appendsBehindTheRecordsAndKeepsEverythingElse) {
    ASSERT_EQ(create("Name,Pages\nDune,412\n"), 0);
    model::Document before;
    load(before);
    before.CurrDB20.Filters[0].Name = "Thick";
    before.CurrDB20.Filters[0].CondFields[0] = 2;
    before.CurrDB20.StartupText = "hello";
    save(before);
    ASSERT_EQ(append("Name,Pages\nEmma,474\n"), 0);
    model::Document doc;
    load(doc);
    EXPECT_THAT(column(doc, 1), ElementsAre("Dune", "Emma"));
    EXPECT_THAT(column(doc, 2), ElementsAre("412", "474"));
    EXPECT_THAT(test::recordKeys(doc), ElementsAre(1, 2));
    EXPECT_EQ(doc.CurrDB20.LastKey, 2);
    EXPECT_EQ(doc.CurrDB20.Filters[0].Name, "Thick");
    EXPECT_EQ(doc.CurrDB20.StartupText, "hello");
}

TEST_F(TextImportTest, replacesTheRecordsAlone) {
    ASSERT_EQ(create("Name,Pages\nDune,412\n"), 0);
    ASSERT_EQ(replace("Name,Pages\nEmma,474\nIvanhoe,500\n"), 0);
    model::Document doc;
    load(doc);
    EXPECT_THAT(column(doc, 1), ElementsAre("Emma", "Ivanhoe"));
    EXPECT_THAT(test::recordKeys(doc), ElementsAre(2, 3));
}

TEST_F(TextImportTest, takesADatabaseWithoutRecordsEitherWay) {
    ASSERT_EQ(create("Name\n"), 0);
    ASSERT_EQ(append("Name\nDune\n"), 0);
    ASSERT_EQ(replace("Name\n"), 0);
    model::Document doc;
    load(doc);
    EXPECT_EQ(doc.NumDataRecs, 0);
    EXPECT_EQ(append("Name\n\n\nx"), 0); // an empty line is a record
    load(doc);
    EXPECT_THAT(column(doc, 1), ElementsAre("", "", "x"));
}

TEST_F(TextImportTest, readsColumnsInTheOrderOfTheSlotsFreeOnesIncluded) {
    ASSERT_EQ(create("A,B,C\nx,y,z\n"), 0);
    model::Document doc;
    load(doc);
    doc.CurrDB20.Fields[2].Type = FieldType::NotUsed;
    save(doc);
    ASSERT_EQ(append("A,,C\n1,,3\n"), 0);
    load(doc);
    EXPECT_THAT(column(doc, 1), ElementsAre("x", "1"));
    EXPECT_THAT(column(doc, 3), ElementsAre("z", "3"));
    EXPECT_EQ(append("A,,C\n1,2,3\n"), 111);
}

TEST_F(TextImportTest, makesListItemsThatAreMissing) {
    saveEveryType();
    ASSERT_EQ(append("T,I,L,F,List\n,,,,red\n,,,,Red\n,,,,red\n,,,,\n"), 0);
    model::Document doc;
    load(doc);
    EXPECT_THAT(doc.CurrDB20.Lists.at(5).Items, ElementsAre("red", "Red"));
    EXPECT_THAT(doc.CurrDB20.Lists.at(5).ItemIds, ElementsAre(1, 2));
    EXPECT_THAT(test::columnLongs(doc, 5), ElementsAre(1, 2, 1, 0));
}

TEST_F(TextImportTest, refusesTheItemBehindThe255th) {
    saveEveryType();
    std::string text = "T,I,L,F,List\n";
    for (int item = 1; item <= 255; ++item)
        text += ",,,,item" + std::to_string(item) + "\n";
    ASSERT_EQ(append(text), 0);
    model::Document doc;
    load(doc);
    EXPECT_EQ(doc.CurrDB20.Lists.at(5).Count(), 255);
    const auto before = t.files.bytes(kPdb);
    EXPECT_EQ(append("T,I,L,F,List\n,,,,one more\n"), 117);
    EXPECT_EQ(t.files.bytes(kPdb), before);
}

TEST_F(TextImportTest, readsListsByTheirPositions) {
    saveEveryType();
    ASSERT_EQ(append("T,I,L,F,List\n,,,,red\n,,,,blue\n"), 0);
    flags.ListsAsIndex = 1;
    ASSERT_EQ(append("T,I,L,F,List\n,,,,2\n,,,,0\n"), 0);
    model::Document doc;
    load(doc);
    EXPECT_THAT(column(doc, 5), ElementsAre("red", "blue", "blue", ""));
    for (const char* index : {"3", "-1", "red", "1.5"})
        EXPECT_EQ(append(std::string("T,I,L,F,List\n,,,,") + index + "\n"), 901) << index;
}

TEST_F(TextImportTest, takesEightOptionsOfARadioButton) {
    saveEveryType();
    std::string text = "T,I,L,F,List,C,D,Ti,M,K,R\n";
    for (int option = 1; option <= 9; ++option)
        text += ",,,,,,,,,,o" + std::to_string(option) + "\n";
    ASSERT_EQ(append(text), 0);
    model::Document doc;
    load(doc);
    EXPECT_EQ(doc.CurrDB20.Lists.at(11).Count(), 8);
    EXPECT_THAT(logLines(),
                ElementsAre("Record 9, R: \"o9\" left out: Importing inappropriate data type into field."));
}

TEST_F(TextImportTest, readsCategoriesFromTheFirstColumn) {
    flags.WithCategories = 1;
    ASSERT_EQ(create("categories,Name\nFiction,Dune\nUnfiled,Emma\n,Ivanhoe\n"), 0);
    model::Document doc;
    load(doc);
    EXPECT_THAT(doc.CurrDB20.Lists.at(0).Items, ElementsAre("Fiction"));
    EXPECT_THAT(test::columnLongs(doc, 0), ElementsAre(1, 0, 0));
    EXPECT_THAT(column(doc, 1), ElementsAre("Dune", "Emma", "Ivanhoe"));
    EXPECT_EQ(create("Kind,Name\nFiction,Dune\n"), 104);
    flags.WithTypeRow = 1;
    EXPECT_EQ(create("Categories,Name\ntext,text\nFiction,Dune\n"), 106);
    EXPECT_EQ(create("Categories,Name\nlist,text\nFiction,Dune\n"), 0);
}

TEST_F(TextImportTest, leavesOutWhatDoesNotFitAndGoesOn) {
    saveEveryType();
    ASSERT_EQ(append("T,I,L,F,List,C,D,Ti\n"
                     "one,x,3000000000,y,,maybe,31/02/2003,25:00\n"
                     "two,1,2,3.5,,1,03/05/2003,1:05 PM\n"),
              0);
    EXPECT_THAT(logLines(),
                ElementsAre("Record 1, I: \"x\" left out: Importing inappropriate data type into field.",
                            "Record 1, L: \"3000000000\" left out: Importing inappropriate data type into field.",
                            "Record 1, F: \"y\" left out: Importing inappropriate data type into field.",
                            "Record 1, C: \"maybe\" left out: Importing inappropriate data type into field.",
                            "Record 1, D: \"31/02/2003\" left out: Importing inappropriate data type into field.",
                            "Record 1, Ti: \"25:00\" left out: Invalid Time Format",
                            "Record 2, F: \"3.5\" changed: the field shows it as \"4\""));
    EXPECT_EQ(call->log.summary(), "2 records imported, 6 values left out, 1 value changed");
    EXPECT_TRUE(logFile().ends_with("\r\n2 records imported, 6 values left out, 1 value changed"));
    model::Document doc;
    load(doc);
    EXPECT_THAT(column(doc, 2), ElementsAre("", "1"));
}

TEST_F(TextImportTest, cutsTextsAndRoundsWholeNumbersWithALineInTheLog) {
    saveEveryType();
    ASSERT_EQ(append("T,I,L\n" + std::string(300, 'a') + ",2.5,3.5\nb,7.0,\"1,234\"\n"), 0);
    model::Document doc;
    load(doc);
    EXPECT_EQ(column(doc, 1)[0], std::string(254, 'a'));
    EXPECT_THAT(column(doc, 2), ElementsAre("2", "7"));
    EXPECT_THAT(column(doc, 3), ElementsAre("4", "1234"));
    ASSERT_EQ(logLines().size(), 3u);
    EXPECT_THAT(logLines()[0], HasSubstr("\" cut: a text may have at most 254 characters"));
    EXPECT_EQ(logLines()[1], "Record 1, I: \"2.5\" changed: rounded to a whole number");
}

TEST_F(TextImportTest, keepsAThousandLinesOfTheLogAndTheNumberOfTheRest) {
    saveEveryType();
    std::string text = "T,I\n";
    for (int record = 0; record < 1234; ++record)
        text += ",x\n";
    ASSERT_EQ(append(text), 0);
    EXPECT_EQ(logLines().size(), 1000u);
    EXPECT_TRUE(logFile().ends_with("\r\nand 234 more\r\n1234 records imported, 1234 values left out"));
}

// Whatever ends a conversion: its code, and the database as it was.
TEST_F(TextImportTest, changesNothingWhenItEndsWithAnError) {
    saveEveryType();
    ASSERT_EQ(append("T\nkept\n"), 0);
    const auto before = t.files.bytes(kPdb);
    struct Case {
        std::string text;
        int code;
    };
    const std::vector<Case> cases = {
        {"T,I\nok,1\nok,40000\n", 108},
        {"T,I\nok,-32769\n", 108},
        {"T,I,L,F,List,C,D,Ti,M\n,,,,,,,," + std::string(5000, 'm') + "\n", 102},
        {"T\na,,,,,,,,,,,,x\n", 103},
        {std::string("T\na\0b\n", 6), 101},
        {"T\n\"" + std::string(3 << 20, 'x') + "\n", 103},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(append(one.text), one.code) << one.text.substr(0, 40);
        EXPECT_EQ(t.files.bytes(kPdb), before);
        EXPECT_THAT(logFile(), HasSubstr("Nothing was changed.")) << one.code;
    }
}

TEST_F(TextImportTest, takesTheLimitsOfNumbersAndMemos) {
    saveEveryType();
    EXPECT_EQ(
        append("T,I,L,F,List,C,D,Ti,M\n,32767,2147483647\n,-32768,-2147483648,,,,,," + std::string(4096, 'm') + "\n"),
        0);
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(TextImportTest, refusesMoreRecordsThanADatabaseCanHold) {
    std::string text = "T\n";
    for (int record = 0; record < 65449; ++record)
        text += "x\n";
    EXPECT_EQ(create(text), 200);
    EXPECT_TRUE(call->isOverLimit);
    EXPECT_FALSE(has(kPdb));
    EXPECT_THAT(logFile(), HasSubstr("A Tallybook cannot hold more than 65448 records."));
    text.resize(text.size() - 2);
    EXPECT_EQ(create(text), 0);
    EXPECT_EQ(append("T\nx\n"), 200);
}

TEST_F(TextImportTest, judgesTheLineOfTypes) {
    flags.WithTypeRow = 1;
    EXPECT_EQ(create("A,B\ntext,colour\nx,y\n"), 105);
    EXPECT_EQ(create("A,B\ntext,expression\nx,y\n"), 105);
    EXPECT_EQ(create("A\ntext,text\nx\n"), 103);
    EXPECT_EQ(create("A,B\ntext\nx,\n"), 0); // a column without type is no field's
    EXPECT_EQ(create("A,B\ntext\nx,y\n"), 111);
}

TEST_F(TextImportTest, takesEightyFieldsAndNoMore) {
    const auto names = [](int count) {
        std::string line;
        for (int field = 1; field <= count; ++field)
            line += (field > 1 ? ",F" : "F") + std::to_string(field);
        return line + "\n";
    };
    EXPECT_EQ(create(names(80)), 0);
    EXPECT_EQ(create(names(81)), 112);
    flags.WithNameRow = 0;
    EXPECT_EQ(create(names(81)), 112);
    flags.WithNameRow = 1;
    flags.WithCategories = 1;
    EXPECT_EQ(create("Categories," + names(80)), 0);
    EXPECT_EQ(create("Categories," + names(81)), 112);
}

TEST_F(TextImportTest, takesNamesAsTheyCome) {
    ASSERT_EQ(create("A,,A\n1,2,3\n"), 0);
    model::Document doc;
    load(doc);
    EXPECT_EQ(doc.CurrDB20.Fields[1].Name, "A");
    EXPECT_EQ(doc.CurrDB20.Fields[2].Name, "Fld02");
    EXPECT_EQ(doc.CurrDB20.Fields[3].Name, "A");
}

TEST_F(TextImportTest, namesTheRecordThatAnOpenQuoteBegan) {
    ASSERT_EQ(create("A,B\nx,y\n\"open,z\nmore,lines\n"), 0);
    EXPECT_THAT(logLines(), ElementsAre("Record 2 begins where a double quote is opened that nothing closes: it "
                                        "holds the rest of the file."));
}

TEST_F(TextImportTest, refusesArgumentsFilesAndTargets) {
    putText("A\nx\n");
    const auto code = [&](std::int16_t mode, BridgeFlags given, const char* csv = "/books/list.csv") {
        call = newCall();
        return numberOf(Text2Tiny(*call, csv, kPdb, mode, given));
    };
    EXPECT_EQ(code(3, flags), 114);
    EXPECT_EQ(code(-1, flags), 114);
    EXPECT_EQ(code(0, {.DateFlag = 2}), 114);
    EXPECT_EQ(code(1, flags), 101); // there is no database yet
    EXPECT_EQ(code(0, flags, "/books/missing.csv"), 101);
    EXPECT_EQ(code(0, flags), 0);
    EXPECT_EQ(code(0, flags), 116);
    t.files.put(kPdb, {'n', 'o'});
    EXPECT_EQ(code(1, flags), 101);
}

TEST_F(TextImportTest, refusesDatabasesWithJoins) {
    for (const FieldType type : {FieldType::DBJoin, FieldType::DBLookup}) {
        ASSERT_EQ(create("A,B\nx,y\n"), 0);
        model::Document doc;
        load(doc);
        doc.CurrDB20.Fields[2].Type = type;
        save(doc);
        EXPECT_EQ(append("A\nz\n"), 109);
    }
}

TEST_F(TextImportTest, passesOverColumnsOfCalculatedFields) {
    ASSERT_EQ(create("A,B\nx,y\n"), 0);
    model::Document doc;
    load(doc);
    doc.CurrDB20.Fields[2].Type = FieldType::AdvExpression;
    save(doc);
    ASSERT_EQ(append("A,B\nz,17\n"), 0);
    EXPECT_THAT(logLines(), ElementsAre("B: the column was passed over, as nothing is imported into a field of type "
                                        "Adv Expression."));
}

TEST_F(TextImportTest, asksForThePasswordsOfADatabase) {
    ASSERT_EQ(create("A\nx\n"), 0);
    model::Document doc;
    load(doc);
    doc.CurrDB20.Passwords[0] = pdb::ApplyPwd("open");
    doc.CurrDB20.Passwords[1] = pdb::ApplyPwd("change");
    save(doc);
    const auto before = t.files.bytes(kPdb);
    t.user.passwords = {std::nullopt};
    EXPECT_EQ(append("A\ny\n"), 101);
    EXPECT_TRUE(call->isTurnedDown);
    t.user.passwords = {"open", std::nullopt};
    EXPECT_EQ(append("A\ny\n"), 101);
    EXPECT_TRUE(call->isTurnedDown);
    EXPECT_EQ(t.files.bytes(kPdb), before);
    t.user.passwords = {"open", "change"};
    EXPECT_EQ(append("A\ny\n"), 0);
    load(doc);
    EXPECT_EQ(doc.CurrDB20.Passwords[1], pdb::ApplyPwd("change"));
}

TEST_F(TextImportTest, refusesAReadOnlyDatabase) {
    ASSERT_EQ(create("A\nx\n"), 0);
    model::Document doc;
    load(doc);
    doc.CurrDB20.ReadOnly = 1;
    save(doc);
    EXPECT_EQ(append("A\ny\n"), 101);
    EXPECT_TRUE(call->isTurnedDown);
    EXPECT_THAT(t.user.texts(), ElementsAre("Tallybook is readonly."));
}

class Impatient : public RunWatcher {
public:
    int steps = 0;
    int stopsAt = 0;
    bool step(const std::string&, int, int) override { return ++steps != stopsAt; }
};

TEST_F(TextImportTest, stopsBetweenRecordsWithEverythingAsItWas) {
    ASSERT_EQ(create("A\nx\n"), 0);
    const auto before = t.files.bytes(kPdb);
    std::string text = "A\n";
    for (int record = 0; record < 1000; ++record)
        text += "y\n";
    putText(text);
    Impatient watcher;
    call = newCall();
    call->watcher = &watcher;
    ASSERT_EQ(numberOf(Text2Tiny(*call, kCsv, kPdb, 1, flags)), 0);
    const int steps = watcher.steps;
    EXPECT_GT(steps, 4);
    t.files.put(kPdb, before);
    for (int stop = 1; stop <= steps; ++stop) {
        Impatient impatient;
        impatient.stopsAt = stop;
        call = newCall();
        call->watcher = &impatient;
        EXPECT_EQ(numberOf(Text2Tiny(*call, kCsv, kPdb, 1, flags)), 200) << stop;
        EXPECT_TRUE(call->isStopped);
        EXPECT_EQ(t.files.bytes(kPdb), before);
        EXPECT_EQ(call->log.summary(), "Stopped. Nothing was changed.");
    }
}

// Whatever call of the system fails: the database is the old or the new one, whole.
TEST_F(TextImportTest, leavesOldOrNewWholeWhateverFails) {
    ASSERT_EQ(create("A\nx\n"), 0);
    const auto before = t.files.bytes(kPdb);
    putText("A\ny\n");
    test::FailingFiles files(t.files);
    platform::Services services{t.user, t.user, files, t.clock, t.regional, "/app"};
    const auto run = [&] {
        BridgeCall failing{.services = services};
        return numberOf(Text2Tiny(failing, kCsv, kPdb, 1, flags));
    };
    ASSERT_EQ(run(), 0);
    const int calls = files.calls();
    const auto after = t.files.bytes(kPdb);
    for (int failing = 1; failing <= calls; ++failing) {
        t.files.put(kPdb, before);
        files.restart(failing);
        const int code = run();
        const auto& left = t.files.bytes(kPdb);
        EXPECT_TRUE(left == before || left == after) << failing;
        if (code == 0) {
            EXPECT_EQ(left, after) << failing;
        }
    }
}

TEST_F(TextImportTest, doesWithoutALogThatCannotBeWritten) {
    t.files.addFolder("/app/TBPKTXT.LOG");
    EXPECT_EQ(create("A\nx\n"), 0);
}

TEST_F(TextImportTest, matchesColumnsWithFieldsByTheirNames) {
    ASSERT_EQ(create("Name,Pages\nDune,412\n"), 0);
    putText("pages,Other,NAME\n474,?,Emma\n");
    call = newCall();
    ASSERT_EQ(numberOf(importText(*call, kCsv, kPdb, {.mode = ImportMode::Append, .flags = flags, .byNames = true})),
              0);
    model::Document doc;
    load(doc);
    EXPECT_THAT(column(doc, 1), ElementsAre("Dune", "Emma"));
    EXPECT_THAT(column(doc, 2), ElementsAre("412", "474"));
    EXPECT_THAT(logLines(), ElementsAre("Column \"Other\" is called like no field and was passed over."));
}

TEST_F(TextImportTest, takesTheChosenColumnsIntoTheChosenFields) {
    putText("a,b,c\n1,2,3\n");
    call = newCall();
    ASSERT_EQ(numberOf(importText(*call, kCsv, kPdb,
                                  {.flags = flags, .byNames = true, .choices = {{"Third", "c"}, {"First", "1"}}})),
              0);
    model::Document doc;
    load(doc);
    EXPECT_EQ(doc.CurrDB20.Fields[1].Name, "Third");
    EXPECT_THAT(column(doc, 1), ElementsAre("3"));
    EXPECT_THAT(column(doc, 2), ElementsAre("1"));
    EXPECT_EQ(doc.CurrDB20.Fields[3].Type, FieldType::NotUsed);
}

} // namespace
} // namespace tallybook::convert
