// Databases made from a number: all field types, attributes, views, filters, forms and cells, with odd texts and
// whatever a file of another program may hold. The same number gives the same database on every machine.
#pragma once

#include "support/RawFile.h"

#include <cstdint>
#include <vector>

namespace tallybook::test {

// The bytes are put together here, apart from the program's own readers and writers, in two forms at once: as
// another program may have written them, and as this program must save them after it opened the first.
//
// These things differ in the second form, and nothing else:
// - the header's stamps and ids, the list's offsets, attributes and ids; gaps and deleted records are gone
// - FormatVersion 21, slot 0's type 0, NumFields, NumFilters and NumCols with what stands behind them
// - entries of the field table in slot order without holes; the second byte of an empty attribute is 1
// - bytes behind the NUL of a text of fixed width, first bytes of colours, the gap of a conditional expression, the
//   last byte of an expression and the bytes of a text result: 0
// - expressions of 7 tokens in full, old operators in their present codes
// - links of a conditional expression, moved by one
// - without data records: LastKey 1, spare filters empty
// - cells in slot order and of the field's type; stored lengths as the texts are, texts cut to 254, no cells that
//   say nothing, numbers as they are shown, colours above 4 black, times that no clock has at midnight
class AnyDatabase {
public:
    explicit AnyDatabase(std::uint32_t seed);

    RawFile foreign;
    RawFile saved; // by the clock of TestServices

    // Slots with a conditional expression. Bytes 91 and 92 of their records move with each save.
    std::vector<int> conditionalSlots;
};

// Where the links stand in the record of a conditional expression, its number included.
inline constexpr std::size_t kConditionalLinks = 91;

} // namespace tallybook::test
