// A file of format 1.x, which the program reads and never writes: only tests do.
#pragma once

#include "core/pdb/OldDB.h"
#include "support/RawFile.h"

#include <string>
#include <string_view>
#include <vector>

namespace tallybook::test {

// Starts as a database without fields, views, filters and data records.
class OlderFile {
public:
    pdb::OldDB db; // Version as the file has it: 100 by default, below that the layout of format 0.99 is written
    std::string name = "MSA_A";
    int expressionTokens = 15; // or 7, the oldest blocks'

    OlderFile();

    // A field in the next slots; NumFields follows.
    model::FieldDef& field(int slot, model::FieldType type, const std::string& fieldName);
    void items(int slot, const std::vector<std::pair<int, std::string>>& all);
    void expression(int slot, std::initializer_list<std::uint32_t> tokens);
    void protect(const std::string& password);

    // A data record with cells in hex, ahead of the end mark.
    void record(int category, std::int32_t key, std::string_view cells);

    // The records as they will stand in the file, to be changed by hand, and the file itself.
    RawFile raw() const;
    platform::Bytes bytes() const { return raw().bytes(); }

private:
    std::vector<platform::Bytes> m_records;
};

// A field of every type of the format, two views, a filter, a password unless it is left out, and three records, the
// first with every cell filled. The second is the same in the layout of format 0.99.
OlderFile smallOlder(bool withPassword = false);
OlderFile smallOldest();

} // namespace tallybook::test
