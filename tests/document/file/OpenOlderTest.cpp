// Opening, saving and converting files of format 1.x.
#include "document/FileFixture.h"
#include "support/OlderFile.h"

#include <cerrno>

namespace tallybook::document {
namespace {

using model::FieldType;
using platform::Answer;
using platform::Bytes;
using platform::ErrorAnswer;
using platform::Icon;
using test::OlderFile;

constexpr const char* kOlder = "/home/MSA_Books.pdb";
constexpr const char* kPresent = "/home/MS2_Books.pdb";
constexpr const char* kOldFormat = "Old Format";
constexpr const char* kFailed = "Failed to load PDB File";
constexpr const char* kNoTallybook = "The selected file MSA_Books.pdb is not a Tallybook";
constexpr const char* kOverwrite = "File already exist, do you want to overwrite it?";

using Texts = std::vector<std::string>;

// "r0", "r1" ... with keys from 100 on, and a number, its double and a tick.
OlderFile books(int records = 2) {
    OlderFile file;
    file.name = "MSA_Books";
    file.items(0, {{1, "home"}});
    file.field(1, FieldType::Text, "Title");
    file.field(2, FieldType::Integer, "Count");
    file.field(3, FieldType::Expression, "Twice");
    file.expression(3, {2, '+', 2});
    file.field(4, FieldType::Checkbox, "Read");
    file.field(5, FieldType::Key, "Key");
    for (int record = 0; record < records; ++record)
        file.record(record % 2, 100 + record, "01 01 02 'r" + std::to_string(record) + "' 00 02 02 0005 06 04 01");
    file.db.LastKey = 200;
    return file;
}

struct OpenOlder : test::FileFixture {
    void put(const OlderFile& file, const char* path = kOlder) { t.files.put(path, file.bytes()); }

    Outcome convert(const std::string& failure = kFailed) { return convertOlder(t, kOlder, kPresent, failure); }

