#include "core/forms/Bmp.h"

#include <algorithm>

namespace tallybook::forms {

namespace {

using model::Colour;
using platform::Bytes;
using platform::ByteSpan;
using platform::Result;

constexpr std::size_t kFileHeader = 14;
constexpr std::size_t kInfoHeader = 40;
constexpr std::size_t kColourBytes = 4;
constexpr std::uint32_t kPlain = 0;
constexpr std::uint32_t kRuns8 = 1;
constexpr std::uint32_t kRuns4 = 2;
constexpr std::uint32_t kDotsPerMetre = 2835; // 72 in an inch

std::uint32_t wordAt(ByteSpan bytes, std::size_t at) {
    return static_cast<std::uint32_t>(bytes[at] | bytes[at + 1] << 8);
}

std::uint32_t longAt(ByteSpan bytes, std::size_t at) {
    return wordAt(bytes, at) | wordAt(bytes, at + 2) << 16;
}

struct Header {
    std::size_t rowsAt = 0;
    std::size_t paletteAt = 0;
    std::int64_t width = 0;
    std::int64_t height = 0; // negative: the top row first
    int bits = 0;
    std::uint32_t compression = 0;
    std::size_t colours = 0; // that pixels may use

    bool isTopDown() const { return height < 0; }
    std::int64_t rows() const { return height < 0 ? -height : height; }
};

Header headerOf(ByteSpan bytes) {
    Header header;
    header.rowsAt = longAt(bytes, 10);
    header.paletteAt = kFileHeader + std::size_t{longAt(bytes, 14)};
    header.width = static_cast<std::int32_t>(longAt(bytes, 18));
    header.height = static_cast<std::int32_t>(longAt(bytes, 22));
    header.bits = static_cast<int>(wordAt(bytes, 28));
    header.compression = longAt(bytes, 30);
    header.colours = longAt(bytes, 46);
    return header;
}

// The first fault of the header's numbers.
std::optional<ImageError> faultOf(const Header& header, ByteSpan bytes) {
    const bool fits = header.paletteAt >= kFileHeader + kInfoHeader && header.paletteAt <= header.rowsAt &&
                      header.rowsAt <= bytes.size();
    if (!fits || header.width < 1 || header.height == 0 || wordAt(bytes, 26) != 1)
        return ImageError::BadBitmapFile;
    if (header.bits != 1 && header.bits != 4 && header.bits != 8)
        return ImageError::InvalidBitDepth;
    const bool packed =
        (header.compression == kRuns8 && header.bits == 8) || (header.compression == kRuns4 && header.bits == 4);
    if (header.compression != kPlain && !packed)
        return ImageError::InvalidBitDepth;
    if (packed && header.isTopDown())
        return ImageError::BadBitmapFile;
    if (header.width > kMostPixels || header.rows() > kMostPixels)
        return ImageError::DimensionTooLarge;
    const std::size_t rowBytes = Bitmap::rowBytesOf(static_cast<int>(header.width), header.bits);
    if (rowBytes * static_cast<std::size_t>(header.rows()) > kMostRowBytes)
        return ImageError::DimensionTooLarge;
    return std::nullopt;
}

// Entries that the file lacks, though it counts them, are black.
std::vector<Colour> paletteOf(const Header& header, ByteSpan bytes) {
    const std::size_t most = std::size_t{1} << header.bits;
    const std::size_t count = header.colours == 0 ? most : std::min(header.colours, most);
    std::vector<Colour> palette(count);
    const std::size_t there = std::min(count, (header.rowsAt - header.paletteAt) / kColourBytes);
    for (std::size_t i = 0; i < there; ++i) {
        const std::size_t at = header.paletteAt + i * kColourBytes;
        palette[i] = {bytes[at + 2], bytes[at + 1], bytes[at]};
    }
    return palette;
}

bool takePlainRows(const Header& header, ByteSpan data, Bitmap& bitmap) {
    const std::size_t rowBytes = bitmap.rowBytes();
    if (data.size() < rowBytes * static_cast<std::size_t>(bitmap.height))
        return false;
    for (int y = 0; y < bitmap.height; ++y) {
        const int place = header.isTopDown() ? y : bitmap.height - 1 - y;
        std::copy_n(data.begin() + static_cast<std::ptrdiff_t>(static_cast<std::size_t>(y) * rowBytes), rowBytes,
                    bitmap.row(place));
    }
    clearPadding(bitmap);
    return true;
}

// Unpacks runs, from the bottom row up. Pixels that are passed over have index 0.
class RunReader {
public:
    RunReader(ByteSpan data, Bitmap& bitmap) : m_data(data), m_bitmap(bitmap) {}

    // True when every pair was sound and the picture's end was reached.
    bool read() {
        while (m_ok && !m_ended && m_row < m_bitmap.height) {
            const std::size_t count = next();
            const std::uint8_t value = next();
            if (count > 0)
                run(count, value);
            else
                escape(value);
        }
        return m_ok;
    }

private:
    static constexpr std::uint8_t kEndOfRow = 0;
    static constexpr std::uint8_t kEnd = 1;
    static constexpr std::uint8_t kMove = 2;

    std::uint8_t next() {
        if (m_at >= m_data.size()) {
            m_ok = false;
            return 0;
        }
        return m_data[m_at++];
    }

