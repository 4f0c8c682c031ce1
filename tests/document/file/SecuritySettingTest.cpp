#include "core/document/file/SecuritySetting.h"

#include "document/DocumentFixture.h"

namespace tallybook::document {
namespace {

using model::PasswordKind;
using Mode = SecuritySetting::Mode;
using Verified = SecuritySetting::Verified;
using Confirmed = SecuritySetting::Confirmed;

constexpr const char* kEnterNew = "Enter New Password and Confirm Password and then Click OK";

struct Security : test::DocumentFixture {
    bool matches(PasswordKind kind, const std::string& typed) const {
        return pdb::matchPassword20(typed, doc.CurrDB20.Passwords[static_cast<std::size_t>(kind)]);
    }
    SecuritySetting dialog{doc, t};
};

TEST_F(Security, readOnlyDatabaseIsRefused) {
    EXPECT_TRUE(SecuritySetting::mayOpen(doc, t));
    doc.CurrDB20.ReadOnly = 1;
    EXPECT_FALSE(SecuritySetting::mayOpen(doc, t));
    EXPECT_EQ(lastMessage().text, "Tallybook is readonly.");
}

TEST_F(Security, eachKindShowsWhetherItIsSet) {
    protect(PasswordKind::Design, "secret");
    for (int kind = 0; kind < model::kPasswordKinds; ++kind)
        EXPECT_EQ(dialog.isSet(static_cast<PasswordKind>(kind)), kind == 2) << kind;
}

TEST_F(Security, startsWithoutAChoice) {
    EXPECT_EQ(dialog.mode(), Mode::None);
    EXPECT_EQ(dialog.hint(), "");
    EXPECT_EQ(dialog.frameCaption(), "");
    EXPECT_FALSE(dialog.asksExisting());
    EXPECT_FALSE(dialog.asksNew());
    EXPECT_EQ(dialog.verify("x"), Verified::Nothing);
    EXPECT_EQ(dialog.confirm("x", "x"), Confirmed::Nothing);
}

TEST_F(Security, frameShowsTheKindsLabel) {
    const std::string labels[] = {"Tallybook Password:",   "Record Update Password:", "Design Change Password:",
                                  "View Change Password:", "Beam Password:",          "Copy Password:"};
    for (int kind = 0; kind < model::kPasswordKinds; ++kind) {
        dialog.choose(static_cast<PasswordKind>(kind), PasswordAction::Set);
        EXPECT_EQ(dialog.frameCaption(), labels[kind]);
    }
}

TEST_F(Security, modesFollowTheChoice) {
    struct Row {
        bool set;
        PasswordAction action;
        Mode mode;
        std::string hint;
        std::string verifyCaption;
        bool asksExisting;
        bool asksNew;
    };
    const std::string verify = "Enter existing password and then Click Verify";
    const Row rows[] = {
        {false, PasswordAction::Set, Mode::New, kEnterNew, "", false, true},
        {false, PasswordAction::Delete, Mode::New, kEnterNew, "", false, true},
        {false, PasswordAction::Change, Mode::New, kEnterNew, "", false, true},
        {true, PasswordAction::Set, Mode::Change, verify, "&Verify", true, false},
        {true, PasswordAction::Change, Mode::Change, verify, "&Verify", true, false},
        {true, PasswordAction::Delete, Mode::Delete, "Enter existing password and then Click Delete ", "&Delete",
         true, false},
    };
    for (const Row& row : rows) {
        doc.CurrDB20.Passwords = {};
        if (row.set)
            protect(PasswordKind::View, "old");
        t.user.messages.clear();
        dialog.choose(PasswordKind::View, row.action);
        EXPECT_EQ(dialog.mode(), row.mode);
        EXPECT_EQ(dialog.frameCaption(), "View Change Password:");
        EXPECT_EQ(dialog.hint(), row.hint);
        EXPECT_EQ(dialog.verifyCaption(), row.verifyCaption);
        EXPECT_EQ(dialog.asksExisting(), row.asksExisting);
        EXPECT_EQ(dialog.asksNew(), row.asksNew);
        EXPECT_EQ(lastMessage().text,
                  !row.set && row.action == PasswordAction::Change ? "No existing password to change" : "");
    }
}

TEST_F(Security, newPasswordIsStoredScrambled) {
    dialog.choose(PasswordKind::Login, PasswordAction::Set);
    EXPECT_EQ(dialog.confirm("secret", "secret"), Confirmed::Set);
    EXPECT_TRUE(matches(PasswordKind::Login, "secret"));
    EXPECT_EQ(doc.CurrDB20.Passwords[0].size(), 10U);
    EXPECT_EQ(doc.CurrDB20.Passwords[0].find("secret"), std::string::npos);
    EXPECT_EQ(lastMessage().text, "The Tallybook is now protected with password :secret WARNING: If you forget this "
                                  "password the Tallybook will no longer be accessible");
    EXPECT_EQ(dialog.mode(), Mode::None);
    EXPECT_FALSE(doc.DocModified); // a password alone is not asked about when the document closes
}

TEST_F(Security, newPasswordIsCheckedBeforeItIsStored) {
    dialog.choose(PasswordKind::Login, PasswordAction::Set);
    EXPECT_EQ(dialog.confirm("secret", "Secret"), Confirmed::Differs);
    EXPECT_EQ(lastMessage().text, "New Password and Confirm Password does not match");
    EXPECT_EQ(dialog.confirm("", "x"), Confirmed::Differs);
    EXPECT_EQ(dialog.confirm("", ""), Confirmed::Blank);
    EXPECT_EQ(lastMessage().text, "Blank password not allowed");
    EXPECT_FALSE(dialog.isSet(PasswordKind::Login));
    EXPECT_EQ(dialog.mode(), Mode::New);
}

TEST_F(Security, passwordHasNineCharactersAtMost) {
    dialog.choose(PasswordKind::Login, PasswordAction::Set);
    dialog.confirm("1234567890ab", "1234567890ab");
    EXPECT_TRUE(matches(PasswordKind::Login, "123456789"));
}

TEST_F(Security, changeAsksForTheOldPasswordFirst) {
    protect(PasswordKind::Modify, "old");
    dialog.choose(PasswordKind::Modify, PasswordAction::Change);
    EXPECT_EQ(dialog.verify(""), Verified::Nothing);
    EXPECT_EQ(dialog.confirm("new", "new"), Confirmed::Nothing);
    EXPECT_EQ(dialog.verify("ol"), Verified::Wrong);
    EXPECT_EQ(lastMessage().text, "Incorrect password");
    EXPECT_EQ(dialog.verify("older"), Verified::Wrong);
    EXPECT_EQ(dialog.verify("old"), Verified::Accepted);
    EXPECT_EQ(dialog.hint(), "Enter New Password and confirm Password and then Click OK");
    EXPECT_TRUE(dialog.asksNew());
    EXPECT_FALSE(dialog.asksExisting());
    EXPECT_EQ(dialog.confirm("new", "new"), Confirmed::Set);
    EXPECT_TRUE(matches(PasswordKind::Modify, "new"));
}

TEST_F(Security, deletionEmptiesThePassword) {
    protect(PasswordKind::Beam, "old");
    dialog.choose(PasswordKind::Beam, PasswordAction::Delete);
    EXPECT_EQ(dialog.verify("wrong"), Verified::Wrong);
    EXPECT_TRUE(dialog.isSet(PasswordKind::Beam));
    EXPECT_EQ(dialog.verify("old"), Verified::Deleted);
    EXPECT_EQ(lastMessage().text, "Password deleted");
    EXPECT_FALSE(dialog.isSet(PasswordKind::Beam));
    EXPECT_EQ(dialog.mode(), Mode::None);
}

TEST_F(Security, cancelLeavesTheChoice) {
    protect(PasswordKind::Modify, "old");
    dialog.choose(PasswordKind::Modify, PasswordAction::Change);
    dialog.verify("old");
    dialog.cancel();
    EXPECT_EQ(dialog.mode(), Mode::None);
    dialog.choose(PasswordKind::Modify, PasswordAction::Change);
    EXPECT_TRUE(dialog.asksExisting()); // what was given before does not count
}

} // namespace
} // namespace tallybook::document
