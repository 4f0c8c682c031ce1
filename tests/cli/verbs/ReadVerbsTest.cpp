// The verbs that only look: info, cells, dump, and what all verbs share.
#include "Samples.h"
#include "cli/CommandRunner.h"
#include "cli/TestBooks.h"
#include "cli/inspect/DumpFile.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

namespace tallybook::cli {
namespace {

using Json = nlohmann::ordered_json;

struct UsageCase {
    const char* name;
    std::vector<std::string> arguments;
};

class UsageTest : public testing::TestWithParam<UsageCase> {};

TEST_P(UsageTest, endsWithTwoAndAMessage) {
    const CommandResult result = CommandTest().run(GetParam().arguments);
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.starts_with("tallybook: ")) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, UsageTest,
    testing::Values(UsageCase{"noVerb", {}}, UsageCase{"unknownVerb", {"frobnicate"}}, UsageCase{"noFile", {"info"}},
                    UsageCase{"unknownOption", {"info", "MS2_Small.pdb", "--xml"}},
                    UsageCase{"twoForms", {"cells", "MS2_Small.pdb", "--csv", "--json"}},
                    UsageCase{"unknownRegion", {"cells", "MS2_Small.pdb", "--region", "fr"}},
                    UsageCase{"missingPasswordFile", {"cells", "MS2_Small.pdb", "--password-file", "none"}},
                    UsageCase{"findWithoutText", {"find", "MS2_Small.pdb"}},
                    UsageCase{"saveWithoutOut", {"save", "MS2_Small.pdb"}},
                    UsageCase{"convertWithoutNew", {"convert", "MSA_Small.pdb"}},
                    UsageCase{"editWithoutScript", {"edit", "MS2_Small.pdb"}},
                    UsageCase{"missingScript", {"edit", "MS2_Small.pdb", "--script", "none"}}),
    [](const auto& tested) { return tested.param.name; });

TEST(CommandLineTest, namesTheNearestVerb) {
    EXPECT_EQ(CommandTest().run({"cels", "MS2_Small.pdb"}).err,
              said("", "There is no verb \"cels\"; \"cells\" is the nearest."));
    EXPECT_EQ(CommandTest().run({"frobnicate"}).err,
              said("", "There is no verb \"frobnicate\"; tallybook --help lists them."));
    EXPECT_EQ(CommandTest().run({"find", "MS2_Small.pdb"}).err,
              said("find", "TEXT is required (tallybook find --help tells more)"));
}

// As "| head" does it. A shell knows such an end by the signal.
TEST(CommandLineTest, endsSilentlyWhenItsReaderGoesAway) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.runWithoutReader({"cells", "MS2_Small.pdb"});
    EXPECT_EQ(result.signal, SIGPIPE);
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(test.temporaryFolderIsEmpty());
}

