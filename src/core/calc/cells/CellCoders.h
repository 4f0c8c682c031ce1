// The usual form of each field type's texts, for the grid's columns. Encoding and decoding are on the road of
// every cell of a file: integer arithmetic alone, no allocation.
#pragma once

#include "core/model/CellCoder.h"
#include "core/model/DatabaseModel.h"
#include "core/platform/Regional.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace tallybook::calc {

// Whole numbers -2147483648..2147483647 as decimal text. Word: the number in two's complement.
std::unique_ptr<model::CellCoder> makeWholeCoder();

// Numbers with 0..3 digits behind the point. Word: the bits of the single. A single whose text would not give the
// same single back is never a word of encode(); text() takes every single. Infinities and what is no number
// stand for no text.
std::unique_ptr<model::CellCoder> makeDecimalCoder(int decimals, const platform::Regional& regional);

// The word of a decimal coder for magnitude * 10^-decimals, where no look at digits is needed to tell it; nothing for
// larger numbers, which may have a word all the same. Minus zero is zero.
std::optional<std::uint32_t> decimalWord(bool negative, std::uint64_t magnitude, int decimals);

// No single shows magnitude * 10^-decimals, so that a decimal coder has no word for it; false where that takes a look
// at the digits.
bool hasNoDecimalWord(std::uint64_t magnitude, int decimals);

// Short dates. Word: year * 65536 + month * 256 + day, the four bytes of a file.
std::unique_ptr<model::CellCoder> makeDateCoder(const platform::Regional& regional);

// Long times. Word: hour * 65536 + minute * 256 + second, the four bytes of a file.
std::unique_ptr<model::CellCoder> makeTimeCoder(const platform::Regional& regional);

// Texts that repeat, as a list's items: word n is the nth different text, up to 4096; further ones stay plain.
std::unique_ptr<model::CellCoder> makeItemCoder();

// The coder for a field's column, or none where texts have no usual form.
std::unique_ptr<model::CellCoder> coderForField(const model::DatabaseModel& db, int slot,
                                                const platform::Regional& regional);

inline std::uint32_t packDate(int year, int month, int day) {
    return static_cast<std::uint32_t>(year) << 16 | static_cast<std::uint32_t>(month) << 8 |
           static_cast<std::uint32_t>(day);
}
inline std::uint32_t packTime(int hour, int minute, int second) {
    return packDate(hour, minute, second);
}

} // namespace tallybook::calc
