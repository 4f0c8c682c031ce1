#include "core/convert/ConversionRun.h"

#include "convert/BridgeFixture.h"
#include "core/convert/SpecFile.h"
#include "support/FailingFiles.h"
#include "support/Records.h"
#include "support/Regions.h"

#include <gmock/gmock.h>

namespace tallybook::convert {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A handheld that takes every file.
class Queue : public handheld::HandheldDesktop {
public:
    std::vector<std::string> queued;

    platform::Result<std::filesystem::path> CmGetCorePath() override { return std::filesystem::path("/hand"); }
    platform::Result<int> UmGetUserCount() override { return 2; }
    platform::Result<std::uint32_t> UmGetUserID(int index) override { return static_cast<std::uint32_t>(index); }
    platform::Result<std::string> UmGetUserName(std::uint32_t) override { return std::string(); }
    platform::Result<std::filesystem::path> UmGetUserDirectory(std::uint32_t) override {
        return std::filesystem::path();
    }
    platform::Result<int> PltInstallFile(const std::string& user, const std::filesystem::path& path) override {
        queued.push_back(user + ' ' + path.filename().string());
        return handheld::kQueued;
    }
    platform::Status PltRemoveInstallFile(const std::string&, const std::filesystem::path&) override { return {}; }
};

class Windows : public RunWindows {
public:
    std::vector<std::string> reports;
    std::vector<std::string> details;
    std::vector<PdbInfo> infos;
    bool agrees = true;
    bool goesOn = true;
    bool isLocked = false;
    bool lets = true;
    int shown = 0;
    std::vector<std::filesystem::path> changes;

    bool step(const std::string&, int, int) override { return goesOn; }
    void beginRun() override { ++shown; }
    void endRun() override { --shown; }
    void showErrorReport(const std::string& message, const std::string& more) override {
        reports.push_back(message);
        details.push_back(more);
    }
    bool viewDetail(const PdbInfo& info, const std::function<PdbInfo()>&) override {
        infos.push_back(info);
        return agrees;
    }
    bool mayChange(const std::filesystem::path&) override { return lets; }
    void changed(const std::filesystem::path& pdb) override { changes.push_back(pdb); }
    std::shared_ptr<void> lockRuns() override { return isLocked ? nullptr : std::make_shared<int>(); }
};

class ConversionRunTest : public test::BridgeFixture {
protected:
    ConversionRunTest() {
        for (const char* folder :
             {"/app/Temp", "/app/ConversionSpecs/Import", "/app/ConversionSpecs/Export", "/fred", "/ann", "/copies"})
            t.files.addFolder(folder);
        users.UserNames = {"Fred", "Ann"};
        users.UserFolders = {"/fred", "/ann"};
        spec.ExternalKind = "TEXT";
        spec.TallybookName = "My Books";
        spec.ExternalPath = "\\books\\list.csv";
        spec.SourceKind = "C";
        spec.ObjectName = "none";
        spec.FirstRowNames = "Y";
        spec.SecondRowTypes = "N";
        spec.HotSyncUser = "Fred";
        spec.InstallToAll = "N";
        spec.AppendRecords = 1;
        spec.NewDatabase = 1;
        map(1, 1, model::FieldType::Text, "Title", "Book");
        map(2, 2, model::FieldType::Integer, "Pages", "Leaves");
    }

    void map(std::uint8_t row, std::uint8_t slot, model::FieldType type, const std::string& own,
             const std::string& outside) {
        spec.Entries[row] = {static_cast<std::uint8_t>(slot + 1), static_cast<std::uint8_t>(type), own,
                             std::string(model::fieldTypeName(type)), outside};
        spec.LastEntry = std::max(spec.LastEntry, row);
    }

    bool run(SpecDirection direction = SpecDirection::Import) {
        const auto path = specPath(t, direction, "Books");
        EXPECT_TRUE(writeSpecs(t, spec, path));
        const RunContext context{t.services, queue, users, windows};
        const bool good = runConversion(context, path, direction);
        EXPECT_EQ(windows.shown, 0);
        EXPECT_TRUE(t.user.atRest());
        return good;
    }
    bool importText(const std::string& text) {
        putText(text);
        return run();
    }
    void loadBooks(model::Document& doc) {
        model::clearDocument(doc);
        ASSERT_TRUE(pdb::readDatabase(doc, t.files.bytes(kBooks), "MS2_My_Books.pdb", t.regional).ok());
    }

