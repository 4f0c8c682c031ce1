#include "core/design/ExternalChoices.h"

#include "core/pdb/Database.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>

namespace tallybook::design {
namespace {

using model::FieldType;
using Entries = std::vector<NumberedEntry>;
using Names = std::vector<std::string>;

class ExternalChoices : public testing::Test {
protected:
    ExternalChoices() {
        doc.CurrFolder = "/data";
        doc.CurrFilePath = "/data/MS2_Books.pdb";
        t.files.addFolder("/data");
        t.files.addFolder("/palm/ann/Backup");
        t.files.addFolder("/palm/bert/Backup");
        users.UserNames = {"Ann", "Bert"};
        users.UserFolders = {"/palm/ann/Backup", "/palm/bert/Backup"};
    }
    OtherFolder otherFolder() {
        return {doc, t, users, [this](const std::string& UserID) { saved.push_back(UserID); }};
    }
    // A database of three fields, with one named view.
    void putPublishers(const char* path) {
        model::Document other;
        model::clearDocument(other);
        other.CurrDB20.DBName = "MS2_Our Publishers";
        other.CurrDB20.Fields[1] = {.Type = FieldType::Text, .Name = "Name", .Default = {}};
        other.CurrDB20.Fields[2] = {.Type = FieldType::Memo, .Name = "Remarks", .Default = {}};
        other.CurrDB20.Fields[4] = {.Type = FieldType::Key, .Name = "Number", .Default = {}};
        other.CurrDB20.Views[2].Name = "All of them";
        other.CurrDB20.Views[2].Columns[0].Field = 1;
        other.CurrDB20.NumViews = 3;
        auto built = pdb::buildDatabase(other, t);
        ASSERT_TRUE(built);
        t.files.put(path, built.value().bytes);
    }

