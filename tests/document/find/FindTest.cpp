#include "core/document/find/Find.h"

#include "core/calc/values/Text.h"
#include "core/document/find/CellSearch.h"
#include "core/document/views/Sort.h"
#include "document/DocumentFixture.h"
#include "support/Records.h"

#include <random>

namespace tallybook::document {
namespace {

using model::FieldType;
using Cell = std::pair<int, int>; // record and slot
using Cells = std::vector<Cell>;
constexpr bool kForward = true;
constexpr bool kBackward = false;

FindSettings plain(const std::string& text) {
    return {.text = text};
}
FindSettings exact(const std::string& text) {
    return {.text = text, .chkCase = true};
}
FindSettings word(const std::string& text) {
    return {.text = text, .chkWholeWord = true};
}
FindSettings expression(const std::string& text) {
    return {.text = text, .chkExpression = true};
}

struct MatchRow {
    FindSettings settings;
    const char* text;
    bool matches;
};

TEST(MatchCell, tellsWhetherTheTextIsInTheCell) {
    const FindSettings exactWord{.text = "an", .chkCase = true, .chkWholeWord = true};
    const FindSettings exactExpression{.text = "A*+b", .chkCase = true, .chkExpression = true};
    const MatchRow rows[] = {
        {plain("AN"), "banana", true},
        {plain("an"), "b\xC1n", false},
        {plain("\xE9t"), "\xC9T\xC9", true},
        {exact("AN"), "banana", false},
        {exact("an"), "banana", true},
        {plain("a+b"), "aa+bb", true}, // without the expression box "+" is a character
        {plain("a+b"), "a", false},
        {plain("a*"), "abc", false},
        {word("an"), "banana", false},
        {word("an"), "an apple", true},
        {word("an"), "such AN", true},
        {word("an"), "banana an", true}, // behind two hits that are no words
        {word("an"), "(an)", true},
        {word("an"), "an_apple", true}, // only letters and digits belong to a word
        {word("an"), "an1", false},
        {word("an"), "9an", false},
        {word("an"),
         "\xE9"
         "an\xE9",
         true}, // and only those of ASCII
        {word("an"), "anan", false},
        {word("an an"), "an an an", true},
        {word("aa"), "aaa aa", true},
        {word("aa"), "aaaa", false},
        {word("+"), "a+b", false},
        {word("+"), "a + b", true},
        {exactWord, "AN", false},
        {exactWord, "an", true},
        {exactExpression, "Abc", true},
        {exactExpression, "abc", false},
        {exactExpression, "b", true},
        {expression("A*"), "abc", false}, // the expression alone minds the case
    };
    for (const MatchRow& row : rows)
        EXPECT_EQ(MatchCell(row.text, row.settings), row.matches)
            << '"' << row.settings.text << "\" in \"" << row.text << '"';
}

TEST(ExpressionMatch, takesThePartsBetweenPlusSignsAsAlternatives) {
    struct Row {
        const char* patterns;
        const char* text;
        bool exact;
        bool folded;
    };
    const Row rows[] = {
        {"a+b", "a", true, true},
        {"a+b", "b", true, true},
        {"a+b", "a+b", false, false},
        {"a+b", "ab", false, false},
        {"a+b", "A", false, true},
        {"a", "abc", false, false}, // the whole cell
        {"*b*", "abc", true, true},
        {"?b?", "abc", true, true},
        {"##", "12", true, true},
        {"##", "123", false, false},
        {"[a-c]x", "bx", true, true},
        {"[a-c]x", "BX", false, true},
        {"[!a-c]x", "bx", false, false},
        {"[a+b", "b", true, true}, // the sign divides inside brackets too; "[a"
                                   // matches nothing
        {"a+", "", true, true},    // the empty part matches the empty cell
        {"+", "", true, true},
        {"a", "", false, false},
        {"*", "", true, true},
        {"x+y+z*", "zebra", true, true},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ExpressionMatch(row.text, row.patterns), row.exact) << row.patterns << " / " << row.text;
        EXPECT_EQ(ExpressionMatchText(row.text, row.patterns), row.folded) << row.patterns << " / " << row.text;
    }
}

struct Find : test::DocumentFixture {
    // Two text fields with a free slot between them; slot 0 is the category.
    void texts(const std::vector<std::pair<std::string, std::string>>& rows) {
        field(1, FieldType::Text, "First");
        field(3, FieldType::Text, "Third");
        records(static_cast<int>(rows.size()));
        for (std::size_t record = 0; record < rows.size(); ++record) {
            setCell(static_cast<int>(record), 1, rows[record].first);
            setCell(static_cast<int>(record), 3, rows[record].second);
        }
        go(0, 0);
    }

