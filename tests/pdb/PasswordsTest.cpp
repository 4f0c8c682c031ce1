#include "core/pdb/Passwords.h"

#include "support/Hex.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using model::PasswordKind;
using test::TestServices;

const std::string kNuls(10, '\0');

TEST(ApplyPwd, addsAndCrossesWithThePairOfTheFormat) {
    // 'a' 61 + 5A = BB, crossed with 5A = E1; 'b' 62: BC, E6; behind the text the constant itself
    EXPECT_EQ(ApplyPwd("ab"), "\xE1\xE6ZZZZZZZZ");
    EXPECT_EQ(ApplyPwd(""), "ZZZZZZZZZZ");
    // FF + 5A = 159, of which one byte stays: 59 crossed with 5A = 03
    EXPECT_EQ(ApplyPwd("\xFF")[0], '\x03');
}

TEST(ApplyPwd, alwaysGivesTenCharacters) {
    for (std::size_t length = 0; length < 15; ++length)
        EXPECT_EQ(ApplyPwd(std::string(length, 'x')).size(), 10u);
}

TEST(ApplyPwd, onlyANulScramblesToANul) {
    for (const char c : test::allCharacters())
        EXPECT_NE(ApplyPwd(std::string(1, c))[0], '\0');
}

TEST(passwordExists20, looksForAnyCharacterAboveNul) {
    EXPECT_FALSE(passwordExists20(""));
    EXPECT_FALSE(passwordExists20(kNuls));
    EXPECT_TRUE(passwordExists20(std::string_view("\0\0\x01", 3)));
    EXPECT_TRUE(passwordExists20(ApplyPwd("x")));
}

struct MatchCase {
    const char* name;
    std::string typed;
    std::string stored;
    bool matches;
};

TEST(matchPassword20, comparesTheScrambledForms) {
    const MatchCase cases[] = {
        {"the password", "secret", ApplyPwd("secret"), true},
        {"another one", "sacred", ApplyPwd("secret"), false},
        {"letter case counts", "Secret", ApplyPwd("secret"), false},
        {"a prefix", "secre", ApplyPwd("secret"), false},
        {"nothing typed", "", ApplyPwd("secret"), false},
        {"nothing typed, nothing stored", "", "", false},
        {"longer than the password", "secrets", ApplyPwd("secret"), false},
        {"nine characters", "123456789", ApplyPwd("123456789"), true},
        {"nine of ten: what follows is not tested", "123456789", ApplyPwd("1234567890"), true},
        {"eight of nine", "12345678", ApplyPwd("123456789"), false},
        {"more than is stored", "12345678901", ApplyPwd("1234567890"), false},
        {"a stored text that was cut short", "sec", ApplyPwd("secret").substr(0, 3), false},
        {"NULs are not compared", std::string("se\0ret", 6), ApplyPwd("secret"), true},
        {"every character", std::string("\x81\x8D\x8F\xFF"), ApplyPwd("\x81\x8D\x8F\xFF"), true},
    };
    for (const MatchCase& c : cases)
        EXPECT_EQ(matchPassword20(c.typed, c.stored), c.matches) << c.name;
}

