#include "core/document/joins/Joins.h"

#include "core/calc/expressions/ExpressionEngine.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/find/CellSearch.h"
#include "core/document/joins/ExternalFiles.h"
#include "core/document/views/Sort.h"
#include "core/document/views/Views.h"
#include "document/Book.h"
#include "support/RawFile.h"

namespace tallybook::document {
namespace {

using model::FieldType;
using platform::Answer;
using test::Book;

constexpr const char* kOrders = "/home/MS2_Orders.pdb";
constexpr const char* kCustomers = "/home/MS2_Customers.pdb";
constexpr int kName = 1;
constexpr int kTown = 2;
constexpr int kNumber = 3;
constexpr int kKey = 4;

// Records 100 Ada, Rome, 7; 101 Bea, Oslo, 8; 102 Cid, -, 9.
struct Customers : Book {
    Customers() : Book(3) {
        field(kName, FieldType::Text, "Name");
        field(kTown, FieldType::Text, "Town");
        field(kNumber, FieldType::Long, "Number");
        field(kKey, FieldType::Key, "Key");
        const char* rows[][3] = {{"Ada", "Rome", "7"}, {"Bea", "Oslo", "8"}, {"Cid", "", "9"}};
        for (int record = 0; record < 3; ++record)
            for (int slot = kName; slot <= kNumber; ++slot)
                set(record, slot, rows[record][slot - 1]);
    }
};

// Orders with a join in slot 1 on the customers' record keys that shows the name.
struct Orders : Book {
    explicit Orders(const std::vector<std::string>& keys) : Book(static_cast<int>(keys.size())) {
        join(1, "Customer", "Customers", kKey, kName);
        for (std::size_t record = 0; record < keys.size(); ++record)
            key(static_cast<int>(record), 1, keys[record]);
    }
};

struct Joins : testing::Test {
    Joins() {
        for (const char* folder : {"/app/Backup", "/app/Temp", "/home"})
            t.files.addFolder(folder);
    }

    Outcome open(Book& orders) {
        orders.write(t, kOrders);
        return reopen();
    }
    Outcome reopen() {
        doc = std::make_unique<model::Document>();
        return OpenDatabase(*doc, t, kOrders);
    }
    std::string cell(int record, int slot) const {
        return doc->grd.text(record + model::kFirstDataRow, model::columnOfSlot(slot));
    }
    std::vector<std::string> column(int slot) const {
        std::vector<std::string> texts;
        for (int record = 0; record < doc->NumDataRecs; ++record)
            texts.push_back(cell(record, slot));
        return texts;
    }
    std::string key(int record, int slot) const {
        std::string scratch;
        return std::string(doc->CellVals.get(record, slot, scratch));
    }
    static std::string missing(const std::string& name, const std::string& field) {
        return "Cannot find external database " + name + ". External references for field \"" + field +
               "\" will not be displayed";
    }

