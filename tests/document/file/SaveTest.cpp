#include "document/FileFixture.h"

#include <algorithm>
#include <cerrno>
#include <deque>
#include <memory>
#include <new>
#include <optional>

namespace tallybook::document {
namespace {

using model::FieldType;
using platform::Answer;
using platform::Buttons;
using platform::Bytes;
using platform::ErrorAnswer;

constexpr const char* kBooks = "/home/MS2_Books.pdb";
constexpr const char* kCopy = "/app/Temp/Copy_MS2_Books.pdb";
constexpr const char* kMustStart = "Filename not valid.  Tallybook file name must start with \"MS2_\".";

struct Save : test::FileFixture {
    void openBooks(int count = 2) {
        makeBooks(count);
        ASSERT_EQ(open(kBooks), Outcome::Done);
    }
    void change(int record, const std::string& text) {
        opened->grd.setText(record + 2, 2, text);
        opened->DocModified = true;
    }
    std::string savedCell(int record) {
        EXPECT_EQ(open(kBooks), Outcome::Done);
        return openedCell(record, 1);
    }
};

TEST_F(Save, aNewDatabaseIsOfferedUnderTheNameThatItWasGiven) {
    model::Document fresh;
    CreateNewDatabase(fresh, t);
    EXPECT_TRUE(isNewDatabase(fresh));
    t.user.saveNames = {std::nullopt, std::nullopt, "/home/MS2_My own.pdb"};
    EXPECT_EQ(saveDocument(fresh, t), Outcome::Cancelled);
    EXPECT_EQ(t.user.saveQuestions.back().suggestion, "MS2_New.pdb");
    fresh.CurrDB20.DBName = "MS2_My own";
    fresh.CurrFileName = "MS2_My own.pdb";
    EXPECT_EQ(saveDocument(fresh, t), Outcome::Cancelled);
    EXPECT_EQ(t.user.saveQuestions.back().suggestion, "MS2_My own.pdb");
    fresh.CurrFolder = "/home"; // of its user
    fresh.CurrFilePath = "/home/MS2_My_own.pdb";
    EXPECT_EQ(saveDocument(fresh, t), Outcome::Done);
    EXPECT_EQ(t.user.saveQuestions.back().suggestion, "/home/MS2_My own.pdb");
    EXPECT_EQ(fresh.CurrDB20.DBName, "MS2_My own");
    EXPECT_EQ(fresh.CurrFilePath, "/home/MS2_My_own.pdb");
    EXPECT_FALSE(isNewDatabase(fresh));
}

TEST(SavedPath, prefixAndBlanksAreTheDisksOwn) {
    const std::pair<const char*, const char*> rows[] = {
        {"/home/MS2_Books.pdb", "/home/MS2_Books.pdb"},       {"/home/MS2_My Books.pdb", "/home/MS2_My_Books.pdb"},
        {"/home/MSA_My Books.pdb", "/home/MS2_My_Books.pdb"}, {"/home/msa_books.PDB", "/home/MS2_books.PDB"},
        {"/my home/MS2_x.pdb", "/my home/MS2_x.pdb"},         {"MS2_x y.pdb", "MS2_x_y.pdb"},
    };
    for (const auto& [target, path] : rows)
        EXPECT_EQ(savedPath(target), path);
}

TEST_F(Save, savedFileOpensAgain) {
    openBooks();
    change(1, "changed");
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_FALSE(opened->DocModified);
    EXPECT_TRUE(opened->FileOK);
    EXPECT_EQ(opened->CurrFilePath, kBooks);
    EXPECT_EQ(opened->Caption, "MS2_Books.pdb");
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_TRUE(t.user.atRest());
    EXPECT_EQ(savedCell(1), "changed");
}

TEST_F(Save, unchangedFileKeepsItsBytes) {
    openBooks();
    const Bytes before = t.files.bytes(kBooks); // made under the same standing clock
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_EQ(t.files.bytes(kBooks), before);
}

TEST_F(Save, fileThatSomebodyElseChangedIsReplacedOnlyWhenAskedFor) {
    openBooks();
    change(0, "mine");
    setByte(kBooks, offsetOf(kBooks, 87) + 1, 7); // the handheld gave the record another category
    const Bytes theirs = t.files.bytes(kBooks);
    t.user.answers.push_back(Answer::No);
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused);
    EXPECT_EQ(t.user.messages.back().text, "\"/home/MS2_Books.pdb\" was changed by another program since it was "
                                           "opened.  Do you want to replace it with what is open here?");
    EXPECT_EQ(t.files.bytes(kBooks), theirs);
    EXPECT_TRUE(opened->DocModified);
    t.user.answers.push_back(Answer::Yes);
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done); // our own change is not somebody else's
    EXPECT_EQ(savedCell(0), "mine");
}

