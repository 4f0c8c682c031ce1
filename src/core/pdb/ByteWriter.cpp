#include "core/pdb/ByteWriter.h"

#include <bit>

namespace tallybook::pdb {

namespace {

std::array<std::uint8_t, 4> bytesOf(std::uint32_t value) {
    return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
            static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

} // namespace

std::string_view storedPart(std::string_view text, std::size_t length) {
    return text.substr(0, length).substr(0, text.find('\0'));
}

void ByteWriter::outWord(std::uint16_t value) {
    outBytes(std::array{static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)});
}

void ByteWriter::outLong(std::uint32_t value) {
    outBytes(bytesOf(value));
}

void ByteWriter::outFloat(float value) {
    outLong(std::bit_cast<std::uint32_t>(value));
}

void ByteWriter::outColour(const model::Colour& colour) {
    outBytes(std::array{std::uint8_t{0}, colour.red, colour.green, colour.blue});
}

void ByteWriter::outDate(const calc::Date& date) {
    outWord(static_cast<std::uint16_t>(date.year));
    outByte(static_cast<std::uint8_t>(date.month));
    outByte(static_cast<std::uint8_t>(date.day));
}

void ByteWriter::outTime(const calc::TimeOfDay& time) {
    outWord(static_cast<std::uint16_t>(time.hour));
    outByte(static_cast<std::uint8_t>(time.minute));
    outByte(static_cast<std::uint8_t>(time.second));
}

void ByteWriter::outText(std::string_view text) {
    m_bytes.insert(m_bytes.end(), text.begin(), text.end());
}

void ByteWriter::outZeroText(std::string_view text) {
    outText(storedPart(text, text.size()));
    outByte(0);
}

void ByteWriter::outPaddedText(std::string_view text, std::size_t width) {
    outText(text);
    if (text.size() < width)
        zeros(width - text.size());
}

void ByteWriter::setLong(std::size_t position, std::uint32_t value) {
    const auto bytes = bytesOf(value);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        m_bytes[position + i] = bytes[i];
}

} // namespace tallybook::pdb
