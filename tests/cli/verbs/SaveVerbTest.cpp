// save, and the samples that it leaves as they are.
#include "PalmBitmap.h"
#include "Samples.h"
#include "cli/CommandRunner.h"
#include "cli/TestBooks.h"

#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace tallybook::cli {
namespace {

// Bytes 36 to 43, the dates of creation and modification, are those of the save.
platform::Bytes withoutDates(platform::Bytes bytes) {
    for (std::size_t at = 36; at < 44 && at < bytes.size(); ++at)
        bytes[at] = 0;
    return bytes;
}

TEST(SaveTest, changesNothingButTheDates) {
    const CommandTest test;
    for (const samples::Sample& sample : samples::samples()) {
        const std::string name(sample.fileName);
        test.put(name, sample.make());
        const CommandResult result = test.run({"save", name, "MS2_Saved.pdb"});
        EXPECT_EQ(result.code, 0) << name << ": " << result.err;
        EXPECT_EQ(result.out + result.err, "");
        EXPECT_EQ(withoutDates(test.bytes("MS2_Saved.pdb")), withoutDates(sample.make())) << name;
        EXPECT_EQ(test.bytes(name), sample.make()) << name;
    }
    EXPECT_TRUE(test.temporaryFolderIsEmpty());
}

TEST(SaveTest, writesTheDateOfTheSave) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    ASSERT_EQ(test.run({"save", "MS2_Small.pdb", "MS2_Out.pdb"}).code, 0);
    const platform::Bytes saved = test.bytes("MS2_Out.pdb");
    const platform::Bytes before = smallDatabase();
    EXPECT_FALSE(std::equal(saved.begin() + 36, saved.begin() + 40, before.begin() + 36));
    EXPECT_TRUE(std::equal(saved.begin() + 36, saved.begin() + 40, saved.begin() + 40));
}

TEST(SaveTest, replacesAFileAndMaySaveOverItsOwn) {
    const CommandTest test;
    test.put("MS2_Inventory.pdb", samples::inventory());
    test.put("MS2_Out.pdb", std::string("something else"));
    EXPECT_EQ(test.run({"save", "MS2_Inventory.pdb", "MS2_Out.pdb"}).code, 0);
    EXPECT_EQ(withoutDates(test.bytes("MS2_Out.pdb")), withoutDates(samples::inventory()));
    EXPECT_EQ(test.run({"save", "MS2_Inventory.pdb", "MS2_Inventory.pdb"}).code, 0);
    EXPECT_EQ(withoutDates(test.bytes("MS2_Inventory.pdb")), withoutDates(samples::inventory()));
}

TEST(SaveTest, putsUnderscoresForBlanksIntoTheNameOnDisk) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run({"save", "MS2_Small.pdb", "MS2_My books.pdb"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, said("MS2_Small.pdb", "Saved as \"" + test.path("MS2_My_books.pdb").string() + "\"."));
    EXPECT_TRUE(std::filesystem::exists(test.path("MS2_My_books.pdb")));
}

// What is written can be opened, and two files do not get one name in their headers.
TEST(SaveTest, refusesTheNamesThatNoNewFileMayHave) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    test.put("script", std::string("add\nsave\n"));
    for (const std::string name : {"Out.pdb", "ms2_Out.pdb", "MS2_.pdb", "MS2_ .pdb",
                                   "MS2_1234567890123456789012345678.pdb", "MS2_\u65E5.pdb", "MS2_a:b.pdb"}) {
        const std::vector<std::vector<std::string>> calls = {
            {"save", "MS2_Small.pdb", name},
            {"recalc", "MS2_Small.pdb", "--out", name},
            {"edit", "MS2_Small.pdb", "--out", name, "--script", "script"},
        };
        for (const auto& call : calls) {
            const CommandResult result = test.run(call);
            EXPECT_EQ(result.code, 3) << call[0] << ' ' << name;
            EXPECT_NE(result.err.find("Filename not valid."), std::string::npos) << call[0] << ' ' << result.err;
            EXPECT_FALSE(std::filesystem::exists(test.path(name))) << call[0] << ' ' << name;
        }
    }
    EXPECT_EQ(test.run({"save", "MS2_Small.pdb", "MS2_123456789012345678901234567.pdb"}).code, 0);
}

TEST(SaveTest, replacesNoFileThatWasNotNamedUnasked) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    test.put("MS2_My_books.pdb", std::string("old"));
    EXPECT_EQ(test.run({"save", "MS2_Small.pdb", "MS2_My books.pdb"}).code, 3);
    EXPECT_EQ(test.text("MS2_My_books.pdb"), "old");
    EXPECT_EQ(test.run({"save", "MS2_Small.pdb", "MS2_My books.pdb", "--yes"}).code, 0);
    EXPECT_EQ(withoutDates(test.bytes("MS2_My_books.pdb")), withoutDates(smallDatabase()));
    // The file of the very name is what was named.
    test.put("MS2_My books.pdb", std::string("old"));
    test.put("MS2_My_books.pdb", std::string("other"));
    const CommandResult result = test.run({"save", "MS2_Small.pdb", "MS2_My books.pdb"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(withoutDates(test.bytes("MS2_My books.pdb")), withoutDates(smallDatabase()));
    EXPECT_EQ(test.text("MS2_My_books.pdb"), "other");
}

TEST(SaveTest, leavesADeletedRecordOut) {
    const CommandTest test;
    platform::Bytes bytes = smallDatabase();
    bytes[78 + 88 * 8 + 4] |= 0x80; // the entry of "Second"
    test.put("MS2_Small.pdb", bytes);
    ASSERT_EQ(test.run({"save", "MS2_Small.pdb", "MS2_Out.pdb"}).code, 0);
    EXPECT_EQ(test.bytes("MS2_Out.pdb")[77], 89);
    EXPECT_EQ(test.run({"check", "MS2_Out.pdb"}).out, "");
    const std::string cells = test.run({"cells", "MS2_Out.pdb"}).out;
    EXPECT_EQ(cells.find("Second"), std::string::npos);
    EXPECT_NE(cells.find("home,Third,"), std::string::npos);
}

TEST(SaveTest, namesTheFolderThatIsNotThere) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run({"save", "MS2_Small.pdb", "none/MS2_Out.pdb"});
    EXPECT_EQ(result.code, 3);
    EXPECT_NE(result.err.find(test.path("none").string()), std::string::npos) << result.err;
}