TEST_F(Save, aChangeOfTheSameSizeAndTimeIsNoticed) {
    openBooks();
    change(0, "mine");
    Bytes theirs = t.files.bytes(kBooks);
    theirs[offsetOf(kBooks, 87) + 1] = 7;
    t.files.replaceUnseen(kBooks, theirs);
    t.user.answers = {Answer::No};
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused);
    EXPECT_EQ(lastMessage().text, "\"/home/MS2_Books.pdb\" was changed by another program since it was opened.  Do "
                                  "you want to replace it with what is open here?");
    EXPECT_EQ(lastMessage().preferred, Answer::No);
    EXPECT_EQ(t.files.bytes(kBooks), theirs);
}

TEST_F(Save, aFileThatSomebodyElseDeletedIsAskedAbout) {
    openBooks();
    change(0, "mine");
    ASSERT_TRUE(t.files.remove(kBooks));
    t.user.answers = {Answer::No};
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused);
    EXPECT_EQ(lastMessage().text, "\"/home/MS2_Books.pdb\" was moved or deleted by another program since it was "
                                  "opened.  Do you want to write it anew with what is open here?");
    EXPECT_FALSE(t.files.has(kBooks));
    EXPECT_TRUE(opened->DocModified);
    t.user.answers = {Answer::Yes};
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done); // asked about once
    EXPECT_EQ(savedCell(0), "mine");
}

TEST_F(Save, aChangeIsAskedAboutAgainAfterASaveThatFailed) {
    openBooks();
    change(0, "mine");
    t.files.addFolder("/home/MS2_Books.pdb.tallybook-tmp-1");
    for (int number = 2; number <= 1000; ++number) // no name is left to write under
        t.files.addFolder("/home/MS2_Books.pdb.tallybook-tmp-" + std::to_string(number));
    t.user.errorAnswers = {ErrorAnswer::Leave};
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused);
    setByte(kBooks, offsetOf(kBooks, 87) + 1, 7);
    t.user.answers = {Answer::No};
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused);
}

TEST_F(Save, aTargetThatCannotBeLookedAtFailsTheSave) {
    openBooks();
    change(0, "mine");
    const Bytes before = t.files.bytes(kBooks);
    for (int nth = 1; nth <= 3; ++nth) {
        t.files.failAt(nth, EACCES);
        t.user.errorAnswers = {ErrorAnswer::Leave};
        EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused) << nth;
        EXPECT_EQ(t.files.bytes(kBooks), before);
    }
}

// Another program saves its own change of the same file ahead of each call of a save in turn. Nobody lets go what he
// did not know of.
TEST_F(Save, ofTwoSavesAtOnceNoneIsLostUnseen) {
    openBooks();
    const Bytes before = t.files.bytes(kBooks);
    bool inTheMiddle = false;
    for (int nth = 1; nth < 60; ++nth) {
        t.files.put(kBooks, before);
        ASSERT_EQ(open(kBooks), Outcome::Done);
        const std::unique_ptr<model::Document> other = std::move(opened);
        ASSERT_EQ(open(kBooks), Outcome::Done);
        change(0, "mine");
        other->grd.setText(2, 2, "theirs");
        t.user.answers = std::deque<Answer>(9, Answer::No);
        t.user.errorAnswers = std::deque<ErrorAnswer>(9, ErrorAnswer::Leave);
        std::optional<Outcome> theirs;
        t.files.interruptAt(nth, [&] { theirs = saveDocument(*other, t); });
        const Outcome mine = saveDocument(*opened, t);
        if (!theirs) {
            t.files.interruptAt(0, {});
            break;
        }
        inTheMiddle = inTheMiddle || nth > 1;
        EXPECT_NE(mine == Outcome::Done, *theirs == Outcome::Done) << nth;
        EXPECT_EQ(savedCell(0), mine == Outcome::Done ? "mine" : "theirs") << nth;
    }
    t.user.answers.clear();
    t.user.errorAnswers.clear();
    EXPECT_TRUE(inTheMiddle);
}

