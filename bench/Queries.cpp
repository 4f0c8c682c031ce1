#include "Queries.h"

#include "core/document/CellSearch.h"
#include "core/document/Sort.h"

#include <stdexcept>

namespace tallybook::bench {

namespace {

// Rows are stored in the order of the file, so a row's id tells where its record stood.
std::uint64_t checkOfOrder(const model::RowOrder& order) {
    ResultCheck check;
    for (int position = 0; position < order.count(); ++position)
        check.add(order.id(position) + std::uint64_t{1});
    return check.value();
}

void restoreOrder(model::GridModel& grd) {
    std::vector<std::uint32_t> order(static_cast<std::size_t>(grd.dataRows()));
    for (int position = 0; position < grd.dataRows(); ++position)
        order[grd.order().id(position)] = static_cast<std::uint32_t>(position);
    grd.permuteRows(order);
}

} // namespace

std::vector<int> slotsOf(const model::DatabaseModel& db, model::FieldType type) {
    std::vector<int> slots;
    for (int slot = 1; slot <= model::MaxUserFields; ++slot)
        if (db.Fields[static_cast<std::size_t>(slot)].Type == type)
            slots.push_back(slot);
    return slots;
}

Measured sortOn(Workbench& bench, model::Document& doc, model::FieldType type) {
    const std::vector<int> slots = slotsOf(doc.CurrDB20, type);
    if (slots.empty())
        throw std::runtime_error("there is no field to sort on");
    Measured measured;
    measured.time =
        timed([&] { document::SortGrid(doc, bench.services(), slots[0], document::SortDirection::Ascending); });
    measured.check = checkOfOrder(doc.grd.order());
    restoreOrder(doc.grd);
    return measured;
}

Measured findIn(const model::Document& doc, const std::string& text) {
    Measured measured;
    ResultCheck check;
    measured.time = timed([&] {
        document::CellSearch search(doc, {.text = text});
        document::CellSearch::Place place{model::kFirstDataRow, 0};
        while (const auto found = search.next(place, true)) {
            check.add(static_cast<std::uint64_t>(found->row - model::kFirstDataRow + 1));
            place = {found->row, model::kGridColumns}; // a record counts once
        }
    });
    measured.check = check.value();
    return measured;
}

} // namespace tallybook::bench