    void expectEmpty() const {
        EXPECT_FALSE(opened->FileOK);
        EXPECT_EQ(opened->NumDataRecs, 0);
        EXPECT_EQ(opened->grd.rows(), 3);
        EXPECT_EQ(opened->CurrDB20, model::DatabaseModel{});
        EXPECT_TRUE(opened->CurrFilePath.empty());
        EXPECT_EQ(opened->Caption, "");
        EXPECT_FALSE(t.files.has("/app/Backup/MSA_Books.pdb"));
        EXPECT_TRUE(t.user.atRest());
    }
};

// Opening

TEST_F(OpenOlder, saysOldFormatAndReadsTheFile) {
    put(books());
    ASSERT_EQ(open(kOlder), Outcome::Done);
    EXPECT_EQ(t.user.texts(), Texts{kOldFormat});
    EXPECT_EQ(opened->NumDataRecs, 2);
    EXPECT_EQ(opened->NumFileRecs, 89);
    EXPECT_EQ(openedCell(0, 0), "Unfiled");
    EXPECT_EQ(openedCell(1, 0), "home");
    EXPECT_EQ(openedCell(1, 1), "r1");
    EXPECT_EQ(openedCell(1, 5), "101");
    EXPECT_EQ(opened->grd.text(0, 2), "Title");
    EXPECT_EQ(opened->grd.text(1, 2), "Text");
    EXPECT_EQ(opened->grd.text(0, 10), "Fld09");
    EXPECT_EQ(opened->CurrDB20.DBName, "MS2_Books");
    EXPECT_EQ(opened->CurrFilePath, kOlder);
    EXPECT_EQ(opened->CurrFolder, "/home");
    EXPECT_EQ(opened->CurrFileName, "MSA_Books.pdb");
    EXPECT_EQ(opened->Caption, "MSA_Books.pdb");
    EXPECT_FALSE(opened->Is2xFormat);
    EXPECT_TRUE(opened->FileOK);
    EXPECT_TRUE(opened->GridReady);
    EXPECT_FALSE(opened->DocModified);
    EXPECT_EQ(opened->grd.place(), (model::GridPlace{2, 1, 2, 1}));
    EXPECT_TRUE(t.user.atRest());
}

TEST_F(OpenOlder, keepsACopyInBackupAndNoneInTemp) {
    put(books());
    ASSERT_EQ(open(kOlder), Outcome::Done);
    EXPECT_EQ(t.files.bytes("/app/Backup/MSA_Books.pdb"), t.files.bytes(kOlder));
    EXPECT_FALSE(t.files.has("/app/Temp/Copy_MSA_Books.pdb"));
    EXPECT_TRUE(opened->TempCopyPath.empty());
}

TEST_F(OpenOlder, theNameDecidesNotTheCreator) {
    makeBooks();
    t.files.put(kOlder, t.files.bytes(kPresent));
    EXPECT_EQ(open(kOlder), Outcome::Refused);
    EXPECT_EQ(t.user.texts(), (Texts{kOldFormat, kNoTallybook}));
    expectEmpty();
    t.user.messages.clear();
    put(books(), "/home/MS2_Old.pdb");
    EXPECT_EQ(open("/home/MS2_Old.pdb"), Outcome::Refused);
    EXPECT_EQ(t.user.texts(), Texts{"The selected file MS2_Old.pdb is not a Tallybook"});
}

TEST_F(OpenOlder, aNameWithoutAnyPrefixIsOfTheOldFormat) {
    put(books(), "/home/Books.pdb");
    ASSERT_EQ(open("/home/Books.pdb"), Outcome::Done);
    EXPECT_EQ(t.user.texts(), Texts{kOldFormat});
    EXPECT_FALSE(opened->Is2xFormat);
}

TEST_F(OpenOlder, blanksOfANameAreUnderscoresOnTheDisk) {
    put(books(), "/home/MSA_My_Books.pdb");
    ASSERT_EQ(open("/home/MSA_My Books.pdb"), Outcome::Done);
    EXPECT_EQ(opened->CurrFilePath, "/home/MSA_My_Books.pdb");
}

TEST_F(OpenOlder, showsProgressEveryTenRecords) {
    put(books(12));
    ASSERT_EQ(open(kOlder), Outcome::Done);
    const std::vector<test::ScriptedUser::Progress> expected = {{"Opening...", 0, 1},
                                                                {"Reading record 1 of 12", 1, 13},
                                                                {"Reading record 11 of 12", 11, 13},
                                                                {"", 0, 0},
                                                                {"Calculating...", 0, 12},
                                                                {"Calculating Twice ...", 0, 12},
                                                                {"Calculating Twice ...", 11, 12},
                                                                {"", 0, 0},
                                                                {"Filtering...", 0, 13},
                                                                {"", 0, 0}};
    EXPECT_EQ(t.user.progresses, expected);
    EXPECT_GE(t.user.waits, 1);
}

TEST_F(OpenOlder, fileOf40RecordsHasOneHiddenRow) {
    put(books(0));
    ASSERT_EQ(open(kOlder), Outcome::Done);
    EXPECT_EQ(opened->NumDataRecs, 0);
    EXPECT_EQ(opened->NumFileRecs, 87);
    EXPECT_EQ(opened->grd.rowHeight(2), 0);
    EXPECT_EQ(opened->CurrDB20.LastKey, 1);
}

TEST_F(OpenOlder, firstViewOpensAndIsNamedWhenItHasNoName) {
    OlderFile file = books();
    file.db.Views[0].Columns[0] = {.Field = 2, .Width = 60};
    file.db.NumViews = 1;
    put(file);
    ASSERT_EQ(open(kOlder), Outcome::Done);
    EXPECT_EQ(opened->CurrentView, "View01");
    EXPECT_EQ(opened->ViewFields, std::vector<std::uint8_t>{2});
}

// Calculated fields

TEST_F(OpenOlder, calculatesByTheOlderRules) {
    OlderFile file = books();
    file.field(6, FieldType::Expression, "Ticked");
    file.expression(6, {4, '*', 2}); // a check box counts as 1
    file.field(7, FieldType::Date, "Day");
    file.field(8, FieldType::Expression, "Due");
    file.expression(8, {7, '+', 2}); // a date among the operands makes it a date
    file.record(0, 300, "02 02 0005 06 04 00 07 07 07D3 02 01");
    put(file);
    ASSERT_EQ(open(kOlder), Outcome::Done);
    EXPECT_EQ(openedCell(0, 3), "10");
    EXPECT_EQ(openedCell(0, 6), "5");
    EXPECT_EQ(openedCell(2, 6), "0");
    EXPECT_EQ(openedCell(2, 8), "2/6/2003");
    EXPECT_EQ(opened->CellLongs.get(0, 4), 0); // check boxes have nothing there in the present format
}

TEST_F(OpenOlder, expressionsGetTheirPresentOperatorsAfterwards) {
    OlderFile file = books();
    file.expression(3, {2, '+', 2, '-', 2, '*', 2, '/', 2});
    put(file);
    ASSERT_EQ(open(kOlder), Outcome::Done);
    EXPECT_EQ(openedCell(0, 3), "5"); // ((5 + 5 - 5) * 5) / 5
    const auto& tokens = opened->CurrDB20.Expressions.at(3).Tokens;
    const std::vector<std::uint32_t> expected = {2, 90, 2, 91, 2, 92, 2, 93, 2, 0};
    EXPECT_EQ(std::vector<std::uint32_t>(tokens.begin(), tokens.begin() + 10), expected);
    EXPECT_EQ(opened->CurrDB20.FormatVersion, 21);
}

// Joins

// Names with the keys 5 and 6, and a Key field to join on.
OlderFile authors() {
    OlderFile file;
    file.name = "MSA_Authors";
    file.field(1, FieldType::Text, "Name");
    file.field(2, FieldType::Key, "Key");
    file.field(3, FieldType::Checkbox, "Alive");
    file.record(0, 5, "01 01 03 'Ada' 00");
    file.record(0, 6, "01 01 03 'Bea' 00 06 03 01");
    return file;
}

OlderFile booksByAuthor(const std::string& source) {
    OlderFile file;
    file.field(1, FieldType::DBJoin, "Author");
    file.db.Externals[1] = {.Source = source, .SourceField = 2, .MatchField = 1};
    file.field(2, FieldType::DBLookup, "Alive");
    file.db.Externals[2] = {.Source = source, .SourceField = 1, .MatchField = 3};
    file.record(0, 1, "0C 01 0B 00000006");
    file.record(0, 2, "0C 01 0B 00000007");
    return file;
}

TEST_F(OpenOlder, joinsLeadToFilesOfBothFormats) {
    for (const char* source : {"Authors", "MSA_Authors"}) {
        put(authors(), "/home/MSA_Authors.pdb");
        put(booksByAuthor(source));
        t.user.messages.clear();
        ASSERT_EQ(open(kOlder), Outcome::Done);
        EXPECT_EQ(t.user.texts(), Texts{kOldFormat}) << source;
        EXPECT_EQ(openedCell(0, 1), "Bea") << source;
        EXPECT_EQ(openedCell(0, 2), "y") << source;
        EXPECT_EQ(openedCell(1, 1), "7") << source; // no such author
        EXPECT_EQ(openedCell(1, 2), "") << source;
    }
    // What stands under the present name goes first.
    ASSERT_EQ(convertOlder(t, "/home/MSA_Authors.pdb", "/home/MS2_Authors.pdb"), Outcome::Done);
    ASSERT_TRUE(t.files.remove("/home/MSA_Authors.pdb"));
    put(booksByAuthor("Authors"));
    ASSERT_EQ(open(kOlder), Outcome::Done);
    EXPECT_EQ(openedCell(0, 1), "Bea");
}

TEST_F(OpenOlder, aPresentDatabaseMayJoinAnOlderOneByItsFullName) {
    put(authors(), "/home/MSA_Authors.pdb");
    put(booksByAuthor("MSA_Authors"));
    ASSERT_EQ(convert(), Outcome::Done);
    ASSERT_EQ(open(kPresent), Outcome::Done);
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_EQ(openedCell(0, 1), "Bea");
    EXPECT_EQ(openedCell(0, 2), "y");
}

TEST_F(OpenOlder, aMissingSourceIsToldOnceAJoin) {
    put(booksByAuthor("MSA_Authors"));
    ASSERT_EQ(open(kOlder), Outcome::Done);
    EXPECT_EQ(t.user.texts(),
              (Texts{kOldFormat, "Cannot find external database MSA_Authors.pdb. External references for field "
                                 "\"Author\" will not be displayed"}));
    EXPECT_EQ(openedCell(0, 1), "6");
}

TEST_F(OpenOlder, aDamagedSourceIsReportedAndTheKeysStay) {
    platform::Bytes bytes = authors().bytes();
    bytes.resize(bytes.size() - 1);
    t.files.put("/home/MSA_Authors.pdb", bytes);
    put(booksByAuthor("MSA_Authors"));
    t.user.errorAnswers = {ErrorAnswer::GoOn};
    ASSERT_EQ(open(kOlder), Outcome::Done);
    EXPECT_EQ(openedCell(0, 1), "6");
    EXPECT_TRUE(t.files.has("/home/MSA_Authors.pdb"));
}

// Format 0.99

TEST_F(OpenOlder, format099OpensAfterAWarning) {
    OlderFile file = books();
    file.db.Version = 50;
    put(file);
    ASSERT_EQ(open(kOlder), Outcome::Done);
    ASSERT_EQ(t.user.messages.size(), 2U);
    EXPECT_EQ(
        t.user.messages[1].text,
        "This Tallybook is saved in Tallybook Pocket 0.99 format.\n\nIf you choose to save the database, "
        "Tallybook Pocket will automatically convert it to the Tallybook Pocket 1.0 format.\n\nMake sure you have "
        "Tallybook Pocket for Palm 1.0 or greater, older versions cannot open databases in the Tallybook Pocket "
        "1.0 format.");
    EXPECT_EQ(t.user.messages[1].icon, Icon::Warning);
    EXPECT_EQ(t.user.messages[1].buttons, platform::Buttons::Ok);
    EXPECT_EQ(opened->CurrDB20.Views[0].Name, "View00");
    EXPECT_EQ(opened->CurrDB20.Views[1].Name, "View01");
    EXPECT_EQ(opened->CurrDB20.Views[11].Name, "View11");
    EXPECT_EQ(opened->CurrDB20.Filters[0].Name, "Filter00");
    EXPECT_EQ(openedCell(1, 1), "r1");
}

TEST_F(OpenOlder, theWarningComesAheadOfTheLogin) {
    OlderFile file = books();
    file.db.Version = 50;
    file.protect("secret");
    put(file);
    t.user.passwords = {std::nullopt};
    EXPECT_EQ(open(kOlder), Outcome::Cancelled);
    EXPECT_EQ(t.user.messages.size(), 2U);
    expectEmpty();
}

// Login

TEST_F(OpenOlder, passwordIsAskedForAndMatchedAsEver) {
    OlderFile file = books();
    file.protect("secret");
    put(file);
    t.user.passwords = {"secre", "secret"};
    EXPECT_EQ(open(kOlder), Outcome::Done);
    EXPECT_EQ(t.user.texts(), (Texts{kOldFormat, "Incorrect password"}));
    EXPECT_EQ(t.user.passwordQuestions[0], (std::pair<std::string, std::string>("Login", "MSA_Books.pdb")));
    EXPECT_EQ(opened->SessionPwd[0], "secret");
}

TEST_F(OpenOlder, refusedLoginOpensNothingAndSaysNoMore) {
    OlderFile file = books();
    file.protect("secret");
    put(file);
    t.user.passwords = {"1", "2", "3"};
    EXPECT_EQ(open(kOlder), Outcome::Cancelled);
    EXPECT_EQ(t.user.texts(), (Texts{kOldFormat, "Incorrect password", "Incorrect password", "Incorrect password"}));
    expectEmpty();
}

// Refusals

TEST_F(OpenOlder, missingFileIsNamed) {
    EXPECT_EQ(open("/home/MSA_no such.pdb"), Outcome::Refused);
    EXPECT_EQ(t.user.texts(), (Texts{kOldFormat, "Error opening file /home/MSA_no such.pdb"}));
    expectEmpty();
}

TEST_F(OpenOlder, bytesThatAreNotAsTheyShouldBeOpenNothing) {
    const Bytes whole = books().bytes();
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{77}, std::size_t{78}, std::size_t{400}, whole.size() - 1}) {
        t.files.put(kOlder, Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        t.user.messages.clear();
        EXPECT_EQ(open(kOlder), Outcome::Refused) << size;
        EXPECT_EQ(t.user.texts(), (Texts{kOldFormat, kFailed})) << size;
        EXPECT_EQ(lastMessage().icon, Icon::Critical);
        EXPECT_TRUE(t.user.errors.empty());
        expectEmpty();
    }
}

TEST_F(OpenOlder, unreadableFileIsReported) {
    put(books());
    t.files.addFolder("/home/MSA_Folder.pdb");
    t.user.errorAnswers = {ErrorAnswer::Leave};
    EXPECT_EQ(open("/home/MSA_Folder.pdb"), Outcome::Refused);
    EXPECT_EQ(t.user.errors.size(), 1U);
    EXPECT_EQ(t.user.texts(), Texts{kOldFormat});
    expectEmpty();
}

TEST_F(OpenOlder, aRefusedFileLeavesAnOpenDocumentAlone) {
    put(books());
    ASSERT_EQ(open(kOlder), Outcome::Done);
    const auto before = std::move(opened);
    t.files.put(kOlder, Bytes(100, 0));
    EXPECT_EQ(open(kOlder), Outcome::Refused);
    EXPECT_EQ(before->grd.text(2, 2), "r0");
    EXPECT_FALSE(before->Is2xFormat);
    EXPECT_EQ(t.files.bytes("/app/Backup/MSA_Books.pdb"), books().bytes());
}

TEST_F(OpenOlder, readPDBFileReadsWithoutACopyOrAWordAboutTheFormat) {
    put(books());
    model::Document quiet;
    quiet.grd.setCell(0, 0);
    EXPECT_EQ(readPDBFile(quiet, t, kOlder, ReadMode::Quiet), Outcome::Done);
    EXPECT_EQ(quiet.grd.row(), 0);
    EXPECT_TRUE(quiet.FileOK);
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_FALSE(t.files.has("/app/Backup/MSA_Books.pdb"));
}

// Saving

TEST_F(OpenOlder, aSaveWritesAFileOfThePresentFormat) {
    put(books());
    const Bytes before = t.files.bytes(kOlder);
    ASSERT_EQ(open(kOlder), Outcome::Done);
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_EQ(t.files.bytes(kOlder), before);
    EXPECT_EQ(opened->CurrFilePath, kPresent);
    EXPECT_EQ(opened->CurrFileName, "MS2_Books.pdb");
    EXPECT_EQ(opened->Caption, "MS2_Books.pdb");
    EXPECT_TRUE(opened->Is2xFormat);
    const Bytes saved = t.files.bytes(kPresent);
    EXPECT_EQ(std::string(saved.begin(), saved.begin() + 10), std::string("MS2_Books\0", 10));
    EXPECT_EQ(std::string(saved.begin() + 60, saved.begin() + 68), "dataMOSS");
    t.user.messages.clear();
    ASSERT_EQ(open(kPresent), Outcome::Done);
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_EQ(openedCell(1, 1), "r1");
    EXPECT_EQ(openedCell(1, 3), "10");
    EXPECT_EQ(opened->RecKeys[1], 101);
    EXPECT_EQ(opened->CurrDB20.LastKey, 200);
    EXPECT_EQ(opened->grd.picture(2, 5), model::Picture::CheckOn);
}

TEST_F(OpenOlder, aSaveAsksBeforeItReplacesAFileOfThePresentName) {
    put(books());
    t.files.put(kPresent, {1, 2, 3});
    ASSERT_EQ(open(kOlder), Outcome::Done);
    t.user.answers = {Answer::No};
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused);
    EXPECT_EQ(lastMessage().text, "\"/home/MS2_Books.pdb\" exists already.  Do you want to replace it?");
    EXPECT_EQ(t.files.bytes(kPresent), (Bytes{1, 2, 3}));
    EXPECT_EQ(opened->CurrFilePath, kOlder);
    t.user.answers = {Answer::Yes};
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_EQ(t.files.bytes(kPresent)[64], 'M');
}