TEST_F(Save, theOpenFileIsNotReplacedUnseenUnderAnyOfItsNames) {
    openBooks();
    change(0, "mine");
    setByte(kBooks, offsetOf(kBooks, 87) + 1, 7);
    const Bytes theirs = t.files.bytes(kBooks);
    t.user.answers = {Answer::No};
    EXPECT_EQ(savePDBFile20(*opened, t, kBooks), Outcome::Refused);
    EXPECT_EQ(t.files.bytes(kBooks), theirs);
    EXPECT_EQ(savePDBFile20(*opened, t, "/home/MS2_Copy.pdb"), Outcome::Done);
}

TEST_F(Save, temporaryCopyIsRenewed) {
    openBooks();
    change(0, "changed");
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_EQ(t.files.bytes(kCopy), t.files.bytes(kBooks));
    EXPECT_EQ(opened->TempCopyPath, kCopy);
}

TEST_F(Save, progressTellsEachRecord) {
    constexpr int kCount = 12; // numbers of one and of two digits
    makeBooks(kCount);
    EXPECT_EQ(savePDBFile20(doc, t, kBooks), Outcome::Done);
    std::vector<test::ScriptedUser::Progress> expected;
    for (int record = 1; record <= kCount; ++record)
        expected.push_back({"Building record " + std::to_string(record) + " of 12", record, kCount});
    expected.push_back({"Saving record 12 of 12", kCount, kCount});
    expected.push_back({"", 0, 0});
    EXPECT_EQ(t.user.progresses, expected);
}

TEST_F(Save, databaseWithoutRecordsHas87) {
    makeBooks(1);
    doc.grd.setCell(2, 2);
    t.user.answers = {Answer::Yes};
    ASSERT_TRUE(deleteRecord(doc, t));
    ASSERT_EQ(savePDBFile20(doc, t, kBooks), Outcome::Done);
    const Bytes& bytes = t.files.bytes(kBooks);
    EXPECT_EQ(bytes[76] * 256 + bytes[77], 87);
    ASSERT_EQ(open(kBooks), Outcome::Done);
    EXPECT_EQ(opened->NumDataRecs, 0);
}

TEST_F(Save, recordWithoutAnyCellIsARecord) {
    makeBooks(1);
    setCell(0, 1, "");
    ASSERT_EQ(savePDBFile20(doc, t, kBooks), Outcome::Done);
    EXPECT_EQ(t.files.bytes(kBooks)[77], 88);
}

TEST_F(Save, openEditIsCommittedFirst) {
    openBooks();
    opened->grd.setCell(2, 2);
    GridEdit(*opened, t, 'x');
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_EQ(savedCell(0), "X");
}

TEST_F(Save, readOnlyDatabaseIsRefused) {
    openBooks();
    opened->CurrDB20.ReadOnly = 1;
    opened->ReadOnlyInFile = true;
    const Bytes before = t.files.bytes(kBooks);
    change(0, "changed");
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused);
    EXPECT_EQ(t.user.texts(), std::vector<std::string>{"Tallybook is readonly."});
    EXPECT_EQ(t.files.bytes(kBooks), before);
}

TEST_F(Save, fileOfTheOldFormatComesOutAsTheNew) {
    openBooks();
    opened->CurrFilePath = "/home/MSA_My Books.pdb";
    opened->CurrDB20.DBName.clear();
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_TRUE(t.files.has("/home/MS2_My_Books.pdb"));
    EXPECT_FALSE(t.files.has("/home/MSA_My Books.pdb"));
    EXPECT_EQ(opened->CurrFilePath, "/home/MS2_My_Books.pdb");
    EXPECT_EQ(opened->CurrFileName, "MS2_My_Books.pdb");
    EXPECT_EQ(opened->Caption, "MS2_My_Books.pdb");
}

TEST_F(Save, headerKeepsTheBlanksOfTheName) {
    makeBooks();
    doc.CurrDB20.DBName = "MS2_My Books";
    ASSERT_EQ(savePDBFile20(doc, t, "/home/MS2_My Books.pdb"), Outcome::Done);
    const Bytes& bytes = t.files.bytes("/home/MS2_My_Books.pdb");
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 13), std::string("MS2_My Books\0", 13));
}

