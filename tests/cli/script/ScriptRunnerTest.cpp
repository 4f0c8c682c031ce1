// Scripts over the document's operations, in one process and on files in memory.
#include "cli/script/ScriptRunner.h"

#include "cli/TestBooks.h"
#include "cli/script/Script.h"
#include "cli/script/ScriptUser.h"
#include "core/document/file/OpenSave.h"
#include "support/MemoryFiles.h"

#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <variant>

namespace tallybook::cli {
namespace {

constexpr const char* kFile = "/data/MS2_Small.pdb";

// An edit session on a small database. The clock stands at 2003-03-05 13:05:09.
class ScriptSession {
public:
    explicit ScriptSession(const platform::Bytes& file = smallDatabase()) {
        files.put(kFile, file);
        for (const char* folder : {"/app", "/app/Temp", "/app/Backup"})
            files.addFolder(folder);
        user.passwords.push_back("secret"); // for the file that asks for it
        EXPECT_EQ(document::OpenDatabase(*doc, services, kFile), document::Outcome::Done);
        user.passwords.clear();
    }

    // "line: reason", or nothing when the script ran to its end.
    std::string run(const std::string& text) {
        const auto script = parseScript(text);
        if (const auto* error = std::get_if<ScriptError>(&script))
            return "parse " + std::to_string(error->line) + ": " + error->text;
        ScriptRunner runner(*doc, services, user, out, saveTo);
        const auto error = runner.run(std::get<Script>(script));
        return error ? std::to_string(error->line) + ": " + error->text : "";
    }

