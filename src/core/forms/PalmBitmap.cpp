#include "core/forms/PalmBitmap.h"

#include "core/forms/ImageError.h"
#include "core/forms/PalmCompression.h"
#include "core/forms/PalmPalette.h"
#include "core/pdb/ByteReader.h"
#include "core/pdb/ByteWriter.h"

#include <algorithm>
#include <array>

namespace tallybook::forms {

namespace {

using model::Colour;
using pdb::ByteReader;
using platform::Bytes;
using platform::ByteSpan;
using platform::Result;

constexpr std::uint16_t kPacked = 0x8000;
constexpr std::uint16_t kTable = 0x4000;
constexpr std::uint16_t kTransparent = 0x2000;
constexpr std::uint16_t kPointer = 0x1000;
constexpr std::uint16_t kDirect = 0x0400;
constexpr int kLastVersion = 3;
constexpr std::uint16_t kLowDensity = 72;
constexpr std::size_t kHeader = 16;
constexpr std::size_t kHeader3 = 24;

struct Header {
    int width = 0;
    int height = 0;
    std::size_t rowBytes = 0;
    std::uint16_t flags = 0;
    int depth = 0;
    int version = 0;
    std::uint32_t next = 0; // bytes from this header to the next, 0 for none
    std::uint32_t transparent = 0;
    std::uint8_t packing = 0;
    std::uint16_t density = kLowDensity;
    std::size_t start = 0; // of what stands behind the header

    bool has(std::uint16_t flag) const { return (flags & flag) != 0; }
    bool isDirect() const { return has(kDirect) || depth == 16; }
    bool isIndexed() const { return !isDirect() && (depth == 1 || depth == 2 || depth == 4 || depth == 8); }
};

// Versions 0 to 2, from byte 10 on.
void readShortTail(ByteReader& in, Header& header) {
    header.next = std::uint32_t{in.getWord()} * 4;
    header.transparent = in.getByte();
    header.packing = in.getByte();
    in.skipBytes(2);
}

// Version 3, from byte 10 on. A header that says it is longer is skipped whole.
void readLongTail(ByteReader& in, std::size_t from, Header& header) {
    const std::size_t size = in.getByte();
    in.skipBytes(2);
    header.packing = in.getByte();
    header.density = in.getWord();
    header.transparent = in.getUnsignedLong();
    header.next = in.getUnsignedLong();
    if (size < kHeader3)
        in.fail("the header is too short");
    else
        in.skipBytes(from + size - in.position());
}

Header readHeader(ByteSpan bytes, std::size_t from, bool& ok) {
    ByteReader in(bytes, from, bytes.size());
    Header header;
    header.width = in.getWord();
    header.height = in.getWord();
    header.rowBytes = in.getWord();
    header.flags = in.getWord();
    header.depth = in.getByte();
    header.version = in.getByte();
    if (header.version < kLastVersion)
        readShortTail(in, header);
    else
        readLongTail(in, from, header);
    header.start = in.position();
    ok = in.ok() && header.version <= kLastVersion;
    return header;
}

// All renditions, as far as their headers can be read. Each lies behind the one before it, so that there is an end.
std::vector<Header> readFamily(ByteSpan bytes) {
    std::vector<Header> family;
    for (std::size_t at = 0;;) {
        bool ok = false;
        const Header header = readHeader(bytes, at, ok);
        if (!ok)
            break;
        family.push_back(header);
        if (header.next < kHeader || header.next >= bytes.size() - at)
            break;
        at += header.next;
    }
    return family;
}

bool comesFirst(const Header& a, const Header& b) {
    return a.density != b.density ? a.density < b.density : a.depth > b.depth;
}

Result<Header> chosenHeader(const std::vector<Header>& family) {
    std::vector<Header> indexed;
    std::copy_if(family.begin(), family.end(), std::back_inserter(indexed),
                 [](const Header& header) { return header.isIndexed(); });
    if (indexed.empty()) {
        const bool direct = std::any_of(family.begin(), family.end(), [](const Header& h) { return h.isDirect(); });
        return imageError(direct ? ImageError::InvalidBitDepth : ImageError::InvalidData);
    }
    return *std::min_element(indexed.begin(), indexed.end(), comesFirst);
}

// Bounds of a rendition's own numbers.
bool isSound(const Header& header) {
    const std::size_t bits = static_cast<std::size_t>(header.width) * static_cast<std::size_t>(header.depth);
    return header.width > 0 && header.height > 0 && !header.has(kPointer) && header.rowBytes >= (bits + 7) / 8;
}

struct Palette {
    std::vector<Colour> colours; // 2^depth
    std::size_t end = 0;         // indices from here on have no colour
    std::array<bool, 256> known{};

