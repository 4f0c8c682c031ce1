// new and schema.
#include "Samples.h"
#include "cli/CommandRunner.h"
#include "cli/Program.h"
#include "cli/TestBooks.h"
#include "cli/frame/Terminal.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

namespace tallybook::cli {
namespace {

using Json = nlohmann::json;

CommandResult make(const CommandTest& test, const std::string& description) {
    test.put("schema.json", description);
    return test.run({"new", "MS2_New.pdb", "--schema", "schema.json"});
}

// The same inside this process, which is quicker for many.
CommandResult makeInside(const CommandTest& test, const std::string& description) {
    test.put("schema.json", description);
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    Terminal terminal(in, out, err, false);
    const ExitCode code =
        run({"new", test.path("MS2_New.pdb").string(), "--schema", test.path("schema.json").string()}, terminal);
    return {static_cast<int>(code), 0, out.str(), err.str()};
}

// The example of the documentation, which is the first block of JSON in it.
std::string documentedExample() {
    std::ifstream file(std::string(TALLYBOOK_SOURCE_DIR) + "/docs/schema.md", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::string start = "```json\n";
    const std::size_t from = text.find(start) + start.size();
    return text.substr(from, text.find("```", from) - from);
}

// The description that `schema` prints, with the slots left out that follow one another.
Json withoutSlots(Json description) {
    for (const char* part : {"fields", "filters", "views"})
        for (Json& one : description[part])
            one.erase("slot");
    return description;
}

TEST(SchemaVerbsTest, makesTheExampleOfTheDocumentation) {
    const CommandTest test;
    const Json example = Json::parse(documentedExample());
    const CommandResult result = make(test, example.dump());
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    const CommandResult printed = test.run({"schema", "MS2_New.pdb"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(withoutSlots(Json::parse(printed.out)), example);
    EXPECT_EQ(test.run({"check", "MS2_New.pdb"}).out, "");
    EXPECT_TRUE(test.temporaryFolderIsEmpty());
}

TEST(SchemaVerbsTest, aSampleComesBackByItsDescription) {
    const CommandTest test;
    test.put("MS2_Books.pdb", samples::books());
    const std::string description = test.run({"schema", "MS2_Books.pdb"}).out;
    EXPECT_EQ(make(test, description).code, 0);
    EXPECT_EQ(test.run({"schema", "MS2_New.pdb"}).out, description);
}

TEST(SchemaVerbsTest, anEmptyDescriptionMakesAnEmptyDatabase) {
    const CommandTest test;
    EXPECT_EQ(make(test, "{}").code, 0);
    EXPECT_EQ(Json::parse(test.run({"schema", "MS2_New.pdb"}).out), Json::parse(R"({"name": "New", "fields": []})"));
}

TEST(SchemaVerbsTest, takesTheNameOfTheFileWhenNoneIsGiven) {
    const CommandTest test;
    test.put("schema.json", std::string("{}"));
    EXPECT_EQ(test.run({"new", "MS2_My books.pdb", "--schema", "schema.json"}).code, 0);
    EXPECT_EQ(Json::parse(test.run({"schema", "MS2_My_books.pdb"}).out)["name"], "My books");
}

TEST(SchemaVerbsTest, saysWhatItLeavesOut) {
    const CommandTest test;
    test.put("MS2_Locked.pdb", lockedDatabase());
    test.put("password", std::string("secret\n"));
    const CommandResult result = test.run({"schema", "MS2_Locked.pdb", "--password-file", "password"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, said("MS2_Locked.pdb", "Passwords are not described."));
    EXPECT_EQ(result.out.find("assword"), std::string::npos);
}

std::string fields(const std::string& json) {
    return R"({"fields": [)" + json + "]}";
}

std::string repeated(const std::string& part, int count, const std::string& between) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += (i > 0 ? between : "") + part;
    return all;
}

std::string manyFields(int count) {
    std::string all;
    for (int i = 1; i <= count; ++i)
        all += (i > 1 ? "," : "") + std::string(R"({"name": "F)") + std::to_string(i) + R"(", "type": "Text"})";
    return fields(all);
}

// A description with two fields and a part of its own.
std::string withFields(const std::string& part) {
    return R"({"fields": [{"name": "Title", "type": "Text"}, {"name": "Day", "type": "Date"}], )" + part + '}';
}

struct Refusal {
    std::string description;
    std::string message; // how standard error begins
};

TEST(SchemaVerbsTest, refusesWhatTheDialogsRefuse) {
    const std::string duplicate =
        "Another Field exists with this name. Enter another name and save the field information ";
    const Refusal cases[] = {
        {fields(R"({"name": ")" + std::string(300, 'n') + R"(", "type": "Text"})"),
         "A name may have at most 254 characters."},
        {fields(R"({"name": "中", "type": "Text"})"),
         "fields[0].name: Character 1, U+4E2D, cannot be stored in a Tallybook."},
        {fields(R"({"name": "a\u0000b", "type": "Text"})"),
         "fields[0].name: Character 2, U+0000, cannot be stored in a Tallybook."},
        {fields(R"({"name": " ", "type": "Text"})"), "Field Name cannot be blank"},
        {fields(R"({"name": "A", "type": "Text"}, {"name": "A", "type": "Long"})"), duplicate},
        {fields(R"({"name": "Categories", "type": "Text"})"), duplicate},
        {manyFields(81), "fields[80]: \"New\" contains more than 80 fields"},
        {fields(R"({"name": "A", "type": "Word"})"), "fields[0].type: There is no field type \"Word\"."},
        {fields(R"({"name": "A", "type": "List", "items": [)" + repeated("\"i\"", 61, ",") + "]}"),
         "List fields cannot have more than 60 items"},
        {R"({"categories": [)" + repeated("\"i\"", 61, ",") + "]}", "List fields cannot have more than 60 items"},
        {fields(R"({"name": "A", "type": "List", "items": ["", "b"]})"),
         "fields[0].items[0]: An item cannot be empty."},
        {fields(R"({"name": "A", "type": "List", "items": [")" + std::string(255, 'i') + "\"]}"),
         "An item may have at most 254 characters."},
        {fields(R"({"name": "A", "type": "List", "items": [{"id": 2, "text": "b"}, {"id": 2, "text": "c"}]})"),
         "fields[0].items: Two items have the same id."},
        {fields(R"({"name": "A", "type": "Text", "default": ")" + std::string(255, 'd') + "\"}"),
         "A default may have at most 254 characters."},
        {fields(R"({"name": "A", "type": "Integer", "default": "abc"})"), "Integer value expected"},
        {fields(R"({"name": "A", "type": "Integer", "default": "1.5"})"), "Integer value expected"},
        {fields(R"({"name": "A", "type": "Integer", "default": 40000})"), "Value cannot exceed 32767 or -32768"},
        {fields(R"({"name": "A", "type": "Integer", "default": "-"})"), "Integer value expected!"},
        {fields(R"({"name": "A", "type": "Long", "default": "x"})"), "Long value expected"},
        {fields(R"({"name": "A", "type": "Long", "default": "2147483648"})"),
         "Value cannot exceed 2147483647 or -2147483648!"},
        {fields(R"({"name": "A", "type": "Float", "default": "x"})"), "Floating value expected"},
        {fields(R"({"name": "A", "type": "Float", "decimals": 2, "default": "1.255"})"), "Decimal Digits exceed!"},
        {fields(R"({"name": "A", "type": "Float", "decimals": 4})"),
         "fields[0].decimals: The number must be from 0 to 3."},
        {fields(R"({"name": "A", "type": "Adv Expression", "advancedExpression": {"text": "1 +"}})"),
         "A value is missing here."},
        {fields(R"({"name": "A", "type": "Adv Expression", "advancedExpression": {"text": "Other * 2"}})"),
         "There is no field, constant or function \"Other\"."},
        {fields(R"({"name": "A", "type": "Expression"})"), "Complete the Expression"},
        {fields(R"({"name": "A", "type": "Expression", "expression": {"operands": ["1"]}})"),
         "Select the return type for the Expression"},
        {fields(R"({"name": "A", "type": "Expression",
                    "expression": {"format": "Floating", "operands": ["Titel"]}})"),
         "Select the proper fields from the list"},
        {fields(R"({"name": "A", "type": "Expression",
                    "expression": {"format": "Floating", "operands": ["1", "0"], "operators": ["/"]}})"),
         "The expression generates a Divide by zero. Correct the Expression"},
        {fields(R"({"name": "A", "type": "Expression",
                    "expression": {"format": "Days", "operands": ["1", "2"], "operators": ["*"]}})"),
         "fields[0].expression.operators: The operator \"*\" is not offered here."},
        {fields(R"({"name": "A", "type": "Conditional Expression"})"), "Enter the condition for the expression"},
        {fields(R"({"name": "A", "type": "Conditional Expression", "conditions": [{"operator": "="}]})"),
         "The filter condition has not been completed"},
        {fields(R"({"name": "B", "type": "Text"}, {"name": "A", "type": "Conditional Expression",
                    "conditions": [{"field": "B"}], "then": {"text": "123456789012345678901"}})"),
         "A result may have at most 20 characters."},
        {fields(R"({"name": "A", "type": "Radio Button", "options": ["a", ""]})"),
         "Enter the values for the options of the Radio-button "},
        {fields(R"({"name": "A", "type": "Radio Button", "options": ["a"]})"),
         "fields[0].options: A radio button has 2 to 8 options."},
        {fields(R"({"name": "A", "type": "DB Join"})"), "External view was not selected"},
        {fields(R"({"name": "A", "type": "DB Join", "join": {"source": "B", "view": 0}})"),
         "External display field was not selected"},
        {fields(R"({"name": "A", "type": "DB Join", "join": {"source": "B", "view": 0, "displayField": 1}})"),
         "External join field was not selected"},
        {fields(R"({"name": "A", "type": "One to Many", "masterDetail": {"source": ")" + std::string(33, 's') +
                R"("}})"),
         "The name of the other Tallybook may have at most 32 characters."},
        {fields(R"({"name": "A", "type": "Auto Incremental", "nextValue": 3000000000})"),
         "The next value must be a whole number from -2147483648 to 2147483647."},
        {withFields(R"("filters": [{"conditions": [{"field": "Title"}]}])"), "Filter name has not been entered"},
        {withFields(R"("filters": [{"name": "F", "conditions": [{}, {"link": "AND", "field": "Title"}]}])"),
         "The filter condition has not been completed"},
        {withFields(R"("filters": [{"name": "123456789012345678901", "conditions": [{"field": "Title"}]}])"),
         "A filter's name may have at most 20 characters."},
        {withFields(R"("filters": [{"name": "F", "conditions":
                       [{"field": "Title", "value": "12345678901234567890"}]}])"),
         "A constant may have at most 19 characters."},
        {withFields(R"("filters": [{"name": "F", "conditions": [{"field": "Titel"}]}])"),
         "filters[0].conditions[0].field: There is no field \"Titel\"."},
        {withFields(R"("filters": [{"slot": 12, "name": "F", "conditions": [{"field": "Title"}]}])"),
         "filters[0].slot: The number must be from 0 to 11."},
        {withFields(R"("multipleFilter": ["F"])"), "multipleFilter: There is no filter \"F\"."},
        {withFields(R"("views": [{"name": "Short"}])"),
         "View should have atleast one column to Show. Selecting no columns will remove the view. Continue?"},
        {withFields(R"("views": [{"name": "show all fields", "columns": ["Title"]}])"),
         "show all fields is not a vaild view name."},
        {withFields(R"("views": [{"name": "Edit Views...", "columns": ["Title"]}])"),
         "Edit Views... is not a vaild view name."},
        {withFields(R"("views": [{"name": "A", "columns": ["Title"]}, {"name": "a", "columns": ["Title"]}])"),
         "The name already exist in the list choose new name"},
        {withFields(R"("views": [{"name": "123456789012345678901", "columns": ["Title"]}])"),
         "A view's name may have at most 20 characters."},
        {withFields(R"("views": [{"name": "A", "columns": ["Titel"]}])"),
         "views[0].columns: There is no field \"Titel\"."},
        {withFields(R"("views": [{"name": "A", "columns": [)" + repeated("\"Title\"", 82, ",") + "]}]"),
         "views[0].columns: A view can have at most 81 columns."},
        {R"({"name": " "})", "Enter Tallybook Name."},
        {R"({"name": "a|b"})", "Tallybook name cannot have the following characters: \\ / : *  ? < > !"},
        {R"({"name": ")" + std::string(28, 'n') + R"("})", "The name of a Tallybook may have at most 27 characters."},
    };
    const CommandTest test;
    for (const Refusal& refusal : cases) {
        const CommandResult result = makeInside(test, refusal.description);
        EXPECT_EQ(result.code, 3) << refusal.description;
        const std::string schema = test.path("schema.json").string();
        EXPECT_TRUE(result.err.starts_with(said(schema, refusal.message))) << refusal.description << result.err;
        EXPECT_NE(result.err.find("\ntallybook: " + schema + ": Nothing was written: "), std::string::npos)
            << result.err;
        EXPECT_EQ(result.out, "");
        EXPECT_FALSE(std::filesystem::exists(test.path("MS2_New.pdb"))) << refusal.description;
    }
}