// Failures: the old file is whole, whatever fails

TEST_F(Save, failureAtAnyCallLeavesAWholeFileAndTheChanges) {
    openBooks();
    const Bytes before = t.files.bytes(kBooks);
    bool refused = false;
    for (int nth = 1; nth < 60; ++nth) {
        t.files.put(kBooks, before);
        ASSERT_EQ(open(kBooks), Outcome::Done);
        change(0, "changed");
        const int calls = t.files.calls();
        t.files.failAt(nth, ENOSPC);
        t.user.errorAnswers = {ErrorAnswer::GoOn};
        const Outcome outcome = saveDocument(*opened, t);
        const bool reached = t.files.calls() - calls >= nth;
        t.files.failAt(0, 0);
        const bool failed = outcome != Outcome::Done;
        if (!failed)
            t.user.errorAnswers.clear(); // nobody asked
        EXPECT_EQ(opened->DocModified, failed) << nth;
        EXPECT_EQ(opened->FileOK, !failed) << nth;
        const bool old = t.files.bytes(kBooks) == before;
        EXPECT_TRUE(old ? failed : open(kBooks) == Outcome::Done && openedCell(0, 1) == "changed") << nth;
        refused = refused || failed;
        if (!reached)
            break;
    }
    EXPECT_TRUE(refused);
}

TEST_F(Save, withoutMemoryTheFileAndTheChangesStay) {
    openBooks();
    const Bytes before = t.files.bytes(kBooks);
    bool said = false;
    for (int nth = 1; nth < 60; ++nth) {
        t.files.put(kBooks, before);
        ASSERT_EQ(open(kBooks), Outcome::Done);
        change(0, "changed");
        bool thrown = false;
        t.files.interruptAt(nth, [&] {
            thrown = true;
            throw std::bad_alloc();
        });
        t.user.errors.clear();
        t.user.errorAnswers = {ErrorAnswer::Leave};
        Outcome outcome = Outcome::Refused;
        try {
            outcome = saveDocument(*opened, t);
        } catch (const std::bad_alloc&) { // of the questions ahead of it, which the command as a whole answers for
        }
        t.files.interruptAt(0, {});
        t.user.errorAnswers.clear();
        EXPECT_EQ(opened->DocModified, outcome != Outcome::Done) << nth;
        EXPECT_TRUE(t.user.atRest()) << nth;
        const bool old = t.files.bytes(kBooks) == before;
        EXPECT_TRUE(old || (open(kBooks) == Outcome::Done && openedCell(0, 1) == "changed")) << nth;
        for (const auto& error : t.user.errors) {
            EXPECT_EQ(error.text, "There is not enough memory for \"/home/MS2_Books.pdb\".") << nth;
            said = true;
        }
        if (!thrown)
            break;
    }
    EXPECT_TRUE(said);
}

TEST_F(Save, leftOversInTheFolderAreTakenAwayFirst) {
    openBooks();
    ASSERT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_EQ(t.files.swept().back(), "/home");
}

TEST_F(Save, failingTemporaryCopyLeavesTheSavedFileAsTheSource) {
    openBooks();
    ASSERT_TRUE(t.files.remove(kCopy));
    t.files.addFolder(kCopy);
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_EQ(opened->TempCopyPath, kBooks);
    EXPECT_TRUE(t.user.errors.empty());
}

TEST_F(Save, vanishedFolderIsReported) {
    openBooks();
    change(0, "changed");
    opened->CurrFilePath = "/gone/MS2_Books.pdb";
    t.user.answers = {Answer::Yes};
    t.user.errorAnswers = {ErrorAnswer::Leave};
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused);
    EXPECT_TRUE(opened->DocModified);
    EXPECT_NE(t.user.errors[0].text.find("/gone/MS2_Books.pdb"), std::string::npos);
}

// Pictures

struct Pictures : Save {
    // A database with one picture that a temporary file holds.
    void openPicture() {
        field(2, FieldType::Image, "Cover");
        makeBooks(2);
        t.files.put("/app/Temp/rlw_0000000042.rle", {0xAA, 0xBB, 0xCC});
        setCell(1, 2, "*{Image}");
        doc.CellLongs.set(1, 2, 42);
        makeFile(kBooks);
        ASSERT_EQ(open(kBooks), Outcome::Done);
    }
    // The bytes of the picture of record 1 as a cell's body: length, zero, data, zero.
    Bytes storedPicture() const {
        const Bytes& bytes = t.files.bytes(kBooks);
        const auto at = static_cast<std::ptrdiff_t>(opened->CellLongs.get(1, 2)) - 1;
        return {bytes.begin() + at, bytes.begin() + at + 9};
    }
};