TEST(CommandLineTest, helpIsAnAnswer) {
    const CommandResult result = CommandTest().run({"--help"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    for (const char* verb : {"info", "cells", "find", "dump", "save", "convert", "check", "edit"})
        EXPECT_NE(result.out.find(verb), std::string::npos) << verb;
}

TEST(CommandLineTest, tellsItsVersion) {
    const CommandResult result = CommandTest().run({"--version"});
    EXPECT_EQ(result.code, 0);
    EXPECT_TRUE(result.out.starts_with("tallybook ")) << result.out;
}

// Refusals ---------------------------------------------------------------------------------------------------

TEST(OpenTest, saysWhichFileIsMissing) {
    const CommandTest test;
    const CommandResult result = test.run({"info", "MS2_None.pdb"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, said("MS2_None.pdb", "It cannot be opened: No such file or directory."));
}

TEST(OpenTest, refusesAFileOfAnotherCreator) {
    const CommandTest test;
    platform::Bytes bytes = smallDatabase();
    bytes[64] = 'X';
    test.put("MS2_Other.pdb", bytes);
    const CommandResult result = test.run({"cells", "MS2_Other.pdb"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, said("MS2_Other.pdb", "The selected file MS2_Other.pdb is not a Tallybook"));
}

TEST(OpenTest, callsAFileWithoutThePrefixOld) {
    const CommandTest test;
    platform::Bytes bytes = smallDatabase();
    bytes[64] = 'X';
    test.put("MSA_Old.pdb", bytes);
    const CommandResult result = test.run({"cells", "MSA_Old.pdb"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, said("MSA_Old.pdb", "Old Format") +
                              said("MSA_Old.pdb", "The selected file MSA_Old.pdb is not a Tallybook"));
}

TEST(OpenTest, saysWhenANameLacksItsPrefix) {
    const CommandTest test;
    test.put("books.pdb", smallDatabase());
    const CommandResult result = test.run({"cells", "books.pdb"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err,
              said("books.pdb", "The name of a Tallybook begins with MS2_, this one does not: rename the file."));
}

TEST(OpenTest, saysWhatIsNoFile) {
    const CommandTest test;
    std::filesystem::create_directory(test.path("MS2_Folder.pdb"));
    EXPECT_EQ(test.run({"cells", "MS2_Folder.pdb"}).err,
              said("MS2_Folder.pdb", "It cannot be opened: Is a directory."));
}

TEST(OpenTest, refusesAFixedRecordOutOfOrder) {
    const CommandTest test;
    platform::Bytes bytes = smallDatabase();
    const std::size_t second = bytes[88] << 8 | bytes[89]; // offset of record 1, which is below 65536
    bytes[second] = 99;
    test.put("MS2_Sync.pdb", bytes);
    const CommandResult result = test.run({"info", "MS2_Sync.pdb"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err,
              said("MS2_Sync.pdb",
                   "The Tallybook \"" + test.path("MS2_Sync.pdb").string() +
                       "\" was modified by the Tallybook Pocket conduit.  It is not possible to open it using "
                       "Tallybook Pocket Desktop at this moment.   Perform another HotSync and try again."));
}

TEST(OpenTest, leavesNothingInTheTemporaryFolder) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    EXPECT_EQ(test.run({"cells", "MS2_Small.pdb"}).code, 0);
    EXPECT_TRUE(test.temporaryFolderIsEmpty());
    EXPECT_EQ(test.run({"cells", "MS2_None.pdb"}).code, 3);
    EXPECT_TRUE(test.temporaryFolderIsEmpty());
}

TEST(OpenTest, keepsBackupsInTheApplicationFolderThatIsNamed) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    std::filesystem::create_directory(test.path("app"));
    EXPECT_EQ(test.run({"save", "MS2_Small.pdb", "MS2_Out.pdb", "--application-folder", "app"}).code, 0);
    EXPECT_EQ(test.bytes("app/Backup/MS2_Small.pdb"), smallDatabase());
    for (const char* name : {"app/Backup", "app/Temp"})
        EXPECT_EQ(std::filesystem::status(test.path(name)).permissions(), std::filesystem::perms::owner_all) << name;
}

const std::vector<std::vector<std::string>> kLooks = {
    {"info", "MS2_Small.pdb"},
    {"cells", "MS2_Small.pdb"},
    {"find", "MS2_Small.pdb", "Second"},
    {"schema", "MS2_Small.pdb"},
    {"dump", "MS2_Small.pdb"},
    {"check", "MS2_Small.pdb"},
    {"expr", "check", "MS2_Small.pdb", "1+1"},
};

TEST(OpenTest, writesNothingForThoseWhoOnlyLook) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    std::filesystem::create_directory(test.path("app"));
    std::filesystem::remove(test.temporaryFolder()); // so that nothing can be written there either
    for (std::vector<std::string> look : kLooks) {
        const CommandResult result = test.run(look);
        EXPECT_EQ(result.code, 0) << look[0] << ": " << result.err;
        if (look[0] == "check")
            continue;
        look.insert(look.end(), {"--application-folder", "app"});
        EXPECT_EQ(test.run(look).code, 0) << look[0];
        EXPECT_TRUE(std::filesystem::is_empty(test.path("app"))) << look[0];
    }
    const CommandResult saved = test.run({"save", "MS2_Small.pdb", "MS2_Out.pdb"});
    EXPECT_EQ(saved.code, 3);
    EXPECT_EQ(saved.err, said("MS2_Small.pdb", "A temporary folder could not be made."));
}

TEST(OpenTest, takesTheFileOfTheVeryNameThatIsGiven) {
    const CommandTest test;
    test.put("MS2_My Data.pdb", smallDatabase());
    test.put("MS2_My_Data.pdb", samples::empty());
    const CommandResult result = test.run({"cells", "MS2_My Data.pdb"});
    EXPECT_EQ(result.err, "");
    EXPECT_NE(result.out.find("Second"), std::string::npos);
}

TEST(OpenTest, saysWhenItsOutputCannotBeWritten) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run({"cells", "MS2_Small.pdb"}, "", "/dev/full");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, said("", "The output could not be written."));
}

// Passwords --------------------------------------------------------------------------------------------------

TEST(PasswordTest, saysWhatToDoWhenNobodyCanType) {
    const CommandTest test;
    test.put("MS2_Locked.pdb", lockedDatabase());
    for (const char* verb : {"info", "cells", "dump"}) {
        const CommandResult result = test.run({verb, "MS2_Locked.pdb"}, "secret\n");
        EXPECT_EQ(result.code, 3) << verb;
        EXPECT_EQ(result.out, "") << verb;
        EXPECT_EQ(result.err, said("MS2_Locked.pdb",
                                   "A password is needed: run the command at a terminal or use --password-file."))
            << verb;
    }
}

TEST(PasswordTest, takesTheFirstLineOfTheFile) {
    const CommandTest test;
    test.put("MS2_Locked.pdb", lockedDatabase());
    for (const char* content : {"secret", "secret\n", "secret\r\nmore\n"}) {
        test.put("password", std::string(content));
        EXPECT_EQ(test.run({"cells", "MS2_Locked.pdb", "--password-file", "password"}).code, 0) << content;
    }
}

TEST(PasswordTest, refusesAWrongPasswordOnce) {
    const CommandTest test;
    test.put("MS2_Locked.pdb", lockedDatabase());
    test.put("password", std::string("secre\n"));
    const CommandResult result = test.run({"cells", "MS2_Locked.pdb", "--password-file", "password"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, said("MS2_Locked.pdb", "Incorrect password"));
}

TEST(PasswordTest, asksAtATerminalWithoutEcho) {
    const CommandTest test;
    test.put("MS2_Locked.pdb", lockedDatabase());
    const CommandResult result =
        test.runAtTerminal({"info", "MS2_Locked.pdb"}, "password of MS2_Locked.pdb: ", "secret\n");
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.out.find("Login password of MS2_Locked.pdb: "), std::string::npos);
    EXPECT_NE(result.out.find("Records: 3"), std::string::npos);
    EXPECT_EQ(result.out.find("secret"), std::string::npos);
}

TEST(PasswordTest, endsAtCtrlC) {
    const CommandTest test;
    test.put("MS2_Locked.pdb", lockedDatabase());
    const CommandResult result =
        test.runAtTerminal({"info", "MS2_Locked.pdb"}, "password of MS2_Locked.pdb: ", "sec\x03\n");
    EXPECT_EQ(result.code, 3);
    EXPECT_TRUE(test.temporaryFolderIsEmpty());
}

TEST(PasswordTest, asksThreeTimes) {
    const CommandTest test;
    test.put("MS2_Locked.pdb", lockedDatabase());
    const CommandResult result =
        test.runAtTerminal({"info", "MS2_Locked.pdb"}, "password of MS2_Locked.pdb: ", "a\nb\nc\n");
    EXPECT_EQ(result.code, 3);
    std::size_t refusals = 0;
    for (std::size_t at = result.out.find("Incorrect password"); at != std::string::npos;
         at = result.out.find("Incorrect password", at + 1))
        ++refusals;
    EXPECT_EQ(refusals, 3U);
}

// cells ------------------------------------------------------------------------------------------------------

constexpr const char* kHeader =
    "Categories,Title,Count,Total,Price,Kind,Done,Day,Hour,Notes,Size,Number,Key,Spin,Changed\r\n";

TEST(CellsTest, writesCsv) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run({"cells", "MS2_Small.pdb"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, std::string(kHeader) +
                              "work,\"Élan, \"\"quoted\"\"\",12,100000,3.50,green,Y,1/2/2003,1:05:09 PM,"
                              "\"first line\nsecond\tline \\ end\",large,1,1,7,\r\n"
                              "Unfiled,Second,,,,,N,,,,,2,2,,\r\n"
                              "home,Third,-5,,,,N,,,,,3,3,,\r\n");
    EXPECT_EQ(test.run({"cells", "MS2_Small.pdb", "--csv"}).out, result.out);
}

TEST(CellsTest, writesTsv) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    EXPECT_EQ(
        test.run({"cells", "MS2_Small.pdb", "--tsv"}).out,
        "Categories\tTitle\tCount\tTotal\tPrice\tKind\tDone\tDay\tHour\tNotes\tSize\tNumber\tKey\tSpin\tChanged\n"
        "work\tÉlan, \"quoted\"\t12\t100000\t3.50\tgreen\tY\t1/2/2003\t1:05:09 PM\t"
        "first line\\nsecond\\tline \\\\ end\tlarge\t1\t1\t7\t\n"
        "Unfiled\tSecond\t\t\t\t\tN\t\t\t\t\t2\t2\t\t\n"
        "home\tThird\t-5\t\t\t\tN\t\t\t\t\t3\t3\t\t\n");
}

TEST(CellsTest, writesJson) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const Json json = Json::parse(test.run({"cells", "MS2_Small.pdb", "--json"}).out);
    ASSERT_EQ(json["fields"].size(), 15U);
    EXPECT_EQ(json["fields"][1], (Json{{"slot", 1}, {"name", "Title"}, {"type", "Text"}}));
    ASSERT_EQ(json["records"].size(), 3U);
    EXPECT_EQ(json["records"][0][1], "Élan, \"quoted\"");
    EXPECT_EQ(json["records"][0][6], "Y");
    EXPECT_EQ(json["records"][1][6], "N");
}

