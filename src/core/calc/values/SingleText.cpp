#include "core/calc/values/SingleText.h"

#include "core/calc/values/Decimal.h"
#include "core/calc/values/Digits.h"

#include <bit>
#include <cmath>
#include <optional>

namespace tallybook::calc {

namespace {

constexpr std::uint32_t kHiddenBit = 1u << 23;

// A single's magnitude times 10^decimals, rounded on its shortest decimal form; nothing when that takes more than
// integer arithmetic. The single is mantissa * 2^exponent and stands for every real number within half a unit of
// its last bit. When no half of a displayed place lies among those, every form of it rounds alike. When one does,
// and the decimals of one place more are further apart than that, the half itself is the shortest form.
std::optional<std::uint64_t> scaledMagnitude(std::uint32_t bits, int decimals) {
    const std::uint32_t power = kPowersOfTen[decimals];
    const int exponent = static_cast<int>(bits >> 23 & 0xFF) - 150;
    if (exponent == -150)
        return 0; // below every displayed place
    const std::uint64_t mantissa = (bits & (kHiddenBit - 1)) | kHiddenBit;
    if (exponent >= 0)
        return exponent <= 29 ? std::optional((mantissa << exponent) * power) : std::nullopt;
    const int shift = -exponent;
    if (shift > 35)
        return 0; // mantissa * 1000 is below 2^34
    const std::uint64_t product = mantissa * power;
    const std::uint64_t whole = product >> shift;
    const std::uint64_t unit = std::uint64_t{1} << shift;
    const auto fromHalf =
        2 * static_cast<std::int64_t>(product & (unit - 1)) - static_cast<std::int64_t>(unit); // in half bits
    if (std::abs(fromHalf) > power)
        return whole + (fromHalf > 0 ? 1 : 0);
    const bool atBorder = std::abs(fromHalf) == power || (mantissa == kHiddenBit && fromHalf != 0);
    if (atBorder || std::uint64_t{10} * power >= unit)
        return std::nullopt;
    return whole + 1;
}

// scaled / 10^decimals. To divide by a number that the compiler knows is to multiply, several times faster.
std::uint64_t wholePart(std::uint64_t scaled, int decimals) {
    switch (decimals) {
    case 0:
        return scaled;
    case 1:
        return scaled / 10;
    case 2:
        return scaled / 100;
    default:
        return scaled / 1000;
    }
}

// The point and the digits behind it. Gives the place behind them; four digits are written in any case.
char* putPlaces(std::uint32_t places, int decimals, char point, char* out) {
    const std::uint32_t four = places * kPowersOfTen[4 - decimals];
    *out = point;
    putTwoDigits(four / 100, out + 1);
    putTwoDigits(four % 100, out + 3);
    return out + 1 + decimals;
}

} // namespace

std::string_view formScaled(bool negative, std::uint64_t scaled, int decimals, char point, char* room) {
    const std::uint64_t whole = wholePart(scaled, decimals);
    char* end = room + 1 + kMostDigits;
    const char* start = putSignBefore(putWholeBefore(end, whole), negative && scaled != 0);
    if (decimals > 0)
        end = putPlaces(static_cast<std::uint32_t>(scaled - whole * kPowersOfTen[decimals]), decimals, point, end);
    return {start, static_cast<std::size_t>(end - start)};
}

void appendSingleByDigits(float value, int decimals, char point, std::string& out) {
    if (!std::isfinite(value))
        return;
    Decimal number = shortestDigits(value);
    roundToPlaces(number, decimals);
    appendPlain(number, decimals, point, out);
}

std::string_view formSingle(float value, int decimals, char point, char* room) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    if (const auto scaled = scaledMagnitude(bits, decimals))
        return formScaled(bits >> 31 != 0, *scaled, decimals, point, room);
    std::string text;
    appendSingleByDigits(value, decimals, point, text);
    return {room, text.copy(room, kSingleRoom)};
}

void appendSingle(float value, int decimals, char point, std::string& out) {
    char room[kSingleRoom];
    out += formSingle(value, decimals, point, room);
}

std::optional<double> displayedValue(float value, int decimals) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const auto scaled = scaledMagnitude(bits, decimals);
    // Up to 2^53 the magnitude is exact, and the quotient is rounded once: the double nearest to the digits shown.
    if (scaled && *scaled < std::uint64_t{1} << 53) {
        const double magnitude = static_cast<double>(*scaled) / kPowersOfTen[decimals];
        return bits >> 31 != 0 && *scaled != 0 ? -magnitude : magnitude;
    }
    if (!std::isfinite(value))
        return std::nullopt;
    Decimal number = shortestDigits(value);
    roundToPlaces(number, decimals);
    return nearestDouble(number);
}

} // namespace tallybook::calc