// Type 18, slot 2, length 4 (three bytes and one), zero, the bytes, zero.
const Bytes kPictureCell = {18, 2, 0, 4, 0, 0xAA, 0xBB, 0xCC, 0};

TEST_F(Pictures, newPictureIsTakenInAndItsFileRemoved) {
    openPicture();
    EXPECT_EQ(cell(1, 2), " {Image}");
    EXPECT_FALSE(t.files.has("/app/Temp/rlw_0000000042.rle"));
    EXPECT_EQ(openedCell(1, 2), " {Image}");
    EXPECT_EQ(storedPicture(), kPictureCell);
    EXPECT_EQ(doc.CellLongs.get(1, 2), opened->CellLongs.get(1, 2));
}

TEST_F(Pictures, unchangedPictureSurvivesTwoSavesInARow) {
    openPicture();
    for (const char* title : {"a longer title than before", "short"}) {
        change(0, title);
        ASSERT_EQ(saveDocument(*opened, t), Outcome::Done);
        EXPECT_EQ(storedPicture(), kPictureCell) << title;
    }
}

TEST_F(Pictures, pictureSurvivesTheLossOfTheFileItCameFrom) {
    openPicture();
    ASSERT_TRUE(t.files.remove(kBooks));
    t.user.answers = {Answer::Yes};
    ASSERT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_EQ(storedPicture(), kPictureCell);
}

TEST_F(Pictures, withoutATemporaryCopyThePictureComesFromTheSavedFile) {
    openPicture();
    ASSERT_TRUE(t.files.remove(kCopy));
    t.files.addFolder(kCopy);
    for (const char* title : {"a longer title than before", "short"}) {
        opened->TempCopyPath = kBooks;
        change(0, title);
        ASSERT_EQ(saveDocument(*opened, t), Outcome::Done);
        EXPECT_EQ(storedPicture(), kPictureCell) << title;
    }
}

TEST_F(Pictures, missingPictureFileFailsTheSave) {
    openPicture();
    const Bytes before = t.files.bytes(kBooks);
    opened->grd.setText(3, 3, "*{Image}");
    opened->CellLongs.set(1, 2, 77);
    change(0, "changed");
    t.user.errorAnswers = {ErrorAnswer::Leave};
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused);
    EXPECT_NE(t.user.errors[0].text.find("rlw_0000000077.rle"), std::string::npos);
    EXPECT_EQ(t.files.bytes(kBooks), before);
    EXPECT_EQ(opened->grd.text(3, 3), "*{Image}");
    EXPECT_TRUE(opened->DocModified);
}

// A new name

TEST_F(Save, newDatabaseIsSavedUnderTheNameThatIsAskedFor) {
    CreateNewDatabase(doc, t);
    t.user.saveNames = {"/home/MS2_My Books.pdb"};
    EXPECT_EQ(saveDocument(doc, t), Outcome::Done);
    EXPECT_EQ(t.user.saveQuestions[0].title, "Save As Tallybook");
    EXPECT_EQ(t.user.saveQuestions[0].filter, "PDB file (*.pdb)|*.pdb");
    EXPECT_TRUE(t.files.has("/home/MS2_My_Books.pdb"));
    EXPECT_EQ(doc.CurrDB20.DBName, "MS2_My Books");
    EXPECT_EQ(doc.Caption, "MS2_My Books");
    EXPECT_EQ(doc.CurrFilePath, "/home/MS2_My_Books.pdb");
    EXPECT_EQ(doc.CurrFileName, "MS2_My_Books.pdb");
    EXPECT_EQ(doc.CurrFolder, "/home");
    EXPECT_EQ(doc.TempCopyPath, "/home/MS2_My_Books.pdb"); // no Image field, no copy
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_EQ(saveDocument(doc, t), Outcome::Done); // from now on without a question
    ASSERT_EQ(open("/home/MS2_My_Books.pdb"), Outcome::Done);
    EXPECT_EQ(opened->CurrDB20.Fields[0].Name, "Categories");
}