    void put(std::uint8_t index) {
        if (m_x >= m_bitmap.width || m_row >= m_bitmap.height)
            m_ok = false;
        if (m_ok)
            m_bitmap.setPixel(m_x++, m_bitmap.height - 1 - m_row, index);
    }

    // A byte holds one pixel, or two of which the high one comes first.
    std::uint8_t indexIn(std::uint8_t byte, std::size_t i) const {
        if (m_bitmap.depth == 8)
            return byte;
        return static_cast<std::uint8_t>(i % 2 == 0 ? byte >> 4 : byte & 15);
    }

    void run(std::size_t count, std::uint8_t value) {
        for (std::size_t i = 0; m_ok && i < count; ++i)
            put(indexIn(value, i));
    }

    void escape(std::uint8_t code) {
        switch (code) {
        case kEndOfRow:
            m_x = 0;
            ++m_row;
            break;
        case kEnd:
            m_ended = true;
            break;
        case kMove:
            m_x += next();
            m_row += next();
            m_ok = m_ok && m_x <= m_bitmap.width && m_row <= m_bitmap.height;
            break;
        default:
            literals(code);
            break;
        }
    }

    // As many pixels as they are, filled up to an even number of bytes.
    void literals(std::size_t count) {
        const std::size_t bytes = m_bitmap.depth == 8 ? count : (count + 1) / 2;
        std::uint8_t byte = 0;
        for (std::size_t i = 0; m_ok && i < count; ++i) {
            if (m_bitmap.depth == 8 || i % 2 == 0)
                byte = next();
            put(indexIn(byte, i));
        }
        if (bytes % 2 != 0)
            next();
    }

    ByteSpan m_data;
    Bitmap& m_bitmap;
    std::size_t m_at = 0;
    int m_x = 0;
    int m_row = 0; // from the bottom
    bool m_ok = true;
    bool m_ended = false;
};

class LittleWriter {
public:
    void word(std::uint32_t value) {
        byte(value);
        byte(value >> 8);
    }
    void number(std::uint32_t value) {
        word(value);
        word(value >> 16);
    }
    void byte(std::uint32_t value) { m_bytes.push_back(static_cast<std::uint8_t>(value)); }
    void bytes(const std::uint8_t* from, std::size_t count) { m_bytes.insert(m_bytes.end(), from, from + count); }
    void reserve(std::size_t count) { m_bytes.reserve(count); }
    Bytes take() { return std::move(m_bytes); }

private:
    Bytes m_bytes;
};

} // namespace

std::optional<ImageError> faultOfBmpHeader(ByteSpan bytes) {
    if (bytes.size() < kFileHeader + kInfoHeader || bytes[0] != 'B' || bytes[1] != 'M')
        return ImageError::BadBitmapFile;
    return faultOf(headerOf(bytes), bytes);
}

Result<Bitmap> readBmp(ByteSpan bytes) {
    if (const auto fault = faultOfBmpHeader(bytes))
        return imageError(*fault);
    const Header header = headerOf(bytes);
    const ByteSpan data = bytes.subspan(header.rowsAt);
    const bool plain = header.compression == kPlain;
    const int height = static_cast<int>(header.rows());
    const std::size_t rowBytes = Bitmap::rowBytesOf(static_cast<int>(header.width), header.bits);
    if (plain && data.size() < rowBytes * static_cast<std::size_t>(height))
        return imageError(ImageError::BadBitmapFile);
    Bitmap bitmap = blankBitmap(static_cast<int>(header.width), height, header.bits);
    const bool sound = plain ? takePlainRows(header, data, bitmap) : RunReader(data, bitmap).read();
    if (!sound)
        return imageError(ImageError::InvalidData);
    bitmap.palette = paletteOf(header, bytes);
    const std::size_t all = std::size_t{1} << header.bits;
    if (bitmap.palette.size() < all && static_cast<std::size_t>(highestIndex(bitmap)) >= bitmap.palette.size())
        return imageError(ImageError::InvalidData);
    return bitmap;
}

Bytes writeBmp(const Bitmap& bitmap) {
    const std::size_t colours = std::size_t{1} << bitmap.depth;
    const std::size_t rowsAt = kFileHeader + kInfoHeader + colours * kColourBytes;
    LittleWriter out;
    out.reserve(rowsAt + bitmap.rows.size());
    out.byte('B');
    out.byte('M');
    out.number(static_cast<std::uint32_t>(rowsAt + bitmap.rows.size()));
    out.number(0);
    out.number(static_cast<std::uint32_t>(rowsAt));
    out.number(kInfoHeader);
    out.number(static_cast<std::uint32_t>(bitmap.width));
    out.number(static_cast<std::uint32_t>(bitmap.height));
    out.word(1); // plane
    out.word(static_cast<std::uint32_t>(bitmap.depth));
    out.number(kPlain);
    out.number(static_cast<std::uint32_t>(bitmap.rows.size()));
    out.number(kDotsPerMetre);
    out.number(kDotsPerMetre);
    out.number(static_cast<std::uint32_t>(colours));
    out.number(0);
    for (std::size_t i = 0; i < colours; ++i) {
        const Colour colour = i < bitmap.palette.size() ? bitmap.palette[i] : Colour{};
        out.byte(colour.blue);
        out.byte(colour.green);
        out.byte(colour.red);
        out.byte(0);
    }
    for (int y = bitmap.height - 1; y >= 0; --y)
        out.bytes(bitmap.row(y), bitmap.rowBytes());
    return out.take();
}

} // namespace tallybook::forms
