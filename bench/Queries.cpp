#include "Queries.h"

#include "core/document/find/CellSearch.h"
#include "core/document/views/Sort.h"
#include "core/document/views/Views.h"

#include <algorithm>
#include <numeric>
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

std::vector<int> everyRow(const model::GridModel& grd) {
    std::vector<int> rows(static_cast<std::size_t>(grd.dataRows()));
    std::iota(rows.begin(), rows.end(), model::kFirstDataRow);
    return rows;
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

std::array<MeasuredFilter, 3> measuredFilters() {
    struct Term {
        std::uint8_t field;
        char code;
        const char* constant;
    };
    const auto filter = [](const char* name, std::array<Term, 3> terms, const char* links) {
        model::FilterDef def;
        def.Name = name;
        def.CondFields = {terms[0].field, 0, terms[1].field}; // every other operand slot, the right ones, is empty
        def.CondFields2 = {0, terms[2].field, 0};
        for (std::size_t i = 0; i < terms.size(); ++i) {
            def.CondOps[i] = static_cast<std::uint8_t>(terms[i].code);
            def.CondValues[i] = terms[i].constant;
        }
        def.CondLinks = {static_cast<std::uint8_t>(links[0]), static_cast<std::uint8_t>(links[1])};
        return def;
    };
    return {{{filter("First", {{{1, 'h', "AR"}, {3, '>', "5000"}, {6, 'J', "3000"}}}, "AA"),
              "f1 LIKE '%ar%' AND f3 > 5000 AND f6 >= 3000"},
             {filter("Second", {{{4, 'h', "E"}, {8, 's', "B"}, {7, '>', "1/1/1990"}}}, "OA"),
              "(f4 LIKE '%e%' OR f8 LIKE 'b%') AND f7 > '1990-01-01'"},
             {filter("Third", {{{11, 'h', "L"}, {5, '>', "100"}, {9, '=', "first"}}}, "AO"),
              "(f11 LIKE '%l%' AND f5 > 100) OR f9 = 'first'"}}};
}

Measured filterOnce(Workbench& bench, model::Document& doc) {
    doc.CurrDB20.Filters[0] = measuredFilters()[0].filter;
    Measured measured;
    ResultCheck check;
    measured.time = timed([&] {
        document::SetViewFilter(doc, bench.services(), "", 0);
        for (int position = 0; position < doc.grd.visibleRows(); ++position)
            check.add(static_cast<std::uint64_t>(doc.grd.visibleRow(position) - model::kFirstDataRow + 1));
    });
    measured.check = check.value();
    doc.grd.showOnly(everyRow(doc.grd));
    return measured;
}

Measured filterIntoView(Workbench& bench, model::Document& doc) {
    for (std::size_t slot = 0; const MeasuredFilter& measured : measuredFilters()) {
        doc.CurrDB20.Filters[slot] = measured.filter;
        doc.MultiFilterSel.set(slot++);
    }
    model::ViewDef& view = doc.CurrDB20.Views[0];
    view = {};
    view.Name = "Measured";
    view.NumCols = kViewColumns;
    for (std::uint8_t column = 0; column < kViewColumns; ++column)
        view.Columns[column].Field = static_cast<std::uint8_t>(column + 1);
    Measured measured;
    measured.time =
        timed([&] { document::SetViewFilter(doc, bench.services(), view.Name, document::kSeveralFilters); });
    std::vector<std::uint32_t> ids; // in the order of the file, which SQLite knows
    for (int position = 0; position < doc.ViewGrd.visibleRows(); ++position)
        ids.push_back(doc.ViewGrd.rowId(doc.ViewGrd.visibleRow(position)));
    std::sort(ids.begin(), ids.end());
    ResultCheck check;
    for (const std::uint32_t id : ids)
        check.add(id + std::uint64_t{1});
    measured.check = check.value();
    document::showAllFields(doc);
    restoreOrder(doc.grd);
    doc.grd.showOnly(everyRow(doc.grd));
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