TEST_F(Save, cancelledNameLeavesEverythingAsItWas) {
    openBooks();
    change(0, "changed");
    t.user.saveNames = {std::nullopt};
    EXPECT_EQ(SaveNew(*opened, t), Outcome::Cancelled);
    EXPECT_EQ(t.user.saveQuestions[0].suggestion, kBooks);
    EXPECT_TRUE(opened->DocModified);
    EXPECT_EQ(opened->CurrFilePath, kBooks);
    EXPECT_EQ(opened->CurrDB20.DBName, "MS2_Books");
}

TEST_F(Save, nameMustStartWithThePrefix) {
    openBooks();
    t.user.saveNames = {"/home/Books.pdb", "/home/MSA_Books.pdb", "/home/ms2_Books.pdb", "/home/MS2_New.pdb"};
    t.user.answers = {Answer::Ok, Answer::Ok, Answer::Ok};
    EXPECT_EQ(SaveNew(*opened, t), Outcome::Done);
    EXPECT_EQ(t.user.texts(), std::vector<std::string>(3, kMustStart));
    EXPECT_EQ(t.user.messages[0].buttons, Buttons::OkCancel);
    EXPECT_TRUE(t.files.has("/home/MS2_New.pdb"));
}

TEST_F(Save, cancelInTheBoxEndsTheCommand) {
    openBooks();
    t.user.saveNames = {"/home/Books.pdb"};
    t.user.answers = {Answer::Cancel};
    EXPECT_EQ(SaveNew(*opened, t), Outcome::Cancelled);
}

TEST_F(Save, namesThatNoFileMayHaveAreRefused) {
    std::string euros; // 27 characters, each of them 3 bytes on the disk and 1 in the header
    for (int i = 0; i < 27; ++i)
        euros += "\u20AC";
    struct Row {
        std::string name;
        bool accepted;
    };
    const Row rows[] = {
        {"MS2_" + std::string(27, 'x') + ".pdb", true},
        {"MS2_" + std::string(28, 'x') + ".pdb", false},
        {"MS2_" + euros + ".pdb", true},
        {"MS2_" + euros + "x.pdb", false},
        {"MS2_x", true},
        {"MS2_", false},
        {"MS2_.pdb", false},
        {"MS2_   .pdb", false},
        {"MS2_\u65E5.pdb", false},
        {"MS2_e\u0301.pdb", true},
        {"MS2_a:b.pdb", false},
        {"MS2_a*.pdb", false},
        {"MS2_a?.pdb", false},
        {"MS2_a\"b.pdb", false},
        {"MS2_<a>.pdb", false},
        {"MS2_a|b.pdb", false},
        {"MS2_a\\b.pdb", false},
        {"MS2_a\nb.pdb", false},
        {"MS2_a'b (1).pdb", true},
    };
    openBooks();
    for (const Row& row : rows) {
        t.user.messages.clear();
        t.user.answers.clear();
        t.user.saveNames = {"/home/" + row.name};
        if (!row.accepted)
            t.user.answers = {Answer::Cancel};
        EXPECT_EQ(SaveNew(*opened, t), row.accepted ? Outcome::Done : Outcome::Cancelled) << row.name;
        EXPECT_EQ(t.user.messages.size(), row.accepted ? 0U : 1U) << row.name;
    }
}

TEST_F(Save, nameWithoutItsEndingGetsIt) {
    openBooks();
    t.user.saveNames = {"/home/MS2_v1.2"};
    EXPECT_EQ(SaveNew(*opened, t), Outcome::Done);
    EXPECT_TRUE(t.files.has("/home/MS2_v1.2.pdb"));
    EXPECT_EQ(opened->CurrDB20.DBName, "MS2_v1.2");
    t.user.saveNames = {"/home/MS2_Upper.PDB"};
    EXPECT_EQ(SaveNew(*opened, t), Outcome::Done);
    EXPECT_TRUE(t.files.has("/home/MS2_Upper.PDB"));
}