    static inline const std::filesystem::path kBooks = "/fred/MS2_My_Books.pdb";
    Queue queue;
    handheld::UserList users;
    Windows windows;
    ConversionSpec spec;
};

TEST_F(ConversionRunTest, makesANewDatabaseAndSaysSo) {
    ASSERT_TRUE(importText("Book,Leaves\nDune,412\nEmma,474\n"));
    EXPECT_THAT(t.user.texts(), ElementsAre("Data imported successfully into Tallybook \"My Books\".\n\n2 records "
                                            "imported\n\nNew database "));
    model::Document doc;
    loadBooks(doc);
    EXPECT_EQ(doc.CurrDB20.DBName, "MS2_My Books");
    EXPECT_EQ(doc.CurrDB20.Fields[1].Name, "Title");
    EXPECT_EQ(doc.CurrDB20.Fields[2].Name, "Pages");
    EXPECT_THAT(test::columnTexts(doc, 1), ElementsAre("Dune", "Emma"));
    EXPECT_THAT(windows.changes, ElementsAre(kBooks));
}

TEST_F(ConversionRunTest, takesTypesFromTheSpecWhenTheTextHasALineOfThem) {
    spec.SecondRowTypes = "Y";
    map(2, 2, model::FieldType::Long, "Pages", "Leaves");
    ASSERT_TRUE(importText("Book,Leaves\ntext,long\nDune,412\n"));
    model::Document doc;
    loadBooks(doc);
    EXPECT_EQ(doc.CurrDB20.Fields[2].Type, model::FieldType::Long);
}

TEST_F(ConversionRunTest, appendsToADatabaseThatIsThereWhateverTheSpecSays) {
    ASSERT_TRUE(importText("Book,Leaves\nDune,412\n"));
    ASSERT_TRUE(importText("Book,Leaves\nEmma,474\n"));
    spec.AppendRecords = 0;
    model::Document doc;
    loadBooks(doc);
    EXPECT_THAT(test::columnTexts(doc, 1), ElementsAre("Dune", "Emma"));
    ASSERT_TRUE(importText("Book,Leaves\nIvanhoe,500\n"));
    loadBooks(doc);
    EXPECT_THAT(test::columnTexts(doc, 1), ElementsAre("Ivanhoe"));
    EXPECT_FALSE(has("/app/Temp/MS2_My_Books.pdb")); // the safety copy goes with a good end
}

TEST_F(ConversionRunTest, bringsMappedColumnsIntoTheOrderOfTheFields) {
    map(1, 2, model::FieldType::Integer, "Pages", "Leaves");
    map(2, 1, model::FieldType::Text, "Title", "Book");
    ASSERT_TRUE(importText("Leaves,Book\n412,Dune\n"));
    EXPECT_EQ(textOf("/app/_MS2_import.csv"), "Title,Pages\r\nDune,412\r\n");
}

TEST_F(ConversionRunTest, joinsTheLinesOfARecordAndLeavesInnerQuotesAsTheyAre) {
    ASSERT_TRUE(importText("Book,Leaves\n\"The old\nman\",1\n\"The \"old\" man\",2\n\"a, b\",3\n"));
    EXPECT_EQ(textOf("/app/_MS2_import.csv"),
              "Title,Pages\r\nThe oldman,1\r\n\"The \"old\" man\",2\r\n\"a, b\",3\r\n");
    model::Document doc;
    loadBooks(doc);
    EXPECT_THAT(test::columnTexts(doc, 1), ElementsAre("The oldman", "The \"old\" man", "a, b"));
}

TEST_F(ConversionRunTest, givesAFieldWithoutMappingAColumnOfItsOwn) {
    ASSERT_TRUE(importText("Book,Leaves\nDune,412\n"));
    spec.Entries[1] = {};
    map(2, 2, model::FieldType::Integer, "Pages", "Leaves");
    ASSERT_TRUE(importText("Book,Leaves\nEmma,474\n"));
    EXPECT_EQ(textOf("/app/_MS2_import.csv"), "Title,Pages\r\n,474\r\n");
}

TEST_F(ConversionRunTest, installsAndCopiesWhatItMade) {
    spec.InstallToUser = "Ann";
    spec.SaveCopyFolder = "\\copies";
    ASSERT_TRUE(importText("Book,Leaves\nDune,412\n"));
    EXPECT_THAT(t.user.texts().back(), HasSubstr("\n\nNew database will be installed to user Ann and was saved in "
                                                 "\\copies"));
    EXPECT_EQ(t.files.bytes("/copies/MS2_My_Books.pdb"), t.files.bytes(kBooks));
    EXPECT_EQ(t.files.bytes("/ann/MS2_My_Books.pdb"), t.files.bytes(kBooks));
    spec.InstallToAll = "Y";
    spec.SaveCopyFolder.clear();
    ASSERT_TRUE(importText("Book,Leaves\nEmma,474\n"));
    EXPECT_THAT(t.user.texts().back(), testing::EndsWith("New database will be installed to users Fred, Ann"));
    spec.InstallToAll = "N";
    spec.InstallToUser.clear();
    spec.SaveCopyFolder = "\\copies";
    ASSERT_TRUE(importText("Book,Leaves\nEmma,474\n"));
    EXPECT_THAT(t.user.texts().back(), testing::EndsWith("New database  was saved in \\copies"));
}

TEST_F(ConversionRunTest, reportsAnErrorWithTheLogAndKeepsEverything) {
    ASSERT_TRUE(importText("Book,Leaves\nDune,412\n"));
    const auto before = t.files.bytes(kBooks);
    ASSERT_FALSE(importText("Book,Leaves\nEmma,99999\n"));
    EXPECT_THAT(
        windows.reports,
        ElementsAre("An error ocurred during import/export.\n\nError MSA108: Attempt to assign a value greater "
                    "than 32767 or smaller than -32768 to an integer data type."));
    EXPECT_THAT(windows.details[0], HasSubstr("Record 1, Pages: \"99999\" left out"));
    EXPECT_THAT(windows.details[0], HasSubstr("Nothing was changed."));
    EXPECT_THAT(windows.details[0], HasSubstr("/app/Temp/MS2_My_Books.pdb"));
    EXPECT_EQ(t.files.bytes(kBooks), before);
    EXPECT_EQ(t.files.bytes("/app/Temp/MS2_My_Books.pdb"), before);
}

TEST_F(ConversionRunTest, saysWhenThereIsNothingToImport) {
    EXPECT_FALSE(importText("Book,Leaves\n"));
    EXPECT_THAT(t.user.texts(),
                ElementsAre("Source database does not contain records", "Import could not be completed"));
    spec.ExternalPath = "/books/missing.csv";
    EXPECT_FALSE(run());
    EXPECT_EQ(t.user.texts().back(), "Import could not be completed");
    EXPECT_FALSE(has(kBooks));
}

TEST_F(ConversionRunTest, needsTheUserOfTheSpec) {
    spec.HotSyncUser = "Nobody";
    EXPECT_FALSE(importText("Book,Leaves\nDune,412\n"));
    EXPECT_THAT(t.user.texts(), ElementsAre("User ID not found for Conversion Specs "
                                            "/app/ConversionSpecs/Import/Books.mcs"));
}

TEST_F(ConversionRunTest, needsTheDatabaseUnlessItMakesOne) {
    spec.NewDatabase = 0;
    EXPECT_FALSE(importText("Book,Leaves\nDune,412\n"));
    EXPECT_THAT(t.user.texts(), ElementsAre("Error opening file /fred/MS2_My Books.pdb"));
}

TEST_F(ConversionRunTest, stopsWithEverythingAsItWas) {
    ASSERT_TRUE(importText("Book,Leaves\nDune,412\n"));
    const auto before = t.files.bytes(kBooks);
    windows.goesOn = false;
    EXPECT_FALSE(importText("Book,Leaves\nEmma,474\n"));
    EXPECT_THAT(t.user.texts().back(), testing::StartsWith("Stopped. Nothing was changed."));
    EXPECT_THAT(t.user.texts().back(), HasSubstr("/app/Temp/MS2_My_Books.pdb"));
    EXPECT_EQ(t.files.bytes(kBooks), before);
    EXPECT_THAT(windows.reports, IsEmpty());
}

TEST_F(ConversionRunTest, waitsForAnotherRunAndForTheOpenDatabase) {
    windows.isLocked = true;
    EXPECT_FALSE(importText("Book,Leaves\nDune,412\n"));
    EXPECT_THAT(t.user.texts(), ElementsAre("Another conversion is running.  Try again when it has ended."));
    windows.isLocked = false;
    windows.lets = false;
    EXPECT_FALSE(importText("Book,Leaves\nDune,412\n"));
    EXPECT_FALSE(has(kBooks));
}

TEST_F(ConversionRunTest, cannotOpenOtherDatabases) {
    spec.ExternalKind = "ACCESS";
    EXPECT_FALSE(run());
    spec.ExternalKind = "ODBC";
    EXPECT_FALSE(run());
    EXPECT_THAT(t.user.texts(), ElementsAre("Can't open the database.", "Can't open the Connection."));
}

TEST_F(ConversionRunTest, putsBackATextThatWasCleaned) {
    t.files.put("/books/list.csvbefore", {'o', 'l', 'd'});
    ASSERT_TRUE(importText("Book,Leaves\nDune,412\n"));
    EXPECT_EQ(textOf("/books/list.csv"), "old");
    EXPECT_FALSE(has("/books/list.csvbefore"));
}

class ExportRunTest : public ConversionRunTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(importText("Book,Leaves\nDune,412\nEmma,474\n"));
        t.user.messages.clear();
        spec.ExternalPath = "/books/out.csv";
        spec.AppendRecords = 0;
    }
};

