#include "core/calc/cells/CellCoders.h"

#include "core/calc/values/SingleText.h"
#include "support/Regions.h"

#include <bit>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace tallybook::calc {
namespace {

using model::CellCoder;
using model::FieldType;

std::string textOf(const CellCoder& coder, std::uint32_t word) {
    std::string scratch;
    return std::string(coder.text(word, scratch));
}

// The promise of every coder: what it encodes comes back letter by letter.
void expectExact(CellCoder& coder, const std::string& text) {
    if (const auto word = coder.encode(text)) {
        ASSERT_EQ(textOf(coder, *word), text);
    }
}

void expectTaken(CellCoder& coder, const std::string& text, std::uint32_t word) {
    EXPECT_EQ(coder.encode(text), word) << text;
    EXPECT_EQ(textOf(coder, word), text);
}

void expectLeft(CellCoder& coder, const std::string& text) {
    EXPECT_EQ(coder.encode(text), std::nullopt) << text;
}

std::uint32_t bitsOf(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

// Texts near the usual forms: the letters of numbers, dates and times in random order.
std::string scribble(std::mt19937& random) {
    static constexpr std::string_view kLetters = "0123456789001125-+.,:/ APM";
    std::string text(random() % 14, ' ');
    for (char& c : text)
        c = kLetters[random() % kLetters.size()];
    return text;
}

TEST(WholeCoder, takesWholeNumbersAsTheyAreWritten) {
    const auto coder = makeWholeCoder();
    expectTaken(*coder, "0", 0);
    expectTaken(*coder, "12", 12);
    expectTaken(*coder, "-1", 0xFFFFFFFF);
    expectTaken(*coder, "2147483647", 0x7FFFFFFF);
    expectTaken(*coder, "-2147483648", 0x80000000);
}

TEST(WholeCoder, leavesEveryOtherFormAlone) {
    const auto coder = makeWholeCoder();
    for (const char* text : {"", "-", "-0", "00", "007", "+5", " 5", "5 ", "1,000", "1.0", "2147483648",
                             "-2147483649", "99999999999999999999", "abc", "1e5"})
        expectLeft(*coder, text);
}

TEST(DecimalCoder, takesTheSingleNearestToTheText) {
    const auto whole = makeDecimalCoder(0, test::us());
    expectTaken(*whole, "12", bitsOf(12.0f));
    expectTaken(*whole, "-8388607", bitsOf(-8388607.0f));
    expectTaken(*whole, "16777216", bitsOf(16777216.0f));
    const auto cents = makeDecimalCoder(2, test::us());
    expectTaken(*cents, "0.50", bitsOf(0.5f));
    expectTaken(*cents, "0.00", 0);
    expectTaken(*cents, "-19.99", bitsOf(-19.99f));
    expectTaken(*cents, "83886.08", bitsOf(83886.08f));
    expectTaken(*cents, "100000002004087734272.00", bitsOf(1e20f));
    const auto mills = makeDecimalCoder(3, test::german());
    expectTaken(*mills, "1,005", bitsOf(1.005f));
}

TEST(DecimalCoder, leavesTextsThatTheSingleWouldNotGiveBack) {
    const auto whole = makeDecimalCoder(0, test::us());
    for (const char* text : {"", "-", "-0", "007", "1.", ".5", "16777217", "1.0", "1e5", "inf", "nan", "&H10", "$5"})
        expectLeft(*whole, text);
    const auto cents = makeDecimalCoder(2, test::us());
    for (const char* text : {"", "1", "1.5", "1.555", "-0.00", "1,50", ".50", "01.50", "+1.50", "1.5a", "1.50 ",
                             "12345678.12", "100000000000000000000.00", "1.-5", "--1.50", "1.50-"})
        expectLeft(*cents, text);
    expectLeft(*makeDecimalCoder(2, test::german()), "1.50");
}

TEST(DecimalCoder, takesEverySingleThatAFileHolds) {
    const auto cents = makeDecimalCoder(2, test::us());
    EXPECT_EQ(textOf(*cents, bitsOf(1.0f / 3)), "0.33");
    EXPECT_EQ(textOf(*cents, bitsOf(-0.0f)), "0.00");
    EXPECT_EQ(textOf(*cents, bitsOf(std::numeric_limits<float>::infinity())), "");
    EXPECT_EQ(textOf(*cents, bitsOf(std::numeric_limits<float>::quiet_NaN())), "");
}

TEST(DecimalCoder, givesBackWhatItShows) {
    std::mt19937 random(7);
    for (int decimals = 0; decimals <= 3; ++decimals) {
        const auto coder = makeDecimalCoder(decimals, decimals % 2 ? test::us() : test::german());
        for (int i = 0; i < 20000; ++i) {
            const std::string shown = textOf(*coder, static_cast<std::uint32_t>(random()));
            expectExact(*coder, shown);
            const auto ordinary = static_cast<float>(static_cast<std::int32_t>(random())) / 65536.0f;
            const std::string plain = textOf(*coder, bitsOf(ordinary));
            expectExact(*coder, plain);
        }
    }
}

TEST(DecimalCoder, takesEveryNumberOfSixDigits) {
    const auto coder = makeDecimalCoder(2, test::us());
    for (int cents = 1; cents < 1000000; cents += 7) {
        const std::string digits = std::to_string(cents + 100000000).substr(1);
        const std::string text = std::to_string(cents / 100) + "." + digits.substr(6);
        const auto word = coder->encode(text);
        ASSERT_EQ(word, bitsOf(std::stof(text))) << text;
        ASSERT_EQ(textOf(*coder, *word), text);
    }
}

// The single nearest to a text is its word exactly when it is shown as that text.
TEST(DecimalCoder, takesANumberOfAnyLengthWhenItsNearestSingleIsShownAlike) {
    std::mt19937_64 random(5);
    for (int i = 0; i < 40000; ++i) {
        const int decimals = static_cast<int>(random() % 4);
        std::uint64_t scaled = random() >> (random() % 63);
        scaled = scaled % 1'000'000'000'000'000 - (random() % 3 == 0 ? scaled % 1000 : 0);
        char room[kSingleRoom];
        const std::string text(formScaled(random() % 4 == 0, scaled, decimals, '.', room));
        const float nearest = std::strtof(text.c_str(), nullptr);
        std::string shown;
        appendSingleByDigits(nearest, decimals, '.', shown);
        const auto expected = shown == text ? std::optional(std::bit_cast<std::uint32_t>(nearest)) : std::nullopt;
        ASSERT_EQ(makeDecimalCoder(decimals, {})->encode(text), expected) << text;
    }
}

TEST(DecimalCoder, hasNoWordForMoreDigitsThanASingleShows) {
    struct Case {
        std::uint64_t magnitude;
        int decimals;
        bool expected;
    };
    const Case cases[] = {
        {838860801, 2, true},    // 8388608.01: singles from 2^23 on are whole
        {838860799, 2, false},   // 8388607.99 has nine digits
        {838860800, 2, false},   // 8388608.00 is one
        {123456789012, 2, true}, // 1234567890.12
        {1234567891, 3, true},   // 1234567.891 has ten digits
        {1234567890, 3, false},  // 1234567.890 has nine that count
        {5, 0, false},           {0, 2, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(hasNoDecimalWord(c.magnitude, c.decimals), c.expected) << c.magnitude << " with " << c.decimals;
        if (!c.expected)
            continue;
        char room[kSingleRoom];
        expectLeft(*makeDecimalCoder(c.decimals, {}),
                   std::string(formScaled(false, c.magnitude, c.decimals, '.', room)));
    }
}

TEST(DateCoder, packsTheFourBytesOfAFile) {
    const auto american = makeDateCoder(test::us());
    expectTaken(*american, "1/2/2003", packDate(2003, 1, 2));
    expectTaken(*american, "12/30/1899", packDate(1899, 12, 30));
    expectTaken(*american, "2/29/2004", packDate(2004, 2, 29));
    expectTaken(*american, "1/1/0100", packDate(100, 1, 1));
    expectTaken(*american, "12/31/9999", packDate(9999, 12, 31));
    expectTaken(*makeDateCoder(test::uk()), "02/01/2003", packDate(2003, 1, 2));
    expectTaken(*makeDateCoder(test::german()), "02.01.2003", packDate(2003, 1, 2));
    expectTaken(*makeDateCoder(test::swedish()), "2003-01-02", packDate(2003, 1, 2));
}

TEST(DateCoder, leavesOtherTextsAlone) {
    const auto coder = makeDateCoder(test::us());
    for (const char* text :
         {"", "0", "01/2/2003", "1/02/2003", "1/2/03", "1/2/12003", "2/29/2003", "13/1/2003", "1/2/2003 ",
          " 1/2/2003", "1-2-2003", "1/2", "1/1/0099", "0/1/2003", "1//2003", "1/2/200a"})
        expectLeft(*coder, text);
    expectLeft(*makeDateCoder(test::uk()), "2/1/2003");
}

TEST(DateCoder, showsNothingForAnImpossibleDate) {
    const auto coder = makeDateCoder(test::us());
    for (const std::uint32_t word : {0u, packDate(2003, 2, 29), packDate(2003, 13, 1), packDate(2003, 0, 1),
                                     packDate(2003, 1, 0), packDate(99, 1, 1), packDate(10000, 1, 1), 0xFFFFFFFFu})
        EXPECT_EQ(textOf(*coder, word), "") << word;
}

TEST(DateCoder, givesEveryDayBack) {
    for (const auto& region : {test::us(), test::uk(), test::german(), test::swedish()}) {
        const auto coder = makeDateCoder(region);
        for (int year : {100, 1899, 1900, 2000, 2003, 2004, 9999})
            for (int month = 1; month <= 12; ++month)
                for (int day = 1; day <= 28; ++day)
                    ASSERT_EQ(coder->encode(textOf(*coder, packDate(year, month, day))), packDate(year, month, day));
    }
}

TEST(TimeCoder, packsHourMinuteAndSecond) {
    const auto american = makeTimeCoder(test::us());
    expectTaken(*american, "12:00:00 AM", packTime(0, 0, 0));
    expectTaken(*american, "1:05:09 PM", packTime(13, 5, 9));
    expectTaken(*american, "12:59:59 PM", packTime(12, 59, 59));
    expectTaken(*american, "11:59:59 PM", packTime(23, 59, 59));
    expectTaken(*makeTimeCoder(test::uk()), "00:05:09", packTime(0, 5, 9));
    platform::Regional spanish;
    spanish.longTime = "H:mm:ss";
    expectTaken(*makeTimeCoder(spanish), "9:05:09", packTime(9, 5, 9));
    expectTaken(*makeTimeCoder(spanish), "19:05:09", packTime(19, 5, 9));
}

TEST(TimeCoder, leavesOtherTextsAlone) {
    const auto coder = makeTimeCoder(test::us());
    for (const char* text :
         {"", "0", "0:00:00 AM", "13:00:00 PM", "1:5:09 PM", "01:05:09 PM", "1:05:09", "1:05:09 pm", "1:05:09PM",
          "1:60:09 PM", "1:05:60 PM", "1:05:09 PM ", "1:05 PM", "1:05:09 XM"})
        expectLeft(*coder, text);
    for (const char* text : {"9:05:09", "24:00:00", "09:05:09 AM", "09:05"})
        expectLeft(*makeTimeCoder(test::uk()), text);
}

TEST(TimeCoder, showsNothingForAnImpossibleTime) {
    const auto coder = makeTimeCoder(test::us());
    for (const std::uint32_t word : {packTime(24, 0, 0), packTime(0, 60, 0), packTime(0, 0, 60), 0xFFFFFFFFu})
        EXPECT_EQ(textOf(*coder, word), "") << word;
}

TEST(TimeCoder, givesEveryTimeBack) {
    for (const auto& region : {test::us(), test::uk()}) {
        const auto coder = makeTimeCoder(region);
        for (int second = 0; second < 86400; second += 7) {
            const std::uint32_t word = packTime(second / 3600, second / 60 % 60, second % 60);
            ASSERT_EQ(coder->encode(textOf(*coder, word)), word);
        }
    }
}

TEST(ItemCoder, numbersTextsAsTheyAppear) {
    const auto coder = makeItemCoder();
    expectTaken(*coder, "Fiction", 0);
    expectTaken(*coder, "fiction", 1);
    expectTaken(*coder, "Fiction", 0);
    expectLeft(*coder, "");
    EXPECT_EQ(textOf(*coder, 2), "");
}

TEST(ItemCoder, leavesFurtherTextsPlainAfter4096) {
    const auto coder = makeItemCoder();
    for (std::uint32_t i = 0; i < 4096; ++i)
        ASSERT_EQ(coder->encode("item " + std::to_string(i)), i);
    expectLeft(*coder, "one more");
    expectTaken(*coder, "item 4095", 4095);
}

TEST(CellCoders, giveEveryTextThatTheyTakeBackLetterByLetter) {
    std::mt19937 random(42);
    for (const auto& region : {test::us(), test::german(), test::swedish()}) {
        std::vector<std::unique_ptr<CellCoder>> coders;
        coders.push_back(makeWholeCoder());
        for (int decimals = 0; decimals <= 3; ++decimals)
            coders.push_back(makeDecimalCoder(decimals, region));
        coders.push_back(makeDateCoder(region));
        coders.push_back(makeTimeCoder(region));
        coders.push_back(makeItemCoder());
        for (int i = 0; i < 20000; ++i) {
            const std::string text = scribble(random);
            for (const auto& coder : coders)
                expectExact(*coder, text);
        }
    }
}

TEST(CellCoders, takeAScratchOfAnyLength) {
    for (const auto& coder : {makeWholeCoder(), makeDecimalCoder(0, test::us())}) {
        for (const std::size_t length : {0, 1, 16, 17, 47, 48, 1000}) {
            std::string scratch(length, 'x');
            EXPECT_EQ(coder->text(*coder->encode("17"), scratch), "17");
        }
    }
}

// A text that tells the kind of a coder: the first of these that it takes.
std::string kindOf(CellCoder* coder) {
    if (!coder)
        return "none";
    for (const char* sample : {"anything", "1/2/2003", "1:05:09 PM", "0.5", "0.50", "0.500"})
        if (coder->encode(sample))
            return sample;
    return coder->encode("16777217") ? "whole" : "0";
}

struct KindCase {
    FieldType type;
    int decimals;
    int resultType;
    const char* kind;
};

TEST(CoderForField, goesByTheFieldsTypeDecimalsAndResult) {
    const KindCase cases[] = {
        {FieldType::NotUsed, 0, 0, "none"},
        {FieldType::Text, 0, 0, "none"},
        {FieldType::Integer, 3, 0, "whole"},
        {FieldType::Long, 0, 0, "whole"},
        {FieldType::Float, 0, 0, "0"},
        {FieldType::Float, 1, 0, "0.5"},
        {FieldType::Float, 2, 0, "0.50"},
        {FieldType::Float, 3, 0, "0.500"},
        {FieldType::Float, 4, 0, "none"},
        {FieldType::List, 0, 0, "anything"},
        {FieldType::Checkbox, 0, 0, "none"},
        {FieldType::Date, 0, 0, "1/2/2003"},
        {FieldType::Time, 0, 0, "1:05:09 PM"},
        {FieldType::Expression, 2, 0, "0.50"},
        {FieldType::Expression, 9, 0, "none"},
        {FieldType::Expression, 0, 1, "1/2/2003"},
        {FieldType::Expression, 0, 2, "1/2/2003"},
        {FieldType::Expression, 0, 3, "1/2/2003"},
        {FieldType::Expression, 2, 4, "0"},
        {FieldType::Expression, 2, 5, "0"},
        {FieldType::Expression, 2, 6, "0"},
        {FieldType::Expression, 0, 7, "1:05:09 PM"},
        {FieldType::Expression, 2, 8, "0"},
        {FieldType::Expression, 2, 9, "0"},
        {FieldType::Expression, 2, 10, "0"},
        {FieldType::Expression, 2, 11, "none"},
        {FieldType::Expression, 2, 12, "none"},
        {FieldType::Memo, 0, 0, "none"},
        {FieldType::Key, 0, 0, "whole"},
        {FieldType::DBJoin, 0, 0, "whole"}, // the key
        {FieldType::DBLookup, 0, 0, "anything"},
        {FieldType::OneToMany, 0, 0, "none"},
        {FieldType::AddressBookJoin, 0, 0, "none"},
        {FieldType::AddressBookLookup, 0, 0, "none"},
        {FieldType::RadioButton, 0, 0, "anything"},
        {FieldType::Image, 0, 0, "none"},
        {FieldType::ConditionalExpression, 0, 0, "anything"},
        {FieldType::AutoIncremental, 0, 0, "whole"},
        {FieldType::Plugin, 0, 0, "none"},
        {FieldType::AdvExpression, 1, 0, "0.5"},
        {FieldType::AdvExpression, 1, 7, "1:05:09 PM"},
        {FieldType::AdvExpression, 1, 13, "none"},
        {static_cast<FieldType>(23), 0, 0, "none"},
    };
    for (const KindCase& c : cases) {
        model::DatabaseModel db;
        db.Fields[3].Type = c.type;
        db.Fields[3].Decimals = static_cast<std::uint8_t>(c.decimals);
        db.Expressions[3].ResultType = static_cast<std::uint8_t>(c.resultType);
        EXPECT_EQ(kindOf(coderForField(db, 3, test::us()).get()), c.kind)
            << "type " << static_cast<int>(c.type) << " result " << c.resultType;
    }
}

TEST(CoderForField, takesTheCategoriesAsAList) {
    EXPECT_EQ(kindOf(coderForField(model::DatabaseModel{}, 0, test::us()).get()), "anything");
}

} // namespace
} // namespace tallybook::calc