TEST(PasswordKinds, haveTheirWordsAndLabels) {
    const struct {
        PasswordKind kind;
        const char* word;
        const char* label;
    } cases[] = {
        {PasswordKind::Login, "Login", "Tallybook Password:"},
        {PasswordKind::Modify, "Modify", "Record Update Password:"},
        {PasswordKind::Design, "Design", "Design Change Password:"},
        {PasswordKind::View, "View", "View Change Password:"},
        {PasswordKind::Beam, "Beam", "Beam Password:"},
        {PasswordKind::Copy, "Copywrite", "Copy Password:"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(actionWord(c.kind), c.word);
        EXPECT_EQ(passwordLabel(c.kind), c.label);
    }
}

class Authorize : public ::testing::Test {
protected:
    Authorize() { m_doc.CurrFileName = "MS2_Books.pdb"; }

    void protect(PasswordKind kind, const std::string& password) {
        m_doc.CurrDB20.Passwords[static_cast<std::size_t>(kind)] = ApplyPwd(password);
    }

    model::Document m_doc;
    TestServices m_test;
};

TEST_F(Authorize, withoutAPasswordNothingIsAsked) {
    EXPECT_TRUE(AuthorizeDB(m_doc, m_test, PasswordKind::Login));
    m_doc.CurrDB20.Passwords[0] = kNuls;
    EXPECT_TRUE(AuthorizeDB(m_doc, m_test, PasswordKind::Login));
    EXPECT_TRUE(m_test.user.passwordQuestions.empty());
}

TEST_F(Authorize, asksWithTheActionWordAndTheFileName) {
    protect(PasswordKind::Copy, "secret");
    m_test.user.passwords = {"secret"};
    EXPECT_TRUE(AuthorizeDB(m_doc, m_test, PasswordKind::Copy));
    const std::vector<std::pair<std::string, std::string>> asked = {{"Copywrite", "MS2_Books.pdb"}};
    EXPECT_EQ(m_test.user.passwordQuestions, asked);
    EXPECT_TRUE(m_test.user.messages.empty());
}

TEST_F(Authorize, asksOnceASession) {
    protect(PasswordKind::Modify, "secret");
    m_test.user.passwords = {"secret"};
    EXPECT_TRUE(AuthorizeDB(m_doc, m_test, PasswordKind::Modify));
    EXPECT_TRUE(AuthorizeDB(m_doc, m_test, PasswordKind::Modify));
    EXPECT_EQ(m_doc.SessionPwd[1], "secret");
}

TEST_F(Authorize, eachKindHasItsOwnMemory) {
    protect(PasswordKind::Modify, "secret");
    protect(PasswordKind::Design, "secret");
    m_test.user.passwords = {"secret", "secret"};
    EXPECT_TRUE(AuthorizeDB(m_doc, m_test, PasswordKind::Modify));
    EXPECT_TRUE(AuthorizeDB(m_doc, m_test, PasswordKind::Design));
    EXPECT_EQ(m_test.user.passwordQuestions.size(), 2u);
}

TEST_F(Authorize, threeWrongTriesRefuse) {
    protect(PasswordKind::View, "secret");
    m_test.user.passwords = {"a", "secre", ""};
    EXPECT_FALSE(AuthorizeDB(m_doc, m_test, PasswordKind::View));
    EXPECT_EQ(m_test.user.texts(),
              (std::vector<std::string>{"Incorrect password", "Incorrect password", "Incorrect password"}));
    for (const platform::Message& shown : m_test.user.messages)
        EXPECT_EQ(shown.icon, platform::Icon::Critical);
    EXPECT_EQ(m_doc.SessionPwd[3], "");
}

TEST_F(Authorize, theThirdTryMayBeRight) {
    protect(PasswordKind::View, "secret");
    m_test.user.passwords = {"a", "b", "secret"};
    EXPECT_TRUE(AuthorizeDB(m_doc, m_test, PasswordKind::View));
    EXPECT_EQ(m_test.user.messages.size(), 2u);
}

TEST_F(Authorize, cancelRefusesWithoutAMessage) {
    protect(PasswordKind::Login, "secret");
    m_test.user.passwords = {"a", std::nullopt};
    EXPECT_FALSE(AuthorizeDB(m_doc, m_test, PasswordKind::Login));
    EXPECT_EQ(m_test.user.messages.size(), 1u);
}

TEST_F(Authorize, aChangedPasswordIsAskedForAgain) {
    protect(PasswordKind::Login, "first");
    m_test.user.passwords = {"first", "second"};
    EXPECT_TRUE(AuthorizeDB(m_doc, m_test, PasswordKind::Login));
    protect(PasswordKind::Login, "second");
    EXPECT_TRUE(AuthorizeDB(m_doc, m_test, PasswordKind::Login));
}

TEST_F(Authorize, thePointerComesBack) {
    using Pointer = platform::Screen::Pointer;
    protect(PasswordKind::Login, "secret");
    m_test.user.setPointer(Pointer::Wait);
    m_test.user.passwords = {std::nullopt};
    EXPECT_FALSE(AuthorizeDB(m_doc, m_test, PasswordKind::Login));
    EXPECT_EQ(m_test.user.pointer(), Pointer::Wait);
}

} // namespace
} // namespace tallybook::pdb