TEST(SchemaVerbsTest, namesThePlaceOfARefusal) {
    const CommandTest test;
    const CommandResult result =
        make(test, fields(R"({"name": "A", "type": "Text"}, {"name": "B", "type": "Long", "default": "x"})"));
    EXPECT_EQ(result.err, said("schema.json", "Long value expected") +
                              said("schema.json", "Nothing was written: fields[1] was refused."));
}

TEST(SchemaVerbsTest, aDescriptionThatMakesNoSenseIsAMistakeOfTheCall) {
    const Refusal cases[] = {
        {"{", "schema.json: "},
        {"[]", "schema.json: An object belongs here.\n"},
        {R"({"nane": "A"})", "nane: There is no such member here.\n"},
        {R"({"fields": {}})", "fields: An array belongs here.\n"},
        {R"({"readOnly": 1})", "readOnly: true or false belongs here.\n"},
        {fields(R"({"name": 5, "type": "Text"})"), "fields[0].name: A text belongs here.\n"},
        {fields(R"({"name": "A", "type": "Text", "decimals": 2})"),
         "fields[0].decimals: There is no such member here.\n"},
        {fields(R"({"slot": 2, "name": "A", "type": "Text"}, {"slot": 2, "name": "B", "type": "Text"})"),
         "fields[1].slot: Two of them have the same slot.\n"},
        {fields(R"({"slot": 1, "carried": {"attribute": "0g"}})"),
         "fields[0].carried.attribute: Bytes in hex belong here.\n"},
        {fields(R"({"slot": 1, "carried": {"type": 21, "attribute": "00"}})"),
         "fields[0].carried.attribute: These bytes are no such block.\n"},
    };
    const CommandTest test;
    for (const Refusal& refusal : cases) {
        const CommandResult result = makeInside(test, refusal.description);
        EXPECT_EQ(result.code, 2) << refusal.description;
        EXPECT_NE(result.err.find(refusal.message), std::string::npos) << result.err;
        EXPECT_EQ(result.err.find("Nothing was written"), std::string::npos) << refusal.description;
        EXPECT_FALSE(std::filesystem::exists(test.path("MS2_New.pdb")));
    }
    EXPECT_EQ(test.run({"new", "MS2_New.pdb", "--schema", "none.json"}).code, 2);
    EXPECT_EQ(test.run({"new", "MS2_New.pdb"}).code, 2);
}

TEST(SchemaVerbsTest, asksAboutAFileThatIsThere) {
    const CommandTest test;
    test.put("MS2_New.pdb", std::string("old"));
    const CommandResult result = make(test, "{}");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err,
              said("MS2_New.pdb", "The file already exist Overwrite it ?") +
                  said("MS2_New.pdb", "Nobody is there to answer: run the command at a terminal or use --yes."));
    EXPECT_EQ(test.text("MS2_New.pdb"), "old");
    EXPECT_EQ(test.run({"new", "MS2_New.pdb", "--schema", "schema.json", "--yes"}).code, 0);
    EXPECT_EQ(test.run({"check", "MS2_New.pdb"}).out, "");
}

TEST(SchemaVerbsTest, wantsAFileNameThatOpensAgain) {
    const CommandTest test;
    test.put("schema.json", std::string("{}"));
    const CommandResult result = test.run({"new", "Books.pdb", "--schema", "schema.json"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, said("Books.pdb", "Filename not valid.  Tallybook file name must start with \"MS2_\"."));
}

} // namespace
} // namespace tallybook::cli
