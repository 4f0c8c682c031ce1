#include "document/DocumentFixture.h"
#include "support/Regions.h"

namespace tallybook::document {
namespace {

struct Validation : test::DocumentFixture {
    // What ValidateData says of a text typed into the field of slot 1; `text` becomes what it made of it.
    std::string validate(std::string& text) {
        doc.editor = {};
        doc.editor.kind = model::EditorKind::Text1;
        doc.editor.row = 2;
        doc.editor.col = model::columnOfSlot(1);
        doc.editor.text = text;
        const std::string message = ValidateData(doc, services);
        text = doc.editor.text;
        return message;
    }
};

constexpr const char* kOnlyInteger = "Only Integer value allowed";
constexpr const char* kIntegerRange = "Integer value allowed -32768 to 32767";
constexpr const char* kOnlyLong = "Only Long value allowed";
constexpr const char* kLongRange = "Long value allowed -2147483648 to 2147483647";
constexpr const char* kOnlyFloat = "Only Floating value allowed";
constexpr const char* kTime = "Please specify the valid Time Input (e.g. 10:10:10 PM or 22:10:10).";

struct Case {
    model::FieldType type;
    std::string typed;
    std::string message;
    std::string shown; // the text afterwards
};

TEST_F(Validation, judgesByTheFieldsType) {
    using model::FieldType;
    const Case cases[] = {
        {FieldType::Integer, "", "", ""},
        {FieldType::Integer, "-", "", "-"},
        {FieldType::Integer, "12", "", "12"},
        {FieldType::Integer, "-32768", "", "-32768"},
        {FieldType::Integer, "32767", "", "32767"},
        {FieldType::Integer, "32768", kIntegerRange, "32768"},
        {FieldType::Integer, "-32769", kIntegerRange, "-32769"},
        {FieldType::Integer, "1,000", "", "1,000"}, // the group separator is left out of the test alone
        {FieldType::Integer, "40,000", kIntegerRange, "40,000"},
        {FieldType::Integer, "12.9", kOnlyInteger, "12.9"},
        {FieldType::Integer, "12.", kOnlyInteger, "12."},
        {FieldType::Integer, "12..9", kOnlyInteger, "12.9"}, // the doubled point was made single
        {FieldType::Integer, "40000.5", kOnlyInteger, "40000.5"},
        {FieldType::Integer, "abc", kOnlyInteger, "abc"},
        {FieldType::Integer, " ", kOnlyInteger, " "},
        {FieldType::Integer, "--5", kOnlyInteger, "--5"},
        {FieldType::Long, "", "", ""},
        {FieldType::Long, "-", "", "-"},
        {FieldType::Long, "-2147483648", "", "-2147483648"},
        {FieldType::Long, "2147483647", "", "2147483647"},
        {FieldType::Long, "2147483648", kLongRange, "2147483648"},
        {FieldType::Long, "-2147483649", kLongRange, "-2147483649"},
        {FieldType::Long, "7.0", kOnlyLong, "7.0"},
        {FieldType::Long, "seven", kOnlyLong, "seven"},
        {FieldType::Float, "", "", ""},
        {FieldType::Float, "-", "", "-"},
        {FieldType::Float, "1.25", "", "1.25"},
        {FieldType::Float, "1", "", "1"},
        {FieldType::Float, ".5", "", "0.5"},
        {FieldType::Float, "1..5", "", "1.5"},
        {FieldType::Float, "1,,000.5", "", "1,000.5"},
        {FieldType::Float, "1.255", "Only 2 decimals are allowed", "1.255"},
        {FieldType::Float, "..125", "Only 2 decimals are allowed", "0.125"},
        {FieldType::Float, "1.5x", kOnlyFloat, "1.5x"},
        {FieldType::Float, ".", "", "0."},
        {FieldType::Time, "", "", ""},
        {FieldType::Time, "-", "", "-"},
        {FieldType::Time, "10:10:10", "", "10:10:10"},
        {FieldType::Time, "22:10:10", "", "22:10:10"},
        {FieldType::Time, "1:05:09 PM", "", "1:05:09 PM"},
        {FieldType::Time, "01:05:09 pm", "", "01:05:09 pm"},
        {FieldType::Time, "7", "", "07:00"},
        {FieldType::Time, "930", "", "9:30"},
        {FieldType::Time, "12.30", "", "12:30"},
        {FieldType::Time, "7pm", kTime, "7pm"},
        {FieldType::Time, "7:00 PM", kTime, "7:00 PM"}, // no format without seconds
        {FieldType::Time, "25:00:00", kTime, "25:00:00"},
        {FieldType::Text, "1..2", "", "1.2"},
    };
    for (const Case& one : cases) {
        field(1, one.type).Decimals = 2;
        records(1);
        std::string text = one.typed;
        EXPECT_EQ(validate(text), one.message) << one.typed;
        EXPECT_EQ(text, one.shown) << one.typed;
    }
}

TEST_F(Validation, namesTheDecimalsOfTheField) {
    for (int decimals = 0; decimals <= 3; ++decimals) {
        field(1, model::FieldType::Float).Decimals = static_cast<std::uint8_t>(decimals);
        records(1);
        std::string text = "1.23456";
        EXPECT_EQ(validate(text), "Only " + std::to_string(decimals) + " decimals are allowed");
    }
}

TEST_F(Validation, goesByTheRegionsSeparators) {
    t.regional = test::german();
    field(1, model::FieldType::Float).Decimals = 1;
    records(1);
    struct German {
        std::string typed, message, shown;
    };
    const German cases[] = {
        {"1,5", "", "1,5"},
        {"1.000,5", "", "1.000,5"},
        {"1,,5", "", "1,5"},
        {"1.5", "", "1.5"}, // a group separator: fifteen
        {"1,55", "Only 1 decimals are allowed", "1,55"},
    };
    for (const German& one : cases) {
        std::string text = one.typed;
        EXPECT_EQ(validate(text), one.message) << one.typed;
        EXPECT_EQ(text, one.shown) << one.typed;
    }
    field(1, model::FieldType::Integer);
    std::string text = "12,9";
    EXPECT_EQ(validate(text), kOnlyInteger);
}

TEST(CheckTijd, completesShortTimes) {
    struct Row {
        std::string typed;
        bool accepted;
        std::string shown;
    };
    const Row rows[] = {
        {"", true, ""},
        {"7", true, "07:00"},
        {"12", true, "12:00"},
        {"930", true, "9:30"},
        {"9:3", true, "9:3"},
        {"1234", true, "12:34"},
        {"9:30", true, "9:30"},
        {"12345", true, "12:45"},
        {"12.30", true, "12:30"},
        {"12:30", true, "12:30"},
        {"7.5.3", true, "7:5:3"},
        {"10.10.10", true, "10:10:10"},
        {"22:10:10", true, "22:10:10"},
    };
    for (const Row& row : rows) {
        std::string text = row.typed;
        EXPECT_EQ(CheckTijd(text, {}), row.accepted) << row.typed;
        EXPECT_EQ(text, row.shown) << row.typed;
    }
}

TEST(CheckTijd, refusesWhatIsNoTime) {
    for (const char* typed :
         {"7pm", "7 ", "1/2", "-1", "25", "99", "2460", "12:60", "960", "123456", ":", "::", "1:", "1:2:3:4", "a"}) {
        std::string text = typed;
        EXPECT_FALSE(CheckTijd(text, {})) << typed;
    }
}

TEST_F(Validation, floatIsRewrittenByItsDecimals) {
    struct Row {
        model::FieldType type;
        int decimals;
        std::string typed, shown;
    };
    const Row rows[] = {
        {model::FieldType::Float, 0, "2.5", "3"},
        {model::FieldType::Float, 1, "2.25", "2.3"},
        {model::FieldType::Float, 2, "2", "2.00"},
        {model::FieldType::Float, 3, ".5", "0.500"},
        {model::FieldType::Float, 4, "2.12345", "2.12345"},
        {model::FieldType::Float, 2, "abc", "abc"},
        {model::FieldType::Float, 2, "", ""},
        {model::FieldType::Text, 2, "2", "2"},
    };
    for (const Row& row : rows) {
        field(1, row.type).Decimals = static_cast<std::uint8_t>(row.decimals);
        records(1);
        doc.editor.kind = model::EditorKind::Text1;
        doc.editor.row = 2;
        doc.editor.col = 2;
        doc.editor.text = row.typed;
        FormatFloatEdit(doc, services);
        EXPECT_EQ(doc.editor.text, row.shown) << row.typed;
    }
}

} // namespace
} // namespace tallybook::document