TEST_F(ExportRunTest, writesTheMappedColumns) {
    ASSERT_TRUE(run(SpecDirection::Export));
    EXPECT_EQ(textOf("/books/out.csv"), "Title,Pages\r\nDune,412\r\nEmma,474\r\n");
    EXPECT_THAT(t.user.texts(), ElementsAre("Database Fred / My Books: Total of 2 records exported successfully"));
    spec.Entries[1].ExternalFieldName.clear();
    ASSERT_TRUE(run(SpecDirection::Export));
    EXPECT_EQ(textOf("/books/out.csv"), "Pages\r\n412\r\n474\r\n");
}

TEST_F(ExportRunTest, asksForTheFileAtEachRun) {
    spec.ExternalPath = "(prompt)";
    t.user.saveNames = {std::nullopt, "/books/chosen.csv"};
    EXPECT_FALSE(run(SpecDirection::Export));
    EXPECT_THAT(t.user.texts(), IsEmpty());
    EXPECT_TRUE(run(SpecDirection::Export));
    EXPECT_TRUE(has("/books/chosen.csv"));
    EXPECT_EQ(t.user.saveQuestions[0].title, "Export Tallybook My Books");
    EXPECT_EQ(t.user.saveQuestions[0].filter, "Text Files (*.txt;*.csv)|*.txt;*.csv|All Files (*.*)|*.*");
    ConversionSpec stored;
    ASSERT_TRUE(loadSpecs(t.files, stored, specPath(t, SpecDirection::Export, "Books"), SpecFields::With).ok());
    EXPECT_EQ(stored.ExternalPath, "(prompt)");
}