TEST_F(Save, fileThatBlanksLeadToIsNotReplacedUnasked) {
    openBooks();
    t.files.put("/home/MS2_My_Books.pdb", {1, 2, 3});
    t.user.saveNames = {"/home/MS2_My Books.pdb", std::nullopt};
    t.user.answers = {Answer::No};
    EXPECT_EQ(SaveNew(*opened, t), Outcome::Cancelled);
    EXPECT_EQ(lastMessage().text, "\"/home/MS2_My_Books.pdb\" exists already.  Do you want to replace it?");
    EXPECT_EQ(t.files.bytes("/home/MS2_My_Books.pdb"), (Bytes{1, 2, 3}));
    t.user.saveNames = {"/home/MS2_My Books.pdb"};
    t.user.answers = {Answer::Yes};
    EXPECT_EQ(SaveNew(*opened, t), Outcome::Done);
    t.user.saveNames = {"/home/MS2_My_Books.pdb", std::nullopt}; // nor the one with that very name
    t.user.answers = {Answer::No};
    EXPECT_EQ(SaveNew(*opened, t), Outcome::Cancelled);
}

TEST_F(Save, whyANameIsRefusedIsSaid) {
    EXPECT_EQ(faultOfFileName("MS2_" + std::string(28, 'x') + ".pdb"),
              "Filename not valid.  The name of a Tallybook may have at most 27 characters.");
    EXPECT_EQ(faultOfFileName("MS2_ .pdb"), "Filename not valid.  A Tallybook needs a name behind \"MS2_\".");
    EXPECT_EQ(faultOfFileName("MS2_\u65E5.pdb"),
              "Filename not valid.  The character U+65E5 cannot be stored in a Tallybook.");
    EXPECT_EQ(faultOfFileName("MS2_My books.PDB"), "");
}

// It may have come from elsewhere.
TEST_F(Save, theFileThatIsOpenKeepsANameThatANewOneMayNotHave) {
    openBooks();
    const std::filesystem::path odd = "/home/ms2_" + std::string(40, 'x') + ".pdb";
    t.files.put(odd, t.files.bytes(kBooks));
    ASSERT_EQ(open(odd), Outcome::Done);
    change(0, "changed");
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_FALSE(refusesFileName(*opened, t, odd));
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_TRUE(refusesFileName(*opened, t, "/home/ms2_y.pdb"));
    EXPECT_EQ(lastMessage().text, kMustStart);
}

// Read-only

TEST_F(Save, readOnlyCanBeSetAndTakenBack) {
    openBooks();
    opened->CurrDB20.ReadOnly = 1;
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused);
    EXPECT_EQ(lastMessage().text, "Tallybook is readonly.");
    ASSERT_EQ(open(kBooks), Outcome::Done);
    EXPECT_EQ(opened->CurrDB20.ReadOnly, 1);
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Refused);
    opened->CurrDB20.ReadOnly = 0;
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done);
    ASSERT_EQ(open(kBooks), Outcome::Done);
    EXPECT_EQ(opened->CurrDB20.ReadOnly, 0);
}

// A name from Tallybook Properties

