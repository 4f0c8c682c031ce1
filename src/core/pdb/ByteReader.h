// Reads the bytes of a file forwards, within bounds.
#pragma once

#include "core/platform/Files.h"
#include "core/platform/OwnTexts.h"

#include <bit>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace tallybook::pdb {

using platform::ByteSpan;

// Numbers are big-endian. A read that would pass the end fails: it gives 0 or an empty text, the position stays,
// and every read behind it fails too, so that a reader of many values asks once, by give(). Texts are views into
// the bytes. Positions are those of the file, also in a reader of one record.
class ByteReader {
public:
    // Reads bytes[position, end). `end` is at most the size of the bytes.
    ByteReader(ByteSpan bytes, std::size_t position, std::size_t end)
        : m_data(bytes.data()), m_at(position), m_end(end) {}
    explicit ByteReader(ByteSpan bytes) : ByteReader(bytes, 0, bytes.size()) {}

    std::size_t position() const { return m_at; }
    std::size_t left() const { return m_end - m_at; }
    bool ok() const { return !m_failed; }

    // What is left, for a look ahead.
    ByteSpan rest() const { return {m_data + m_at, left()}; }

    // Which record of the file the errors are about, from 0.
    void setRecord(int record) { m_record = record; }

    std::uint8_t getByte() {
        const std::uint8_t* bytes = take(1);
        return bytes == nullptr ? std::uint8_t{0} : *bytes;
    }
    std::uint16_t getWord() {
        const std::uint8_t* bytes = take(2);
        return bytes == nullptr ? std::uint16_t{0} : static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
    }
    std::int16_t getInt() { return static_cast<std::int16_t>(getWord()); }
    std::uint32_t getUnsignedLong() {
        const std::uint8_t* bytes = take(4);
        if (bytes == nullptr)
            return 0;
        std::uint32_t value = 0;
        std::memcpy(&value, bytes, sizeof value);
        return std::endian::native == std::endian::little ? __builtin_bswap32(value) : value;
    }
    std::int32_t getLong() { return static_cast<std::int32_t>(getUnsignedLong()); }
    float getFloat() { return std::bit_cast<float>(getUnsignedLong()); }

    template <std::size_t n> void getBytes(std::array<std::uint8_t, n>& values) {
        if (const std::uint8_t* bytes = take(n))
            std::memcpy(values.data(), bytes, n);
    }

    // The text up to the next NUL, which is consumed. Without a NUL ahead of the end it fails.
    std::string_view getText() {
        const std::size_t length = textLength();
        if (length == left()) {
            fail(platform::texts::kTextWithoutEnd);
            return {};
        }
        return textOf(take(length + 1), length);
    }

    // The same, but a text may also run to the end.
    std::string_view getOpenText() {
        const std::size_t length = textLength();
        const std::uint8_t* bytes = take(length);
        if (left() > 0)
            ++m_at;
        return textOf(bytes, length);
    }

    // Exactly `width` bytes; the text is what stands ahead of their first NUL.
    std::string_view getPaddedText(std::size_t width) {
        const std::uint8_t* bytes = take(width);
        if (bytes == nullptr)
            return {};
        const void* nul = std::memchr(bytes, 0, width);
        return textOf(
            bytes, nul == nullptr ? width : static_cast<std::size_t>(static_cast<const std::uint8_t*>(nul) - bytes));
    }

    void skipBytes(std::size_t count) { take(count); }

    // Fails with a reason, unless something failed before.
    void fail(std::string_view reason) {
        if (m_failed)
            return;
        m_failed = true;
        m_reason = reason;
        m_end = m_at;
    }

    // The value when nothing failed, else the error with the operation's tag.
    template <class T> platform::Result<T> give(std::string_view tag, T value) const {
        if (m_failed)
            return error(tag);
        return value;
    }
    platform::Status status(std::string_view tag) const {
        return m_failed ? platform::Status(error(tag)) : platform::Status();
    }
    platform::Error error(std::string_view tag) const {
        platform::Error error{platform::ErrorKind::Format, std::string(tag), m_reason};
        if (m_record >= 0)
            error.record = m_record;
        error.offset = m_at;
        return error;
    }

private:
    // The next bytes, or nothing when there are not so many.
    const std::uint8_t* take(std::size_t count) {
        if (count > left()) {
            fail(platform::texts::kFileEndsInside);
            return nullptr;
        }
        const std::uint8_t* bytes = m_data + m_at;
        m_at += count;
        return bytes;
    }

    // Bytes ahead of the next NUL, or ahead of the end.
    std::size_t textLength() const {
        if (left() == 0)
            return 0;
        const void* nul = std::memchr(m_data + m_at, 0, left());
        return nul == nullptr ? left()
                              : static_cast<std::size_t>(static_cast<const std::uint8_t*>(nul) - (m_data + m_at));
    }

    static std::string_view textOf(const std::uint8_t* bytes, std::size_t length) {
        return {reinterpret_cast<const char*>(bytes), bytes == nullptr ? 0 : length};
    }

    const std::uint8_t* m_data;
    std::size_t m_at;
    std::size_t m_end;
    int m_record = -1;
    bool m_failed = false;
    std::string m_reason;
};

} // namespace tallybook::pdb
