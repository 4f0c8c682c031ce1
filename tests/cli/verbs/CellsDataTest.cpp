// cells as a source of data: typed values, chosen columns and records, several files.
#include "cli/CommandRunner.h"
#include "cli/TestBooks.h"
#include "cli/rows/ModelJson.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

namespace tallybook::cli {
namespace {

class CellsData : public testing::Test {
protected:
    CellsData() { test.put("MS2_Small.pdb", smallDatabase()); }

    CommandResult cells(std::vector<std::string> options) const {
        options.insert(options.begin(), {"cells", "MS2_Small.pdb"});
        return test.run(options);
    }

    const CommandTest test;
};

TEST_F(CellsData, aLineOfJsonHoldsTypedValues) {
    const CommandResult result = cells({"--jsonl"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(
        result.out.substr(0, result.out.find('\n')),
        "{\"Categories\": \"work\", \"Title\": \"\xC3\x89lan, \\\"quoted\\\"\", \"Count\": 12, \"Total\": 100000, "
        "\"Price\": 3.50, \"Kind\": \"green\", \"Done\": true, \"Day\": \"2003-01-02\", \"Hour\": \"13:05:09\", "
        "\"Notes\": \"first line\\nsecond\\tline \\\\ end\", \"Size\": \"large\", \"Number\": 1, \"Key\": 1, "
        "\"Spin\": 7, \"Changed\": null}");
    std::istringstream lines(result.out);
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        const Json record = Json::parse(line);
        EXPECT_EQ(record.size(), 15U);
        EXPECT_TRUE(record["Done"].is_boolean());
    }
    EXPECT_EQ(count, 3);
    EXPECT_EQ(cells({"--jsonl", "--region", "de"}).out, result.out); // values have no region
}

TEST_F(CellsData, idsAreTheKeysAndTheItems) {
    EXPECT_EQ(cells({"--jsonl", "--ids", "--fields", "Title,Kind,Size", "--limit", "2"}).out,
              "{\"_key\": 1, \"_category\": 2, \"Title\": \"\xC3\x89lan, \\\"quoted\\\"\", \"Kind\": \"green\", "
              "\"Size\": \"large\", \"_id:Kind\": 2, \"_id:Size\": 2}\n"
              "{\"_key\": 2, \"_category\": 0, \"Title\": \"Second\", \"Kind\": null, \"Size\": null, "
              "\"_id:Kind\": null, \"_id:Size\": null}\n");
    EXPECT_EQ(cells({"--tsv", "--ids", "--fields", "Kind", "--limit", "2"}).out,
              "_key\t_category\tKind\t_id:Kind\n1\t2\tgreen\t2\n2\t0\t\t\n");
}

TEST_F(CellsData, isoIsARegion) {
    EXPECT_EQ(cells({"--tsv", "--region", "iso", "--fields", "Day,Hour,Price", "--limit", "1"}).out,
              "Day\tHour\tPrice\n2003-01-02\t13:05:09\t3.50\n");
}

TEST_F(CellsData, fieldsComeInTheOrderInWhichTheyAreNamed) {
    EXPECT_EQ(cells({"--tsv", "--fields", "count,@1", "--fields", "@0"}).out,
              "Count\tTitle\tCategories\n12\t\xC3\x89lan, \"quoted\"\twork\n\tSecond\tUnfiled\n-5\tThird\thome\n");
    const CommandResult none = cells({"--fields", "Title,Nothing"});
    EXPECT_EQ(none.code, 3);
    EXPECT_EQ(none.err, said("MS2_Small.pdb", "no such field: Nothing"));
}

TEST_F(CellsData, recordsAreChosenByAnExpression) {
    const std::vector<std::string> title = {"--tsv", "--fields", "Title", "--no-header", "--where"};
    const auto where = [&](const std::string& expression) {
        std::vector<std::string> options = title;
        options.push_back(expression);
        return cells(options).out;
    };
    EXPECT_EQ(where("Count < 0"), "Third\n");
    EXPECT_EQ(where("Title = 'Second' | Done"), "\xC3\x89lan, \"quoted\"\nSecond\n");
    EXPECT_EQ(where("Number > 1"), "Second\nThird\n");
    EXPECT_EQ(where("Year(Day) = 2003"), "\xC3\x89lan, \"quoted\"\n"); // no date, no year
    const CommandResult wrong = cells({"--where", "Colour = 1"});
    EXPECT_EQ(wrong.code, 3);
    EXPECT_EQ(wrong.err, said("MS2_Small.pdb", "--where: There is no field, constant or function \"Colour\"."));
    EXPECT_EQ(cells({"--where", "1 / 0"}).err, said("MS2_Small.pdb", "--where: Division by zero."));
    EXPECT_EQ(cells({"--where", "Title = '\xE6\x97\xA5'"}).code, 2);
}

TEST_F(CellsData, aViewGivesItsRecordsInItsOrder) {
    EXPECT_EQ(cells({"--tsv", "--view", "Short", "--fields", "Number", "--where", "Number < 3"}).out,
              "Number\n2\n1\n"); // Second, then the one with the accent
}

TEST_F(CellsData, partsCanBeLeftOut) {
    EXPECT_EQ(cells({"--tsv", "--no-header", "--limit", "0"}).out, "");
    const std::string header = cells({"--limit", "0", "--no-categories"}).out;
    EXPECT_TRUE(header.starts_with("Title,Count,")) << header;
    EXPECT_EQ(cells({"--limit", "many"}).code, 2);
    EXPECT_EQ(cells({"--json", "--ids"}).code, 2);
    EXPECT_EQ(cells({"--json", "--jsonl"}).code, 2);
}

TEST_F(CellsData, severalFilesShareTheirColumns) {
    test.put("MS2_Other.pdb", smallDatabase());
    const CommandResult result =
        test.run({"cells", "MS2_Small.pdb", "MS2_Other.pdb", "--tsv", "--fields", "Title", "--limit", "1"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out, "_file\tTitle\nMS2_Small.pdb\t\xC3\x89lan, \"quoted\"\n"
                          "MS2_Other.pdb\t\xC3\x89lan, \"quoted\"\n");
    const CommandResult missing = test.run({"cells", "MS2_None.pdb", "MS2_Other.pdb", "--jsonl", "--fields", "Key"});
    EXPECT_EQ(missing.code, 3);
    EXPECT_EQ(missing.out, "{\"_file\": \"MS2_Other.pdb\", \"Key\": 1}\n{\"_file\": \"MS2_Other.pdb\", \"Key\": 2}\n"
                           "{\"_file\": \"MS2_Other.pdb\", \"Key\": 3}\n");
    EXPECT_EQ(missing.err, said("MS2_None.pdb", "It cannot be opened: No such file or directory."));
}

TEST_F(CellsData, filesOfOtherColumnsAreNoTable) {
    test.put("schema.json", std::string(R"({"fields": [{"name": "A", "type": "Text"}]})"));
    ASSERT_EQ(test.run({"new", "MS2_New.pdb", "--schema", "schema.json"}).code, 0);
    const CommandResult result = test.run({"cells", "MS2_Small.pdb", "MS2_New.pdb"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, said("MS2_New.pdb", "Its columns are not those of the files before it: choose them with "
                                              "--fields, or use --jsonl."));
    EXPECT_EQ(test.run({"cells", "MS2_Small.pdb", "MS2_New.pdb", "--jsonl"}).code, 0);
}

} // namespace
} // namespace tallybook::cli
