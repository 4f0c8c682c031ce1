// What the text bridge gives back, and the words that go with it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tallybook::convert {

enum class BridgeCode : std::int16_t {
    Good = 0,
    UnresolvedExpression = 100,
    CannotOpen = 101,
    MemoTooLong = 102,
    WrongFieldCount = 103,
    NoCategoriesName = 104,
    InvalidType = 105,
    CategoriesNoList = 106,
    WrongDataType = 107,
    IntegerTooLarge = 108,
    HasJoins = 109,
    InvalidTime = 110,
    DataWithoutField = 111,
    TooManyFields = 112,
    InvalidArgument = 114,
    OutputOpen = 115,
    OutputExists = 116,
    ListFull = 117,
    Unspecified = 200,
    InvalidListIndex = 901,
};

// Numbers of a run beside those of the bridge.
inline constexpr int kNoDatabaseFile = 950; // "PDB file not found." was shown
inline constexpr int kDriverFailed = 951;   // told already; the error report stays silent
inline constexpr int kNoTable = -900;       // told already
inline constexpr int kStopped = -901;       // by the user, or turned down at a password; told or nothing to tell

// The words of a number; "Unknown error" for one that has none.
std::string_view bridgeText(int number);

inline int numberOf(BridgeCode code) {
    return static_cast<int>(code);
}

} // namespace tallybook::convert
