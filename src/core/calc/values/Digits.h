// Digits of whole numbers, several at a time. How many digits a number has and whether it has a sign changes from one
// cell to the next, and a processor that has to guess it is wrong half of the time: what is written here does not
// branch on it, but writes the longest form and counts what of it is the text.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace tallybook::calc {

// At least `size` characters to write to, at the front of a text that serves again and again.
inline char* roomIn(std::string& scratch, std::size_t size) {
    if (scratch.size() < size)
        scratch.resize(size);
    return scratch.data();
}

// "00" to "99".
inline constexpr std::array<char, 200> kDigitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

// Two digits of a number below 100. Gives the place behind them.
inline char* putTwoDigits(std::uint32_t value, char* out) {
    std::memcpy(out, &kDigitPairs[std::size_t{value} * 2], 2);
    return out + 2;
}

// A number below 100 without a zero ahead of it. Gives the place behind it; the character there may change.
inline char* putOneOrTwoDigits(std::uint32_t value, char* out) {
    const bool two = value > 9;
    std::memcpy(out, &kDigitPairs[std::size_t{value} * 2], 2);
    out[0] = two ? out[0] : out[1];
    return out + 1 + (two ? 1 : 0);
}

// Eight digits of a number below 10^8, in a third of the steps that pairs take: two numbers of four digits stand side
// by side in one word, then four of two, then the eight digits, and one multiplication divides all of them. 10486 /
// 2^20 is 1 / 100 for all below 10^4, and 103 / 2^10 is 1 / 10 for all below 100. The front digit is in the lowest
// byte.
inline void putEightDigits(std::uint32_t value, char* out) {
    const std::uint64_t fours = value / 10000 | std::uint64_t{value % 10000} << 32;
    const std::uint64_t hundreds = fours * 10486 >> 20 & 0x0000007F0000007F;
    const std::uint64_t pairs = hundreds | (fours - hundreds * 100) << 16;
    const std::uint64_t tens = pairs * 103 >> 10 & 0x000F000F000F000F;
    const std::uint64_t digits = tens | (pairs - tens * 10) << 8;
    const std::uint64_t text = digits + 0x3030303030303030; // "0" eight times
    const std::uint64_t bytes = std::endian::native == std::endian::little ? text : __builtin_bswap64(text);
    std::memcpy(out, &bytes, sizeof bytes);
}

// How many digits a number has; 0 has one.
inline int digitCount(std::uint32_t value) {
    constexpr std::uint32_t kPowers[] = {0, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000};
    const int guess = (std::bit_width(value | 1) * 1233) >> 12; // 1233 / 4096 is the logarithm of 2, a bit less
    return guess + (value >= kPowers[guess] ? 1 : 0);
}

inline constexpr int kMostDigits = 16;

// A number below 10^16, its last digit ahead of `end`; the 16 characters there may change. Gives its first digit.
inline char* putWholeBefore(char* end, std::uint64_t value) {
    constexpr std::uint64_t kEight = 100000000;
    putEightDigits(static_cast<std::uint32_t>(value % kEight), end - 8);
    if (value < kEight)
        return end - digitCount(static_cast<std::uint32_t>(value));
    const auto high = static_cast<std::uint32_t>(value / kEight);
    putEightDigits(high, end - 16);
    return end - 8 - digitCount(high);
}

// Puts a minus ahead of a negative number's first digit; the character there may change in any case.
inline char* putSignBefore(char* start, bool negative) {
    start[-1] = '-';
    return start - (negative ? 1 : 0);
}

inline constexpr std::size_t kWholeRoom = kMostDigits + 1;

// A whole number as text, which lies somewhere in the room's kWholeRoom characters.
inline std::string_view formWhole(std::int32_t value, char* room) {
    const auto bits = static_cast<std::uint32_t>(value);
    char* end = room + kWholeRoom;
    const char* start = putSignBefore(putWholeBefore(end, value < 0 ? 0u - bits : bits), value < 0);
    return {start, static_cast<std::size_t>(end - start)};
}

} // namespace tallybook::calc
