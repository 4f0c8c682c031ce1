// The words of a column in the order of the values that they stand for.
#pragma once

#include "core/model/CellCoder.h"

#include <cstdint>

namespace tallybook::calc {

// A number that rises with the value of a word of the form. Not of WordForm::Other.
inline std::uint32_t keyOfWord(model::WordForm form, std::uint32_t word) {
    constexpr std::uint32_t kSign = std::uint32_t{1} << 31;
    if (form == model::WordForm::Whole)
        return word ^ kSign;
    if (form == model::WordForm::Decimal)
        return (word & kSign) != 0 ? ~word : word | kSign;
    return word; // a date or a time is its digits behind one another
}

// The words of a form that stand for a text: how many there are, and the one at a place from 0 in rising order.
std::uint64_t countOfWords(model::WordForm form);
std::uint32_t wordAt(model::WordForm form, std::uint64_t place);

} // namespace tallybook::calc