    test::TestServices t;
    model::Document doc;
    handheld::UserList users;
    Names saved;
};

TEST_F(ExternalChoices, areTheOtherTallybooksOfTheFolder) {
    for (const char* name : {"MS2_Books.pdb", "MS2_Loans.PDB", "ms2_notes.pdb", "MSA_Old.pdb", "MS2_Notes.txt",
                             "Addresses.pdb", "MS2_Our_Publishers.pdb"})
        t.files.put(std::filesystem::path("/data") / name, {1});
    EXPECT_EQ(otherFolder().tallybooks(), (Names{"MS2_Loans", "ms2_notes", "MS2_Our_Publishers"}));
}

TEST_F(ExternalChoices, areNoneWhereThereIsNoFolder) {
    users = {};
    doc.CurrFolder.clear();
    EXPECT_TRUE(otherFolder().tallybooks().empty());
    EXPECT_EQ(otherFolder().userPosition(), -1);
    doc.CurrFolder = "/gone";
    EXPECT_TRUE(otherFolder().tallybooks().empty());
    EXPECT_EQ(otherFolder().read("MS2_Loans"), nullptr);
}

TEST_F(ExternalChoices, beginWithTheUserWhoHasTheOpenDatabase) {
    users.CurrentUser = "Ann";
    doc.CurrFolder = "/palm/bert/Backup";
    EXPECT_EQ(otherFolder().cmbUser(), (Names{"Ann", "Bert"}));
    EXPECT_EQ(otherFolder().userPosition(), 1);
    EXPECT_TRUE(otherFolder().isOwn());
}

TEST_F(ExternalChoices, beginWithAnEntryForAFolderThatIsNoUsers) {
    t.files.put("/data/MS2_Loans.pdb", {1});
    const OtherFolder folder = otherFolder();
    EXPECT_EQ(folder.cmbUser(), (Names{"(this Tallybook's folder)", "Ann", "Bert"}));
    EXPECT_EQ(folder.userPosition(), 0);
    EXPECT_TRUE(folder.isOwn());
    EXPECT_EQ(folder.tallybooks(), Names{"MS2_Loans"});
}

TEST_F(ExternalChoices, ofADatabaseWithoutAFolderBeginWithTheCurrentUser) {
    doc.CurrFolder.clear();
    users.CurrentUser = "Bert";
    putPublishers("/palm/bert/Backup/MS2_Our_Publishers.pdb");
    const OtherFolder folder = otherFolder();
    EXPECT_EQ(folder.userPosition(), 1);
    EXPECT_TRUE(folder.isOwn()); // where it will be saved
    EXPECT_EQ(folder.tallybooks(), Names{"MS2_Our_Publishers"});
    EXPECT_NE(folder.read("MS2_Our Publishers"), nullptr);
}

TEST_F(ExternalChoices, followTheUserWhoIsKept) {
    putPublishers("/palm/bert/Backup/MS2_Our_Publishers.pdb");
    t.files.put("/palm/bert/Backup/MS2_Books.pdb", {1}); // of the open one's name, but another
    OtherFolder folder = otherFolder();
    EXPECT_EQ(folder.read("MS2_Our_Publishers"), nullptr);
    folder.chooseUser(2);
    EXPECT_FALSE(folder.isOwn());
    EXPECT_EQ(folder.tallybooks(), (Names{"MS2_Books", "MS2_Our_Publishers"}));
    EXPECT_NE(folder.read("MS2_Our_Publishers"), nullptr);
    EXPECT_EQ(users.CurrentUser, "Bert");
    EXPECT_EQ(saved, Names{"Bert"});
    folder.chooseUser(0); // back, which is no user
    EXPECT_TRUE(folder.isOwn());
    EXPECT_EQ(folder.read("MS2_Our_Publishers"), nullptr);
    EXPECT_EQ(users.CurrentUser, "Bert");
    EXPECT_EQ(saved, Names{"Bert"});
}

TEST_F(ExternalChoices, aNameIsFoundWithAndWithoutPrefixAndEnding) {
    putPublishers("/data/MS2_Our_Publishers.pdb");
    const OtherFolder folder = otherFolder();
    for (const char* name : {"MS2_Our Publishers", "Our Publishers", "MS2_Our_Publishers.pdb", "ms2_our publishers",
                             "Our_Publishers.PDB"})
        EXPECT_NE(folder.read(name), nullptr) << name;
    for (const char* name : {"", "Publishers", "MSA_Our Publishers", "../MS2_Our_Publishers"})
        EXPECT_EQ(folder.read(name), nullptr) << name;
}

TEST_F(ExternalChoices, onlyFilesOfTheFolderAreRead) {
    putPublishers("/elsewhere/MS2_Our_Publishers.pdb");
    EXPECT_EQ(otherFolder().read("/elsewhere/MS2_Our_Publishers"), nullptr);
    EXPECT_EQ(otherFolder().read("../elsewhere/MS2_Our_Publishers"), nullptr);
}

TEST_F(ExternalChoices, aFileThatCannotBeReadIsNone) {
    t.files.put("/data/MS2_Loans.pdb", {1, 2, 3});
    EXPECT_EQ(otherFolder().read("MS2_Loans"), nullptr);
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(ExternalChoices, areViewsFieldsAndKeysByName) {
    putPublishers("/data/MS2_Our_Publishers.pdb");
    const auto other = otherFolder().read("MS2_Our_Publishers");
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->DBName, "MS2_Our Publishers");
    EXPECT_EQ(otherViews(other.get()), (Entries{{2, "All of them"}}));
    EXPECT_EQ(otherFields(other.get()), (Entries{{1, "Name"}, {2, "Remarks"}, {4, "Number"}}));
    EXPECT_EQ(otherKeyFields(other.get()), (Entries{{1, "Name"}, {4, "Number"}}));
    EXPECT_EQ(keyTypeOf(other.get(), 4), 11);
    EXPECT_EQ(keyTypeOf(other.get(), 1), 1);
    EXPECT_EQ(keyTypeOf(other.get(), 2), std::nullopt); // a memo is no key
    EXPECT_EQ(keyTypeOf(other.get(), 0), std::nullopt);
}

TEST_F(ExternalChoices, areNumbersWhenTheStructureIsNotKnown) {
    EXPECT_EQ(otherViews(nullptr).size(), 12U);
    EXPECT_EQ(otherViews(nullptr).front(), (NumberedEntry{0, "View 01"}));
    EXPECT_EQ(otherFields(nullptr).size(), 80U);
    EXPECT_EQ(otherFields(nullptr).back(), (NumberedEntry{80, "Field 80"}));
    EXPECT_EQ(keyTypeOf(nullptr, 1), std::nullopt);
}

TEST_F(ExternalChoices, aLookupFollowsAJoin) {
    doc.CurrDB20.Fields[3] = {.Type = FieldType::DBJoin, .Name = "Publisher", .Default = {}};
    doc.CurrDB20.Fields[5] = {.Type = FieldType::DBLookup, .Name = "City", .Default = {}};
    EXPECT_EQ(joinsOf(doc.CurrDB20), (Entries{{3, "Publisher"}}));
}

TEST_F(ExternalChoices, aNumberThatNoEntryHasIsAddedAndNotLost) {
    Entries entries = {{1, "Name"}, {4, "Number"}};
    EXPECT_EQ(positionOfNumber(entries, std::nullopt), -1);
    EXPECT_EQ(positionOfNumber(entries, std::uint8_t{4}), 1);
    EXPECT_EQ(entries.size(), 2U);
    EXPECT_EQ(positionOfNumber(entries, std::uint8_t{9}), 2);
    EXPECT_EQ(entries.back(), (NumberedEntry{9, "(9)"}));
}

} // namespace
} // namespace tallybook::design