    bool has(std::size_t index) const { return index < end || known[index]; }
};

// The table goes by the indices that it stores. One that it lacks is black up to its count, and no colour beyond.
Palette readTable(ByteReader& in, int depth) {
    Palette palette;
    palette.colours.resize(std::size_t{1} << depth);
    palette.end = in.getWord();
    for (std::size_t i = 0; i < palette.end && in.ok(); ++i) {
        const std::size_t index = in.getByte();
        const std::uint8_t red = in.getByte();
        const std::uint8_t green = in.getByte();
        const std::uint8_t blue = in.getByte();
        if (index >= palette.colours.size())
            continue;
        palette.colours[index] = {red, green, blue};
        palette.known[index] = true;
    }
    return palette;
}

Palette paletteOf(ByteReader& in, const Header& header) {
    if (header.has(kTable))
        return readTable(in, header.depth);
    return {.colours = systemPalette(header.depth), .end = std::size_t{1} << header.depth};
}

std::optional<PalmCompression> packingOf(const Header& header) {
    if (!header.has(kPacked))
        return PalmCompression::None;
    if (header.packing > static_cast<std::uint8_t>(PalmCompression::PackBits) &&
        header.packing != static_cast<std::uint8_t>(PalmCompression::None))
        return std::nullopt;
    return static_cast<PalmCompression>(header.packing);
}

// The bytes of the rows. What stands behind them belongs to the next rendition, or to nobody.
ByteSpan dataOf(ByteReader& in, ByteSpan bytes, const Header& header) {
    if (header.has(kPacked)) {
        const bool isLong = header.version == kLastVersion;
        const std::size_t own = isLong ? 4 : 2;
        const std::size_t size = isLong ? in.getUnsignedLong() : in.getWord();
        if (size < own || size - own > in.left())
            in.fail("the packed data passes the end");
        return in.ok() ? bytes.subspan(in.position(), size - own) : ByteSpan{};
    }
    return bytes.subspan(in.position());
}

// Rows of depth 2 get 4 bits a pixel, others keep theirs.
Bitmap takeRows(const Bytes& rows, const Header& header) {
    Bitmap bitmap = blankBitmap(header.width, header.height, header.depth == 2 ? 4 : header.depth);
    for (int y = 0; y < header.height; ++y) {
        const std::uint8_t* from = rows.data() + static_cast<std::size_t>(y) * header.rowBytes;
        std::uint8_t* to = bitmap.row(y);
        if (header.depth != 2) {
            std::copy_n(from, std::min(header.rowBytes, bitmap.rowBytes()), to);
            continue;
        }
        for (int x = 0; x < header.width; ++x)
            bitmap.setPixel(x, y, static_cast<std::uint8_t>(from[x / 4] >> (3 - x % 4) * 2 & 3));
    }
    clearPadding(bitmap);
    return bitmap;
}

bool everyPixelHasColour(const Bitmap& bitmap, const Palette& palette) {
    std::array<bool, 256> allowed{};
    bool all = true;
    for (std::size_t index = 0; index < palette.colours.size(); ++index) {
        allowed[index] = palette.has(index);
        all = all && allowed[index];
    }
    if (all)
        return true;
    for (int y = 0; y < bitmap.height; ++y)
        for (int x = 0; x < bitmap.width; ++x)
            if (!allowed[bitmap.pixel(x, y)])
                return false;
    return true;
}

Result<Bitmap> readRendition(ByteSpan bytes, const Header& header) {
    if (!isSound(header))
        return imageError(ImageError::InvalidData);
    if (header.rowBytes * static_cast<std::size_t>(header.height) > kMostRowBytes)
        return imageError(ImageError::DimensionTooLarge);
    ByteReader in(bytes, header.start, bytes.size());
    Palette palette = paletteOf(in, header);
    const auto packing = packingOf(header);
    const ByteSpan data = dataOf(in, bytes, header);
    if (!in.ok() || !packing)
        return imageError(ImageError::InvalidData);
    const auto rows = unpackRows(data, *packing, header.rowBytes, static_cast<std::size_t>(header.height));
    if (!rows)
        return imageError(ImageError::InvalidData);
    Bitmap bitmap = takeRows(*rows, header);
    if (!everyPixelHasColour(bitmap, palette))
        return imageError(ImageError::InvalidData);
    bitmap.palette = std::move(palette.colours);
    if (header.has(kTransparent) && header.transparent < bitmap.palette.size())
        bitmap.clear = static_cast<std::uint8_t>(header.transparent);
    return bitmap;
}

// What the writer makes of a bitmap: its rows, and the table when one is wanted.
struct Plan {
    std::vector<Colour> table;
    std::array<std::uint8_t, 256> index{}; // of the handheld by that of the bitmap
    bool changes = false;                  // some index
};

void keepIndices(Plan& plan) {
    for (std::size_t i = 0; i < plan.index.size(); ++i)
        plan.index[i] = static_cast<std::uint8_t>(i);
}

Colour colourOf(const Bitmap& bitmap, std::size_t index) {
    return index < bitmap.palette.size() ? bitmap.palette[index] : Colour{};
}

// A set bit is the darker colour. Black on white needs no table.
Plan planOfTwo(const Bitmap& bitmap) {
    Plan plan;
    keepIndices(plan);
    Colour light = colourOf(bitmap, 0);
    Colour dark = colourOf(bitmap, 1);
    if (brightness(dark) > brightness(light)) {
        std::swap(dark, light);
        std::swap(plan.index[0], plan.index[1]);
        plan.changes = true;
    }
    if (!(light == Colour{255, 255, 255} && dark == Colour{}))
        plan.table = {light, dark};
    return plan;
}

// By whole bytes, of which there are only 256; the pixels of a row's last one, when it is not full, each.
std::array<bool, 256> usedIndices(const Bitmap& bitmap) {
    const int perByte = 8 / bitmap.depth;
    const int whole = bitmap.width / perByte;
    std::array<bool, 256> bytes{};
    std::array<bool, 256> used{};
    for (int y = 0; y < bitmap.height; ++y) {
        const std::uint8_t* row = bitmap.row(y);
        for (int at = 0; at < whole; ++at)
            bytes[row[at]] = true;
        for (int x = whole * perByte; x < bitmap.width; ++x)
            used[bitmap.pixel(x, y)] = true;
    }
    for (unsigned byte = 0; byte < bytes.size(); ++byte)
        for (int shift = 0; bytes[byte] && shift < 8; shift += bitmap.depth)
            used[byte >> shift & ((1U << bitmap.depth) - 1)] = true;
    return used;
}

// One of the sixteen greys that need no table.
bool isDefaultGrey(const Colour& colour) {
    return colour.red == colour.green && colour.green == colour.blue && colour.red % 17 == 0;
}

Plan planOfSixteen(const Bitmap& bitmap) {
    constexpr std::size_t kColours = 16;
    Plan plan;
    keepIndices(plan);
    const std::array<bool, 256> used = usedIndices(bitmap);
    bool greys = true;
    for (std::size_t i = 0; i < kColours; ++i)
        greys = greys && (!used[i] || isDefaultGrey(colourOf(bitmap, i)));
    for (std::size_t i = 0; i < kColours; ++i) {
        if (!greys)
            plan.table.push_back(colourOf(bitmap, i));
        else if (used[i])
            plan.index[i] = static_cast<std::uint8_t>(15 - colourOf(bitmap, i).red / 17);
        plan.changes = plan.changes || plan.index[i] != i;
    }
    return plan;
}

// The colours up to the last that a pixel has: the file that a picture came from may have been filled up.
Plan planOfMany(const Bitmap& bitmap) {
    Plan plan;
    keepIndices(plan);
    const std::array<bool, 256> used = usedIndices(bitmap);
    std::size_t count = used.size();
    while (count > 0 && !used[count - 1])
        --count;
    for (std::size_t i = 0; i < count; ++i)
        plan.table.push_back(colourOf(bitmap, i));
    return plan;
}

Plan planOf(const Bitmap& bitmap) {
    switch (bitmap.depth) {
    case 1:
        return planOfTwo(bitmap);
    case 4:
        return planOfSixteen(bitmap);
    default:
        return planOfMany(bitmap);
    }
}

// Gives each pixel of a row its new index, both of a byte's at once.
std::array<std::uint8_t, 256> byteTable(const Plan& plan, int depth) {
    std::array<std::uint8_t, 256> bytes{};
    for (unsigned byte = 0; byte < bytes.size(); ++byte) {
        unsigned changed = 0;
        for (int shift = 0; shift < 8; shift += depth) {
            const unsigned index = byte >> shift & ((1U << depth) - 1);
            changed |= static_cast<unsigned>(plan.index[index]) << shift;
        }
        bytes[byte] = static_cast<std::uint8_t>(changed);
    }
    return bytes;
}

Bitmap renumbered(const Bitmap& bitmap, const Plan& plan) {
    Bitmap changed = bitmap;
    const auto bytes = byteTable(plan, bitmap.depth);
    for (std::uint8_t& byte : changed.rows)
        byte = bytes[byte];
    clearPadding(changed);
    return changed;
}

std::size_t palmRowBytes(const Bitmap& bitmap) {
    const std::size_t bits = static_cast<std::size_t>(bitmap.width) * static_cast<std::size_t>(bitmap.depth);
    return (bits + 15) / 16 * 2;
}

// The rows in runs; longer than `most` bytes it is given up.
Bytes packed(const Bitmap& bitmap, std::size_t most) {
    Bytes out;
    const std::size_t rowBytes = palmRowBytes(bitmap);
    for (int y = 0; y < bitmap.height && out.size() <= most; ++y)
        packRuns({bitmap.row(y), rowBytes}, out);
    return out;
}

void outHeader(const Bitmap& bitmap, std::uint16_t flags, PalmCompression packing, pdb::ByteWriter& out) {
    constexpr std::uint8_t kVersion = 2;
    out.outWord(static_cast<std::uint16_t>(bitmap.width));
    out.outWord(static_cast<std::uint16_t>(bitmap.height));
    out.outWord(static_cast<std::uint16_t>(palmRowBytes(bitmap)));
    out.outWord(flags);
    out.outByte(static_cast<std::uint8_t>(bitmap.depth));
    out.outByte(kVersion);
    out.outWord(0); // no further rendition
    out.outByte(0); // nothing is transparent
    out.outByte(static_cast<std::uint8_t>(packing));
    out.outWord(0);
}

void outTable(const std::vector<Colour>& table, pdb::ByteWriter& out) {
    out.outWord(static_cast<std::uint16_t>(table.size()));
    for (std::size_t i = 0; i < table.size(); ++i) {
        out.outByte(static_cast<std::uint8_t>(i));
        out.outByte(table[i].red);
        out.outByte(table[i].green);
        out.outByte(table[i].blue);
    }
}

Result<Bytes> writeRows(const Bitmap& bitmap, const std::vector<Colour>& table) {
    constexpr std::size_t kSizeWord = 2;
    const std::size_t plain = palmRowBytes(bitmap) * static_cast<std::size_t>(bitmap.height);
    const Bytes runs = packed(bitmap, std::min(plain, kMostPalmBytes));
    const bool packs = runs.size() + kSizeWord <= plain;
    const std::size_t head = kHeader + (table.empty() ? 0 : 2 + 4 * table.size());
    if (head + (packs ? runs.size() + kSizeWord : plain) > kMostPalmBytes)
        return imageError(ImageError::DimensionTooLarge);
    pdb::ByteWriter out;
    const std::uint16_t flags = static_cast<std::uint16_t>((packs ? kPacked : 0) | (table.empty() ? 0 : kTable));
    outHeader(bitmap, flags, packs ? PalmCompression::Runs : PalmCompression::None, out);
    if (!table.empty())
        outTable(table, out);
    if (packs) {
        out.outWord(static_cast<std::uint16_t>(runs.size() + kSizeWord));
        out.outBytes(runs);
        return out.take();
    }
    for (int y = 0; y < bitmap.height; ++y)
        out.outBytes({bitmap.row(y), palmRowBytes(bitmap)});
    return out.take();
}

} // namespace

Result<Bitmap> readPalmBitmap(ByteSpan bytes) {
    const auto header = chosenHeader(readFamily(bytes));
    if (!header)
        return header.error();
    return readRendition(bytes, header.value());
}

Result<PalmBitmapInfo> describePalmBitmap(ByteSpan bytes) {
    const std::vector<Header> family = readFamily(bytes);
    const auto header = chosenHeader(family);
    if (!header)
        return header.error();
    return PalmBitmapInfo{.width = header.value().width,
                          .height = header.value().height,
                          .depth = header.value().depth,
                          .version = header.value().version,
                          .renditions = static_cast<int>(family.size())};
}

Result<Bytes> writePalmBitmap(const Bitmap& bitmap) {
    if (bitmap.width < 1 || bitmap.height < 1 || bitmap.width > kMostPixels || bitmap.height > kMostPixels ||
        palmRowBytes(bitmap) > 0xFFFF)
        return imageError(ImageError::DimensionTooLarge);
    const Plan plan = planOf(bitmap);
    return plan.changes ? writeRows(renumbered(bitmap, plan), plan.table) : writeRows(bitmap, plan.table);
}

} // namespace tallybook::forms
