#include "core/calc/values/Decimal.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace tallybook::calc {

namespace {

constexpr int kBeyondEveryDouble = 400; // a decimal exponent that is out of range either way

// Takes apart what std::to_chars writes: sign, digits, point, "e" and an exponent.
Decimal fromPlainText(std::string_view text) {
    Decimal number;
    if (text.starts_with('-')) {
        number.negative = true;
        text.remove_prefix(1);
    }
    if (const auto mark = text.find('e'); mark != std::string_view::npos) {
        std::string_view power = text.substr(mark + 1);
        if (power.starts_with('+')) // from_chars takes no plus
            power.remove_prefix(1);
        std::from_chars(power.data(), power.data() + power.size(), number.exponent);
        text = text.substr(0, mark);
    }
    const auto point = text.find('.');
    number.digits = text.substr(0, point);
    number.exponent += static_cast<int>(number.digits.size());
    if (point != std::string_view::npos)
        number.digits += text.substr(point + 1);
    normalise(number);
    return number;
}

// Adds one at the last digit.
void increment(Decimal& number) {
    auto place = number.digits.rbegin();
    for (; place != number.digits.rend() && *place == '9'; ++place)
        *place = '0';
    if (place != number.digits.rend()) {
        ++*place;
    } else {
        number.digits.insert(number.digits.begin(), '1');
        ++number.exponent;
    }
}

template <class T> std::optional<T> nearest(const Decimal& number) {
    if (number.isZero() || number.exponent < -kBeyondEveryDouble)
        return T{0};
    if (number.exponent > kBeyondEveryDouble)
        return std::nullopt;
    std::string text = number.negative ? "-0." : "0.";
    text += number.digits;
    text += 'e';
    text += std::to_string(number.exponent);
    T value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc{})
        return value;
    return number.exponent < 0 ? std::optional<T>{T{0}} : std::nullopt;
}

} // namespace

void normalise(Decimal& number) {
    number.digits.resize(number.digits.find_last_not_of('0') + 1);
    const std::size_t leading = std::min(number.digits.find_first_not_of('0'), number.digits.size());
    number.digits.erase(0, leading);
    number.exponent -= static_cast<int>(leading);
    if (number.digits.empty())
        number = {};
}

Decimal significantDigits(double value, int significant) {
    char text[32];
    const auto end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, significant - 1).ptr;
    return fromPlainText({text, static_cast<std::size_t>(end - text)});
}

Decimal shortestDigits(float value) {
    char text[64]; // the smallest single has 45 places, the largest 39 digits
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr;
    return fromPlainText({text, static_cast<std::size_t>(end - text)});
}

void roundToPlaces(Decimal& number, int places) {
    const int kept = number.exponent + places;
    if (kept >= static_cast<int>(number.digits.size()))
        return;
    const bool up = kept >= 0 && number.digits[static_cast<std::size_t>(kept)] >= '5';
    number.digits.resize(static_cast<std::size_t>(std::max(kept, 0)));
    if (up)
        increment(number);
    normalise(number);
}

std::optional<std::int64_t> nearestWhole(const Decimal& number) {
    if (number.exponent > 18)
        return std::nullopt;
    std::int64_t whole = 0;
    for (int i = 0; i < number.exponent; ++i) {
        const auto place = static_cast<std::size_t>(i);
        whole = whole * 10 + (place < number.digits.size() ? number.digits[place] - '0' : 0);
    }
    if (number.exponent >= 0 && number.exponent < static_cast<int>(number.digits.size())) {
        const std::string_view rest =
            std::string_view(number.digits).substr(static_cast<std::size_t>(number.exponent));
        const bool tie = rest == "5";
        if (tie ? whole % 2 != 0 : rest[0] >= '5')
            ++whole;
    }
    return number.negative ? -whole : whole;
}

std::optional<double> nearestDouble(const Decimal& number) {
    return nearest<double>(number);
}

std::optional<float> nearestSingle(const Decimal& number) {
    return nearest<float>(number);
}

void appendPlain(const Decimal& number, int places, char point, std::string& out) {
    const auto digitAt = [&](int place) { // place 0 is the first behind the point
        const int index = number.exponent + place;
        const bool there = index >= 0 && index < static_cast<int>(number.digits.size());
        return there ? number.digits[static_cast<std::size_t>(index)] : '0';
    };
    if (number.negative)
        out += '-';
    for (int place = std::min(-number.exponent, -1); place < 0; ++place)
        out += digitAt(place);
    if (places > 0)
        out += point;
    for (int place = 0; place < places; ++place)
        out += digitAt(place);
}

int placesOf(const Decimal& number) {
    return std::max(0, static_cast<int>(number.digits.size()) - number.exponent);
}

} // namespace tallybook::calc
