// A database with one field in slot 1 and one record, for tests of its single cell.
#pragma once

#include "core/calc/cells/CellCoders.h"
#include "core/pdb/Database.h"
#include "support/RawFile.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>
#include <string>

namespace tallybook::test {

struct OneField {
    model::FieldType type = model::FieldType::Text;
    int decimals = 0;
    std::string attribute = "03 01"; // record 3 in hex

    // A file whose record has these cells.
    platform::Bytes file(const std::string& cells) const {
        RawFile raw;
        const std::uint8_t head[] = {1, static_cast<std::uint8_t>(type), 0, static_cast<std::uint8_t>(decimals)};
        raw.set(1, "01 02 00 00 00*10 00 00 " + toHex(head) + " 00*8 00 00");
        raw.set(3, attribute);
        raw.add("57 00 00000001 " + cells + " 00 00");
        return raw.bytes();
    }

    void read(model::Document& doc, const std::string& cells, const platform::Regional& regional = {}) const {
        const auto status = pdb::readDatabase(doc, file(cells), "MS2_A.pdb", regional);
        ASSERT_TRUE(status.ok()) << cells << ": " << status.error().description();
    }

    // What the cell shows after a read.
    std::string shown(const std::string& cells, const platform::Regional& regional = {}) const {
        model::Document doc;
        read(doc, cells, regional);
        return doc.grd.text(2, 2);
    }

    // A document as after a read of a record without cells.
    void open(model::Document& doc) const { read(doc, ""); }
};

// The cells of a document's last record as a save writes them, or the error's description.
inline std::string builtCells(model::Document& doc, platform::Services& services) {
    const auto built = pdb::buildDatabase(doc, services);
    if (!built.ok())
        return built.error().description();
    const platform::ByteSpan file = built.value().bytes;
    const std::size_t entry = 78 + 8 * static_cast<std::size_t>(doc.NumFileRecs - 1);
    std::size_t offset = 0;
    for (std::size_t i = 0; i < 4; ++i)
        offset = offset << 8 | file[entry + i];
    EXPECT_EQ(toHex(file.last(2)), "00 00");
    return toHex(file.subspan(offset + 6, file.size() - offset - 8));
}

} // namespace tallybook::test
