// Tables outside of the program, as a conversion sees them: databases of other programs answer these calls. Delimited
// text needs none of them, see RowTransfer.
#pragma once

#include "core/platform/Result.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::convert {

// A column, with the number that the database's own interface gives its type.
struct OutsideColumn {
    std::string name;
    int type = 0;
};

// A value of a row. Texts are Windows-1252; dates and times are given as the serial that they are, too.
struct OutsideValue {
    enum class Kind : std::uint8_t { Null, Boolean, Text, DateTime, Other };
    Kind kind = Kind::Null;
    std::string text; // the value in its default text form
    double serial = 0;
    bool truth = false;
};

// Rows that can be gone through once, changed, and added to.
class OutsideRows {
public:
    virtual ~OutsideRows() = default;
    virtual const std::vector<OutsideColumn>& columns() const = 0;
    virtual bool atEnd() const = 0;
    virtual platform::Status moveNext() = 0;
    virtual platform::Result<OutsideValue> value(std::string_view column) = 0;
    virtual bool canAdd() const = 0;
    virtual platform::Status addNew() = 0; // begins a row, which update() keeps
    virtual platform::Status setValue(std::string_view column, std::string_view text) = 0;
    virtual platform::Status update() = 0;
    virtual platform::Status deleteRow() = 0;
};

// An open database. Destroying it closes it.
class OutsideTables {
public:
    virtual ~OutsideTables() = default;
    virtual platform::Result<std::vector<std::string>> tables() = 0;
    virtual platform::Result<std::vector<std::string>> queries() = 0;
    virtual platform::Result<std::string> queryText(std::string_view name) = 0;
    virtual platform::Result<std::vector<OutsideColumn>> columns(std::string_view table) = 0;
    virtual platform::Status execute(std::string_view sql) = 0;
    virtual platform::Result<std::unique_ptr<OutsideRows>> openRows(std::string_view sql) = 0;
};

// Opens a database: a file of one kind, a connection string of the other. Asks for a password where one is needed.
// Nothing when it cannot be opened; what has to be said beyond that has been said.
using OpenOutside =
    std::function<std::unique_ptr<OutsideTables>(std::string_view externalKind, std::string_view externalPath)>;

} // namespace tallybook::convert
