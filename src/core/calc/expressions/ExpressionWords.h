// The words and signs of the language of expressions: what Compile reads and displayText shows.
#pragma once

#include "core/calc/expressions/ExpressionTokens.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace tallybook::calc::words {

inline constexpr int kAnyCount = 48;

struct FunctionWord {
    std::string_view name;
    int fewest = 1; // arguments
    int most = 1;
};

// By code less 1.
inline constexpr std::array<FunctionWord, 17> kFunctions = {{{"If", 3, 3},
                                                             {"Sel", 2, kAnyCount},
                                                             {"Sqrt"},
                                                             {"Abs"},
                                                             {"Sign"},
                                                             {"Ceil"},
                                                             {"Floor"},
                                                             {"Round", 1, 2},
                                                             {"Date", 3, 3},
                                                             {"Time", 3, 3},
                                                             {"Day"},
                                                             {"Month"},
                                                             {"Year"},
                                                             {"Hour"},
                                                             {"Minute"},
                                                             {"Second"},
                                                             {"Weekday"}}};

// How operators of token 98 are shown, by code less 1. Without the blanks they are the signs that are read.
inline constexpr std::array<std::string_view, 12> kOperators = {"%",    " <= ", " >= ", " < ", " > ", " = ",
                                                                " <> ", " & ",  " | ",  " ^ ", " ! ", " ** "};

// By code from 0.
inline constexpr std::array<std::string_view, 5> kColours = {"black", "red", "green", "blue", "yellow"};

inline constexpr std::string_view kToday = "Today";
inline constexpr std::string_view kNow = "Now";
inline constexpr std::string_view kPi = "PI";
inline constexpr std::string_view kPrevIndex = "PrevIndex";
inline constexpr std::string_view kPrev = "Prev";

// What PI is compiled to: a file has room for ten characters.
inline constexpr std::string_view kPiDigits = "3.14159265";
inline constexpr std::size_t kLongestConstant = 10;

// The function of a code as a token carries it, or none.
constexpr const FunctionWord* functionOf(unsigned code) {
    return code >= 1 && code <= kFunctions.size() ? &kFunctions[code - 1] : nullptr;
}

// The code that a token's text holds: its first byte, 0 for an empty text.
constexpr unsigned codeOf(std::string_view text) {
    return text.empty() ? 0U : static_cast<unsigned char>(text.front());
}

} // namespace tallybook::calc::words
