// The codes of expressions as files carry them. The handheld evaluates the same codes: they are never renumbered.
#pragma once

#include <cstdint>

namespace tallybook::calc {

using Token = std::uint32_t; // a byte in files

// Tokens of both forms. 1 to 80 are the field slots of the current record, 101 to 180 those of the previous one.
namespace token {
inline constexpr Token kEnd = 0;
inline constexpr Token kLastField = 80;
inline constexpr Token kToday = 84;
inline constexpr Token kNumber = 86; // its decimal text in TokenTexts
inline constexpr Token kNow = 87;
inline constexpr Token kText = 88;   // its characters in TokenTexts
inline constexpr Token kColour = 89; // one character, code 0 to 4; no character is colour 0
inline constexpr Token kPlus = 90;
inline constexpr Token kMinus = 91;
inline constexpr Token kTimes = 92;
inline constexpr Token kDivide = 93;
inline constexpr Token kFunction = 94; // name and opening bracket; one character, a Function
inline constexpr Token kOpen = 95;
inline constexpr Token kClose = 96;
inline constexpr Token kComma = 97;
inline constexpr Token kOperator = 98; // one character, an Operator
inline constexpr Token kPrevIndex = 99;
inline constexpr Token kPreviousRecord = 100; // plus the slot

// Of the older files: the signs themselves, and the letter O for the present time, which is a field slot today.
inline constexpr Token kOldTimes = 42;
inline constexpr Token kOldPlus = 43;
inline constexpr Token kOldMinus = 45;
inline constexpr Token kOldDivide = 47;
inline constexpr Token kOldNow = 79;

constexpr bool isField(Token token) {
    return token >= 1 && token <= kLastField;
}
constexpr bool isPreviousField(Token token) {
    return token > kPreviousRecord && token <= kPreviousRecord + kLastField;
}
} // namespace token

enum class Function : std::uint8_t {
    If = 1,
    Sel,
    Sqrt,
    Abs,
    Sign,
    Ceil,
    Floor,
    Round,
    Date,
    Time,
    Day,
    Month,
    Year,
    Hour,
    Minute,
    Second,
    Weekday, // 17
};

enum class Operator : std::uint8_t {
    Modulo = 1,
    LessEqual,
    GreaterEqual,
    Less,
    Greater,
    Equal,
    NotEqual,
    And,
    Or,
    Xor,
    Not,
    Power, // 12
};

// ResultType, the format of a calculated field's text.
namespace result {
inline constexpr std::uint8_t kFloating = 0;
inline constexpr std::uint8_t kDateAndDays = 1; // "Date" of the advanced form
inline constexpr std::uint8_t kDateAndMonths = 2;
inline constexpr std::uint8_t kDateAndYears = 3;
inline constexpr std::uint8_t kDays = 4;
inline constexpr std::uint8_t kMonths = 5;
inline constexpr std::uint8_t kYears = 6;
inline constexpr std::uint8_t kTime = 7;
inline constexpr std::uint8_t kHours = 8;
inline constexpr std::uint8_t kMinutes = 9;
inline constexpr std::uint8_t kSeconds = 10;
inline constexpr std::uint8_t kHoursMinutesSeconds = 11;
inline constexpr std::uint8_t kHoursMinutes = 12;
inline constexpr std::uint8_t kText = 13;
} // namespace result

// The colours that expressions and conditions give, by code 0 to 4: black, red, green, blue, yellow, as cells hold
// them (red + 256 green + 65536 blue).
inline constexpr std::uint32_t kResultColours[] = {0, 255, 65280, 16711680, 65535};
inline constexpr std::uint8_t kResultColourCount = 5;

} // namespace tallybook::calc