TEST(CellsTest, numbersTheRecordsWhenToldSo) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const std::string csv = test.run({"cells", "MS2_Small.pdb", "--numbers"}).out;
    EXPECT_TRUE(csv.starts_with("#,Categories,Title,")) << csv;
    EXPECT_NE(csv.find("\r\n3,home,Third,-5,"), std::string::npos) << csv;
    const Json json = Json::parse(test.run({"cells", "MS2_Small.pdb", "--json", "-n"}).out);
    EXPECT_EQ(json["records"][2][0], "3");
    EXPECT_EQ(json["records"][2].size(), json["fields"].size() + 1);
}

TEST(CellsTest, followsTheRegion) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const std::string german = test.run({"cells", "MS2_Small.pdb", "--tsv", "--region", "de"}).out;
    EXPECT_NE(german.find("\t3,50\t"), std::string::npos) << german;
    EXPECT_NE(german.find("\t02.01.2003\t13:05:09\t"), std::string::npos) << german;
}

TEST(CellsTest, sortsTheRecords) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    struct Row {
        const char* sort;
        const char* titles; // first letters in order
    };
    const Row rows[] = {{"Title", "ST\xC3"},    {"title:desc", "\xC3TS"}, {"Count", "TS\xC3"},
                        {"@2:desc", "\xC3ST"},  {"Categories", "TS\xC3"}, {"Done", "ST\xC3"},
                        {"Done:desc", "\xC3ST"}};
    for (const Row& row : rows) {
        const CommandResult result = test.run({"cells", "MS2_Small.pdb", "--json", "--sort", row.sort});
        std::string titles;
        const Json json = Json::parse(result.out);
        for (const Json& record : json["records"])
            titles += record[1].get<std::string>()[0];
        EXPECT_EQ(titles, row.titles) << row.sort;
    }
}

