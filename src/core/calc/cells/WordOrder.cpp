#include "core/calc/cells/WordOrder.h"

#include "core/calc/cells/CellCoders.h"
#include "core/calc/values/Dates.h"

#include <bit>
#include <limits>

namespace tallybook::calc {

namespace {

using model::WordForm;

constexpr int kSecondsOfDay = 24 * 60 * 60;
constexpr std::uint32_t kSign = std::uint32_t{1} << 31;

std::uint32_t keyOfSingle(float value) {
    return keyOfWord(WordForm::Decimal, std::bit_cast<std::uint32_t>(value));
}

std::uint32_t lowestSingle() {
    return keyOfSingle(std::numeric_limits<float>::lowest());
}

std::uint32_t singleWord(std::uint32_t key) {
    return (key & kSign) != 0 ? key ^ kSign : ~key;
}

std::uint32_t dateWord(int day) {
    const Date date = dateOfDay(day);
    return packDate(date.year, date.month, date.day);
}

std::uint32_t timeWord(int second) {
    return packTime(second / 3600, second / 60 % 60, second % 60);
}

} // namespace

std::uint64_t countOfWords(WordForm form) {
    switch (form) {
    case WordForm::Whole:
        return std::uint64_t{1} << 32;
    case WordForm::Decimal: // without the infinities and what is no number
        return keyOfSingle(std::numeric_limits<float>::max()) - lowestSingle() + std::uint64_t{1};
    case WordForm::Date:
        return static_cast<std::uint64_t>(kLastSerial - kFirstSerial) + 1;
    case WordForm::Time:
        return kSecondsOfDay;
    default:
        return 0;
    }
}

std::uint32_t wordAt(WordForm form, std::uint64_t place) {
    const auto at = static_cast<std::uint32_t>(place);
    switch (form) {
    case WordForm::Whole:
        return at ^ kSign;
    case WordForm::Decimal:
        return singleWord(lowestSingle() + at);
    case WordForm::Date:
        return dateWord(static_cast<int>(kFirstSerial) + static_cast<int>(at));
    default:
        return timeWord(static_cast<int>(at));
    }
}

} // namespace tallybook::calc
