// Texts one behind the other, each behind its length.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace tallybook::model {

// A text is found by its place and stays where it is; there is no taking out. Most texts are short: a length is a
// byte, or 255 and five bytes of seven bits each with the eighth set, so that no byte is a NUL that is not one of a
// text. Less work than a string of strings, as new room is not cleared ahead of its use. Texts are not empty.
class TextRun {
public:
    // The bytes that a text of a length takes.
    static std::size_t storedSize(std::size_t length) {
        return length + (length < kShortLength ? 1 : 1 + kLengthBytes);
    }

    std::size_t size() const { return m_size; }

    // All texts with their lengths. There is a NUL among them only when a text has one.
    std::string_view bytes() const { return {m_bytes.get(), m_size}; }

    // Puts a text behind the others and gives its place.
    std::uint32_t append(std::string_view text) {
        const std::size_t stored = storedSize(text.size());
        if (m_room - m_size < stored)
            setRoom(std::max(m_size + stored, std::size_t{m_room} * 2));
        char* out = putLength(m_bytes.get() + m_size, text.size());
        std::memcpy(out, text.data(), text.size());
        return std::exchange(m_size, m_size + static_cast<std::uint32_t>(stored));
    }

    // The text at a place that append() gave. The view lasts until the run changes.
    std::string_view at(std::uint32_t place) const {
        const char* start = m_bytes.get() + place;
        const std::size_t length = static_cast<unsigned char>(*start);
        return length < kShortLength ? std::string_view(start + 1, length) : longTextAt(start + 1);
    }

    // A run of its own with the same texts at the same places.
    TextRun copy() const {
        TextRun made;
        if (m_size == 0)
            return made;
        made.setRoom(m_size);
        std::memcpy(made.m_bytes.get(), m_bytes.get(), m_size);
        made.m_size = m_size;
        return made;
    }

    // Forgets the texts and keeps the room.
    void clear() { m_size = 0; }

    // Makes or takes away room, down to the texts that are there.
    void setRoom(std::size_t room) {
        const std::size_t kept = std::max<std::size_t>(room, m_size);
        auto bytes = std::make_unique_for_overwrite<char[]>(kept);
        if (m_size > 0)
            std::memcpy(bytes.get(), m_bytes.get(), m_size);
        m_bytes = std::move(bytes);
        m_room = static_cast<std::uint32_t>(kept);
    }

    // Gives back the room of a run that has outgrown what was made for it, and doubled.
    void trim() {
        if (m_room > m_size + m_size / 2)
            setRoom(m_size);
    }

private:
    static constexpr std::size_t kShortLength = 255; // the length byte that says that four bytes of length follow

    static constexpr std::size_t kLengthBytes = 5;
    static constexpr unsigned kLengthBits = 7;
    static constexpr unsigned kMark = 0x80;

    static char* putLength(char* out, std::size_t length) {
        *out++ = static_cast<char>(std::min(length, kShortLength));
        if (length < kShortLength)
            return out;
        std::uint64_t left = length;
        for (std::size_t i = 0; i < kLengthBytes; ++i, left >>= kLengthBits)
            *out++ = static_cast<char>(left | kMark);
        return out;
    }

    static std::string_view longTextAt(const char* length) {
        std::size_t size = 0;
        for (std::size_t i = kLengthBytes; i-- > 0;)
            size = size << kLengthBits | (static_cast<unsigned char>(length[i]) & (kMark - 1));
        return {length + kLengthBytes, size};
    }

    std::unique_ptr<char[]> m_bytes;
    std::uint32_t m_size = 0;
    std::uint32_t m_room = 0;
};

} // namespace tallybook::model