TEST(CellsTest, refusesToSortOnAFieldThatIsNotThere) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    for (const char* field : {"Nothing", "@81", "@", ":desc"}) {
        const CommandResult result = test.run({"cells", "MS2_Small.pdb", "--sort", field});
        EXPECT_EQ(result.code, 3) << field;
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.err.starts_with("tallybook: MS2_Small.pdb: no such field: ")) << result.err;
    }
}

TEST(CellsTest, showsAViewInItsOrder) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    EXPECT_EQ(test.run({"cells", "MS2_Small.pdb", "--view", "Short"}).out,
              "Title,Count\r\nSecond,\r\nThird,-5\r\n\"Élan, \"\"quoted\"\"\",12\r\n");
    EXPECT_EQ(test.run({"cells", "MS2_Small.pdb", "--view", "Short", "--filter", "Done", "-n", "--tsv"}).out,
              "#\tTitle\tCount\n3\tÉlan, \"quoted\"\t12\n");
    const Json json = Json::parse(test.run({"cells", "MS2_Small.pdb", "--view", "Short", "--json"}).out);
    EXPECT_EQ(json["fields"][1], (Json{{"slot", 2}, {"name", "Count"}, {"type", "Integer"}}));
}

TEST(CellsTest, showsWhatFiltersLeave) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const std::string all = test.run({"cells", "MS2_Small.pdb", "--filter", "No Filter"}).out;
    EXPECT_NE(all.find("Third"), std::string::npos);
    for (const std::vector<std::string>& filters :
         {std::vector<std::string>{"--filter", "Done"}, {"--filter", "Done", "--filter", "Done"}}) {
        std::vector<std::string> words = {"cells", "MS2_Small.pdb"};
        words.insert(words.end(), filters.begin(), filters.end());
        const std::string some = test.run(words).out;
        EXPECT_NE(some.find("lan, "), std::string::npos) << some;
        EXPECT_EQ(some.find("Second"), std::string::npos) << some;
    }
}

