// retype: its questions, and what it changes.
#include "SampleBuilder.h"
#include "cli/CommandRunner.h"
#include "cli/TestBooks.h"
#include "core/pdb/Passwords.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

namespace tallybook::cli {
namespace {

using model::FieldType;

constexpr const char* kUnanswered = "Nobody is there to answer: run the command at a terminal or use --yes.";

// A Text with numbers but for one, an Integer, and two fields with items that no record has.
platform::Bytes book(const std::string& designPassword = {}) {
    samples::SampleBuilder sample("MS2_Retype");
    sample.addField(FieldType::Text, "Amount");
    sample.addField(FieldType::Integer, "Number");
    sample.addField(FieldType::List, "Kind");
    sample.addItems(3, {"red", "green", "blue"});
    sample.addField(FieldType::RadioButton, "Size");
    sample.addItems(4, {"small", "large"});
    const char* amounts[] = {"12", "abc", "3.5"};
    for (int i = 0; i < 3; ++i) {
        sample.addRecord();
        sample.set(1, amounts[i]);
        sample.set(2, std::to_string(70 + i));
        sample.setItem(3, i == 0 ? "green" : "red");
        sample.setItem(4, "large");
    }
    if (!designPassword.empty())
        sample.database().Passwords[static_cast<std::size_t>(model::PasswordKind::Design)] =
            pdb::ApplyPwd(designPassword);
    return sample.build();
}

class RetypeVerbTest : public ::testing::Test {
protected:
    RetypeVerbTest() { test.put("MS2_Retype.pdb", book()); }

