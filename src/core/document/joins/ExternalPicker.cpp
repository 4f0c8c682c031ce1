#include "core/document/joins/ExternalPicker.h"

#include "core/calc/values/TextFinder.h"
#include "core/document/joins/ExternalFiles.h"
#include "core/document/joins/Joins.h"
#include "core/document/joins/KeyIndex.h"
#include "core/platform/Guards.h"

#include <algorithm>

namespace tallybook::document {

namespace {

using model::DatabaseModel;

constexpr int kTwipsPerWidth = 40;
constexpr int kUsualWidth = 50 * kTwipsPerWidth; // of a field that no view gives a width

std::vector<ExtViewColumn> columnsOfView(const DatabaseModel& other, const model::ViewDef& view) {
    std::vector<ExtViewColumn> columns;
    const std::size_t count = std::min<std::size_t>(view.NumCols, view.Columns.size());
    for (std::size_t i = 0; i < count; ++i) {
        const model::ViewColumn& column = view.Columns[i];
        if (column.Field <= model::MaxUserFields)
            columns.push_back({column.Field, other.Fields[column.Field].Name, column.Width * kTwipsPerWidth});
    }
    return columns;
}

std::vector<ExtViewColumn> allColumns(const DatabaseModel& other) {
    std::vector<ExtViewColumn> columns;
    for (int slot = 1; slot <= model::MaxUserFields; ++slot)
        if (const auto& field = other.Fields[static_cast<std::size_t>(slot)]; field.Type != model::FieldType::NotUsed)
            columns.push_back({slot, field.Name, kUsualWidth});
    return columns;
}

std::vector<ExtViewColumn> columnsOf(const DatabaseModel& other, std::size_t view) {
    if (view < other.Views.size())
        if (auto columns = columnsOfView(other, other.Views[view]); !columns.empty())
            return columns;
    return allColumns(other);
}

} // namespace

ExtView::ExtView(const model::Document& doc) : m_row(doc.grd.row()), m_slot(model::slotOfColumn(doc.grd.col())) {}

void ExtView::AddRecordsToView(model::Document& doc, platform::Services& services) {
    const platform::HourGlass wait(services.screen);
    const model::ExternalDef& external = doc.CurrDB20.Externals.at(m_slot);
    const auto path = findExternalFile(services.files, doc.CurrFolder, external.Source,
                                       doc.Is2xFormat ? OlderFiles::No : OlderFiles::Yes);
    if (!path)
        return sayExternalMissing(services, external.Source, std::nullopt);
    m_database = readExternalDatabase(services, *path, [&](const DatabaseModel& other) {
        pdb::FieldSet fields = fieldsOfJoin(doc.CurrDB20, m_slot);
        for (const ExtViewColumn& column : columnsOf(other, external.SortField()))
            fields.set(static_cast<std::size_t>(column.field));
        return fields;
    });
    if (!m_database)
        return;
    m_columns = columnsOf(*m_database.properties, external.SortField());
    setJoinTables(doc, m_slot, m_database.records);
}

std::string_view ExtView::text(std::uint32_t row, std::size_t column, std::string& scratch) const {
    return m_database.records->text(m_columns[column].field, row, scratch);
}

std::vector<std::uint32_t> ExtView::rowsWith(std::string_view text) const {
    std::vector<bool> found(rows(), text.empty());
    const calc::TextFinder finder(text, calc::TextCase::Folded);
    const auto look = [&](std::uint32_t row, std::string_view cell) {
        if (!found[row])
            found[row] = finder.find(cell) != std::string_view::npos;
    };
    if (!text.empty())
        for (const ExtViewColumn& column : m_columns)
            m_database.records->fields.at(static_cast<std::size_t>(column.field)).eachText(look);
    std::vector<std::uint32_t> chosen;
    for (std::uint32_t row = 0; row < found.size(); ++row)
        if (found[row])
            chosen.push_back(row);
    return chosen;
}

std::optional<std::uint32_t> ExtView::rowOfCell(const model::Document& doc,
                                                const platform::Regional& regional) const {
    std::string scratch;
    const std::string_view key = doc.CellVals.get(m_row - model::kFirstDataRow, m_slot, scratch);
    if (!m_database || key.empty())
        return std::nullopt;
    model::TextColumn cell;
    cell.setText(0, key);
    KeyIndex index(doc.External.at(m_slot), doc.CurrDB20.Externals.at(m_slot).KeyType, regional);
    const std::uint32_t row = index.find(cell, 1).front();
    return row == KeyIndex::kNone ? std::nullopt : std::optional(row);
}

void ExtView::cmdOK(model::Document& doc, std::optional<std::uint32_t> SelectedExtRow) const {
    doc.grd.setCell(m_row, model::columnOfSlot(m_slot));
    if (SelectedExtRow && *SelectedExtRow < rows())
        chooseJoinRow(doc, m_slot, m_row - model::kFirstDataRow, *SelectedExtRow);
}

void ExtView::cmdNone(model::Document& doc) const {
    doc.grd.setCell(m_row, model::columnOfSlot(m_slot));
    typeJoinKey(doc, m_slot, m_row - model::kFirstDataRow, {});
}

} // namespace tallybook::document