TEST_F(ExportRunTest, saysWhenThereAreNoRecords) {
    model::Document doc;
    loadBooks(doc);
    model::resetRows(doc, 0);
    auto built = pdb::buildDatabase(doc, t);
    t.files.put(kBooks, std::move(built.value().bytes));
    EXPECT_TRUE(run(SpecDirection::Export));
    EXPECT_EQ(t.user.messages.back().text, "No records to be exported in database Fred / My Books");
    EXPECT_EQ(t.user.messages.back().icon, platform::Icon::Warning);
}

TEST(RunSettingsTest, workOutTheSystemsSettings) {
    ConversionSpec spec;
    spec.ExternalKind = "ODBC";
    platform::Regional region = test::us();
    EXPECT_EQ(workOutSettings(spec, region, SpecDirection::Import).DateOption, "-d:MM/DD/YY");
    EXPECT_EQ(workOutSettings(spec, region, SpecDirection::Import).TimeOption, "-t:ampm");
    region.shortDate = "d/M/yy";
    EXPECT_EQ(workOutSettings(spec, region, SpecDirection::Import).flags.DateFlag, 1);
    region.shortDate = "dd/MM/yyyy";
    EXPECT_EQ(workOutSettings(spec, region, SpecDirection::Import).flags.DateFlag, 1);
    region.shortDate = "dd.MM.yyyy";
    region.decimal = ',';
    region.twelveHours = false;
    const RunSettings german = workOutSettings(spec, region, SpecDirection::Import);
    EXPECT_EQ(german.flags.DateFlag, 0);
    EXPECT_EQ(german.flags.TimeFlag, 1);
    EXPECT_EQ(german.DecimalOption, "-dec:comma");
    EXPECT_EQ(german.flags.Delimiter, 1); // whatever the spec says
    spec.ExternalKind = "TEXT";
    spec.SourceKind = "C";
    EXPECT_EQ(workOutSettings(spec, region, SpecDirection::Import).flags.Delimiter, 0);
    EXPECT_EQ(workOutSettings(spec, region, SpecDirection::Import).flags.DecimalFlag, 1);
    EXPECT_EQ(workOutSettings(spec, region, SpecDirection::Import).flags.TimeFlag, 0);
    EXPECT_EQ(workOutSettings(spec, region, SpecDirection::Import).mode, ImportMode::Replace);
    spec.AppendRecords = 1;
    EXPECT_EQ(workOutSettings(spec, region, SpecDirection::Import).mode, ImportMode::Append);
    spec.NewDatabase = 1;
    EXPECT_EQ(workOutSettings(spec, region, SpecDirection::Import).mode, ImportMode::Create);
}