    test::TestServices t;
    std::unique_ptr<model::Document> doc;
};

using Texts = std::vector<std::string>;

TEST_F(Joins, cellShowsTheFieldOfTheRecordThatHasTheKey) {
    Customers().write(t, kCustomers);
    Orders orders({"102", "100"});
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(column(1), (Texts{"Cid", "Ada"}));
    EXPECT_EQ(key(0, 1), "102");
    EXPECT_FALSE(doc->DocModified);
    EXPECT_TRUE(doc->GridReady);
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_TRUE(t.user.atRest());
}

TEST_F(Joins, recordWithoutAMatchKeepsItsKeyOnShow) {
    Customers().write(t, kCustomers);
    Orders orders({"7", "", "101"});
    orders.lookup(2, "Town", "Customers", 1, kTown);
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(column(1), (Texts{"7", "", "Bea"}));
    EXPECT_EQ(column(2), (Texts{"", "", "Oslo"}));
}

TEST_F(Joins, everyLookupHasItsOwnColumn) {
    Customers().write(t, kCustomers);
    Orders orders({"101", "102"});
    orders.lookup(2, "Town", "Customers", 1, kTown);
    orders.lookup(5, "Number", "Customers", 1, kNumber);
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(column(1), (Texts{"Bea", "Cid"}));
    EXPECT_EQ(column(2), (Texts{"Oslo", ""}));
    EXPECT_EQ(column(5), (Texts{"8", "9"}));
}

TEST_F(Joins, lookupFollowsTheJoinOfItsSlotAndSource) {
    Customers().write(t, kCustomers);
    Orders orders({"100"});
    orders.join(2, "Other", "Customers", kKey, kTown);
    orders.key(0, 2, "101");
    orders.lookup(3, "Of the other", "Customers", 2, kName);
    orders.lookup(4, "Of another source", "MS2_Customers", 1, kName);
    orders.lookup(5, "Of no join", "Customers", 9, kName);
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(cell(0, 1), "Ada");
    EXPECT_EQ(cell(0, 2), "Oslo");
    EXPECT_EQ(cell(0, 3), "Bea");
    EXPECT_EQ(cell(0, 4), "");
    EXPECT_EQ(cell(0, 5), "");
}

// Keys by their type. The other database has one field with these texts, record by record.
struct KeyCase {
    const char* rule;
    FieldType keyType;
    FieldType otherType;
    Texts keys;
    const char* stored;
    const char* shown; // "at N" for record N of the other database, else the stored key
};

const KeyCase kKeyCases[] = {
    {"a text is the same text", FieldType::Text, FieldType::Text, {"b", "a"}, "a", "at 1"},
    {"letter case counts", FieldType::Text, FieldType::Text, {"A"}, "a", "a"},
    {"blanks count", FieldType::Text, FieldType::Text, {"a "}, "a", "a"},
    {"a text is no number", FieldType::Text, FieldType::Text, {"07", "7.0", "7"}, "7", "at 2"},
    {"an empty text is the same as an empty key", FieldType::Text, FieldType::Text, {"a", ""}, "", "at 1"},
    {"a text may be the text of a number", FieldType::Text, FieldType::Long, {"8", "7"}, "7", "at 1"},
    {"a number is the same number", FieldType::Long, FieldType::Long, {"8", "-7"}, "-7", "at 1"},
    {"an integer", FieldType::Integer, FieldType::Integer, {"8", "7"}, "7", "at 1"},
    {"an auto incremental", FieldType::AutoIncremental, FieldType::AutoIncremental, {"8", "7"}, "7", "at 1"},
    {"a number in a text", FieldType::Long, FieldType::Text, {"x", "7.0"}, "7", "at 1"},
    {"a fraction is another number", FieldType::Long, FieldType::Text, {"7.5"}, "7", "7"},
    {"no number is no match", FieldType::Long, FieldType::Text, {"x", ""}, "7", "7"},
    {"an empty key is not 0", FieldType::Long, FieldType::Long, {"", "0"}, "0", "0"},
    {"a key field's value as it stands", FieldType::Key, FieldType::Long, {"8", "7"}, "7", "at 1"},
    {"a key's text is compared", FieldType::Key, FieldType::Text, {"7.0", "7"}, "7", "at 1"},
    {"the first of several", FieldType::Long, FieldType::Long, {"8", "7", "7"}, "7", "at 1"},
    {"the first of several texts", FieldType::Text, FieldType::Text, {"7", "7"}, "7", "at 0"},
    {"a checkbox is y", FieldType::Text, FieldType::Checkbox, {"n", "y"}, "y", "at 1"},
};

TEST_F(Joins, keysMatchByTheirType) {
    for (const KeyCase& c : kKeyCases) {
        SCOPED_TRACE(c.rule);
        Book other(static_cast<int>(c.keys.size()));
        other.field(1, c.otherType, "Key");
        other.field(2, FieldType::Text, "Shown");
        for (std::size_t record = 0; record < c.keys.size(); ++record) {
            if (c.otherType != FieldType::Checkbox)
                other.set(static_cast<int>(record), 1, c.keys[record]);
            else if (c.keys[record] == "y")
                other.check(static_cast<int>(record), 1);
            other.set(static_cast<int>(record), 2, "at " + std::to_string(record));
        }
        other.write(t, kCustomers);
        Book orders(1);
        orders.join(1, "Customer", "Customers", 1, 2, c.keyType);
        orders.key(0, 1, c.stored);
        ASSERT_EQ(open(orders), Outcome::Done);
        EXPECT_EQ(cell(0, 1), c.shown);
        EXPECT_EQ(key(0, 1), c.stored);
    }
}

TEST_F(Joins, keyOfAnUnknownTypeHasNoMatch) {
    Customers().write(t, kCustomers);
    Orders orders({"100"});
    ASSERT_EQ(open(orders), Outcome::Done);
    doc->CurrDB20.Externals[1].KeyType = 5;
    doc->grd.setText(2, 2, "100");
    loadExternalData(*doc, t);
    EXPECT_EQ(cell(0, 1), "100");
}

// What the cell shows by the type of the other field.
struct ShownCase {
    FieldType type;
    const char* text; // as the other grid has it
    const char* shown;
};

TEST_F(Joins, otherFieldsAreShownAsTheirOwnGridShowsThem) {
    const ShownCase cases[] = {
        {FieldType::Text, "caf\xE9", "caf\xE9"},
        {FieldType::Memo, "two\nlines", "two\nlines"},
        {FieldType::Integer, "-12", "-12"},
        {FieldType::Float, "1.50", "1.50"},
        {FieldType::Date, "1/2/2003", "1/2/2003"},
        {FieldType::Time, "1:05:09 PM", "1:05:09 PM"},
        {FieldType::Key, "", "100"},
        {FieldType::AutoIncremental, "3", "3"},
        {FieldType::Expression, "2.50", "2.50"}, // as it stands in the file
        {FieldType::ConditionalExpression, "Low", "Low"},
        {FieldType::AddressBookLookup, "Rome", "Rome"},
        {FieldType::DBLookup, "gone", ""}, // not stored
        {FieldType::Plugin, "gone", ""},
    };
    for (const ShownCase& c : cases) {
        SCOPED_TRACE(model::fieldTypeName(c.type));
        Book other(1);
        other.field(1, c.type, "Shown").Decimals = 2;
        other.field(2, FieldType::Key, "Key");
        other.set(0, 1, c.text);
        other.write(t, kCustomers);
        Book orders(1);
        orders.join(1, "Customer", "Customers", 2, 1);
        orders.key(0, 1, "100");
        ASSERT_EQ(open(orders), Outcome::Done);
        EXPECT_EQ(cell(0, 1), c.shown);
    }
}

TEST_F(Joins, checkboxOfTheOtherDatabaseIsALetter) {
    Book other(2);
    other.field(1, FieldType::Checkbox, "Paid");
    other.field(kKey, FieldType::Key, "Key");
    other.check(1, 1);
    other.write(t, kCustomers);
    Orders orders({"100", "101"});
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(column(1), (Texts{"n", "y"}));
}

TEST_F(Joins, listItemIsItsTextOrItsNumber) {
    Book other(3);
    other.field(1, FieldType::List, "Kind");
    other.item(1, 4, "Retail");
    other.field(kKey, FieldType::Key, "Key");
    other.setItem(0, 1, 4);
    other.setItem(1, 1, 9); // was taken off the list
    other.write(t, kCustomers);
    Orders orders({"100", "101", "102"});
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(column(1), (Texts{"Retail", "9", ""}));
}

TEST_F(Joins, imageIsShownByItsMark) {
    Orders orders({"100"});
    Book images(1);
    images.field(1, FieldType::Image, "Photo");
    images.field(kKey, FieldType::Key, "Key");
    platform::Bytes bytes = images.bytes(t);
    // The record's end mark gives way to a cell of a picture: type 18, slot 1, a word of 1 and its two zero bytes.
    bytes.resize(bytes.size() - 2);
    for (const std::uint8_t byte : {18, 1, 0, 1, 0, 0, 0, 0})
        bytes.push_back(byte);
    t.files.put(kCustomers, bytes);
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(cell(0, 1), "{image}");
}

TEST_F(Joins, otherDatabasesOwnJoinShowsItsKey) {
    Book other(1);
    other.join(1, "Agent", "Orders", 1, 1); // leads back here
    other.field(kKey, FieldType::Key, "Key");
    other.key(0, 1, "55");
    other.write(t, kCustomers);
    Orders orders({"100"});
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(cell(0, 1), "55");
}

TEST_F(Joins, databaseMayJoinItself) {
    Book people(2);
    people.join(1, "Manager", "Orders", 3, 2);
    people.field(2, FieldType::Text, "Name");
    people.field(3, FieldType::Key, "Key");
    people.set(0, 2, "Ada");
    people.set(1, 2, "Bea");
    people.key(0, 1, "101");
    people.key(1, 1, "101");
    ASSERT_EQ(open(people), Outcome::Done);
    EXPECT_EQ(column(1), (Texts{"Bea", "Bea"}));
}

TEST_F(Joins, calculatedFieldsSeeJoinedTexts) {
    Customers().write(t, kCustomers);
    Orders orders({"101"});
    orders.field(2, FieldType::AdvExpression, "Twice");
    std::array<std::string, calc::kFieldEntries> names;
    names[1] = "Customer";
    model::ExprDef& expression = orders.doc.CurrDB20.Expressions[2];
    calc::CompileError error;
    ASSERT_EQ(calc::Compile("[Customer] + '!'", names, expression.Tokens, expression.TokenTexts, error), 0)
        << error.text;
    expression.ResultType = 13;
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(cell(0, 2), "Bea!");
}

TEST_F(Joins, savingStoresTheKeysAlone) {
    Customers().write(t, kCustomers);
    Orders orders({"101", "7"});
    orders.lookup(2, "Town", "Customers", 1, kTown);
    ASSERT_EQ(open(orders), Outcome::Done);
    const platform::Bytes before = t.files.bytes(kOrders);
    const platform::Bytes others = t.files.bytes(kCustomers);
    ASSERT_EQ(savePDBFile20(*doc, t, kOrders), Outcome::Done);
    EXPECT_EQ(t.files.bytes(kOrders), before);
    EXPECT_EQ(t.files.bytes(kCustomers), others);
}

TEST_F(Joins, joinedTextsAreSortedAndFound) {
    Customers().write(t, kCustomers);
    Orders orders({"102", "100", "101"});
    ASSERT_EQ(open(orders), Outcome::Done);
    CellSearch search(*doc, {.text = "bea"});
    const auto found = search.next({model::kFirstDataRow, 0}, true);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->row, 4);
    EXPECT_EQ(found->col, 2);
    SortGrid(*doc, t, 1, SortDirection::Ascending);
    EXPECT_EQ(column(1), (Texts{"Ada", "Bea", "Cid"}));
    EXPECT_EQ(key(0, 1), "100");
}

TEST_F(Joins, viewShowsJoinedTexts) {
    Customers().write(t, kCustomers);
    Orders orders({"102", "100"});
    orders.view(0, "Names", {{1, 50}});
    ASSERT_EQ(open(orders), Outcome::Done);
    SetViewFilter(*doc, t, "Names", kNoFilter);
    EXPECT_EQ(doc->ViewGrd.text(2, 1), "Cid");
    EXPECT_EQ(doc->ViewGrd.text(3, 1), "Ada");
}

// The other file

TEST_F(Joins, missingDatabaseGivesOneMessageForEachJoin) {
    Orders orders({"100"});
    orders.join(2, "Agent", "MS2_Agents.PDB", 1, 1);
    orders.lookup(3, "Town", "Customers", 1, kTown);
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(t.user.texts(), (Texts{missing("MS2_Customers.pdb", "Customer"), missing("MS2_Agents.PDB", "Agent")}));
    EXPECT_EQ(t.user.messages[0].icon, platform::Icon::Critical);
    EXPECT_EQ(cell(0, 1), "100");
}

TEST_F(Joins, oneMissingDatabaseLeavesTheOthersJoined) {
    Customers().write(t, kCustomers);
    Orders orders({"100"});
    orders.join(2, "Agent", "Agents", 1, 1);
    orders.key(0, 2, "5");
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(cell(0, 1), "Ada");
    EXPECT_EQ(cell(0, 2), "5");
}

TEST_F(Joins, deletedDatabaseLeavesAnOpenWindowAsItIs) {
    Customers().write(t, kCustomers);
    Orders orders({"101"});
    orders.lookup(2, "Town", "Customers", 1, kTown);
    ASSERT_EQ(open(orders), Outcome::Done);
    ASSERT_TRUE(t.files.remove(kCustomers));
    EXPECT_EQ(cell(0, 1), "Bea");
    EXPECT_EQ(cell(0, 2), "Oslo");
}

TEST_F(Joins, databaseWithoutRecordsJoinsNothing) {
    Book other;
    other.field(kName, FieldType::Text, "Name");
    other.field(kKey, FieldType::Key, "Key");
    other.write(t, kCustomers);
    Orders orders({"100"});
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(cell(0, 1), "100");
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(Joins, joinsIntoOneFileReadItOnce) {
    Customers().write(t, kCustomers);
    Orders orders({"100"});
    ASSERT_EQ(open(orders), Outcome::Done);
    const int before = t.files.calls();
    loadExternalData(*doc, t);
    const int one = t.files.calls() - before;
    doc->CurrDB20.Fields[2].Type = FieldType::DBLookup;
    doc->CurrDB20.Externals[2] = {"Customers", 1, kTown};
    loadExternalData(*doc, t);
    EXPECT_EQ(t.files.calls() - before, 2 * one);
    EXPECT_EQ(cell(0, 2), "Rome");
}

TEST_F(Joins, progressIsShownWhileTheOtherDatabaseIsRead) {
    Customers().write(t, kCustomers);
    Orders orders({"100"});
    ASSERT_EQ(open(orders), Outcome::Done);
    const test::ScriptedUser::Progress expected{"Reading external references...", 0, 3};
    EXPECT_TRUE(std::count(t.user.progresses.begin(), t.user.progresses.end(), expected) == 1);
}

TEST_F(Joins, invalidDatabaseIsAskedAboutWithNoAsTheDefault) {
    t.files.put(kCustomers, platform::Bytes(40));
    Orders orders({"100"});
    t.user.answers = {Answer::No};
    ASSERT_EQ(open(orders), Outcome::Done);
    ASSERT_EQ(t.user.messages.size(), 1U);
    EXPECT_EQ(t.user.messages[0].text,
              "The Tallybook /home/MS2_Customers.pdb is invalid.  Would you like to delete it?");
    EXPECT_EQ(t.user.messages[0].buttons, platform::Buttons::YesNo);
    EXPECT_EQ(t.user.messages[0].preferred, Answer::No);
    EXPECT_TRUE(t.files.has(kCustomers));
    EXPECT_EQ(cell(0, 1), "100");
}

TEST_F(Joins, invalidDatabaseGoesToTheTrash) {
    t.files.put(kCustomers, platform::Bytes(40));
    Orders orders({"100"});
    t.user.answers = {Answer::Yes};
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_FALSE(t.files.has(kCustomers));
    EXPECT_EQ(t.files.trash(), std::vector<std::filesystem::path>{kCustomers});
}

TEST_F(Joins, foreignFileIsInvalid) {
    Customers other;
    platform::Bytes bytes = other.bytes(t);
    bytes[64] = 'X'; // of the creator
    t.files.put(kCustomers, bytes);
    Orders orders({"100"});
    t.user.answers = {Answer::No};
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(t.user.messages.size(), 1U);
}

TEST_F(Joins, brokenRecordIsReportedAndTheDocumentOpens) {
    Customers other;
    platform::Bytes bytes = other.bytes(t);
    bytes.resize(bytes.size() - 1);
    const std::size_t last = 78 + 8 * 89; // the entry of the last record: it starts behind the end
    bytes[last] = 0x7F;
    t.files.put(kCustomers, bytes);
    Orders orders({"100"});
    t.user.errorAnswers = {platform::ErrorAnswer::GoOn};
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_EQ(cell(0, 1), "100");
}

TEST_F(Joins, sourceThatIsAPathIsNotFollowed) {
    t.files.addFolder("/home/sub");
    t.files.addFolder("/else");
    for (const char* path : {"/home/sub/MS2_Customers.pdb", "/else/MS2_Customers.pdb", "/MS2_Customers.pdb"})
        Customers().write(t, path);
    for (const char* source : {"sub/MS2_Customers", "sub\\MS2_Customers", "../MS2_Customers", "..\\MS2_Customers",
                               "/else/MS2_Customers.pdb", "..", ".", "/", "\\"}) {
        SCOPED_TRACE(source);
        t.user.messages.clear();
        Orders orders({"100"});
        orders.doc.CurrDB20.Externals[1].Source = source;
        ASSERT_EQ(open(orders), Outcome::Done);
        EXPECT_EQ(t.user.messages.size(), 1U);
        EXPECT_EQ(cell(0, 1), "100");
    }
}

TEST_F(Joins, folderIsNoDatabase) {
    t.files.addFolder(kCustomers);
    Orders orders({"100"});
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(t.user.texts(), (Texts{missing("MS2_Customers.pdb", "Customer")}));
}

TEST_F(Joins, joinWithoutASourceOrAKeyFieldIsLeftAlone) {
    Customers().write(t, kCustomers);
    Orders orders({"100"});
    orders.doc.CurrDB20.Externals[1].Source.clear();
    orders.join(2, "No key", "Customers", 0, kName);
    orders.key(0, 2, "101");
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_EQ(cell(0, 1), "100");
    EXPECT_EQ(cell(0, 2), "101");
}

TEST_F(Joins, fieldsThatTheOtherDatabaseDoesNotHaveShowNothing) {
    Customers().write(t, kCustomers);
    for (const int gone : {20, 81, 82, 255}) {
        SCOPED_TRACE(gone);
        Orders orders({"100"});
        orders.doc.CurrDB20.Externals[1].MatchField = static_cast<std::uint8_t>(gone);
        orders.join(2, "Gone key", "Customers", gone, kName);
        orders.key(0, 2, "100");
        orders.lookup(3, "Gone lookup", "Customers", 1, gone);
        ASSERT_EQ(open(orders), Outcome::Done);
        EXPECT_EQ(cell(0, 1), "");
        EXPECT_EQ(key(0, 1), "100");
        EXPECT_EQ(cell(0, 2), "100");
        EXPECT_EQ(cell(0, 3), "");
    }
}

struct NameCase {
    const char* source;
    const char* file;
};

TEST_F(Joins, sourceNamesTheFileInManyWays) {
    const NameCase cases[] = {
        {"Customers", "MS2_Customers.pdb"},       {"MS2_Customers", "MS2_Customers.pdb"},
        {"Customers.pdb", "MS2_Customers.pdb"},   {"Customers.PDB", "MS2_Customers.pdb"},
        {"customers", "MS2_Customers.pdb"},       {"ms2_customers", "MS2_CUSTOMERS.PDB"},
        {"My Customers", "MS2_My_Customers.pdb"}, {"MS2_My Customers", "MS2_My_Customers.pdb"},
        {"My Customers", "MS2_My Customers.pdb"}, // as other programs write it
        {"Caf\xE9", "MS2_Caf\xC3\xA9.pdb"},
    };
    for (const NameCase& c : cases) {
        SCOPED_TRACE(std::string(c.source) + " " + c.file);
        const std::filesystem::path path = std::filesystem::path("/home") / c.file;
        Customers().write(t, path);
        Orders orders({"100"});
        orders.doc.CurrDB20.Externals[1].Source = c.source;
        ASSERT_EQ(open(orders), Outcome::Done);
        EXPECT_EQ(cell(0, 1), "Ada");
        ASSERT_TRUE(t.files.remove(path));
    }
}

TEST_F(Joins, olderFileIsNotFoundThroughANameWithoutPrefix) {
    t.files.put("/home/MSA_Customers.pdb", platform::Bytes(40));
    EXPECT_FALSE(findExternalFile(t.files, "/home", "Customers", OlderFiles::No));
    EXPECT_EQ(findExternalFile(t.files, "/home", "Customers", OlderFiles::Yes), "/home/MSA_Customers.pdb");
    EXPECT_EQ(findExternalFile(t.files, "/home", "MSA_Customers", OlderFiles::No), "/home/MSA_Customers.pdb");
    Customers().write(t, kCustomers);
    EXPECT_EQ(findExternalFile(t.files, "/home", "Customers", OlderFiles::Yes), kCustomers);
}

TEST_F(Joins, databaseWithoutAFolderJoinsNothing) {
    EXPECT_FALSE(findExternalFile(t.files, "", "Customers", OlderFiles::No));
}

// Numbers of records

TEST_F(Joins, recordsOfTheOtherFileAreCounted) {
    Customers().write(t, kCustomers);
    EXPECT_EQ(getNumberRecs(t.files, "/home", "Customers"), 3);
    EXPECT_EQ(getNumberRecs(t.files, "/home", "Suppliers"), 0);
    platform::Bytes bytes = t.files.bytes(kCustomers);
    bytes[78 + 8 * 88 + 4] |= 0x80; // the second data record is marked as deleted
    t.files.put(kCustomers, bytes);
    EXPECT_EQ(getNumberRecs(t.files, "/home", "Customers"), 2);
    bytes[64] = 'X';
    t.files.put(kCustomers, bytes);
    EXPECT_EQ(getNumberRecs(t.files, "/home", "Customers"), kInvalidDatabase);
    t.files.put(kCustomers, platform::Bytes(77));
    EXPECT_EQ(getNumberRecs(t.files, "/home", "Customers"), kInvalidDatabase);
}

TEST_F(Joins, olderFileHasFortyFixedRecords) {
    test::RawFile older;
    older.creator = "MOSA";
    t.files.put("/home/MSA_Old.pdb", older.bytes()); // 87 records
    EXPECT_EQ(getNumberRecs(t.files, "/home", "Old"), 47);
}

TEST_F(Joins, deletedRecordOfTheOtherFileIsNotJoined) {
    Customers().write(t, kCustomers);
    platform::Bytes bytes = t.files.bytes(kCustomers);
    bytes[78 + 8 * 88 + 4] |= 0x80;
    t.files.put(kCustomers, bytes);
    Orders orders({"101", "102"});
    ASSERT_EQ(open(orders), Outcome::Done);
    EXPECT_EQ(column(1), (Texts{"101", "Cid"}));
}

// Editing

struct TypedJoins : Joins {
    // A join that shows names, with a lookup; records 0 to 2 have the keys of the customers.
    void openOrders(int displayField) {
        Customers().write(t, kCustomers);
        Orders orders({"100", "101", "102"});
        orders.doc.CurrDB20.Externals[1].MatchField = static_cast<std::uint8_t>(displayField);
        orders.lookup(2, "Number", "Customers", 1, kNumber);
        ASSERT_EQ(open(orders), Outcome::Done);
    }
    // Into Text1 of the join of a record.
    void type(int record, const std::string& text) {
        doc->grd.setCell(record + model::kFirstDataRow, model::columnOfSlot(1));
        doc->editor.kind = model::EditorKind::Text1;
        doc->editor.row = doc->grd.row();
        doc->editor.col = doc->grd.col();
        doc->editor.text = text;
        saveCell(*doc, t);
    }
};

TEST_F(TypedJoins, joinWithoutADisplayFieldIsTypedIn) {
    openOrders(0);
    EXPECT_EQ(column(1), (Texts{"100", "101", "102"}));
    EXPECT_EQ(column(2), (Texts{"7", "8", "9"}));
    doc->grd.setCell(3, model::columnOfSlot(1));
    EXPECT_EQ(GridEdit(*doc, t, kKeyBlank).open, EditAction::Open::CellEditor);
    EXPECT_EQ(doc->editor.kind, model::EditorKind::Text1);
    EXPECT_EQ(doc->editor.text, "101");
    doc->editor.text = "102";
    saveCell(*doc, t);
    EXPECT_EQ(cell(1, 1), "102");
    EXPECT_EQ(key(1, 1), "102");
    EXPECT_EQ(cell(1, 2), ""); // no display text is like it
    EXPECT_TRUE(doc->DocModified);
}

TEST_F(TypedJoins, displayTextStoresTheKeyOfItsRecord) {
    openOrders(kName);
    type(0, "Cid");
    EXPECT_EQ(cell(0, 1), "Cid");
    EXPECT_EQ(key(0, 1), "102");
    EXPECT_EQ(cell(0, 2), "9");
    EXPECT_TRUE(doc->DocModified);
}

TEST_F(TypedJoins, displayTextOfTheFirstRecordErasesLookups) {
    openOrders(kName);
    doc->CellLongs.set(1, 1, 5);
    type(1, "Ada");
    EXPECT_EQ(cell(1, 1), "Ada");
    EXPECT_EQ(key(1, 1), "100");
    EXPECT_EQ(cell(1, 2), "");
    EXPECT_EQ(doc->CellLongs.get(1, 1), 0);
    EXPECT_EQ(cell(0, 2), "7"); // of another record
}

TEST_F(TypedJoins, anyOtherTextIsTheKeyItself) {
    openOrders(kName);
    type(1, "ada");
    EXPECT_EQ(cell(1, 1), "ada");
    EXPECT_EQ(key(1, 1), "ada");
    EXPECT_EQ(cell(1, 2), "");
}

TEST_F(TypedJoins, emptiedCellHasNoKey) {
    openOrders(kName);
    type(1, "");
    EXPECT_EQ(cell(1, 1), "");
    EXPECT_EQ(key(1, 1), "");
    EXPECT_EQ(cell(1, 2), "");
    EXPECT_TRUE(doc->DocModified);
}

TEST_F(TypedJoins, typedKeyIsJoinedWhenTheFileIsOpenedAgain) {
    openOrders(0);
    type(0, "101");
    ASSERT_EQ(saveDocument(*doc, t), Outcome::Done);
    ASSERT_EQ(reopen(), Outcome::Done);
    EXPECT_EQ(cell(0, 1), "101");
    EXPECT_EQ(cell(0, 2), "8");
}

TEST_F(TypedJoins, lookupsOfARowThatIsNotThereBecomeEmpty) {
    openOrders(kName);
    getLookups(*doc, 1, 3, 0);
    EXPECT_EQ(cell(0, 2), "");
    getLookups(*doc, 1, 0, 2);
    EXPECT_EQ(cell(2, 2), "7");
    eraseLookups(*doc, 1, 2);
    EXPECT_EQ(cell(2, 2), "");
    EXPECT_EQ(cell(1, 2), "8");
}

TEST(ShownPart, endsAtTheCharacterThatPartsColumns) {
    EXPECT_EQ(shownPart("Louys"), "Louys");
    EXPECT_EQ(shownPart("Lou\xFFs"), "Lou");
    EXPECT_EQ(shownPart("\xFF"), "");
}

} // namespace
} // namespace tallybook::document