TEST_F(Save, aNewNameReachesTheFileInTheUsersFolder) {
    openBooks();
    t.files.addFolder("/ann");
    const Bytes before = t.files.bytes(kBooks);
    opened->CurrDB20.DBName = "MS2_My books";
    opened->CurrFileName = "MS2_My books.pdb";
    EXPECT_EQ(saveDocument(*opened, t, "/ann"), Outcome::Done);
    EXPECT_TRUE(t.files.has("/ann/MS2_My_books.pdb"));
    EXPECT_FALSE(t.files.has("/ann/MS2_Books.pdb"));
    EXPECT_EQ(t.files.bytes(kBooks), before);
    EXPECT_EQ(opened->CurrFilePath, "/ann/MS2_My_books.pdb");
    EXPECT_EQ(opened->Caption, "MS2_My_books.pdb");
    EXPECT_EQ(saveDocument(*opened, t, "/ann"), Outcome::Done); // the same file from now on
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(Save, aNewNameThatAnotherFileHasIsAskedAbout) {
    openBooks();
    t.files.addFolder("/ann");
    t.files.put("/ann/MS2_Other.pdb", {1, 2, 3});
    opened->CurrFileName = "MS2_Other.pdb";
    t.user.answers = {Answer::No};
    EXPECT_EQ(saveDocument(*opened, t, "/ann"), Outcome::Refused);
    EXPECT_EQ(lastMessage().text, "\"/ann/MS2_Other.pdb\" exists already.  Do you want to replace it?");
    EXPECT_EQ(t.files.bytes("/ann/MS2_Other.pdb"), (Bytes{1, 2, 3}));
}

TEST_F(Save, failedSaveUnderANewNameKeepsTheOldOne) {
    openBooks();
    change(0, "changed");
    t.user.saveNames = {"/gone/MS2_New.pdb"};
    t.user.errorAnswers = {ErrorAnswer::Leave};
    EXPECT_EQ(SaveNew(*opened, t), Outcome::Refused);
    EXPECT_EQ(opened->CurrDB20.DBName, "MS2_Books");
    EXPECT_EQ(opened->CurrFilePath, kBooks);
    EXPECT_EQ(opened->Caption, "MS2_Books.pdb");
    EXPECT_EQ(opened->TempCopyPath, kCopy);
    EXPECT_TRUE(opened->DocModified);
}

TEST_F(Save, saveAsEndsWithItsTwoMessages) {
    openBooks();
    opened->grd.setCell(2, 2);
    GridEdit(*opened, t, 'x');
    t.user.saveNames = {"/home/MS2_Copy.pdb"};
    EXPECT_EQ(saveAsSub(*opened, t), Outcome::Done);
    EXPECT_EQ(t.user.texts(),
              (std::vector<std::string>{"A backup copy of the Tallybook has been created successfully.",
                                        "Note: If you want to install this Tallybook on the device please select the "
                                        "button 'Save & Install' on the toolbar."}));
    EXPECT_EQ(opened->CurrFilePath, "/home/MS2_Copy.pdb");
    EXPECT_EQ(opened->grd.text(2, 2), "X");
    t.user.messages.clear();
    t.user.saveNames = {std::nullopt};
    EXPECT_EQ(saveAsSub(*opened, t), Outcome::Cancelled);
    EXPECT_TRUE(t.user.messages.empty());
}

// Closing

TEST_F(Save, closingAsksOnlyAboutChanges) {
    openBooks();
    EXPECT_TRUE(CheckSaveChanges(*opened, t));
    EXPECT_TRUE(t.user.messages.empty());
    change(0, "changed");
    t.user.answers = {Answer::Cancel};
    EXPECT_FALSE(CheckSaveChanges(*opened, t));
    EXPECT_EQ(lastMessage().text, "Do you want to save the changes you made to MS2_Books.pdb ?");
    EXPECT_EQ(lastMessage().buttons, Buttons::YesNoCancel);
    t.user.answers = {Answer::No};
    EXPECT_TRUE(CheckSaveChanges(*opened, t));
    EXPECT_TRUE(opened->DocModified);
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(CheckSaveChanges(*opened, t));
    EXPECT_FALSE(opened->DocModified);
    EXPECT_EQ(savedCell(0), "changed");
}

TEST_F(Save, closingStaysWhenTheSaveIsRefusedOrCancelled) {
    CreateNewDatabase(doc, t);
    ASSERT_TRUE(RecordAdd(doc, t));
    t.user.answers = {Answer::Yes};
    t.user.saveNames = {std::nullopt};
    EXPECT_FALSE(CheckSaveChanges(doc, t));
    EXPECT_EQ(lastMessage().text, "Do you want to save the changes you made to New Database ?");
    openBooks();
    change(0, "changed");
    opened->CurrDB20.ReadOnly = 1;
    opened->ReadOnlyInFile = true;
    t.user.answers = {Answer::Yes};
    EXPECT_FALSE(CheckSaveChanges(*opened, t));
    EXPECT_EQ(lastMessage().text, "Tallybook is readonly.");
}

TEST_F(Save, closingCommitsTheOpenEdit) {
    openBooks();
    opened->grd.setCell(2, 2);
    GridEdit(*opened, t, 'x');
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(CheckSaveChanges(*opened, t));
    EXPECT_EQ(savedCell(0), "X");
}

TEST_F(Save, passwordChangeAloneIsNotAskedAbout) {
    openBooks();
    opened->CurrDB20.Passwords[0] = pdb::ApplyPwd("secret");
    EXPECT_TRUE(CheckSaveChanges(*opened, t));
    EXPECT_EQ(saveDocument(*opened, t), Outcome::Done); // but the next save writes it
    t.user.passwords = {"secret"};
    EXPECT_EQ(open(kBooks), Outcome::Done);
}

} // namespace
} // namespace tallybook::document
