#include "cli/rows/RowText.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::cli {
namespace {

struct RowCase {
    const char* name;
    RowForm form;
    std::vector<std::string> cells;
    std::string row;
};

class RowTextTest : public testing::TestWithParam<RowCase> {};

TEST_P(RowTextTest, writesTheRow) {
    RowText row(GetParam().form);
    for (const std::string& cell : GetParam().cells)
        row.add(cell);
    EXPECT_EQ(row.finish(), GetParam().row);
}

INSTANTIATE_TEST_SUITE_P(Csv, RowTextTest,
                         testing::Values(RowCase{"plain", RowForm::Csv, {"a", "b c"}, "a,b c\r\n"},
                                         RowCase{"emptyCells", RowForm::Csv, {"", "", ""}, ",,\r\n"},
                                         RowCase{"oneEmptyCell", RowForm::Csv, {""}, "\"\"\r\n"},
                                         RowCase{"comma", RowForm::Csv, {"a,b", "c"}, "\"a,b\",c\r\n"},
                                         RowCase{
                                             "doubleQuote", RowForm::Csv, {"say \"yes\""}, "\"say \"\"yes\"\"\"\r\n"},
                                         RowCase{"onlyAQuote", RowForm::Csv, {"\""}, "\"\"\"\"\r\n"},
                                         RowCase{"lineFeed", RowForm::Csv, {"a\nb"}, "\"a\nb\"\r\n"},
                                         RowCase{"carriageReturn", RowForm::Csv, {"a\rb"}, "\"a\rb\"\r\n"},
                                         RowCase{"tabStands", RowForm::Csv, {"a\tb"}, "a\tb\r\n"},
                                         RowCase{"blanksStand", RowForm::Csv, {" a ", "b"}, " a ,b\r\n"}),
                         [](const auto& tested) { return tested.param.name; });

INSTANTIATE_TEST_SUITE_P(Tsv, RowTextTest,
                         testing::Values(RowCase{"plain", RowForm::Tsv, {"a", "b,\"c\""}, "a\tb,\"c\"\n"},
                                         RowCase{"emptyCells", RowForm::Tsv, {"", ""}, "\t\n"},
                                         RowCase{"tab", RowForm::Tsv, {"a\tb"}, "a\\tb\n"},
                                         RowCase{"lineEnds", RowForm::Tsv, {"a\r\nb"}, "a\\r\\nb\n"},
                                         RowCase{"backslash", RowForm::Tsv, {"a\\nb"}, "a\\\\nb\n"}),
                         [](const auto& tested) { return tested.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Json, RowTextTest,
    testing::Values(RowCase{"plain", RowForm::Json, {"a", "b"}, "\"a\",\"b\""},
                    RowCase{"empty", RowForm::Json, {""}, "\"\""},
                    RowCase{"escapes", RowForm::Json, {"\"\\\n\r\t"}, "\"\\\"\\\\\\n\\r\\t\""},
                    RowCase{"control", RowForm::Json, {std::string("\x01\x1F")}, "\"\\u0001\\u001f\""},
                    RowCase{"utf8Stands", RowForm::Json, {"\xC3\xA9"}, "\"\xC3\xA9\""}),
    [](const auto& tested) { return tested.param.name; });

TEST(RowTextTest, startsAnewBehindAFinishedRow) {
    RowText row(RowForm::Tsv);
    row.add("a");
    EXPECT_EQ(row.finish(), "a\n");
    row.add("b");
    row.add("c");
    EXPECT_EQ(row.finish(), "b\tc\n");
}

} // namespace
} // namespace tallybook::cli
