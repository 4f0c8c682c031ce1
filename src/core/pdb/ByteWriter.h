// Appends to the bytes of a file.
#pragma once

#include "core/calc/values/Dates.h"
#include "core/model/Definitions.h"
#include "core/platform/Files.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace tallybook::pdb {

// The part of a text that a file can hold: at most `length` characters, and none from the first NUL on.
inline std::string_view storedPart(std::string_view text, std::size_t length) {
    const std::string_view part = text.substr(0, length);
    return part.substr(0, part.find('\0'));
}

// Numbers are big-endian; negative ones in two's complement.
class ByteWriter {
public:
    // Writes into an empty buffer, which grows beyond its room when need be.
    explicit ByteWriter(platform::Bytes buffer = {}) : m_bytes(std::move(buffer)) {}

    std::size_t size() const { return m_size; }
    platform::Bytes take();

    void outByte(std::uint8_t value) { *grow(1) = value; }
    void outWord(std::uint16_t value) {
        std::uint8_t* bytes = grow(2);
        bytes[0] = static_cast<std::uint8_t>(value >> 8);
        bytes[1] = static_cast<std::uint8_t>(value);
    }
    void outLong(std::uint32_t value) { putLong(grow(4), value); }
    void outFloat(float value) { outLong(std::bit_cast<std::uint32_t>(value)); }
    void outColour(const model::Colour& colour); // a zero byte, then red, green and blue
    void outDate(const calc::Date& date);        // year as a word, month, day
    void outTime(const calc::TimeOfDay& time);   // hour as a word, minute, second

    void outBytes(platform::ByteSpan bytes) { copy(bytes.data(), bytes.size()); }
    void outText(std::string_view text) { copy(text.data(), text.size()); } // the bytes alone
    void outZeroText(std::string_view text);                                // up to a NUL in it, and a NUL behind
    // The length in a byte, the text, and a NUL. The text has at most 255 bytes and no NUL.
    void outCountedText(std::string_view text) {
        std::uint8_t* bytes = grow(text.size() + 2);
        bytes[0] = static_cast<std::uint8_t>(text.size());
        std::memcpy(bytes + 1, text.data(), text.size());
        bytes[text.size() + 1] = 0;
    }
    // The same behind two bytes.
    void outCountedText(const std::array<std::uint8_t, 2>& front, std::string_view text) {
        std::uint8_t* bytes = grow(front.size() + text.size() + 2);
        bytes[0] = front[0];
        bytes[1] = front[1];
        bytes[2] = static_cast<std::uint8_t>(text.size());
        std::memcpy(bytes + 3, text.data(), text.size());
        bytes[text.size() + 3] = 0;
    }
    // The text and NULs up to the width. A text that is as long or longer stands whole, without a NUL.
    void outPaddedText(std::string_view text, std::size_t width);
    // The same, but a longer text is cut: an area of exactly `width` bytes.
    void outArea(std::string_view text, std::size_t width) { outPaddedText(storedPart(text, width), width); }
    void zeros(std::size_t count) { std::memset(grow(count), 0, count); }

    // Puts a long over four bytes that have been written.
    void setLong(std::size_t position, std::uint32_t value) { putLong(m_bytes.data() + position, value); }

private:
    // Room for the next bytes, which the caller fills. Bytes are made in larger steps ahead of their use.
    std::uint8_t* grow(std::size_t count) {
        if (m_bytes.size() - m_size < count)
            makeRoom(count);
        std::uint8_t* bytes = m_bytes.data() + m_size;
        m_size += count;
        return bytes;
    }
    void makeRoom(std::size_t count);
    void copy(const void* bytes, std::size_t count) {
        if (count > 0)
            std::memcpy(grow(count), bytes, count);
    }
    static void putLong(std::uint8_t* bytes, std::uint32_t value) {
        bytes[0] = static_cast<std::uint8_t>(value >> 24);
        bytes[1] = static_cast<std::uint8_t>(value >> 16);
        bytes[2] = static_cast<std::uint8_t>(value >> 8);
        bytes[3] = static_cast<std::uint8_t>(value);
    }

    platform::Bytes m_bytes; // of which m_size are written
    std::size_t m_size = 0;
};

} // namespace tallybook::pdb
