// Appends to the bytes of a file.
#pragma once

#include "core/calc/Dates.h"
#include "core/model/Definitions.h"
#include "core/platform/Files.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace tallybook::pdb {

// The part of a text that a file can hold: at most `length` characters, and none from the first NUL on.
std::string_view storedPart(std::string_view text, std::size_t length);

// Numbers are big-endian; negative ones in two's complement.
class ByteWriter {
public:
    std::size_t size() const { return m_bytes.size(); }
    void reserve(std::size_t size) { m_bytes.reserve(size); }
    platform::Bytes take() { return std::move(m_bytes); }

    void outByte(std::uint8_t value) { m_bytes.push_back(value); }
    void outWord(std::uint16_t value);
    void outLong(std::uint32_t value);
    void outFloat(float value);
    void outColour(const model::Colour& colour); // a zero byte, then red, green and blue
    void outDate(const calc::Date& date);        // year as a word, month, day
    void outTime(const calc::TimeOfDay& time);   // hour as a word, minute, second

    void outBytes(platform::ByteSpan bytes) { m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end()); }
    void outText(std::string_view text);     // the bytes alone
    void outZeroText(std::string_view text); // up to a NUL in it, and a NUL behind
    // The text and NULs up to the width. A text that is as long or longer stands whole, without a NUL.
    void outPaddedText(std::string_view text, std::size_t width);
    // The same, but a longer text is cut: an area of exactly `width` bytes.
    void outArea(std::string_view text, std::size_t width) { outPaddedText(storedPart(text, width), width); }
    void zeros(std::size_t count) { m_bytes.insert(m_bytes.end(), count, 0); }

    // Puts a long over four bytes that have been written.
    void setLong(std::size_t position, std::uint32_t value);

private:
    platform::Bytes m_bytes;
};

} // namespace tallybook::pdb