TEST_F(OpenOlder, blanksOfTheNameStayInTheHeader) {
    OlderFile file = books();
    file.name = "MSA_My Books";
    put(file, "/home/MSA_My_Books.pdb");
    ASSERT_EQ(open("/home/MSA_My_Books.pdb"), Outcome::Done);
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    const Bytes saved = t.files.bytes("/home/MS2_My_Books.pdb");
    EXPECT_EQ(std::string(saved.begin(), saved.begin() + 12), "MS2_My Books");
}

// Converting

TEST_F(OpenOlder, conversionWritesTheOtherFormatAndOpensNothing) {
    put(books());
    const Bytes before = t.files.bytes(kOlder);
    EXPECT_EQ(convert(), Outcome::Done);
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_EQ(t.files.bytes(kOlder), before);
    EXPECT_FALSE(t.files.has("/app/Backup/MSA_Books.pdb"));
    EXPECT_TRUE(t.user.atRest());
    ASSERT_EQ(open(kPresent), Outcome::Done);
    EXPECT_EQ(openedCell(0, 1), "r0");
    EXPECT_EQ(opened->CurrDB20.DBName, "MS2_Books");
}

TEST_F(OpenOlder, conversionKeepsTheOrderOfTheFile) {
    OlderFile file = books(0);
    file.db.Views[0].Columns[0] = {.Field = 1, .Width = 60};
    file.db.NumViews = 1;
    file.record(0, 1, "01 01 01 'b' 00");
    file.record(0, 2, "01 01 01 'a' 00");
    put(file);
    ASSERT_EQ(convert(), Outcome::Done);
    model::Document read;
    ASSERT_EQ(readPDBFile20(read, t, kPresent, ReadMode::Quiet), Outcome::Done);
    EXPECT_EQ(read.grd.text(2, 2), "b");
    EXPECT_EQ(read.grd.text(3, 2), "a");
}

