#include "core/convert/DelimitedText.h"

#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <cstring>

namespace tallybook::convert {

namespace {

using platform::Result;

constexpr std::size_t kPiece = 256 * 1024; // bytes read at a time
constexpr std::size_t kOutPiece = 128 * 1024;

std::size_t codeOf(char c) {
    return static_cast<unsigned char>(c);
}

} // namespace

Result<std::size_t> FileSource::read(std::span<char> room) {
    const auto bytes = m_files.readPart(m_path, m_offset, room.size());
    if (!bytes)
        return bytes.error();
    const std::size_t count = std::min(bytes.value().size(), room.size());
    if (count > 0)
        std::memcpy(room.data(), bytes.value().data(), count);
    m_offset += count;
    return count;
}

Result<std::size_t> TextSource::read(std::span<char> room) {
    const std::size_t count = std::min(m_left.size(), room.size());
    std::copy_n(m_left.begin(), count, room.begin());
    m_left.remove_prefix(count);
    return count;
}

DelimitedReader::DelimitedReader(ByteSource& source, char delimiter) : m_source(source), m_delimiter(delimiter) {
    for (const char c : {delimiter, '"', '\r', '\n'})
        m_stops[codeOf(c)] = true;
}

std::string_view DelimitedReader::raw(std::size_t item) const {
    if (item >= m_ends.size())
        return {};
    const auto [start, end] = m_ends[item];
    return std::string_view(m_buffer).substr(m_start + start, end - start);
}

std::string_view DelimitedReader::line() const {
    return std::string_view(m_buffer).substr(m_start, m_recordEnd - m_start);
}

std::string_view DelimitedReader::item(std::size_t item, std::string& scratch) const {
    return unquoted(raw(item), scratch);
}

bool DelimitedReader::next() {
    m_taken += m_nextStart - m_start;
    m_start = m_nextStart;
    m_scan = m_start;
    m_itemStart = m_start;
    m_ends.clear();
    m_itemCount = 0;
    m_inside = false;
    m_isUnclosed = false;
    while (scan() == Ended::Bytes) {
        if (fill())
            continue;
        if (!m_status || m_isTooLarge || m_scan == m_start)
            return false;
        m_isUnclosed = m_inside;
        return finishRecord(0);
    }
    return true;
}

// Looks at bytes until the record or what is in the buffer ends. A CR at the very end waits for what follows it.
DelimitedReader::Ended DelimitedReader::scan() {
    const char* const bytes = m_buffer.data();
    while (m_scan < m_end) {
        if (m_inside) {
            const void* quote = std::memchr(bytes + m_scan, '"', m_end - m_scan);
            if (quote == nullptr) {
                m_scan = m_end;
                return Ended::Bytes;
            }
            m_scan = static_cast<std::size_t>(static_cast<const char*>(quote) - bytes) + 1;
            m_inside = false;
            continue;
        }
        while (m_scan < m_end && !m_stops[codeOf(bytes[m_scan])])
            ++m_scan;
        if (m_scan == m_end)
            return Ended::Bytes;
        const char c = bytes[m_scan];
        if (c == '"') {
            m_inside = true;
            ++m_scan;
        } else if (c == m_delimiter) {
            endItem(m_scan++);
            m_itemStart = m_scan;
        } else if (c == '\n') {
            finishRecord(1);
            return Ended::Record;
        } else if (m_scan + 1 < m_end || m_sourceEnded) {
            finishRecord(m_scan + 1 < m_end && bytes[m_scan + 1] == '\n' ? 2 : 1);
            return Ended::Record;
        } else {
            return Ended::Bytes;
        }
    }
    return Ended::Bytes;
}

// Gets more bytes behind those of the present record, which moves to the buffer's front. False at the end.
bool DelimitedReader::fill() {
    if (m_sourceEnded)
        return false;
    const std::size_t kept = m_end - m_start;
    if (kept > kLargestRecord) {
        m_isTooLarge = true;
        return false;
    }
    if (m_start > 0) {
        std::memmove(m_buffer.data(), m_buffer.data() + m_start, kept);
        m_scan -= m_start;
        m_itemStart -= m_start;
        m_nextStart = 0;
        m_start = 0;
        m_end = kept;
    }
    if (m_buffer.size() < m_end + kPiece)
        m_buffer.resize(std::max(m_end + kPiece, m_buffer.size() + m_buffer.size() / 2));
    const auto count = m_source.read({m_buffer.data() + m_end, kPiece});
    if (!count) {
        m_status = count.error();
        m_sourceEnded = true;
        return false;
    }
    if (count.value() == 0) {
        m_sourceEnded = true;
        return m_scan < m_end; // a CR that waited is a line end of its own
    }
    m_hasNul = m_hasNul || std::memchr(m_buffer.data() + m_end, 0, count.value()) != nullptr;
    m_end += count.value();
    return true;
}

void DelimitedReader::endItem(std::size_t place) {
    if (m_ends.size() < kMostItems)
        m_ends.emplace_back(static_cast<std::uint32_t>(m_itemStart - m_start),
                            static_cast<std::uint32_t>(place - m_start));
    ++m_itemCount;
}

bool DelimitedReader::finishRecord(std::size_t lineEndBytes) {
    endItem(m_scan);
    m_recordEnd = m_scan;
    m_nextStart = m_scan + lineEndBytes;
    ++m_records;
    return true;
}

std::string_view unquoted(std::string_view raw, std::string& scratch) {
    if (raw.empty() || raw.front() != '"' || raw.back() != '"')
        return raw;
    if (raw.size() <= 2)
        return {};
    const std::string_view inner = raw.substr(1, raw.size() - 2);
    std::size_t pair = inner.find("\"\"");
    if (pair == std::string_view::npos)
        return inner;
    scratch.clear();
    std::size_t start = 0;
    for (; pair != std::string_view::npos; pair = inner.find("\"\"", start)) {
        scratch.append(inner.substr(start, pair + 1 - start));
        start = pair + 2;
    }
    scratch.append(inner.substr(start));
    return scratch;
}

DelimitedWriter::DelimitedWriter(ByteSink& sink, char delimiter) : m_sink(sink), m_delimiter(delimiter) {
    for (const char c : {delimiter, '"', '\r', '\n'})
        m_needsQuotes[codeOf(c)] = true;
    m_buffer.reserve(kOutPiece + kOutPiece / 8);
}

void DelimitedWriter::add(std::string_view item) {
    if (m_itemsInRecord++ > 0)
        m_buffer += m_delimiter;
    for (const char c : item)
        if (m_needsQuotes[codeOf(c)])
            return addQuoted(item);
    m_buffer.append(item);
}

void DelimitedWriter::addQuoted(std::string_view item) {
    m_buffer += '"';
    for (std::size_t quote = item.find('"'); quote != std::string_view::npos; quote = item.find('"')) {
        m_buffer.append(item.substr(0, quote + 1));
        m_buffer += '"';
        item.remove_prefix(quote + 1);
    }
    m_buffer.append(item);
    m_buffer += '"';
}

void DelimitedWriter::endRecord() {
    if (m_itemsInRecord == 1 && m_buffer.size() == m_recordStart)
        m_buffer += "\"\"";
    m_buffer += "\r\n";
    m_itemsInRecord = 0;
    if (m_buffer.size() >= kOutPiece)
        flush();
    m_recordStart = m_buffer.size();
}

platform::Status DelimitedWriter::finish() {
    flush();
    return m_status;
}

void DelimitedWriter::flush() {
    if (m_status && !m_buffer.empty())
        m_status = m_sink.write(m_buffer);
    m_buffer.clear();
}

} // namespace tallybook::convert