TEST(CellsTest, refusesUnknownViewsAndFilters) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult view = test.run({"cells", "MS2_Small.pdb", "--view", "Élans"});
    EXPECT_EQ(view.code, 3);
    EXPECT_EQ(view.out, "");
    EXPECT_NE(view.err.find("There is no view \"Élans\"; there are \"Short\", \"Show All Fields\"."),
              std::string::npos)
        << view.err;
    EXPECT_EQ(test.run({"cells", "MS2_Small.pdb", "--view", "SHORT", "--filter", "done"}).code, 0);
    const CommandResult like = test.run({"cells", "MS2_Small.pdb", "--filter", "Ｄone"}); // its first letter is wide
    EXPECT_EQ(like.code, 3);
    EXPECT_NE(like.err.find("There is no filter \"Ｄone\"; there are \"Done\", \"No Filter\"."), std::string::npos)
        << like.err;
    const CommandResult filter = test.run({"cells", "MS2_Small.pdb", "--filter", "Edit Filters..."});
    EXPECT_EQ(filter.code, 3);
    EXPECT_NE(filter.err.find("There is no filter \"Edit Filters...\"; there are"), std::string::npos) << filter.err;
}

TEST(CellsTest, writesTheHeaderAloneOfAnEmptyDatabase) {
    const CommandTest test;
    test.put("MS2_Empty.pdb", samples::empty());
    EXPECT_EQ(test.run({"cells", "MS2_Empty.pdb"}).out, "Categories,What,Priority,Due,Hours,Done,Notes\r\n");
    EXPECT_EQ(Json::parse(test.run({"cells", "MS2_Empty.pdb", "--json"}).out)["records"], Json::array());
}

// info -------------------------------------------------------------------------------------------------------