    // Where repeated searches lead, one after the other.
    Cells walk(const FindSettings& settings, bool forward) {
        Cells cells;
        while (FindText(doc, t, settings, forward) && cells.size() < 1000)
            cells.push_back(at());
        return cells;
    }
};

TEST_F(Find, goesRowByRowFromTheCellBehindTheCurrentOne) {
    texts({{"x", "x"}, {"a", "x"}, {"x", ""}});
    EXPECT_EQ(walk(plain("X"), kForward), (Cells{{0, 1}, {0, 3}, {1, 3}, {2, 1}}));
    go(0, 3);
    EXPECT_EQ(walk(plain("X"), kForward), (Cells{{1, 3}, {2, 1}}));
}

TEST_F(Find, goesBackwardFromTheCellAheadOfTheCurrentOne) {
    texts({{"x", "x"}, {"a", "x"}, {"x", ""}});
    go(2, 80);
    EXPECT_EQ(walk(plain("x"), kBackward), (Cells{{2, 1}, {1, 3}, {0, 3}, {0, 1}}));
    go(1, 3);
    EXPECT_EQ(walk(plain("x"), kBackward), (Cells{{0, 3}, {0, 1}}));
}

TEST_F(Find, doesNotBeginAgainAtTheOtherEnd) {
    texts({{"x", ""}, {"", ""}});
    go(1, 1);
    EXPECT_FALSE(FindText(doc, t, plain("x"), kForward));
    EXPECT_EQ(at(), Cell(1, 1));
    EXPECT_TRUE(t.user.messages.empty());
    go(0, 0);
    EXPECT_FALSE(FindText(doc, t, plain("x"), kBackward));
}

TEST_F(Find, searchesTheFirstCellItselfWithoutACurrentOne) {
    texts({{"x", ""}});
    setCell(0, 0, "x too");
    doc.grd.setCell(0, 0);
    EXPECT_TRUE(FindText(doc, t, plain("x"), kForward));
    EXPECT_EQ(at(), Cell(0, 0));
    doc.grd.setCell(2, 0);
    EXPECT_TRUE(FindText(doc, t, plain("x"), kForward));
    EXPECT_EQ(at(), Cell(0, 0));
    doc.grd.setCell(1, 5);
    EXPECT_TRUE(FindText(doc, t, plain("x"), kBackward));
    EXPECT_EQ(at(), Cell(0, 0));
    setCell(0, 0, "");
    doc.grd.setCell(0, 0);
    EXPECT_FALSE(FindText(doc, t, plain("x"), kBackward));
}

TEST_F(Find, searchesRowsThatAFilterHides) {
    texts({{"a", ""}, {"x", ""}});
    doc.grd.setRowHeight(3, 0);
    EXPECT_TRUE(FindText(doc, t, plain("x"), kForward));
    EXPECT_EQ(at(), Cell(1, 1));
    EXPECT_EQ(doc.grd.rowHeight(3), 0);
}

TEST_F(Find, checkBoxesAndFreeSlotsHaveNoText) {
    texts({{"a", "b"}});
    field(2, FieldType::Checkbox);
    doc.grd.setPicture(2, 3, model::Picture::CheckOn);
    EXPECT_FALSE(FindText(doc, t, plain("Y"), kForward));
    setCell(0, 4, "left behind by a field that is gone");
    EXPECT_EQ(walk(expression("*"), kForward), (Cells{{0, 1}, {0, 3}}));
}

TEST_F(Find, readsEveryKindOfCellAsItIsShown) {
    field(1, FieldType::Integer);
    field(2, FieldType::Float).Decimals = 2;
    field(3, FieldType::Date);
    field(4, FieldType::Time);
    field(5, FieldType::List);
    field(6, FieldType::Memo);
    records(1);
    const char* shown[] = {"Unfiled", "-120", "3.50", "12/31/2003", "1:05:09 PM", "Novel", "one\ntwo"};
    for (int slot = 0; slot <= 6; ++slot)
        setCell(0, slot, shown[slot]);
    const std::pair<const char*, int> sought[] = {
        {"FILED", 0}, {"-12", 1}, {".5", 2}, {"2/31", 3}, {"pm", 4}, {"09 P", 4}, {"nov", 5}, {"\nt", 6},
    };
    for (const auto& [text, slot] : sought) {
        doc.grd.setCell(0, 0);
        EXPECT_TRUE(FindText(doc, t, plain(text), kForward)) << text;
        EXPECT_EQ(at(), Cell(0, slot)) << text;
    }
    doc.grd.setCell(0, 0);
    EXPECT_FALSE(FindText(doc, t, exact("pm"), kForward));
    EXPECT_FALSE(FindText(doc, t, plain("3.500"), kForward));
}

TEST_F(Find, findsTextsThatHaveNotTheUsualFormOfTheirColumn) {
    field(1, FieldType::Date);
    field(2, FieldType::Integer);
    records(2);
    setCell(0, 1, "1/2/2003");
    setCell(1, 1, "someday");
    setCell(0, 2, "5");
    setCell(1, 2, "five");
    EXPECT_TRUE(FindText(doc, t, plain("SOME"), kForward));
    EXPECT_EQ(at(), Cell(1, 1));
    EXPECT_TRUE(FindText(doc, t, plain("five"), kForward));
    EXPECT_EQ(at(), Cell(1, 2));
}

TEST_F(Find, expressionsMindTheCaseOnlyWhenAsked) {
    texts({{"Abc", "abc"}});
    EXPECT_EQ(walk(expression("a*"), kForward), (Cells{{0, 1}, {0, 3}}));
    go(0, 0);
    FindSettings exactly = expression("a*");
    exactly.chkCase = true;
    EXPECT_EQ(walk(exactly, kForward), (Cells{{0, 3}}));
}

TEST_F(Find, plusMeansOrInExpressionsAlone) {
    texts({{"a", "b"}, {"a+b", "ab"}});
    EXPECT_EQ(walk(expression("a+b"), kForward), (Cells{{0, 1}, {0, 3}}));
    go(0, 0);
    EXPECT_EQ(walk(plain("a+b"), kForward), (Cells{{1, 1}}));
}

TEST_F(Find, expressionCanSeekEmptyCells) {
    texts({{"a", ""}, {"", "b"}});
    EXPECT_EQ(walk(expression("x+"), kForward), (Cells{{0, 3}, {1, 1}}));
}

TEST_F(Find, walksInTheOrderThatIsShown) {
    texts({{"x b", ""}, {"x a", ""}, {"", "x"}});
    SortGrid(doc, t, 1, SortDirection::Ascending);
    go(0, 0);
    EXPECT_EQ(walk(plain("x"), kForward), (Cells{{0, 3}, {1, 1}, {2, 1}}));
    EXPECT_EQ(cell(1, 1), "x a");
}

TEST_F(Find, openEditIsCommittedFirst) {
    texts({{"a", ""}, {"b", ""}});
    edit(0, 1);
    doc.editor.text = "x";
    EXPECT_FALSE(FindText(doc, t, plain("x"), kForward));
    EXPECT_FALSE(doc.editor.open());
    EXPECT_EQ(cell(0, 1), "x");
}

TEST_F(Find, emptyTextIsFoundNowhere) {
    texts({{"a", ""}});
    EXPECT_FALSE(FindText(doc, t, plain(""), kForward));
    EXPECT_FALSE(FindText(doc, t, word(""), kForward));
    EXPECT_FALSE(FindText(doc, t, expression(""), kForward));
    EXPECT_EQ(at(), Cell(0, 0));
}

TEST_F(Find, dialogAsksForAText) {
    texts({{"a", ""}});
    FindMemory memory;
    EXPECT_FALSE(findFromDialog(doc, t, memory, plain("")));
    EXPECT_EQ(lastMessage().text, "Please input a search text.");
    EXPECT_EQ(lastMessage().icon, platform::Icon::Information);
    EXPECT_TRUE(memory.texts.empty());
}

TEST_F(Find, dialogTellsAMiss) {
    texts({{"a", ""}});
    FindMemory memory;
    EXPECT_FALSE(findFromDialog(doc, t, memory, plain("x")));
    EXPECT_EQ(lastMessage().text, "Search string not found.");
    EXPECT_EQ(lastMessage().icon, platform::Icon::Information);
    EXPECT_EQ(memory.settings, plain("x")); // kept all the same
}

TEST_F(Find, dialogTellsAMissInAnEmptyDatabase) {
    field(1, FieldType::Text);
    records(0);
    FindMemory memory;
    EXPECT_FALSE(findFromDialog(doc, t, memory, expression("*")));
    EXPECT_EQ(lastMessage().text, "Search string not found.");
}

TEST_F(Find, dialogGoesItsOwnWay) {
    texts({{"x", "a"}, {"x", ""}});
    go(0, 3);
    FindMemory memory;
    FindSettings settings = plain("x");
    settings.optForward = false;
    EXPECT_TRUE(findFromDialog(doc, t, memory, settings));
    EXPECT_EQ(at(), Cell(0, 1));
    settings.optForward = true;
    EXPECT_TRUE(findFromDialog(doc, t, memory, settings));
    EXPECT_EQ(at(), Cell(1, 1));
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(Find, textsAreListedOnceInTheOrderOfTheirFirstUse) {
    texts({{"a", ""}});
    FindMemory memory;
    for (const char* text : {"b", "a", "b", "B"})
        findFromDialog(doc, t, memory, plain(text));
    EXPECT_EQ(memory.texts, (std::vector<std::string>{"b", "a", "B"}));
}

TEST_F(Find, nextAndPreviousRepeatTheLastSearch) {
    texts({{"x", "X"}, {"x", ""}});
    FindMemory memory;
    EXPECT_FALSE(findAgain(doc, t, memory, kForward)); // nothing was sought yet
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_TRUE(findFromDialog(doc, t, memory, exact("x")));
    EXPECT_EQ(at(), Cell(0, 1));
    EXPECT_TRUE(findAgain(doc, t, memory, kForward));
    EXPECT_EQ(at(), Cell(1, 1));
    EXPECT_TRUE(findAgain(doc, t, memory, kBackward));
    EXPECT_EQ(at(), Cell(0, 1));
    EXPECT_FALSE(findAgain(doc, t, memory, kBackward));
    EXPECT_EQ(lastMessage().text, "Search string not found.");
    EXPECT_TRUE(memory.settings.optForward);
}

// A search over many blocks of rows in any order against a plain walk over all cells.
TEST_F(Find, findsWhatAWalkOverAllCellsFinds) {
    field(1, FieldType::Text);
    field(2, FieldType::Integer);
    field(3, FieldType::List);
    field(4, FieldType::Date);
    std::mt19937 random(7);
    records(700);
    const char* words[] = {"alpha", "Beta", "gamma ray", "12", "x12", "", "pm"};
    for (int record = 0; record < 700; ++record) {
        setCell(record, 1, random() % 40 == 0 ? words[random() % std::size(words)] : "nothing here");
        setCell(record, 2, std::to_string(random() % 3000));
        setCell(record, 3, words[random() % 3]);
        setCell(record, 4, random() % 50 == 0 ? "soon" : "1/" + std::to_string(random() % 28 + 1) + "/2003");
    }
    SortGrid(doc, t, 2, SortDirection::Ascending);
    const FindSettings all[] = {plain("12"),     plain("BETA"),       word("12"),  word("gamma"),
                                exact("beta"),   plain("/12/"),       plain("so"), expression("*p*+soon"),
                                plain("absent"), expression("[A-B]*")};
    for (const FindSettings& settings : all) {
        Cells expected;
        for (int record = 0; record < 700; ++record)
            for (int slot = 0; slot <= 4; ++slot)
                if (settings.chkExpression ? ExpressionMatchText(cell(record, slot), settings.text)
                                           : MatchCell(cell(record, slot), settings))
                    expected.emplace_back(record, slot);
        CellSearch search(doc, settings);
        Cells found;
        for (auto at = search.next({model::kFirstDataRow, 0}, kForward); at; at = search.next(*at, kForward))
            found.emplace_back(at->row - model::kFirstDataRow, model::slotOfColumn(at->col));
        EXPECT_EQ(found, expected) << settings.text;
        found.clear();
        for (auto at = search.next({doc.grd.rows(), 0}, kBackward); at; at = search.next(*at, kBackward))
            found.emplace_back(at->row - model::kFirstDataRow, model::slotOfColumn(at->col));
        std::reverse(found.begin(), found.end());
        EXPECT_EQ(found, expected) << settings.text;
    }
}

} // namespace
} // namespace tallybook::document