    CommandResult retype(const std::string& field, const std::string& type,
                         const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = {"retype", "MS2_Retype.pdb", field, type, "--out", "MS2_Out.pdb"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return test.run(arguments);
    }
    std::string cells() { return test.run({"cells", "MS2_Out.pdb", "--tsv"}).out; }
    // The items of a field, by its description.
    std::string itemsOf(const std::string& name) {
        const auto description = nlohmann::json::parse(test.run({"schema", "MS2_Out.pdb"}).out);
        for (const auto& field : description["fields"])
            if (field["name"] == name)
                return field["items"].dump();
        return {};
    }
    bool written() const { return std::filesystem::exists(test.path("MS2_Out.pdb")); }

    CommandTest test;
};

TEST_F(RetypeVerbTest, refusesAnUnansweredQuestion) {
    const CommandResult result = retype("Amount", "Long");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err,
              said("MS2_Retype.pdb", "Are you sure you want to convert this field from Text to Long? Warning: "
                                     "conversion not possible will result in blanks or zeros") +
                  said("MS2_Retype.pdb", kUnanswered));
    EXPECT_FALSE(written());
    EXPECT_EQ(test.bytes("MS2_Retype.pdb"), book());
}

// What is no number becomes 0, which a file does not keep.
TEST_F(RetypeVerbTest, convertsWhenTold) {
    EXPECT_EQ(retype("amount", "long", {"--convert"}).code, 0);
    EXPECT_EQ(cells(),
              "Categories\tAmount\tNumber\tKind\tSize\nUnfiled\t12\t70\tgreen\tlarge\nUnfiled\t\t71\tred\tlarge\n"
              "Unfiled\t4\t72\tred\tlarge\n");
}

TEST_F(RetypeVerbTest, asksAboutKeys) {
    const CommandResult result = retype("Number", "Key", {"--convert"});
    EXPECT_EQ(result.code, 3);
    EXPECT_NE(result.err.find("WARNING:  This action will change the field into 'key'."), std::string::npos);
    EXPECT_FALSE(written());
    EXPECT_EQ(retype("Number", "Key", {"--convert", "--new-keys"}).code, 0);
    EXPECT_NE(cells().find("abc\t71\t"), std::string::npos) << cells();
    EXPECT_EQ(retype("Number", "Key", {"--convert", "--keep-keys"}).code, 0);
    EXPECT_NE(cells().find("abc\t2\t"), std::string::npos) << cells();
    EXPECT_EQ(retype("Number", "Key", {"--convert", "--new-keys", "--keep-keys"}).code, 2);
}

TEST_F(RetypeVerbTest, aColumnThatMakesNoKeysIsRefused) {
    const CommandResult result = retype("Amount", "Key", {"--convert", "--new-keys"});
    EXPECT_EQ(result.code, 3);
    EXPECT_NE(result.err.find("Column must have numeric fields greater than zero.  Conversion not performed.\n"),
              std::string::npos);
    EXPECT_FALSE(written());
}

TEST_F(RetypeVerbTest, asksAboutTheItemsOfAField) {
    EXPECT_EQ(retype("Amount", "List", {"--convert"}).code, 0); // there is no list yet
    EXPECT_NE(cells().find("\tabc\t"), std::string::npos);
    const CommandResult asked = retype("Size", "List", {"--convert"});
    EXPECT_EQ(asked.code, 3);
    EXPECT_NE(asked.err.find("Clear existing list and create new list?\n"), std::string::npos) << asked.err;
    EXPECT_EQ(retype("Size", "List", {"--convert", "--keep-list"}).code, 0);
    EXPECT_EQ(itemsOf("Size"), R"(["small","large"])");
    EXPECT_EQ(retype("Size", "List", {"--convert", "--new-list"}).code, 0);
    EXPECT_EQ(itemsOf("Size"), R"(["large"])");
}

TEST_F(RetypeVerbTest, takesWhatTheNewTypeNeeds) {
    EXPECT_EQ(retype("Amount", "Float", {"--convert", "--attributes", R"({"decimals": 2, "name": "Sum"})"}).code, 0);
    EXPECT_EQ(cells().substr(0, 45), "Categories\tSum\tNumber\tKind\tSize\nUnfiled\t12.00");
    const CommandResult missing = retype("Amount", "Adv Expression", {"--convert"});
    EXPECT_EQ(missing.code, 3);
    EXPECT_NE(missing.err.find("The expression is empty.\n"), std::string::npos) << missing.err;
    EXPECT_EQ(retype("Amount", "Adv Expression",
                     {"--convert", "--attributes", R"({"advancedExpression": {"text": "Number * 2"}})"})
                  .code,
              0);
    EXPECT_NE(cells().find("Unfiled\t140\t70\t"), std::string::npos) << cells(); // computed at once
    EXPECT_EQ(retype("Amount", "Float", {"--convert", "--attributes", R"({"options": ["a"]})"}).code, 2);
    EXPECT_EQ(retype("Amount", "Float", {"--convert", "--attributes", "{"}).code, 2);
}

TEST_F(RetypeVerbTest, yesAnswersEveryQuestion) {
    EXPECT_EQ(retype("Number", "Key", {"--yes"}).code, 0);
    EXPECT_NE(cells().find("abc\t71\t"), std::string::npos) << cells();
}

TEST_F(RetypeVerbTest, namesWhatIsNotThere) {
    EXPECT_EQ(retype("Other", "Long").code, 3);
    EXPECT_EQ(retype("Amount", "Word").code, 2);
    const CommandResult categories = retype("Categories", "Text", {"--convert"});
    EXPECT_EQ(categories.code, 3);
    EXPECT_EQ(categories.err, said("MS2_Retype.pdb", "The categories are always a list."));
    EXPECT_FALSE(written());
}

TEST_F(RetypeVerbTest, leavesAReadOnlyDatabaseAlone) {
    platform::Bytes bytes = book();
    bytes[80 + 8 * 90 + 10] = 1; // behind the list of 90 records: the eleventh byte of the first
    test.put("MS2_Retype.pdb", bytes);
    const CommandResult result = retype("Amount", "Long", {"--convert"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, said("MS2_Retype.pdb", "Tallybook is readonly."));
    EXPECT_FALSE(written());
}

TEST_F(RetypeVerbTest, wantsTheDesignPassword) {
    test.put("MS2_Retype.pdb", book("plans"));
    const CommandResult refused = retype("Amount", "Long", {"--convert"});
    EXPECT_EQ(refused.code, 3);
    EXPECT_EQ(refused.err,
              said("MS2_Retype.pdb", "A password is needed: run the command at a terminal or use --password-file."));
    test.put("password", std::string("plans\n"));
    EXPECT_EQ(retype("Amount", "Long", {"--convert", "--password-file", "password"}).code, 0);
}

} // namespace
} // namespace tallybook::cli