TEST(InfoTest, tellsTheParts) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run({"info", "MS2_Small.pdb"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "Name: MS2_Small\n"
                          "Format version: 21\n"
                          "Records: 3\n"
                          "Last key: 3\n"
                          "Read only: no\n"
                          "Passwords: none\n"
                          "Fields: 15\n"
                          "   0  List                    Categories  (2 items)\n"
                          "   1  Text                    Title\n"
                          "   2  Integer                 Count\n"
                          "   3  Long                    Total\n"
                          "   4  Float                   Price  (2 decimals)\n"
                          "   5  List                    Kind  (3 items)\n"
                          "   6  Checkbox                Done\n"
                          "   7  Date                    Day\n"
                          "   8  Time                    Hour\n"
                          "   9  Memo                    Notes\n"
                          "  10  Radio Button            Size  (2 items, default 1)\n"
                          "  11  Auto Incremental        Number  (next 4)\n"
                          "  12  Key                     Key\n"
                          "  13  Integer                 Spin  (buttons)\n"
                          "  14  Date                    Changed  (default U)\n"
                          "Views: 1\n"
                          "   0  Short\n"
                          "Filters: 1\n"
                          "   0  Done\n"
                          "Forms: 1\n"
                          "   0  (3 items)\n");
}

TEST(InfoTest, tellsEveryAttributeAsJson) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const Json json = Json::parse(test.run({"info", "MS2_Small.pdb", "--json"}).out);
    EXPECT_EQ(json["name"], "MS2_Small");
    EXPECT_EQ(json["records"], 3);
    EXPECT_EQ(json["passwords"], Json::array());
    ASSERT_EQ(json["fields"].size(), 15U);
    EXPECT_EQ(json["fields"][5]["list"][1], (Json{{"id", 2}, {"text", "green"}}));
    EXPECT_EQ(json["fields"][11]["nextValue"], 4);
    EXPECT_EQ(json["views"][0]["columns"][1]["field"], 2);
    EXPECT_EQ(json["filters"][0]["condFields"], (Json{6, 0, 0}));
    EXPECT_EQ(json["forms"][0]["items"][2]["caption"], "Total");
}

// dump -------------------------------------------------------------------------------------------------------

platform::Bytes fromHex(const std::string& digits) {
    platform::Bytes bytes;
    for (std::size_t at = 0; at + 1 < digits.size(); at += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(at, 2), nullptr, 16)));
    return bytes;
}

void place(const platform::Bytes& bytes, std::size_t offset, platform::Bytes& file) {
    ASSERT_LE(offset + bytes.size(), file.size());
    std::copy(bytes.begin(), bytes.end(), file.begin() + static_cast<std::ptrdiff_t>(offset));
}

// As docs/commands.md says how a dump becomes the file again.
platform::Bytes rebuilt(const Json& dump) {
    platform::Bytes file(dump["file"]["size"].get<std::size_t>(), 0xEE);
    place(fromHex(dump["header"]["hex"]), 0, file);
    std::size_t entryAt = 78;
    for (const Json& record : dump["records"]) {
        const auto offset = record["offset"].get<std::uint32_t>();
        const auto id = record["uniqueId"].get<std::uint32_t>();
        platform::Bytes entry;
        for (int shift = 24; shift >= 0; shift -= 8)
            entry.push_back(static_cast<std::uint8_t>(offset >> shift));
        entry.push_back(record["attributes"]);
        for (int shift = 16; shift >= 0; shift -= 8)
            entry.push_back(static_cast<std::uint8_t>(id >> shift));
        place(entry, entryAt, file);
        entryAt += 8;
        const platform::Bytes bytes = fromHex(record["hex"]);
        if (!bytes.empty())
            place(bytes, offset, file);
    }
    for (const Json& gap : dump["gaps"])
        place(fromHex(gap["hex"]), gap["offset"], file);
    return file;
}

TEST(DumpTest, carriesEveryByte) {
    const CommandTest test;
    for (const samples::Sample& sample : samples::samples()) {
        const platform::Bytes bytes = sample.make();
        test.put(std::string(sample.fileName), bytes);
        const CommandResult result = test.run({"dump", std::string(sample.fileName)});
        EXPECT_EQ(result.code, 0) << result.err;
        EXPECT_EQ(rebuilt(Json::parse(result.out)), bytes) << sample.fileName;
    }
}

