#include "core/pdb/ByteWriter.h"

#include <utility>

namespace tallybook::pdb {

namespace {

// Small enough for bytes that are made ahead to stay in the cache until they are used.
constexpr std::size_t kStep = 32 * 1024;

} // namespace

platform::Bytes ByteWriter::take() {
    m_bytes.resize(std::exchange(m_size, 0));
    return std::move(m_bytes);
}

void ByteWriter::makeRoom(std::size_t count) {
    m_bytes.resize(m_size + count + kStep);
}

void ByteWriter::outColour(const model::Colour& colour) {
    outByte(0);
    outByte(colour.red);
    outByte(colour.green);
    outByte(colour.blue);
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

void ByteWriter::outZeroText(std::string_view text) {
    outText(storedPart(text, text.size()));
    outByte(0);
}

void ByteWriter::outPaddedText(std::string_view text, std::size_t width) {
    outText(text);
    if (text.size() < width)
        zeros(width - text.size());
}

} // namespace tallybook::pdb
