#include "core/convert/RowTransfer.h"

#include <gtest/gtest.h>

namespace tallybook::convert {
namespace {

TEST(RowTransferTest, doublesQuotesInsideQuotes) {
    EXPECT_EQ(AddQuots("say \"hi\""), "\"say \"\"hi\"\"\"");
    EXPECT_EQ(AddQuots(""), "\"\"");
}

TEST(RowTransferTest, mapsTheNamesOfTwoTypes) {
    EXPECT_EQ(MaptoType("Radio Button"), "radio");
    EXPECT_EQ(MaptoType("Auto Incremental"), "auto");
    EXPECT_EQ(MaptoType("DB Join"), "DB Join");
}

TEST(RowTransferTest, tellsAWholeRecordByItsQuotes) {
    EXPECT_TRUE(GetWholeRecord("a,b"));
    EXPECT_TRUE(GetWholeRecord("\"a\",b"));
    EXPECT_FALSE(GetWholeRecord("\"a"));
}

TEST(RowTransferTest, takesTheItemOfANumber) {
    const std::string line = "a,\"b,c\",\"\",\"say \"hi\"\"";
    EXPECT_EQ(nthItem(line, 1, ','), "a");
    EXPECT_EQ(nthItem(line, 2, ','), "b,c");
    EXPECT_EQ(nthItem(line, 3, ','), "");
    EXPECT_EQ(nthItem(line, 4, ','), "say \"hi\"");
    EXPECT_EQ(nthItem(line, 5, ','), "");
    EXPECT_EQ(nthItem(line, 0, ','), "");
}

TEST(RowTransferTest, erasesAColumn) {
    EXPECT_EQ(EraseField("a,b,c", 1, ','), "b,c");
    EXPECT_EQ(EraseField("a,b,c", 2, ','), "a,c");
    EXPECT_EQ(EraseField("a,b,c", 3, ','), "a,b");
    EXPECT_EQ(EraseField("a,b,c", 4, ','), "a,b,c");
    EXPECT_EQ(EraseField("a", 1, ','), "a");
    EXPECT_EQ(EraseField("", 1, ','), "");
    EXPECT_EQ(EraseField("\"a,b\",c,d", 2, ','), "\"a,b\",d");
}

TEST(RowTransferTest, putsALookedUpValueIntoItsColumn) {
    EXPECT_EQ(InsertLookupField("a,,c", 2, "x \"y\"", ','), "a,\"x \"\"y\"\"\",c");
    EXPECT_EQ(InsertLookupField("a,b", 2, "x", ','), "a,\"x\"");
    EXPECT_EQ(InsertLookupField("a", 2, "x", ','), "a");
}

} // namespace
} // namespace tallybook::convert