TEST_F(OpenOlder, conversionAsksBeforeItReplacesAFile) {
    put(books());
    t.files.put(kPresent, {1, 2, 3});
    t.user.answers = {Answer::No};
    EXPECT_EQ(convert(), Outcome::Cancelled);
    EXPECT_EQ(t.user.texts(), Texts{kOverwrite});
    EXPECT_EQ(lastMessage().buttons, platform::Buttons::YesNo);
    EXPECT_EQ(t.files.bytes(kPresent), (Bytes{1, 2, 3}));
    t.user.answers = {Answer::Yes};
    EXPECT_EQ(convert(), Outcome::Done);
    EXPECT_EQ(open(kPresent), Outcome::Done);
}

TEST_F(OpenOlder, conversionSaysInTheEndThatItFailed) {
    struct Case {
        const char* name;
        Bytes bytes;
        Texts said;
    };
    OlderFile locked = books();
    locked.protect("secret");
    makeBooks();
    const Bytes present = t.files.bytes(kPresent);
    ASSERT_TRUE(t.files.remove(kPresent));
    const Case cases[] = {
        {"damaged", Bytes(100, 0xFF), {kNoTallybook, "Failed to open PDB file"}},
        {"cut", Bytes(40, 0), {"Failed to open PDB file"}},
        {"present format", present, {kNoTallybook, "Failed to open PDB file"}},
        {"login cancelled", locked.bytes(), {"Failed to open PDB file"}},
    };
    for (const Case& c : cases) {
        t.files.put(kOlder, c.bytes);
        t.user.messages.clear();
        if (std::string_view(c.name).starts_with("login"))
            t.user.passwords = {std::nullopt};
        EXPECT_EQ(convert("Failed to open PDB file"), Outcome::Refused) << c.name;
        EXPECT_EQ(t.user.texts(), c.said) << c.name;
        EXPECT_FALSE(t.files.has(kPresent)) << c.name;
    }
    ASSERT_TRUE(t.files.remove(kOlder));
    t.user.messages.clear();
    EXPECT_EQ(convert(), Outcome::Refused);
    EXPECT_EQ(t.user.texts(), (Texts{std::string("Error opening file ") + kOlder, kFailed}));
}

TEST_F(OpenOlder, conversionThatCannotBeWrittenIsReported) {
    put(books());
    t.user.errorAnswers = {ErrorAnswer::Leave};
    EXPECT_EQ(convertOlder(t, kOlder, "/none/MS2_Books.pdb"), Outcome::Refused);
    EXPECT_EQ(t.user.errors.size(), 1U);
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(OpenOlder, conversionTargetGetsThePresentPrefixAndUnderscores) {
    put(books());
    EXPECT_EQ(convertOlder(t, kOlder, "/home/MSA_New books.pdb"), Outcome::Done);
    EXPECT_TRUE(t.files.has("/home/MS2_New_books.pdb"));
}

} // namespace
} // namespace tallybook::document