platform::Bytes dumpedAndRebuilt(const platform::Bytes& bytes) {
    std::ostringstream out;
    writeDump(bytes, "MS2_Some.pdb", out);
    return rebuilt(Json::parse(out.str()));
}

TEST(DumpTest, carriesEveryByteOfACutFile) {
    const platform::Bytes whole = smallDatabase();
    for (std::size_t length = 0; length < whole.size(); length += length < 100 ? 1 : 7) {
        const platform::Bytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(dumpedAndRebuilt(bytes), bytes) << length;
    }
}

TEST(DumpTest, carriesEveryByteOfADamagedFile) {
    const platform::Bytes whole = smallDatabase();
    for (std::size_t at = 0; at < whole.size(); at += 5)
        for (const std::uint8_t value : {0x00, 0x7F, 0x80, 0xFF}) {
            platform::Bytes bytes = whole;
            bytes[at] = value;
            EXPECT_EQ(dumpedAndRebuilt(bytes), bytes) << "byte " << at << " set to " << int{value};
        }
}

TEST(DumpTest, takesADamagedFileThatNobodyCouldOpen) {
    const CommandTest test;
    test.put("damaged.pdb", platform::Bytes(100, 0xFF));
    const CommandResult result = test.run({"dump", "damaged.pdb"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(rebuilt(Json::parse(result.out)), platform::Bytes(100, 0xFF));
}

TEST(DumpTest, tellsWhatTheBytesMean) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const Json dump = Json::parse(test.run({"dump", "MS2_Small.pdb"}).out);
    EXPECT_EQ(dump["file"]["name"], "MS2_Small.pdb");
    EXPECT_EQ(dump["header"]["name"], "MS2_Small");
    EXPECT_EQ(dump["header"]["creator"], "MOSS");
    EXPECT_EQ(dump["header"]["records"], 90);
    ASSERT_EQ(dump["records"].size(), 90U);
    EXPECT_EQ(dump["records"][0]["decoded"]["formatVersion"], 21);
    EXPECT_EQ(dump["records"][1]["decoded"]["fields"][4]["name"], "Price");
    EXPECT_EQ(dump["records"][2]["decoded"]["list"][1], (Json{{"id", 2}, {"text", "work"}}));
    EXPECT_EQ(dump["records"][13]["decoded"], (Json{{"slot", 11}, {"nextValue", 4}}));
    EXPECT_EQ(dump["records"][83]["decoded"]["lastKey"], 3);
    EXPECT_EQ(dump["records"][85]["decoded"]["views"][0]["name"], "Short");
    EXPECT_EQ(dump["records"][86]["decoded"]["filters"][0]["name"], "Done");
    const Json first = dump["records"][87]["decoded"];
    EXPECT_EQ(first["leading"], 87);
    EXPECT_EQ(first["category"], 2);
    EXPECT_EQ(first["key"], 1);
    EXPECT_EQ(first["end"], "end mark");
    EXPECT_EQ(first["cells"][0]["text"], "Élan, \"quoted\"");
    EXPECT_EQ(first["cells"][1]["value"], 12);
    EXPECT_EQ(first["cells"][3]["value"], 3.5);
    EXPECT_EQ(first["cells"][4]["value"], 2);
    EXPECT_EQ(first["cells"][6]["value"], (Json{{"year", 2003}, {"month", 1}, {"day", 2}}));
    EXPECT_EQ(first["cells"][7]["value"], (Json{{"hour", 13}, {"minute", 5}, {"second", 9}}));
    EXPECT_EQ(dump["gaps"], (Json{{{"offset", 798}, {"hex", "0000"}}})); // behind 78 + 90 * 8 bytes
}

TEST(DumpTest, asksForThePassword) {
    const CommandTest test;
    test.put("MS2_Locked.pdb", lockedDatabase());
    test.put("password", std::string("secret\n"));
    EXPECT_EQ(test.run({"dump", "MS2_Locked.pdb", "--password-file", "password"}).code, 0);
}

} // namespace
} // namespace tallybook::cli
