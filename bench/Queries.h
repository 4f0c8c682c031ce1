// Sorting and searching, as they are measured.
#pragma once

#include "Workbench.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tallybook::bench {

// The check value of a result: c = c * 31 + the record's number from 1, for each record in the order of the result.
class ResultCheck {
public:
    void add(std::uint64_t record) { m_value = m_value * 31 + record; }
    std::uint64_t value() const { return m_value; }

private:
    std::uint64_t m_value = 0;
};

struct Measured {
    Nanoseconds time{};
    std::uint64_t check = 0; // made outside the time where it is not part of the work
};

// What is sought when nobody says otherwise: a text that no cell of a table for measuring has, and digits that some
// cells have.
inline constexpr const char* kAbsentText = "larch";
inline constexpr const char* kDigits = "4711";

// Slots of a type, in order.
std::vector<int> slotsOf(const model::DatabaseModel& db, model::FieldType type);

// Sorts the records on the first field of a type. Throws when there is none. The records are put back into the order
// of the file afterwards, outside the time.
Measured sortOn(Workbench& bench, model::Document& doc, model::FieldType type);

// The filters that are measured, on the fields of a table for measuring: three conditions each, the first with a text
// to be contained in letters of either case. `where` asks SQLite for the same records. A blank cell meets none.
struct MeasuredFilter {
    model::FilterDef filter;
    const char* where;
};
std::array<MeasuredFilter, 3> measuredFilters();

// The columns of the view that is measured: the first ten fields.
inline constexpr int kViewColumns = 10;

// Hides the records that fail the first of the filters.
Measured filterOnce(Workbench& bench, model::Document& doc);

// Applies the three filters together, and shows the view of the records that are left. The records are put back into
// the order of the file afterwards, outside the time.
Measured filterIntoView(Workbench& bench, model::Document& doc);

// Looks for the records of which a cell shows the text, in letters of either case.
Measured findIn(const model::Document& doc, const std::string& text);

} // namespace tallybook::bench
