// The picker frmExtView without its window: the records of the other database of a join, in the columns of one of
// its views, and what choosing one does.
#pragma once

#include "core/document/joins/ExternalReader.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::document {

struct ExtViewColumn {
    int field = 0; // slot of the other database, 0 for the categories
    std::string header;
    int width = 0; // twips
    bool operator==(const ExtViewColumn&) const = default;
};

class ExtView {
public:
    // Operations as the error dialog names them.
    static constexpr std::string_view kLoading = "External Tallybook View : Loading";
    static constexpr std::string_view kAddRecords = "External Tallybook View : Add Records To View (Procedure)";
    static constexpr std::string_view kOk = "External Tallybook View : OK";
    static constexpr std::string_view kCancel = "External Tallybook View : Cancel";

    // For the current cell, which is a join's.
    explicit ExtView(const model::Document& doc);

    // Reads the other database afresh and puts it into the tables of the join. Without it the list is empty; why has
    // been said. A view that the other database does not have, or that has no columns, stands for all its fields.
    void AddRecordsToView(model::Document& doc, platform::Services& services);

    const std::vector<ExtViewColumn>& columns() const { return m_columns; }
    std::uint32_t rows() const { return m_database ? m_database.records->count : 0; }
    std::string_view text(std::uint32_t row, std::size_t column, std::string& scratch) const;

    // The rows with the text somewhere in their columns, in the order of the list; small and capital letters are the
    // same. All of them for an empty text.
    std::vector<std::uint32_t> rowsWith(std::string_view text) const;

    // The row that the cell refers to now, as the join finds it.
    std::optional<std::uint32_t> rowOfCell(const model::Document& doc, const platform::Regional& regional) const;

    // OK: the row that is selected in the list goes to the cell, which becomes the current one again. With none the
    // cell stays as it is, as after Cancel.
    void cmdOK(model::Document& doc, std::optional<std::uint32_t> SelectedExtRow) const;

    // No record: the cell, which becomes the current one again, refers to none, and its lookups are empty.
    void cmdNone(model::Document& doc) const;

private:
    int m_row;  // of the grid
    int m_slot; // CurrField
    ExternalDatabase m_database;
    std::vector<ExtViewColumn> m_columns;
};

} // namespace tallybook::document
