// Delimited text: records of items, a character between items, a line end behind each record.
//
// Whether a separator or a line end counts is told by the number of double quotes ahead of it in the record: behind
// an odd number it belongs to an item. An item with a double quote at both ends loses these two, and each pair of
// double quotes in it stands for one. A single one inside stays, so that both ways of writing double quotes inside
// quoted items are read.
#pragma once

#include "core/platform/Files.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tallybook::convert {

// Where bytes come from, piece by piece.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    // Fills the front of the room and gives how many bytes; 0 at the end.
    virtual platform::Result<std::size_t> read(std::span<char> room) = 0;
};

class FileSource : public ByteSource {
public:
    FileSource(platform::Files& files, std::filesystem::path path) : m_files(files), m_path(std::move(path)) {}
    platform::Result<std::size_t> read(std::span<char> room) override;

private:
    platform::Files& m_files;
    std::filesystem::path m_path;
    std::uint64_t m_offset = 0;
};

class TextSource : public ByteSource {
public:
    explicit TextSource(std::string_view text) : m_left(text) {}
    platform::Result<std::size_t> read(std::span<char> room) override;

private:
    std::string_view m_left;
};

// Where bytes go.
class ByteSink {
public:
    virtual ~ByteSink() = default;
    virtual platform::Status write(std::string_view bytes) = 0;
};

// Takes any bytes, in time that grows with their number, and keeps no more of them than the present record and a
// piece of what follows.
class DelimitedReader {
public:
    static constexpr std::size_t kLargestRecord = 2u << 20; // bytes; a longer one is a failure
    static constexpr std::size_t kMostItems = 256;          // that are kept apart; more are only counted

    DelimitedReader(ByteSource& source, char delimiter);

    // Goes to the next record. False at the end, or when the source fails or a record is too large: see status(). An
    // empty line is a record of one empty item; behind the last line end there is none.
    bool next();

    // Of the present record. Views last until next().
    std::size_t items() const { return m_itemCount; }
    std::string_view raw(std::size_t item) const; // with its double quotes; empty behind the last one
    std::string_view line() const;                // the whole record without its line end
    // Without its double quotes; the view lies in the reader or in `scratch`.
    std::string_view item(std::size_t item, std::string& scratch) const;
    // The text ended behind an odd number of double quotes.
    bool isUnclosed() const { return m_isUnclosed; }

    std::uint64_t records() const { return m_records; } // that next() has gone to
    std::uint64_t position() const { return m_taken; }  // bytes taken from the source's front
    const platform::Status& status() const { return m_status; }
    bool isTooLarge() const { return m_isTooLarge; } // why next() ended
    bool hasNul() const { return m_hasNul; }         // so far; such a file is no text

private:
    enum class Ended : std::uint8_t { Record, Bytes };
    Ended scan();
    bool fill();
    void endItem(std::size_t place);
    bool finishRecord(std::size_t lineEndBytes);

    ByteSource& m_source;
    std::array<bool, 256> m_stops{}; // characters to look at outside of double quotes
    char m_delimiter;
    std::string m_buffer;
    std::size_t m_start = 0; // of the present record, in the buffer
    std::size_t m_scan = 0;  // of the next byte to be looked at
    std::size_t m_end = 0;   // of the bytes in the buffer
    std::size_t m_recordEnd = 0;
    std::size_t m_nextStart = 0;
    std::size_t m_itemStart = 0;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> m_ends; // start and end of items, from m_start
    std::size_t m_itemCount = 0;
    bool m_inside = false;
    bool m_isUnclosed = false;
    bool m_sourceEnded = false;
    bool m_isTooLarge = false;
    bool m_hasNul = false;
    std::uint64_t m_records = 0;
    std::uint64_t m_taken = 0;
    platform::Status m_status;
};

// A raw item without its double quotes, as DelimitedReader::item gives it.
std::string_view unquoted(std::string_view raw, std::string& scratch);

// Puts items into quotes where they need it (when they hold a double quote, the separator or a line end; a double
// quote inside is doubled), and records together in pieces for a sink. A record of a single empty item is quoted, as
// other programs pass over an empty line.
class DelimitedWriter {
public:
    DelimitedWriter(ByteSink& sink, char delimiter);

    void add(std::string_view item);
    void endRecord(); // with CR LF
    // Gives the last piece to the sink. Failures stick.
    platform::Status finish();
    const platform::Status& status() const { return m_status; }

private:
    void addQuoted(std::string_view item);
    void flush();

    ByteSink& m_sink;
    std::array<bool, 256> m_needsQuotes{};
    char m_delimiter;
    std::string m_buffer;
    std::size_t m_itemsInRecord = 0;
    std::size_t m_recordStart = 0;
    platform::Status m_status;
};

} // namespace tallybook::convert
