#include "core/model/TextColumn.h"

#include <charconv>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace tallybook::model {
namespace {

// Words of up to four digits, as they stand.
class DigitCoder : public CellCoder {
public:
    std::optional<std::uint32_t> encode(std::string_view text) override {
        std::uint32_t word = 0;
        const auto read = std::from_chars(text.data(), text.data() + text.size(), word);
        const bool whole = read.ec == std::errc{} && read.ptr == text.data() + text.size();
        return whole && text.size() <= 4 && std::to_string(word) == text ? std::optional(word) : std::nullopt;
    }
    std::string_view text(std::uint32_t word, std::string& scratch) const override {
        return scratch = std::to_string(word);
    }
};

std::string textOf(const TextColumn& column, std::uint32_t row) {
    std::string scratch;
    return std::string(column.text(row, scratch));
}

// What eachText() tells, as "row:text " for each.
std::string allOf(const TextColumn& column) {
    std::string all;
    column.eachText([&](std::uint32_t row, std::string_view text) {
        all += std::to_string(row) + ':' + std::string(text) + ' ';
    });
    return all;
}

TEST(TextColumn, tellsItsTextsInTheOrderOfRows) {
    TextColumn column;
    EXPECT_EQ(allOf(column), "");
    column.setCoder(std::make_unique<DigitCoder>());
    const std::pair<std::uint32_t, const char*> cells[] = {{64, "plain"}, {3, "12"},    {70000, "last"},
                                                           {255, "255"},  {256, "256"}, {0, "front"}};
    for (const auto& [row, text] : cells)
        column.setText(row, text);
    EXPECT_EQ(allOf(column), "0:front 3:12 64:plain 255:255 256:256 70000:last ");
    column.erase(64);
    column.setText(255, "");
    EXPECT_EQ(allOf(column), "0:front 3:12 256:256 70000:last ");
}

TEST(TextColumn, isEmptyAtFirst) {
    const TextColumn column;
    EXPECT_FALSE(column.has(0));
    EXPECT_EQ(textOf(column, 70000), "");
    EXPECT_EQ(column.word(3), std::nullopt);
    EXPECT_EQ(column.coder(), nullptr);
}

TEST(TextColumn, keepsTextsOfEveryLengthAndByte) {
    TextColumn column;
    std::string bytes;
    for (int c = 0; c < 256; ++c)
        bytes += static_cast<char>(c);
    std::vector<std::string> texts{"a", std::string(1, '\0'), bytes};
    for (const std::size_t length : {253u, 254u, 255u, 256u, 4096u, 70000u})
        texts.emplace_back(length, 'x');
    for (std::size_t row = 0; row < texts.size(); ++row)
        column.setText(static_cast<std::uint32_t>(row * 100), texts[row]);
    for (std::size_t row = 0; row < texts.size(); ++row)
        EXPECT_EQ(textOf(column, static_cast<std::uint32_t>(row * 100)), texts[row]) << row;
}

TEST(TextColumn, showsANulAmongItsTextsOnlyWhereOneHasIt) {
    const auto hasNul = [](const TextColumn& column, std::uint32_t block) {
        return column.plainTexts(block).find('\0') != std::string_view::npos;
    };
    TextColumn column;
    for (const std::uint32_t length : {1u, 254u, 255u, 256u, 4096u, 70000u})
        column.setText(length % 256, std::string(length, 'x'));
    EXPECT_FALSE(hasNul(column, 0));
    column.setText(600, std::string("a\0b", 3)); // a block of its own
    EXPECT_FALSE(hasNul(column, 0));
    EXPECT_TRUE(hasNul(column, 2));
}

TEST(TextColumn, takesABlockThatWasGathered) {
    TextColumn column;
    column.setText(250, "goes");
    column.setText(300, "stays");
    TextStage stage;
    EXPECT_TRUE(stage.empty());
    stage.addText(3, "three");
    stage.addWord(7, 8);
    stage.addText(255, std::string(300, 'y'));
    EXPECT_TRUE(stage.isBehind(256));
    EXPECT_FALSE(stage.isBehind(255));
    column.setCoder(std::make_unique<DigitCoder>());
    column.setBlock(0, stage);
    EXPECT_EQ(textOf(column, 3), "three");
    EXPECT_EQ(column.word(7), 8u);
    EXPECT_EQ(textOf(column, 255), std::string(300, 'y'));
    EXPECT_FALSE(column.has(250));
    EXPECT_EQ(textOf(column, 300), "stays");
    EXPECT_EQ(column.cells(), 4u);
    column.setText(4, "four"); // a block like any other from now on
    column.erase(3);
    EXPECT_EQ(textOf(column, 4), "four");
    EXPECT_EQ(textOf(column, 255), std::string(300, 'y'));
    stage.clear();
    stage.addText(0, "next");
    column.setBlock(5, stage);
    EXPECT_EQ(textOf(column, 1280), "next");
    EXPECT_FALSE(column.has(1024));
}

TEST(TextColumn, showsABlockAsItLies) {
    TextColumn column;
    column.setCoder(std::make_unique<DigitCoder>());
    column.setText(256, "5");
    column.setText(511, "plain");
    const StoredBlock block = column.storedBlock(1);
    ASSERT_EQ(block.words.size(), 2u);
    EXPECT_TRUE(bitOf(block.filled, 0));
    EXPECT_TRUE(bitOf(block.filled, 255));
    EXPECT_FALSE(bitOf(block.plain, 0));
    EXPECT_TRUE(bitOf(block.plain, 255));
    EXPECT_EQ(block.texts->at(block.words[1]), "plain");
    EXPECT_TRUE(column.storedBlock(0).words.empty());
    EXPECT_TRUE(column.storedBlock(9).words.empty());
}

TEST(TextColumn, takesAnEmptyTextForAnAbsentCell) {
    TextColumn column;
    column.setText(7, "text");
    EXPECT_TRUE(column.has(7));
    column.setText(7, "");
    EXPECT_FALSE(column.has(7));
    column.setText(8, "");
    EXPECT_FALSE(column.has(8));
    column.erase(100000);
}

TEST(TextColumn, keepsAWordWhereTheCoderHasOne) {
    TextColumn column;
    column.setCoder(std::make_unique<DigitCoder>());
    column.setText(0, "42");
    column.setText(1, "042");
    EXPECT_EQ(column.word(0), 42u);
    EXPECT_EQ(column.word(1), std::nullopt);
    EXPECT_EQ(column.word(2), std::nullopt);
    EXPECT_EQ(textOf(column, 0), "42");
    EXPECT_EQ(textOf(column, 1), "042");
    column.setWord(1, 7);
    EXPECT_EQ(textOf(column, 1), "7");
    column.setText(0, "plain now");
    EXPECT_EQ(column.word(0), std::nullopt);
    EXPECT_EQ(textOf(column, 0), "plain now");
}

TEST(TextColumn, keepsItsTextsWhenTheCoderChanges) {
    TextColumn column;
    column.setText(0, "42");
    column.setText(300, "abc");
    column.setCoder(std::make_unique<DigitCoder>());
    EXPECT_EQ(column.word(0), 42u);
    EXPECT_EQ(textOf(column, 300), "abc");
    column.setCoder(nullptr);
    EXPECT_EQ(column.word(0), std::nullopt);
    EXPECT_EQ(textOf(column, 0), "42");
    EXPECT_EQ(textOf(column, 300), "abc");
}

TEST(TextColumn, packsABlockThatIsWrittenOverAndOver) {
    TextColumn column;
    column.setText(0, "stays");
    for (int i = 0; i < 5000; ++i)
        column.setText(1, std::string(100, static_cast<char>('a' + i % 26)));
    column.setText(2, "last");
    EXPECT_EQ(textOf(column, 0), "stays");
    EXPECT_EQ(textOf(column, 1), std::string(100, static_cast<char>('a' + 4999 % 26)));
    EXPECT_EQ(textOf(column, 2), "last");
}

// A text of any kind: a word of the coder, nothing, something short or something long.
std::string randomText(std::mt19937& random) {
    switch (random() % 8) {
    case 0:
        return "";
    case 1:
        return std::string(random() % 600, static_cast<char>('a' + random() % 26));
    case 2:
    case 3:
        return "text " + std::to_string(random() % 1000);
    default:
        return std::to_string(random() % 20000);
    }
}

TEST(TextColumn, agreesWithPlainTextsThroughRandomChanges) {
    std::mt19937 random(5);
    TextColumn column;
    std::vector<std::string> expected(1000);
    std::string scratch;
    for (int step = 0; step < 60000; ++step) {
        const auto row = static_cast<std::uint32_t>(random() % expected.size());
        if (random() % 5 == 0) {
            column.erase(row);
            expected[row].clear();
        } else {
            expected[row] = randomText(random);
            column.setText(row, expected[row]);
        }
        if (random() % 8000 == 0)
            column.setCoder(column.coder() ? nullptr : std::make_unique<DigitCoder>());
        const auto asked = static_cast<std::uint32_t>(random() % expected.size());
        ASSERT_EQ(column.text(asked, scratch), expected[asked]);
        ASSERT_EQ(column.has(asked), !expected[asked].empty());
    }
    std::string all;
    for (std::size_t row = 0; row < expected.size(); ++row)
        if (!expected[row].empty())
            all += std::to_string(row) + ':' + expected[row] + ' ';
    EXPECT_EQ(allOf(column), all);
    for (std::uint32_t row = 0; row < expected.size(); ++row)
        ASSERT_EQ(textOf(column, row), expected[row]);
}

// 900 rows of words and plain texts, one in five without any.
TextColumn mixedColumn(std::mt19937& random) {
    TextColumn column;
    column.setCoder(std::make_unique<DigitCoder>());
    for (std::uint32_t row = 0; row < 900; ++row)
        if (random() % 5 != 0)
            column.setText(row, randomText(random));
    return column;
}

TEST(TextColumn, copiesTheRowsThatAreAskedForAlone) {
    std::mt19937 random(7);
    const TextColumn source = mixedColumn(random);
    for (const std::uint64_t groups : {0u, 1u, 5u, 15u, 40u}) {
        std::vector<std::uint64_t> rows(groups);
        for (std::uint64_t& group : rows)
            group = random() % 2 == 0 ? ~std::uint64_t{0} : std::uint64_t{random()} << 32 | random();
        std::fill_n(rows.begin(), std::min<std::uint64_t>(groups, 4), ~std::uint64_t{0}); // a block as a whole
        std::string expected;
        source.eachText([&](std::uint32_t row, std::string_view text) {
            if (row / 64 < groups && (rows[row / 64] >> row % 64 & 1) != 0)
                expected += std::to_string(row) + ':' + std::string(text) + ' ';
        });
        TextColumn copy = mixedColumn(random);
        copy.copyRows(source, rows);
        EXPECT_EQ(allOf(copy), expected) << groups;
        copy.setText(0, "changed");
        copy.setText(3000, "new");
        EXPECT_NE(textOf(source, 0), "changed");
        EXPECT_EQ(textOf(copy, 3000), "new");
    }
}

TEST(TextColumn, tellsTheCellsOfABlockAsTheyAreStored) {
    std::mt19937 random(8);
    const TextColumn column = mixedColumn(random);
    for (std::uint32_t block = 0; block < 6; ++block) {
        RowBits told{};
        column.eachStored(block, [&](std::uint32_t place, const StoredCell& cell) {
            const StoredCell expected = column.stored(block * kBlockRows + place);
            EXPECT_EQ(cell.kind, expected.kind);
            EXPECT_EQ(cell.word, expected.word);
            EXPECT_EQ(cell.text, expected.text);
            setBit(told, place);
        });
        EXPECT_EQ(told, column.filledInBlock(block)) << block;
        for (std::uint32_t place = 0; place < kBlockRows; ++place)
            EXPECT_EQ(bitOf(told, place), column.has(block * kBlockRows + place));
    }
}

} // namespace
} // namespace tallybook::model