TEST(SaveTest, leavesTheTargetOfARefusedOpen) {
    const CommandTest test;
    test.put("MS2_Out.pdb", std::string("old"));
    EXPECT_EQ(test.run({"save", "MS2_None.pdb", "MS2_Out.pdb"}).code, 3);
    EXPECT_EQ(test.text("MS2_Out.pdb"), "old");
}

// The samples ------------------------------------------------------------------------------------------------

platform::Bytes fileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(SamplesTest, areWhatTheirProgramMakes) {
    const std::filesystem::path folder = std::filesystem::path(TALLYBOOK_SOURCE_DIR) / "samples";
    std::set<std::string> expected;
    for (const samples::Sample& sample : samples::samples()) {
        expected.emplace(sample.fileName);
        EXPECT_EQ(fileBytes(folder / sample.fileName), sample.make()) << sample.fileName << ": run `make samples`";
    }
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".pdb")
            found.insert(entry.path().filename().string());
    EXPECT_EQ(found, expected);
}

TEST(SamplesTest, theLockedDatabaseOfTheTestsIsWhatItsProgramMakes) {
    const std::filesystem::path path = std::filesystem::path(TALLYBOOK_SOURCE_DIR) / "tests/data/MS2_Locked.pdb";
    EXPECT_EQ(fileBytes(path), lockedDatabase());
}

TEST(SamplesTest, haveNothingWrong) {
    const CommandTest test;
    for (const samples::Sample& sample : samples::samples()) {
        test.put(std::string(sample.fileName), sample.make());
        const CommandResult result = test.run({"check", std::string(sample.fileName)});
        EXPECT_EQ(result.code, 0) << sample.fileName << '\n' << result.out;
    }
}

TEST(SamplesTest, aLargeTableHasTheShapeAskedFor) {
    const CommandTest test;
    test.put("MS2_Large.pdb", samples::large({.records = 500, .fields = 80, .filled = 10}));
    EXPECT_EQ(test.run({"check", "MS2_Large.pdb"}).out, "");
    const std::string info = test.run({"info", "MS2_Large.pdb"}).out;
    EXPECT_NE(info.find("Records: 500\n"), std::string::npos);
    EXPECT_NE(info.find("Fields: 81\n"), std::string::npos);
    EXPECT_EQ(samples::large({.records = 50}), samples::large({.records = 50}));
}

// 600 words, each third with an accent.
std::vector<std::string> madeUpWords() {
    std::vector<std::string> words;
    for (int i = 0; i < 600; ++i) {
        const std::string letters = {static_cast<char>('a' + i % 26), static_cast<char>('a' + i / 26)};
        words.push_back((i % 3 == 0 ? "\xC3\xA9t\xC3\xA9" : "word") + letters);
    }
    return words;
}

TEST(SamplesTest, aLargeTableOfTextsIsMadeOfItsWords) {
    const CommandTest test;
    const std::vector<std::string> words = madeUpWords();
    const samples::LargeTable table{.records = 300, .kind = samples::LargeKind::Texts, .words = words};
    test.put("MS2_Texts.pdb", samples::large(table));
    EXPECT_EQ(test.run({"check", "MS2_Texts.pdb"}).out, "");
    EXPECT_NE(test.run({"cells", "MS2_Texts.pdb", "--csv"}).out.find("\xC3\xA9t\xC3\xA9"), std::string::npos);
    EXPECT_EQ(samples::large(table), samples::large(table));
    EXPECT_THROW(samples::large({.records = 1, .kind = samples::LargeKind::Texts}), std::runtime_error);
}

TEST(SamplesTest, aLargeTableOfNumbersHasNothingWrong) {
    const CommandTest test;
    test.put("MS2_Numbers.pdb", samples::large({.records = 300, .kind = samples::LargeKind::Numbers}));
    EXPECT_EQ(test.run({"check", "MS2_Numbers.pdb"}).out, "");
}

// 4 pixels by 2, 16 greys: black, two greys, white; then a white row.
TEST(PalmBitmapTest, isWrittenInRuns) {
    const std::array<std::string_view, 2> rows = {"@*- ", "    "};
    const platform::Bytes expected = {0x00, 0x04, 0x00, 0x02, 0x00, 0x02, 0x80, 0x00, 0x04, 0x02, 0x00, 0x00,
                                      0x00, 0x01, 0x00, 0x00, 0x00, 0x08, 0x01, 0xFA, 0x01, 0x50, 0x02, 0x00};
    EXPECT_EQ(samples::greyBitmap(rows), expected);
}

} // namespace
} // namespace tallybook::cli