TEST_F(ConversionRunTest, listsSpecsWithWhatTheyConnect) {
    ASSERT_TRUE(writeSpecs(t, spec, specPath(t, SpecDirection::Import, "A text")));
    spec.ExternalKind = "ACCESS";
    spec.ObjectName = "Table1";
    ASSERT_TRUE(writeSpecs(t, spec, specPath(t, SpecDirection::Import, "B access")));
    spec.ExternalKind = "ODBC";
    spec.ExternalPath = "PROVIDER=MSDASQL;DSN=shop;UID=a;";
    ASSERT_TRUE(writeSpecs(t, spec, specPath(t, SpecDirection::Import, "C odbc")));
    t.files.put(specPath(t, SpecDirection::Import, "D bad"), {'x'});
    const auto rows = getSpecList(t, SpecDirection::Import);
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[0].name + '|' + rows[0].database + '|' + rows[0].outside, "A text|My Books|\\books\\list.csv");
    EXPECT_EQ(rows[1].outside, "\\books\\list.csv / Table1");
    EXPECT_EQ(rows[2].outside, "shop");
    EXPECT_EQ(rows[3].outside, "(cannot be read)");
    EXPECT_THAT(getSpecList(t, SpecDirection::Export), IsEmpty());
}

TEST_F(ConversionRunTest, runsTheCheckedSpecsAfterAWarning) {
    putText("Book,Leaves\nDune,412\n");
    ASSERT_TRUE(writeSpecs(t, spec, specPath(t, SpecDirection::Import, "Books")));
    const RunContext context{t.services, queue, users, windows};
    auto rows = getSpecList(t, SpecDirection::Import);
    EXPECT_FALSE(runChecked(context, rows, SpecDirection::Import));
    EXPECT_EQ(t.user.texts().back(), "Select one or more Conversion Specs.");
    rows[0].isChecked = true;
    t.user.answers = {platform::Answer::No};
    EXPECT_FALSE(runChecked(context, rows, SpecDirection::Import));
    EXPECT_EQ(t.user.texts().back(),
              "Existing data records in the following Tallybook Pocket database\nwill be appended or deleted as "
              "specified in specs:\n\n-> My Books\n\nDo you want to run the selected Conversion Specs?");
    EXPECT_FALSE(has(kBooks));
    t.user.answers = {platform::Answer::Yes};
    EXPECT_TRUE(runChecked(context, rows, SpecDirection::Import));
    EXPECT_TRUE(has(kBooks));
    EXPECT_THAT(windows.infos, IsEmpty()); // there was no local copy yet

    windows.agrees = false;
    EXPECT_FALSE(runChecked(context, rows, SpecDirection::Import)); // the refusal leaves no row
    EXPECT_FALSE(rows[0].isChecked);
    ASSERT_EQ(windows.infos.size(), 1u);
    EXPECT_EQ(windows.infos[0].title, "Details of MS2_My_Books.pdb");
    EXPECT_THAT(windows.infos[0].message, testing::StartsWith("You are trying to import records into the local copy "
                                                              "of the handheld Tallybook \"My Books\"\n\nThe local"));
}

TEST_F(ConversionRunTest, deletesCheckedSpecsToTheTrash) {
    ASSERT_TRUE(writeSpecs(t, spec, specPath(t, SpecDirection::Import, "Books")));
    auto rows = getSpecList(t, SpecDirection::Import);
    EXPECT_FALSE(deleteChecked(t, rows));
    EXPECT_EQ(t.user.texts().back(), "Select a Conversion Spec first.");
    rows[0].isChecked = true;
    t.user.answers = {platform::Answer::No, platform::Answer::Yes};
    EXPECT_FALSE(deleteChecked(t, rows));
    EXPECT_TRUE(deleteChecked(t, rows));
    EXPECT_THAT(t.files.trash(), ElementsAre(specPath(t, SpecDirection::Import, "Books")));
}

} // namespace
} // namespace tallybook::convert
