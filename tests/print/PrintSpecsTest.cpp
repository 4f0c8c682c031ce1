#include "core/print/PrintSpecs.h"

#include "support/TestServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace tallybook::test {
namespace {

using print::PrintSpec;
using print::PrintSpecTable;
using testing::ElementsAre;

PrintSpec books() {
    PrintSpec spec;
    spec.UserName = "Ann";
    spec.DatabasePath = "/home/ann/MS2_Books.pdb";
    spec.Paper = "1";
    spec.Portrait = "0";
    spec.TopMargin = "0.75";
    spec.BottomMargin = "1.00";
    spec.LeftMargin = "0.25";
    spec.RightMargin = "3.00";
    spec.Date = "1";
    spec.FileName = "0";
    spec.GridLines = "1";
    spec.PageNumber = "0";
    spec.RecordNumber = "1";
    spec.Title = "My books, sorted";
    spec.Memo = "0";
    return spec;
}

constexpr const char* kBooksBytes =
    "1\r\n\"Ann\"\r\n\"/home/ann/MS2_Books.pdb\"\r\n\"1\"\r\n\"0\"\r\n\"0.75\"\r\n"
    "\"1.00\"\r\n\"0.25\"\r\n\"3.00\"\r\n\"1\"\r\n\"0\"\r\n\"1\"\r\n\"0\"\r\n\"1\"\r\n"
    "\"My books, sorted\"\r\n\"0\"\r\n";

TEST(PrintSpecs, areACountAndFifteenQuotedLinesEach) {
    EXPECT_EQ(print::printSpecBytes({books()}), kBooksBytes);
    EXPECT_EQ(print::printSpecBytes(PrintSpecTable(2)).substr(0, 8), "2\r\n\"\"\r\n\"");
}

TEST(PrintSpecs, comeBackAsTheyWere) {
    const print::ParsedPrintSpecs parsed = print::parsePrintSpecs(print::printSpecBytes({books(), {}, books()}));
    EXPECT_TRUE(parsed.whole);
    EXPECT_THAT(parsed.table, ElementsAre(books(), PrintSpec{}, books()));
}

TEST(PrintSpecs, aFirstItemThatIsNoNumberCountsAsOne) {
    const print::ParsedPrintSpecs parsed = print::parsePrintSpecs("what?" + std::string(kBooksBytes + 1));
    EXPECT_TRUE(parsed.whole);
    EXPECT_THAT(parsed.table, ElementsAre(books()));
}

TEST(PrintSpecs, aShortFileKeepsWhatIsComplete) {
    const std::string two = print::printSpecBytes({books(), books()});
    const print::ParsedPrintSpecs parsed = print::parsePrintSpecs(two.substr(0, two.size() - 4));
    EXPECT_FALSE(parsed.whole);
    EXPECT_THAT(parsed.table, ElementsAre(books()));
    EXPECT_THAT(print::parsePrintSpecs("").table, ElementsAre(PrintSpec{}));
    EXPECT_THAT(print::parsePrintSpecs("2000000000\r\n").table, ElementsAre(PrintSpec{}));
}

TEST(PrintSpecs, everyPrefixOfAFileIsRead) {
    const std::string bytes = print::printSpecBytes({books(), books()});
    for (std::size_t size = 0; size <= bytes.size(); ++size)
        EXPECT_GE(print::parsePrintSpecs(bytes.substr(0, size)).table.size(), 1U) << size << " bytes";
}

TEST(PrintSpecs, aDoubleQuoteOrALineBreakCannotBeStored) {
    EXPECT_TRUE(print::canBeStored("Books, 'new' ones"));
    EXPECT_FALSE(print::canBeStored("17\" screens"));
    EXPECT_FALSE(print::canBeStored("two\r\nlines"));
}

TEST(PrintSpecs, areFoundByUserAndPathExactly) {
    PrintSpecTable table = {{}, books(), books()};
    table[2].Title = "second";
    EXPECT_EQ(print::findSpec(table, "Ann", "/home/ann/MS2_Books.pdb"), &table[1]);
    EXPECT_EQ(print::findSpec(table, "ann", "/home/ann/MS2_Books.pdb"), nullptr);
    EXPECT_EQ(&print::specFor(table, "Ann", "/home/ann/MS2_Books.pdb"), &table[1]);
    EXPECT_EQ(print::specFor(table, "Bob", "/x").UserName, "Bob");
    ASSERT_EQ(table.size(), 4U);
    EXPECT_EQ(table[3].DatabasePath, "/x");
}

TEST(PrintSpecs, aMissingFileGivesOneEmptyElement) {
    TestServices services;
    EXPECT_THAT(print::ReadPrintSpecs(services), ElementsAre(PrintSpec{}));
}

TEST(PrintSpecs, areWrittenToTheProgramsFolderAndReadBack) {
    TestServices services;
    EXPECT_TRUE(print::WritePrintSpecs({books()}, services));
    EXPECT_TRUE(services.files.state("/app/MS2info.dat").value().kind == platform::FileKind::Regular);
    EXPECT_THAT(print::ReadPrintSpecs(services), ElementsAre(books()));
}

TEST(PrintSpecs, anElementThatCannotBeStoredCostsNoOther) {
    TestServices services;
    PrintSpec odd = books();
    odd.DatabasePath = "/home/ann/MS2_17\".pdb";
    EXPECT_TRUE(print::WritePrintSpecs({odd, books()}, services));
    EXPECT_THAT(print::ReadPrintSpecs(services), ElementsAre(books()));
}

TEST(PrintSpecs, aShortFileIsReportedUnderItsTag) {
    TestServices services;
    services.files.put("/app/MS2info.dat", {'2', '\r', '\n', '"', 'A', '"'});
    services.user.errorAnswers = {platform::ErrorAnswer::Leave};
    EXPECT_THAT(print::ReadPrintSpecs(services), ElementsAre(PrintSpec{}));
    ASSERT_EQ(services.user.errors.size(), 1U);
    EXPECT_EQ(services.user.errors[0].tag, "Printing : ReadPrintSpecs");
}

} // namespace
} // namespace tallybook::test
