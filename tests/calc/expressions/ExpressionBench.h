// A table of fields and a record for tests of advanced expressions.
#pragma once

#include "core/calc/expressions/ExpressionEngine.h"

#include <string>
#include <string_view>
#include <vector>

namespace tallybook::calc::test {

// Fields by slot, with the values of the present record and of the one before:
//  1 Price (Float 2.5, 0.5)            2 Qty (Integer 4, 3)             3 Unit Price (Float 0.1, 0)
//  4 Price_2 (Long 16777217, 0)        5 2nd (Text "7", "")             6 Name (Text "Ann", "Bob")
//  7 Done (Checkbox, checked, not)     8 Due (Date 2003-03-10, blank)   9 Start (Time 09:30:15, 0:00)
// 10 Kind (List "12", "")             11 Chosen (Conditional "5", "")  12 Total (Adv Expression, number 1.25)
// 13 Finish (Expression, date 2003-03-01)     14 Clock (Adv Expression, time 13:00:01)
// 15 Length (Expression, 3661 seconds)        16 Label (Adv Expression, text "x")
// 17 Today (Text)   18 Cost (net) (Float)   19 a]b (Integer 19)   20 Day (Integer 20)   21 free   22 Number (Key 77)
// 23 Name (Text, the name of slot 6 again)   24 Blank (Date, blank)
class ExpressionBench {
public:
    ExpressionBench();

    struct Outcome {
        bool done = false;
        std::string text; // the result, or the error
        int colour = 0;
    };
    // Compiles and evaluates at 2003-03-05 13:05:09; a text that does not compile gives its error. `record` counts
    // from 1.
    Outcome run(std::string_view text, std::uint8_t resultType = 0, std::uint8_t decimals = 0,
                std::int32_t record = 2) const;

    // The same for tokens.
    Outcome run(const TokenArray& tokens, const TokenTextArray& texts, std::uint8_t resultType = 0) const;

    // The error, with its place in front: "3: A value is missing here."; nothing for a text that compiles.
    std::string errorOf(std::string_view text) const;

    // What is shown for a text after it was compiled.
    std::string displayed(std::string_view text) const;

    std::vector<std::string> names;
    FieldKinds kinds;
    FieldValueTable values;

private:
    void field(std::string name, std::uint8_t type, FieldValues current, FieldValues previous = {},
               std::uint8_t resultType = 0);
};

} // namespace tallybook::calc::test