    test::MemoryFiles files;
    ScriptUser user;
    platform::Screen screen;
    platform::FixedClock clock{{2003, 3, 5, 13, 5, 9}};
    platform::Regional regional;
    platform::Services services{user, screen, files, clock, regional, "/app"};
    std::unique_ptr<model::Document> doc = std::make_unique<model::Document>();
    std::ostringstream out;
    std::optional<std::filesystem::path> saveTo;
};

struct ScriptCase {
    const char* name;
    std::string script;
    std::string error; // empty: runs to its end
};

class ScriptRunTest : public testing::TestWithParam<ScriptCase> {};

TEST_P(ScriptRunTest, runsOrSaysWhy) {
    ScriptSession session;
    EXPECT_EQ(session.run(GetParam().script), GetParam().error);
}

auto caseName() {
    return [](const auto& tested) { return std::string(tested.param.name); };
}

INSTANTIATE_TEST_SUITE_P(
    Places, ScriptRunTest,
    testing::Values(
        ScriptCase{"firstCell", "expect-at 1 @0", ""}, ScriptCase{"byName", "goto 2 Title\nexpect-at 2 @1", ""},
        ScriptCase{"nameWithoutCase", "goto 2 \"tItLe\"\nexpect-at 2 @1", ""},
        ScriptCase{"keepsTheColumn", "goto 1 Count\ngoto last\nexpect-at 3 Count", ""},
        ScriptCase{"relative", "goto last Title\ngoto previous\nexpect-at 2 Title\ngoto next\nexpect-at last Title",
                   ""},
        ScriptCase{"quotedNumberIsARecord", "goto \"2\" Title", ""},
        ScriptCase{"beyondTheLast", "goto 4 Title", "1: no such record: 4"},
        ScriptCase{"farBeyondTheLast", "goto 2147483647 Title", "1: no such record: 2147483647"},
        ScriptCase{"recordZero", "goto 0 Title", "1: no such record: 0"},
        ScriptCase{"aheadOfTheFirst", "goto previous Title", "1: no such record: previous"},
        ScriptCase{"noNumber", "goto x Title",
                   "1: not a record: x (a number from 1, first, last, next, previous or current)"},
        ScriptCase{"noField", "goto 1 Nothing", "1: no such field: Nothing"},
        ScriptCase{"noSlot", "goto 1 @81", "1: no such field: @81"},
        ScriptCase{"notThere", "goto 1 Title\nexpect-at 2 Title", "2: record 1, field \"Title\" is current"}),
    caseName());

INSTANTIATE_TEST_SUITE_P(
    SortingAndFinding, ScriptRunTest,
    testing::Values(
        ScriptCase{"sortAscending", "goto 1 Title\nsort Count\nexpect-at 1 Title\nexpect-cell 1 Title \"Third\"", ""},
        ScriptCase{"sortDescending",
                   "sort Count desc\nexpect-cell 1 Count \"12\"\nexpect-cell last Count \"-5\"\nexpect-modified no",
                   ""},
        ScriptCase{"sortTakesAnOpenEdit", "goto 2 Count\ntype \"-9\"\nsort Count\nexpect-cell 1 Title \"Second\"",
                   ""},
        ScriptCase{"sortOnWhatIsNotThere", "sort Nothing", "1: no such field: Nothing"},
        ScriptCase{"sortWithAnotherWord", "sort Count up", "1: usage: sort FIELD [desc]"},
        ScriptCase{
            "find",
            "find \"second\"\nexpect-at 1 Notes\nfind next\nexpect-at 2 Title\nfind previous\nexpect-at 1 Notes", ""},
        ScriptCase{"findWithOptions", "goto last Changed\nfind \"SECOND\" whole-word backward\nexpect-at 2 Title",
                   ""},
        ScriptCase{"findByExpression",
                   "find \"S*+T*\" expression case\nexpect-at 2 Title\nfind next\nexpect-at 3 Title", ""},
        ScriptCase{"findNothing", "find \"second\" case whole-word\nfind next", "2: Search string not found."},
        ScriptCase{"findNothingAsExpected", "find \"absent\"\nexpect-message \"Search string not found.\"", ""},
        ScriptCase{"findNoText", "find \"\"", "1: Please input a search text."},
        ScriptCase{"findAgainTooEarly", "find next", "1: nothing has been looked for yet"},
        ScriptCase{"findTheWordNext", "goto 1 Title\nfind \"next\"", "2: Search string not found."},
        ScriptCase{"findWithAnotherWord", "find \"x\" quickly",
                   "1: not an option: quickly (case, whole-word, expression or backward)"}),
    caseName());

INSTANTIATE_TEST_SUITE_P(
    Typing, ScriptRunTest,
    testing::Values(
        ScriptCase{"replacesAText", "goto 2 Title\ntype \"New\"\nkey enter\nexpect-cell 2 Title \"New\"", ""},
        ScriptCase{"capitalAtTheStart", "goto 2 Title\ntype \"new\"\nkey enter\nexpect-cell 2 Title \"New\"", ""},
        ScriptCase{"everyCharacterOfTheCodePage",
                   "goto 2 Title\ntype \"Žœó €“é”\"\nkey enter\n"
                   "expect-cell 2 Title \"Žœó €“é”\"",
                   ""},
        ScriptCase{"gotoWhere", "goto where title \"Third\"\nexpect-at 3 Title", ""},
        ScriptCase{"gotoWhereOfACheckBox", "goto where Done N\nexpect-at 2 Done", ""},
        ScriptCase{"gotoWhereOpenEdit", "goto 2 Title\ntype \"Now\"\ngoto where Title Now\nexpect-at 2 Title", ""},
        ScriptCase{"gotoWhereNobodyIs", "goto where Title \"third\"", "1: no record shows \"third\" there"},
        ScriptCase{"gotoWhereNoField", "goto where Nothing x", "1: no such field: Nothing"},
        ScriptCase{"gotoTooMuch", "goto 1 Title x", "1: usage: goto ROW [FIELD], or goto where FIELD \"TEXT\""},
        ScriptCase{"noOtherCharacter", "goto 2 Title\ntype \"Żółw\"\n",
                   "2: Character 1, U+017B, cannot be stored in a Tallybook."},
        ScriptCase{"goesOnInTheOpenEditor", "goto 2 Title\ntype \"Ne\"\ntype \"w\"\nexpect-editor \"New\"", ""},
        ScriptCase{"afterABlankReplacesWhatIsSelected",
                   "goto 2 Title\nkey blank\nexpect-editor \"Second\"\ntype \"X\"\nexpect-editor \"X\"", ""},
        ScriptCase{"nothingEmptiesTheCell", "goto 2 Title\ntype \"\"\nkey enter\nexpect-cell 2 Title \"\"", ""},
        ScriptCase{"blankFirstOpensTheEditor", "goto 2 Title\ntype \" x\"\nexpect-editor \"x\"", ""},
        ScriptCase{"aDate", "goto 1 Day\ntype \"12/24/20\"\nkey enter\nexpect-cell 1 Day \"12/24/2020\"", ""},
        ScriptCase{"nothingIntoAList", "goto 1 Kind\ntype \"\"", "2: an item is picked, not typed: use pick"},
        ScriptCase{"committedByLeaving", "goto 2 Count\ntype \"77\"\ngoto 1 Title\nexpect-cell 2 Count \"77\"", ""},
        ScriptCase{"droppedByEscape",
                   "goto 2 Count\ntype \"77\"\nkey escape\nexpect-cell 2 Count \"\"\n"
                   "expect-modified no",
                   ""},
        ScriptCase{"wrongNumberStops", "goto 2 Count\ntype \"abc\"\nkey enter\ngoto 1 Title",
                   "3: Only Integer value allowed"},
        ScriptCase{"wrongNumberExpected",
                   "goto 1 Count\ntype \"abc\"\nkey enter\n"
                   "expect-message \"Only Integer value allowed\"\nexpect-cell 1 Count \"12\"",
                   ""},
        ScriptCase{"wrongNumberAtTheEnd", "goto 2 Count\ntype \"abc\"\nkey enter", "3: Only Integer value allowed"},
        ScriptCase{"floatKeepsItsText",
                   "goto 1 Price\ntype \"1.234\"\ngoto 2 Title\n"
                   "expect-message \"Only 2 decimals are allowed\"\nexpect-cell 1 Price \"3.50\"",
                   ""},
        ScriptCase{"timeIsCompleted", "goto 1 Hour\ntype \"930\"\ngoto 2 Title\nexpect-cell 1 Hour \"9:30\"", ""},
        ScriptCase{"minusAlone", "goto 1 Count\ntype \"-\"\nkey enter\nexpect-cell 1 Count \"-\"", ""},
        ScriptCase{"intoASpin", "goto 1 Spin\ntype \"12.9\"\nkey enter\ngoto 1 Title\nexpect-cell 1 Spin \"12\"", ""},
        ScriptCase{"spinUp",
                   "goto 1 Spin\nkey blank\nkey up\nexpect-editor \"8\"\nkey down\nkey down\nexpect-editor \"6\"",
                   ""},
        ScriptCase{"lineBreakIsNotTyped", "goto 1 Title\ntype \"a\\nb\"",
                   "2: line breaks and tabs cannot be typed into a cell: use memo or key"},
        ScriptCase{"intoAList", "goto 1 Kind\ntype \"red\"", "2: an item is picked, not typed: use pick"},
        ScriptCase{"noDate", "goto 1 Day\ntype \"2/30/2003\"\nkey enter",
                   "3: Please specify a valid date (e.g. 12/31/2003)."},
        ScriptCase{"intoAMemo", "goto 1 Notes\ntype \"abc\"",
                   "2: the memo window is open: give it a memo, or key escape"},
        ScriptCase{"intoAKey",
                   "goto 1 Key\ntype \"9\"\n"
                   "expect-message \"To change the key values, change the field type to 'Long' and then "
                   "change back to 'Key'.\"\nexpect-cell 1 Key \"1\"",
                   ""},
        ScriptCase{"tooLong", "goto 1 Title\ntype \"" + std::string(255, 'x') + "\"",
                   "2: a cell takes at most 254 characters"}),
    caseName());

INSTANTIATE_TEST_SUITE_P(
    Keys, ScriptRunTest,
    testing::Values(
        ScriptCase{"tabOnTheGrid", "goto 1 Title\nkey tab\nexpect-at 1 Count\nkey shift+tab\nexpect-at 1 Title", ""},
        ScriptCase{"tabInAnEditor", "goto 1 Count\ntype \"3\"\nkey tab\nexpect-at 1 Total\nexpect-cell 1 Count \"3\"",
                   ""},
        ScriptCase{"tabFromTheLastField", "goto 1 Changed\nkey blank\nkey tab\nexpect-at 2 @0", ""},
        ScriptCase{"arrows",
                   "goto 2 Count\nkey up\nkey left\nexpect-at 1 Title\nkey down\nkey right\nexpect-at 2 Count", ""},
        ScriptCase{"upAtTheTop", "goto 1 Count\nkey up\nexpect-at 1 Count", ""},
        ScriptCase{"downInAnEditor",
                   "goto 1 Count\ntype \"3\"\nkey down\nexpect-at 2 Count\nexpect-cell 1 Count \"3\"", ""},
        ScriptCase{"enterOpens", "goto 1 Count\nkey enter\nexpect-editor \"12\"", ""},
        ScriptCase{"escapeOnTheGrid", "goto 1 Count\nkey escape\nexpect-editor none", ""},
        ScriptCase{"unknownKey", "key home", "1: no such key: home"},
        ScriptCase{"unknownKeyInAnEditor", "goto 1 Count\nkey blank\nkey left", "3: no such key in an editor: left"},
        ScriptCase{"timeAtTheKeys",
                   "goto 1 Hour\ntype \"7\"\nkey enter\n"
                   "expect-message \"Please specify the valid Time Input (e.g. 10:10:10 AM).\"\n"
                   "expect-editor \"7\"",
                   ""},
        ScriptCase{"f2OpensTheLongEditor", "goto 1 Title\nkey f2\nmemo \"Long\"\nexpect-cell 1 Title \"Long\"", ""}),
    caseName());

INSTANTIATE_TEST_SUITE_P(
    Editors, ScriptRunTest,
    testing::Values(
        ScriptCase{"pick", "goto 2 Kind\npick \"blue\"\nexpect-cell 2 Kind \"blue\"\nexpect-modified yes", ""},
        ScriptCase{"pickNone", "goto 1 Kind\npick none\nexpect-cell 1 Kind \"\"", ""},
        ScriptCase{"pickCategory", "goto 2 @0\npick \"home\"\nexpect-cell 2 @0 \"home\"", ""},
        ScriptCase{"pickUnfiled", "goto 1 @0\npick \"Unfiled\"\nexpect-cell 1 @0 \"Unfiled\"", ""},
        ScriptCase{
            "pickUnknown", "goto 1 Kind\npick \"pink\"",
            "2: There is no item \"pink\"; there are \"none\", \"red\", \"green\", \"blue\", \"Edit Items...\"."},
        ScriptCase{"pickInEitherCase", "goto 1 Kind\npick \"RED\"\nexpect-cell 1 Kind \"red\"", ""},
        ScriptCase{"pickWithoutAList", "goto 1 Title\npick \"red\"", "2: this cell has no list to pick from"},
        ScriptCase{"pickTheEditor", "goto 1 Kind\npick \"Edit Items...\"",
                   "2: the list's own editor cannot be used by a script"},
        ScriptCase{"listShowsItsItem", "goto 1 Kind\nclick\nexpect-editor \"green\"\nkey escape\nexpect-modified no",
                   ""},
        ScriptCase{"radio", "goto 1 Size\nradio \"small\"\nexpect-cell 1 Size \"small\"", ""},
        ScriptCase{"radioUnknown", "goto 1 Size\nradio \"huge\"",
                   "2: There is no option \"huge\"; there are \"small\", \"large\"."},
        ScriptCase{"radioElsewhere", "goto 1 Title\nradio \"huge\"", "2: this cell has no radio button"},
        ScriptCase{"radioOpenHoldsTheRest", "goto 1 Size\nclick\ngoto 2 Title",
                   "3: the choice of the radio button is open: give it a radio, or key escape"},
        ScriptCase{"radioEscaped", "goto 1 Size\nclick\nkey escape\ngoto 2 Title\nexpect-cell 1 Size \"large\"", ""},
        ScriptCase{"date", "goto 2 Day\ndate 2004-02-29\nkey enter\ngoto 1 Title\nexpect-cell 2 Day \"2/29/2004\"",
                   ""},
        ScriptCase{"today", "goto 2 Day\ndate today\ngoto 1 Title\nexpect-cell 2 Day \"3/5/2003\"", ""},
        ScriptCase{"noSuchDate", "goto 2 Day\ndate 2003-02-29",
                   "2: not a date: 2003-02-29 (YYYY-MM-DD, today or clear)"},
        ScriptCase{"halfADate", "goto 2 Day\ndate 2003-2-9", "2: not a date: 2003-2-9 (YYYY-MM-DD, today or clear)"},
        ScriptCase{"dateElsewhere", "goto 2 Title\ndate today", "2: this cell has no date"},
        ScriptCase{"dateCleared",
                   "goto 1 Day\nanswer ok \"Are you sure to clear the DATE VALUE for the selected "
                   "Field?\"\ndate clear\nexpect-cell 1 Day \"\"\nexpect-modified no",
                   ""},
        ScriptCase{"dateNotCleared", "goto 1 Day\nanswer cancel\ndate clear\nexpect-cell 1 Day \"1/2/2003\"", ""},
        ScriptCase{"memo", "goto 2 Notes\nmemo \"a\\nb\"\nexpect-cell 2 Notes \"a\\nb\"", ""},
        ScriptCase{"memoOfAText", "goto 2 Title\nmemo \"Longer\"\nexpect-cell 2 Title \"Longer\"", ""},
        ScriptCase{"memoElsewhere", "goto 2 Count\nmemo \"a\"", "2: this cell has no memo"},
        ScriptCase{"memoEscaped", "goto 1 Title\nkey f2\nkey escape\nexpect-cell 1 Title \"Élan, \\\"quoted\\\"\"",
                   ""},
        ScriptCase{"toggle", "goto 1 Done\ntoggle\nexpect-cell 1 Done N\ntoggle\nexpect-cell 1 Done Y", ""},
        ScriptCase{
            "toggleStampsButMarksNoChange",
            "goto 2 Done\ntoggle\nexpect-cell 2 Done Y\nexpect-cell 2 Changed \"3/5/2003\"\nexpect-modified no", ""},
        ScriptCase{"toggleElsewhere", "goto 2 Title\ntoggle", "2: this cell is no check box"},
        ScriptCase{"clickFlips", "click 2 Done\nexpect-cell 2 Done Y", ""}),
    caseName());

INSTANTIATE_TEST_SUITE_P(
    Records, ScriptRunTest,
    testing::Values(
        ScriptCase{"add",
                   "add\nexpect-records 4\nexpect-at 4 Title\nexpect-cell 4 Number \"4\"\nexpect-cell 4 Key \"4\"\n"
                   "expect-cell 4 Size \"small\"\nexpect-cell 4 @0 \"Unfiled\"\nexpect-modified yes",
                   ""},
        ScriptCase{"delete",
                   "goto 2\nanswer yes \"Delete current record.  Are you sure?\"\ndelete\nexpect-records 2\n"
                   "expect-cell 2 Title \"Third\"\nexpect-at 2 @0",
                   ""},
        ScriptCase{"deleteTurnedDown", "answer no\ndelete\nexpect-records 3", ""},
        ScriptCase{"deleteUnanswered", "delete", "1: unanswered question: Delete current record.  Are you sure?"},
        ScriptCase{"anotherQuestion", "answer yes \"Sure?\"\ndelete",
                   "2: another question came: Delete current record.  Are you sure?"},
        ScriptCase{"answerThatIsNotOffered", "answer ok\ndelete",
                   "2: the question does not offer this answer: Delete current record.  Are you sure?"},
        ScriptCase{"deleteAll",
                   "answer yes \"WARNING: Delete all records in this Tallybook. Are you sure?\"\ndelete-all\n"
                   "expect-records 0",
                   ""},
        ScriptCase{"nothingLeftToDelete",
                   "answer yes\ndelete-all\ndelete\nexpect-message \"No records for deletion.\"", ""},
        ScriptCase{"nothingToGoTo", "answer yes\ndelete-all\ngoto first Title", "3: there are no records"},
        ScriptCase{"nothingToShow", "answer yes\ndelete-all\nshow", "3: there are no records"},
        ScriptCase{"firstRecordAgain", "answer yes\ndelete-all\nadd\nexpect-records 1\nexpect-at 1 Title", ""},
        ScriptCase{"answerLeft", "answer yes\nadd", "2: an answer is left that no question asked for"},
        ScriptCase{"wrongCount", "expect-records 2", "1: there are 3 records, expected 2"}),
    caseName());

INSTANTIATE_TEST_SUITE_P(
    Expectations, ScriptRunTest,
    testing::Values(ScriptCase{"wrongCell", "expect-cell 1 Count \"13\"", "1: \"12\" stands there, expected \"13\""},
                    ScriptCase{"noMessage", "expect-message \"x\"", "1: no message came, expected \"x\""},
                    ScriptCase{"otherMessage", "goto 1 Count\ntype x\nkey enter\nexpect-message \"x\"",
                               "4: the message was \"Only Integer value allowed\", expected \"x\""},
                    ScriptCase{"notModified", "expect-modified yes", "1: there are no unsaved changes"},
                    ScriptCase{"editorNotOpen", "expect-editor \"x\"", "1: no editor is open"},
                    ScriptCase{"editorOpen", "goto 1 Count\nkey blank\nexpect-editor none", "3: an editor is open"},
                    ScriptCase{"editorHoldsSomethingElse", "goto 1 Count\nkey blank\nexpect-editor \"13\"",
                               "3: \"12\" stands there, expected \"13\""}),
    caseName());

// Output -----------------------------------------------------------------------------------------------------

TEST(ScriptOutputTest, showsTheCurrentRecord) {
    ScriptSession session;
    EXPECT_EQ(session.run("goto 3\nshow"), "");
    EXPECT_EQ(session.out.str(),
              "Categories\thome\nTitle\tThird\nCount\t-5\nTotal\t\nPrice\t\nKind\t\nDone\tN\nDay\t\n"
              "Hour\t\nNotes\t\nSize\t\nNumber\t3\nKey\t3\nSpin\t\nChanged\t\n");
}

TEST(ScriptOutputTest, showsAll) {
    ScriptSession session;
    EXPECT_EQ(session.run("show all"), "");
    EXPECT_TRUE(session.out.str().starts_with("Categories\tTitle\tCount\t")) << session.out.str();
    EXPECT_NE(session.out.str().find("\nhome\tThird\t-5\t"), std::string::npos) << session.out.str();
}

TEST(ScriptOutputTest, copiesACell) {
    ScriptSession session;
    EXPECT_EQ(session.run("goto 1 Title\ncopy"), "");
    EXPECT_EQ(session.out.str(), "Élan, \"quoted\"\n");
}

TEST(ScriptOutputTest, copiesABlockAsTheClipboardHasIt) {
    ScriptSession session;
    EXPECT_EQ(session.run("goto 2 Kind\nselect 3 Day\ncopy"), "");
    EXPECT_TRUE(session.out.str().starts_with("\tN\t")) << session.out.str();
}

TEST(ScriptOutputTest, selectsARow) {
    ScriptSession session;
    EXPECT_EQ(session.run("goto 3 Title\nselect row\ncopy"), "");
    EXPECT_TRUE(session.out.str().starts_with("home\tThird\t-5\t")) << session.out.str();
}

// Saving -----------------------------------------------------------------------------------------------------

TEST(ScriptSaveTest, savesInPlace) {
    ScriptSession session;
    EXPECT_EQ(session.run("goto 2 Count\ntype \"77\"\nsave\nexpect-modified no\nexpect-cell 2 Count \"77\""), "");
    EXPECT_NE(session.files.bytes(kFile), smallDatabase());
    ScriptSession again(session.files.bytes(kFile));
    EXPECT_EQ(again.run("expect-cell 2 Count \"77\"\nexpect-cell 1 Count \"12\"\nexpect-records 3"), "");
}

TEST(ScriptSaveTest, savesElsewhereWhenToldSo) {
    ScriptSession session;
    session.saveTo = "/data/MS2_Out.pdb";
    EXPECT_EQ(session.run("goto 2 Count\ntype \"77\"\nsave\nexpect-modified no"), "");
    EXPECT_EQ(session.files.bytes(kFile), smallDatabase());
    EXPECT_TRUE(session.files.has("/data/MS2_Out.pdb"));
}

TEST(ScriptSaveTest, savesAs) {
    ScriptSession session;
    EXPECT_EQ(session.run("save-as \"/data/MS2_New name.pdb\"\nexpect-modified no"), "");
    EXPECT_TRUE(session.files.has("/data/MS2_New_name.pdb"));
    EXPECT_EQ(session.files.bytes(kFile), smallDatabase());
}

TEST(ScriptSaveTest, refusesANameWithoutThePrefix) {
    ScriptSession session;
    EXPECT_EQ(session.run("answer cancel\nsave-as /data/New.pdb"), "2: nothing was saved");
    ScriptSession unanswered;
    EXPECT_EQ(unanswered.run("save-as /data/New.pdb"),
              "1: Filename not valid.  Tallybook file name must start with \"MS2_\".");
}

TEST(ScriptSaveTest, saysWhatAFailedSaveSays) {
    constexpr int kNoSpaceLeft = 28;
    int failures = 0;
    for (int call = 1; call <= 12; ++call) {
        ScriptSession session;
        session.files.failAt(call, kNoSpaceLeft);
        const std::string error = session.run("add\nsave");
        failures += error.empty() ? 0 : 1;
        EXPECT_TRUE(error.empty() || error.starts_with("2: ")) << error;
    }
    EXPECT_GT(failures, 3);
}

// Passwords and read-only databases --------------------------------------------------------------------------

TEST(ScriptPasswordTest, isAskedForByAClick) {
    ScriptSession session(lockedDatabase());
    EXPECT_EQ(session.run("click 1 Count"), "1: a password is needed: Modify");
    EXPECT_EQ(session.run("password \"change\"\nclick 1 Count\nexpect-editor \"12\"\nkey escape\n"
                          "click 1 Total\nexpect-editor \"100000\""),
              "");
}

TEST(ScriptPasswordTest, thatIsWrongLeavesItsMessage) {
    ScriptSession session(lockedDatabase());
    EXPECT_EQ(session.run("password \"chang\"\nclick 1 Count"), "2: Incorrect password");
    session.user.messages.clear();
    EXPECT_EQ(
        session.run("password \"chang\"\nclick 1 Count\nexpect-message \"Incorrect password\"\nexpect-editor none"),
        "");
    EXPECT_EQ(session.run("password \"chang\"\npassword \"change\"\nclick 1 Count\nexpect-message "
                          "\"Incorrect password\"\nexpect-editor \"12\""),
              "");
}

TEST(ScriptReadOnlyTest, takesNothing) {
    ScriptSession session;
    session.doc->CurrDB20.ReadOnly = 1;
    session.doc->ReadOnlyInFile = true;
    EXPECT_EQ(session.run("goto 1 Count\nkey blank\nexpect-editor none"), "");
    EXPECT_EQ(session.run("goto 1 Count\ntype \"3\""), "2: this cell cannot be typed into");
    EXPECT_EQ(session.run("goto 1 Notes\ntype \"3\""), "2: this cell cannot be typed into");
    EXPECT_EQ(session.run("goto 1 Notes\nkey blank\ngoto 1 Done"), ""); // no window to close
    EXPECT_EQ(session.run("goto 1 Done\ntoggle"), "2: this check box cannot be changed");
    EXPECT_EQ(session.run("goto 1 Notes\nmemo \"x\""), "2: the database is read-only: the memo window takes no text");
    EXPECT_EQ(session.run("add\nexpect-message \"Tallybook is readonly.\"\nexpect-records 3"), "");
    EXPECT_EQ(session.run("delete\nexpect-message \"Tallybook is readonly.\""), "");
    EXPECT_EQ(session.run("save\nexpect-message \"Tallybook is readonly.\""), "");
}

// A view of two columns, the count first, and two filters.
platform::Bytes databaseWithViews() {
    ScriptSession session;
    model::DatabaseModel& db = session.doc->CurrDB20;
    db.NumViews = 1;
    db.Views[0].Name = "Counts";
    db.Views[0].NumCols = 2;
    db.Views[0].Columns[0].Field = 2;
    db.Views[0].Columns[1].Field = 1;
    db.Views[0].SortFields[0] = 2;
    db.HdrByte2 = 11;
    const auto filter = [&](std::size_t slot, const char* name, char code, const char* constant) {
        db.Filters[slot].Name = name;
        db.Filters[slot].CondFields[0] = 2;
        db.Filters[slot].CondOps[0] = static_cast<std::uint8_t>(code);
        db.Filters[slot].CondValues[0] = constant;
    };
    filter(0, "Some", '!', "0");
    filter(2, "Below", '<', "10");
    EXPECT_EQ(document::savePDBFile20(*session.doc, session.services, "/data/MS2_Views.pdb"),
              document::Outcome::Done);
    return session.files.bytes("/data/MS2_Views.pdb");
}

TEST(ScriptViewsTest, filtersHideRecords) {
    ScriptSession session(databaseWithViews());
    EXPECT_EQ(session.run("expect-filter \"No Filter\"\nexpect-shown 3\n"
                          "filter Some\nexpect-filter Some\nexpect-shown 2\n"
                          "filter Some Below\nexpect-filter Multiple\nexpect-shown 1\nexpect-records 3\n"
                          "filter \"No Filter\"\nexpect-shown 3"),
              "");
}

TEST(ScriptViewsTest, aDeletionGoesOnWithARecordThatIsShown) {
    ScriptSession session(databaseWithViews());
    EXPECT_EQ(session.run("filter Some\ngoto 1 Title\nanswer yes\ndelete\n"
                          "expect-cell 1 Title \"Second\"\nexpect-at 2 Title"),
              "");
}

TEST(ScriptViewsTest, recordsOfAViewAreEditedInTheGrid) {
    ScriptSession session(databaseWithViews());
    EXPECT_EQ(session.run("view Counts\nexpect-view Counts\n"
                          "goto 1 Count\nclick\nexpect-editor none\n"
                          "edit\nexpect-at 1 Count\ntype \"50\"\ndone\nexpect-view Counts\n"
                          "expect-cell 3 Title \"Third\"\nexpect-cell 3 Count \"50\"\nshow all"),
              "");
    EXPECT_EQ(session.out.str(), "Count\tTitle\n\tSecond\n12\t\xC3\x89lan, \"quoted\"\n50\tThird\n");
}

TEST(ScriptViewsTest, whatIsSelectedInAViewIsCopied) {
    ScriptSession session(databaseWithViews());
    EXPECT_EQ(session.run("view Counts\ngoto 2 Title\ncopy\ngoto next Count\nselect previous Title\ncopy\n"
                          "select column\ncopy"),
              "");
    const std::string first = session.out.str();
    EXPECT_EQ(session.run("goto 1\nselect 2 Price"), "2: the view does not show this field: Price");
    EXPECT_EQ(session.run("filter Below\nselect all\ncopy"), "");
    EXPECT_EQ(first, "Second\n\tSecond\n12\t\"\xC3\x89lan, \"quoted\"\"\n-5\n\n12\n");
    EXPECT_EQ(session.out.str().substr(first.size()), "-5\tThird\n\tSecond\n");
}

TEST(ScriptViewsTest, whatIsNotThereIsRefused) {
    ScriptSession session(databaseWithViews());
    EXPECT_EQ(session.run("view Nowhere"),
              "1: There is no view \"Nowhere\"; there are \"Counts\", \"Show All Fields\".");
    EXPECT_EQ(session.run("view \"Edit Views...\""),
              "1: There is no view \"Edit Views...\"; there are \"Counts\", \"Show All Fields\".");
    EXPECT_EQ(session.run("filter Multiple"),
              "1: There is no filter \"Multiple\"; there are \"Some\", \"Below\", \"No Filter\".");
    EXPECT_EQ(session.run("filter Some \"No Filter\""),
              "1: \"No Filter\" stands for no filter and cannot be among others.");
    EXPECT_EQ(session.run("edit"), "1: no view is shown");
    EXPECT_EQ(session.run("done"), "1: no record of a view is being edited");
    EXPECT_EQ(session.run("view Counts\ngoto 1 Price"), "2: the view does not show this field: Price");
    EXPECT_EQ(session.run("filter Some\ngoto 2"), "2: a filter hides this record: 2");
    EXPECT_EQ(session.run("expect-view \"Show All Fields\""),
              "1: \"Counts\" is chosen, expected \"Show All Fields\"");
    EXPECT_EQ(session.run("expect-shown 7"), "1: 2 records are shown, expected 7");
}

} // namespace
} // namespace tallybook::cli
