// The choice of several filters at once.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <string>
#include <vector>

namespace tallybook::document {

// A line of the list in dlgMulFilter.
struct FilterLine {
    int slot = 0;
    std::string text; // "01. Name"
    bool checked = false;

    bool operator==(const FilterLine&) const = default;
};

// The named filters in the order of their slots, those in force checked: what the dialog chose while several filters
// are in force, else the set of the view that is chosen, else the database's default set.
std::vector<FilterLine> multipleFilterLines(const model::Document& doc);

// True when there is a filter to choose; otherwise the message has been shown and the dialog does not open.
bool mayChooseFilters(const model::Document& doc, platform::Services& services);

} // namespace tallybook::document
