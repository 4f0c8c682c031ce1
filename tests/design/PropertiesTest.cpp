#include "core/design/Properties.h"

#include "core/document/file/OpenSave.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::design {
namespace {

using model::FieldType;
using platform::Answer;
using test::TestServices;
using Accepted = Properties::Accepted;
using Texts = std::vector<std::string>;

class DBProperties : public testing::Test {
protected:
    DBProperties() {
        t.files.addFolder("/ann");
        t.files.addFolder("/bob");
        doc.CurrDB20.DBName = "MS2_My books";
        doc.CurrFilePath = "/ann/MS2_My_books.pdb";
        field(1, "Title");
        field(3, "Pages");
    }
    void field(std::size_t slot, const std::string& name) {
        doc.CurrDB20.Fields[slot].Type = FieldType::Text;
        doc.CurrDB20.Fields[slot].Name = name;
    }
    void makeNew() {
        doc.Caption = "New Database";
        doc.CurrFilePath.clear();
        doc.CurrDB20.DBName.clear();
    }
    Properties open() {
        return {doc, t, users, [this](const std::string& user) { savedUsers.push_back(user); }};
    }

    TestServices t;
    model::Document doc;
    UserList users{{"Ann", "Bob"}, {"/ann", "/bob"}, "Bob", {}};
    Texts savedUsers;
};

TEST_F(DBProperties, showsTheDatabase) {
    doc.CurrDB20.SearchFlags = 0x81;
    doc.CurrDB20.NoBackup = 1;
    doc.CurrDB20.ShowStartup = 1;
    doc.CurrDB20.StartupText = "Hello\nall";
    doc.CurrDB20.Fields[3].SearchField = 1;
    const Properties dialog = open();
    EXPECT_EQ(dialog.txtPDBname, "My books");
    EXPECT_TRUE(dialog.ChkSearch);
    EXPECT_FALSE(dialog.ChkReadOnly);
    EXPECT_TRUE(dialog.ChkNoBackup);
    EXPECT_TRUE(dialog.ChkStartup);
    EXPECT_EQ(dialog.TxtStartup, "Hello\r\nall");
    EXPECT_EQ(dialog.LstFields,
              (std::vector<Properties::SearchedField>{{1, "Title", false}, {2, "", false}, {3, "Pages", true}}));
    EXPECT_EQ(doc.CurrDB20.NumFields, 4);
    EXPECT_EQ(dialog.cmbUser(), (Texts{"Ann", "Bob"}));
    EXPECT_EQ(dialog.userPosition(), 1);
}

TEST_F(DBProperties, aNewDatabaseTakesTheFirstUserWhenThereIsNone) {
    users.CurrentUser.clear();
    EXPECT_EQ(open().userPosition(), -1);
    makeNew();
    EXPECT_EQ(open().userPosition(), 0);
    EXPECT_EQ(open().txtPDBname, "");
}

TEST_F(DBProperties, wantsAName) {
    Properties dialog = open();
    dialog.txtPDBname = "";
    EXPECT_EQ(dialog.cmdOK(), Accepted::NameMissing);
    EXPECT_EQ(t.user.texts().back(), "Enter Tallybook Name.");
    EXPECT_EQ(doc.CurrDB20.DBName, "MS2_My books");
}

TEST_F(DBProperties, refusesForbiddenCharacters) {
    for (const char character : std::string("\\/:*?<>|\"")) {
        Properties dialog = open();
        dialog.txtPDBname = std::string("a") + character;
        EXPECT_EQ(dialog.cmdOK(), Accepted::NameRefused) << character;
        EXPECT_EQ(dialog.txtPDBname, "");
        EXPECT_EQ(t.user.texts().back(), "Tallybook name cannot have the following characters:\n\\ / : *  ? < > !");
    }
    Properties dialog = open();
    dialog.txtPDBname = "a!"; // named by the message, and allowed
    EXPECT_EQ(dialog.cmdOK(), Accepted::Done);
}

TEST_F(DBProperties, refusesANameThatTheHeaderWouldCut) {
    Properties dialog = open();
    dialog.txtPDBname = std::string(28, 'n');
    EXPECT_EQ(dialog.cmdOK(), Accepted::NameRefused);
    EXPECT_EQ(t.user.texts().back(), "The name of a Tallybook may have at most 27 characters.");
    EXPECT_EQ(dialog.txtPDBname.size(), 28u); // to be shortened
    dialog.txtPDBname.pop_back();
    EXPECT_EQ(dialog.cmdOK(), Accepted::Done);
}

TEST_F(DBProperties, aNameKeepsItsBlanksAndTheFileHasUnderscores) {
    makeNew();
    Properties dialog = open();
    dialog.txtPDBname = "My new books";
    EXPECT_EQ(dialog.cmdOK(), Accepted::Done);
    EXPECT_EQ(doc.CurrFilePath, "/bob/MS2_My_new_books.pdb");
    EXPECT_EQ(doc.CurrFileName, "MS2_My new books.pdb");
    EXPECT_EQ(doc.CurrDB20.DBName, "MS2_My new books");
    EXPECT_TRUE(doc.DocModified);
}

TEST_F(DBProperties, asksBeforeItTakesTheNameOfAFile) {
    t.files.put("/bob/MS2_Books.pdb", {1});
    makeNew();
    Properties dialog = open();
    dialog.txtPDBname = "Books";
    t.user.answers = {Answer::No};
    EXPECT_EQ(dialog.cmdOK(), Accepted::NotOverwritten);
    EXPECT_EQ(t.user.texts().back(), "The file already exist\nOverwrite it ?");
    EXPECT_TRUE(doc.CurrFilePath.empty());
    EXPECT_EQ(doc.CurrDB20.DBName, "");
    t.user.answers = {Answer::Yes};
    EXPECT_EQ(dialog.cmdOK(), Accepted::Done);
    EXPECT_EQ(doc.CurrFilePath, "/bob/MS2_Books.pdb");
}

// The question has been answered here; the first save does not ask again, unless the file is another one by then.
TEST_F(DBProperties, whatWasGivenUpHereIsNotAskedAboutAgain) {
    for (const bool another : {false, true}) {
        document::CreateNewDatabase(doc, t);
        t.files.put("/bob/MS2_My_books.pdb", {1});
        Properties dialog = open();
        dialog.txtPDBname = "My books";
        t.user.answers = {Answer::Yes};
        EXPECT_EQ(dialog.cmdOK(), Accepted::Done);
        if (another)
            t.files.put("/bob/MS2_My_books.pdb", {1, 2});
        t.user.messages.clear();
        t.user.saveNames = {"/bob/MS2_My books.pdb"};
        t.user.answers = {Answer::Yes};
        EXPECT_EQ(document::saveDocument(doc, t, "/bob"), document::Outcome::Done);
        EXPECT_EQ(t.user.saveQuestions.back().suggestion, "/bob/MS2_My books.pdb");
        EXPECT_EQ(t.user.messages.size(), another ? 1u : 0u);
        t.user.answers.clear();
    }
}

TEST_F(DBProperties, controlsAreForbiddenCharacters) {
    Properties dialog = open();
    dialog.txtPDBname = "a\tb";
    EXPECT_EQ(dialog.cmdOK(), Accepted::NameRefused);
}

// The name in the header may differ from the file's.
TEST_F(DBProperties, aNameThatStaysLeavesTheFilesName) {
    doc.CurrFileName = "MS2_Copy of it.pdb";
    Properties dialog = open();
    dialog.ChkNoBackup = true;
    EXPECT_EQ(dialog.cmdOK(), Accepted::Done);
    EXPECT_EQ(doc.CurrFileName, "MS2_Copy of it.pdb");
}

TEST_F(DBProperties, withoutUsersTheFirstSaveAsksForAPlace) {
    users = {};
    makeNew();
    Properties dialog = open();
    dialog.txtPDBname = "Books";
    EXPECT_EQ(dialog.cmdOK(), Accepted::Done);
    EXPECT_TRUE(doc.CurrFilePath.empty());
    EXPECT_EQ(doc.CurrDB20.DBName, "MS2_Books");
}

TEST_F(DBProperties, storesTheChoices) {
    doc.CurrDB20.SearchFlags = 0x05;
    Properties dialog = open();
    dialog.ChkSearch = true;
    dialog.ChkReadOnly = true;
    dialog.ChkNoBackup = true;
    EXPECT_EQ(dialog.cmdOK(), Accepted::Done);
    EXPECT_EQ(doc.CurrDB20.SearchFlags, 0x85);
    EXPECT_EQ(doc.CurrDB20.ReadOnly, 1);
    EXPECT_EQ(doc.CurrDB20.NoBackup, 1);
    EXPECT_EQ(doc.CurrFilePath, "/ann/MS2_My_books.pdb");
    EXPECT_TRUE(doc.DocModified);
}

TEST_F(DBProperties, anOkWithoutAChangeIsNone) {
    doc.CurrDB20.StartupText = "as\r\nread";
    Properties dialog = open();
    dialog.CmdLstOK();
    dialog.CmdDone();
    EXPECT_EQ(dialog.cmdOK(), Accepted::Done);
    EXPECT_FALSE(doc.DocModified);
    EXPECT_EQ(doc.CurrDB20.StartupText, "as\r\nread");
}

TEST_F(DBProperties, storesTheSearchedFields) {
    doc.CurrDB20.Fields[1].SearchField = 1;
    doc.CurrDB20.Fields[20].SearchField = 1; // beyond the last used one
    Properties dialog = open();
    dialog.LstFields[0].selected = false;
    dialog.LstFields[2].selected = true;
    dialog.CmdLstCancel();
    EXPECT_TRUE(dialog.LstFields[0].selected);
    dialog.LstFields[0].selected = false;
    dialog.LstFields[2].selected = true;
    dialog.CmdLstOK();
    EXPECT_EQ(doc.CurrDB20.Fields[1].SearchField, 0);
    EXPECT_EQ(doc.CurrDB20.Fields[3].SearchField, 1);
    EXPECT_EQ(doc.CurrDB20.Fields[20].SearchField, 0);
    EXPECT_TRUE(doc.DocModified);
}

TEST_F(DBProperties, storesTheStartupText) {
    Properties dialog = open();
    dialog.ChkStartup = true;
    dialog.TxtStartup = "Hello\r\nall";
    EXPECT_TRUE(dialog.CmdDone());
    EXPECT_EQ(doc.CurrDB20.ShowStartup, 1);
    EXPECT_EQ(doc.CurrDB20.StartupText, "Hello\nall");
    EXPECT_TRUE(doc.DocModified);
}

TEST_F(DBProperties, refusesAStartupTextThatAFileCannotHold) {
    Properties dialog = open();
    for (const std::string& text : {std::string("a\0b", 3), std::string(65001, 'x')}) {
        dialog.TxtStartup = text;
        EXPECT_FALSE(dialog.CmdDone());
    }
    EXPECT_EQ(t.user.texts(), (Texts{"A start-up text holds a character that cannot be stored.",
                                     "A start-up text may have at most 65000 characters."}));
    EXPECT_EQ(doc.CurrDB20.StartupText, "");
    EXPECT_FALSE(doc.DocModified);
    dialog.TxtStartup = std::string(65000, 'x');
    EXPECT_TRUE(dialog.CmdDone());
}

TEST_F(DBProperties, leavingTheStartupTextKeepsTheOneThatWasSet) {
    doc.CurrDB20.StartupText = "Hello";
    Properties dialog = open();
    dialog.TxtStartup = "Bye";
    dialog.ChkStartup = true;
    dialog.leaveStartup();
    EXPECT_EQ(dialog.TxtStartup, "Hello");
    EXPECT_FALSE(dialog.ChkStartup);
    EXPECT_TRUE(dialog.CmdDone());
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(DBProperties, aNewDatabaseCanBeNamedAgain) {
    makeNew();
    for (const char* name : {"First", "Second", "Second"}) {
        Properties dialog = open();
        dialog.txtPDBname = name;
        EXPECT_EQ(dialog.cmdOK(), Accepted::Done);
        t.files.put(doc.CurrFilePath, {1}); // its own name is not asked about
    }
    EXPECT_EQ(doc.CurrFilePath, "/bob/MS2_Second.pdb");
    EXPECT_EQ(doc.CurrFileName, "MS2_Second.pdb");
    EXPECT_EQ(doc.CurrDB20.DBName, "MS2_Second");
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(DBProperties, anotherNameLeavesTheFileOfAnExistingDatabase) {
    Properties dialog = open();
    dialog.txtPDBname = "Other";
    EXPECT_EQ(dialog.cmdOK(), Accepted::Done);
    EXPECT_EQ(doc.CurrFilePath, "/ann/MS2_My_books.pdb");
    EXPECT_EQ(doc.CurrFileName, "MS2_Other.pdb");
    EXPECT_EQ(doc.CurrDB20.DBName, "MS2_Other");
}

TEST_F(DBProperties, cancelKeepsTheUserAlone) {
    Properties dialog = open();
    dialog.LstFields[0].selected = true;
    dialog.CmdLstOK();
    dialog.TxtStartup = "Hello";
    dialog.ChkStartup = true;
    dialog.CmdDone();
    dialog.chooseUser(0);
    dialog.cmdCancel();
    EXPECT_EQ(doc.CurrDB20.Fields[1].SearchField, 0);
    EXPECT_EQ(doc.CurrDB20.StartupText, "");
    EXPECT_EQ(doc.CurrDB20.ShowStartup, 0);
    EXPECT_FALSE(doc.DocModified);
    EXPECT_EQ(users.CurrentUser, "Ann");
    EXPECT_EQ(savedUsers, Texts{"Ann"});
}

} // namespace
} // namespace tallybook::design
