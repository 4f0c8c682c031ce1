// The three ways in which the handheld packs the rows of a bitmap. Each row stands on its own but for the scanlines,
// which tell a row by what differs from the one above.
#pragma once

#include "core/platform/Files.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tallybook::forms {

enum class PalmCompression : std::uint8_t { Scanline = 0, Runs = 1, PackBits = 2, None = 0xFF };

// `height` rows of `rowBytes` bytes each, one behind the other. Nothing when the data is damaged: it ends early, or a
// run crosses the end of a row. Data that could not fill the rows is refused before anything is allocated.
std::optional<platform::Bytes> unpackRows(platform::ByteSpan data, PalmCompression compression, std::size_t rowBytes,
                                          std::size_t height);

// Appends one row as pairs of count (1 to 255) and byte.
void packRuns(platform::ByteSpan row, platform::Bytes& out);

} // namespace tallybook::forms
