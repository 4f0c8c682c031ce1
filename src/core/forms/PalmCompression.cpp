#include "core/forms/PalmCompression.h"

#include <algorithm>

namespace tallybook::forms {

namespace {

using platform::Bytes;
using platform::ByteSpan;

constexpr std::size_t kLongestRun = 255;
constexpr std::size_t kMaskBytes = 8; // that one mask byte tells about

// Takes bytes off the front.
class Source {
public:
    explicit Source(ByteSpan bytes) : m_bytes(bytes) {}

    bool ok() const { return m_ok; }
    std::uint8_t next() {
        const ByteSpan one = take(1);
        return one.empty() ? std::uint8_t{0} : one.front();
    }
    // That many bytes, or none when there are fewer.
    ByteSpan take(std::size_t count) {
        if (count > m_bytes.size()) {
            m_ok = false;
            return {};
        }
        const ByteSpan taken = m_bytes.first(count);
        m_bytes = m_bytes.subspan(count);
        return taken;
    }

private:
    ByteSpan m_bytes;
    bool m_ok = true;
};

// Each fills one row and is false when the data is damaged.

bool unpackRuns(Source& in, std::span<std::uint8_t> row) {
    for (std::size_t at = 0; at < row.size();) {
        const std::size_t count = in.next();
        const std::uint8_t byte = in.next();
        if (!in.ok() || count == 0 || count > row.size() - at)
            return false;
        std::fill_n(row.begin() + static_cast<std::ptrdiff_t>(at), count, byte);
        at += count;
    }
    return true;
}

// One code: 0 to 127 copies one byte more than it says, 129 to 255 repeats the next byte 257 less that many times,
// 128 does nothing. Gives the bytes made; none for damage.
std::optional<std::size_t> unpackCode(Source& in, std::span<std::uint8_t> place) {
    constexpr std::size_t kNothing = 128;
    const std::size_t code = in.next();
    if (!in.ok())
        return std::nullopt;
    if (code == kNothing)
        return 0;
    const bool copies = code < kNothing;
    const std::size_t count = copies ? code + 1 : 257 - code;
    const ByteSpan bytes = in.take(copies ? count : 1);
    if (bytes.empty() || count > place.size())
        return std::nullopt;
    if (copies)
        std::copy(bytes.begin(), bytes.end(), place.begin());
    else
        std::fill_n(place.begin(), count, bytes.front());
    return count;
}

bool unpackPackBits(Source& in, std::span<std::uint8_t> row) {
    for (std::size_t at = 0; at < row.size();) {
        const auto made = unpackCode(in, row.subspan(at));
        if (!made)
            return false;
        at += *made;
    }
    return true;
}

// A mask for each 8 bytes, from its high bit: 1 for a byte that follows, 0 for the one of the row above.
bool unpackScanline(Source& in, std::span<std::uint8_t> row, ByteSpan above) {
    for (std::size_t at = 0; at < row.size(); at += kMaskBytes) {
        const unsigned mask = in.next();
        const std::size_t end = std::min(at + kMaskBytes, row.size());
        for (std::size_t i = at; i < end; ++i) {
            const bool follows = (mask << (i - at) & 0x80U) != 0;
            row[i] = follows ? in.next() : above.empty() ? std::uint8_t{0} : above[i];
        }
    }
    return in.ok();
}

// How many bytes one byte of data gives at most.
std::size_t mostGrowth(PalmCompression compression) {
    switch (compression) {
    case PalmCompression::Scanline:
        return kMaskBytes;
    case PalmCompression::Runs:
        return kLongestRun / 2 + 1;
    case PalmCompression::PackBits:
        return 64;
    default:
        return 1;
    }
}

bool unpackRow(Source& in, PalmCompression compression, std::span<std::uint8_t> row, ByteSpan above) {
    switch (compression) {
    case PalmCompression::Scanline:
        return unpackScanline(in, row, above);
    case PalmCompression::Runs:
        return unpackRuns(in, row);
    case PalmCompression::PackBits:
        return unpackPackBits(in, row);
    default:
        break;
    }
    const ByteSpan bytes = in.take(row.size());
    std::copy(bytes.begin(), bytes.end(), row.begin());
    return in.ok();
}

} // namespace

std::optional<Bytes> unpackRows(ByteSpan data, PalmCompression compression, std::size_t rowBytes,
                                std::size_t height) {
    if (rowBytes * height > data.size() * mostGrowth(compression))
        return std::nullopt;
    Bytes rows(rowBytes * height);
    Source in(data);
    ByteSpan above;
    for (std::size_t y = 0; y < height; ++y) {
        const std::span<std::uint8_t> row = std::span(rows).subspan(y * rowBytes, rowBytes);
        if (!unpackRow(in, compression, row, above))
            return std::nullopt;
        above = row;
    }
    return rows;
}

void packRuns(ByteSpan row, Bytes& out) {
    for (std::size_t at = 0; at < row.size();) {
        const std::size_t most = std::min(kLongestRun, row.size() - at);
        std::size_t run = 1;
        while (run < most && row[at + run] == row[at])
            ++run;
        out.push_back(static_cast<std::uint8_t>(run));
        out.push_back(row[at]);
        at += run;
    }
}

} // namespace tallybook::forms
