#include "core/calc/expressions/SimpleConstant.h"

#include "core/calc/values/Numbers.h"

#include <algorithm>

namespace tallybook::calc {

namespace {

constexpr char kPoint = '.';
constexpr char kComma = ',';
constexpr std::size_t kThousand = 3; // digits behind a sign that may part thousands

bool isSign(char c) {
    return c == kPoint || c == kComma;
}

// Digits behind the first sign; a text without one has none.
std::size_t digitsBehindSign(std::string_view text) {
    const auto sign = std::find_if(text.begin(), text.end(), isSign);
    if (sign == text.end())
        return 0;
    const auto end = std::find_if(sign + 1, text.end(), [](char c) { return c < '0' || c > '9'; });
    return static_cast<std::size_t>(end - sign) - 1;
}

} // namespace

platform::Regional regionOfConstant(std::string_view text, const platform::Regional& regional) {
    platform::Regional region = regional;
    if (std::count_if(text.begin(), text.end(), isSign) != 1 || digitsBehindSign(text) == kThousand)
        return region;
    region.decimal = *std::find_if(text.begin(), text.end(), isSign);
    if (region.group == region.decimal)
        region.group = region.decimal == kPoint ? kComma : kPoint;
    return region;
}

std::optional<double> constantNumber(std::string_view text, const platform::Regional& regional) {
    return parseNumber(text, regionOfConstant(text, regional));
}

std::string constantText(double value, const platform::Regional& regional) {
    std::string text = decimalText(value, platform::Regional{});
    const bool plain = text.find('E') == std::string::npos;
    if (regional.decimal != kPoint && plain && digitsBehindSign(text) == kThousand)
        text += '0';
    return text;
}

} // namespace tallybook::calc
