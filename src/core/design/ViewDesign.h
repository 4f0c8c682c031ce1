// The View Designer without its widgets: the columns, sort keys, frozen columns and filter of one view at a time.
#pragma once

#include "core/design/Dialog.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::design {

class ViewDesign {
public:
    // A row of Grid: the field's name, and the mark of its sort key with the direction.
    struct Row {
        std::string Fields; // empty for a free row
        std::string Sort;   // "Pri Ascending", empty for none
        bool operator==(const Row&) const = default;
    };
    struct SortKey {
        std::uint8_t field = 0;     // slot, 0 for none
        std::uint8_t direction = 0; // 0 ascending, 1 descending
        bool operator==(const SortKey&) const = default;
    };

    // Opens on the view that is shown, or on the first entry of CmbView.
    ViewDesign(model::Document& doc, platform::Services& services);

    // The lists. CmbView has the names of the views, then a new name for each empty slot.
    std::vector<std::string> CmbView() const;
    int viewPosition() const; // the entry of the view shown
    std::vector<std::string> CmbFields() const;
    static std::span<const std::string_view> CmbSort();
    static std::span<const std::string_view> CmbCols();
    std::vector<std::string> CmbFilter() const;

    // What the controls hold. The user changes the name and the two choices; the rest goes by the operations. A
    // choice that is left as it was keeps what is stored, which may be more than its list can show.
    std::string TxtView;
    int cols = 0;   // CmbCols: frozen columns
    int filter = 0; // CmbFilter: entry
    // A selection in CmbFilter, of the entry that is chosen already too: "Multiple" takes the database's set anew.
    void chooseFilter(int entry);

    std::vector<Row> Grid() const; // the last row is free, unless all are filled
    int currentRow() const { return m_row; }
    void selectRow(int row);
    const std::array<SortKey, 3>& sortKeys() const { return m_keys; }
    int NumFields() const { return m_numFields; }
    int viewSlot() const { return m_slot; }

    // Before another view is shown or the dialog closes: asks about what was changed and not saved.
    Leaving leave() const;
    // A selection in CmbView: loads the view. What was not saved of the one before is lost.
    void chooseView(int position) { showSlot(slotAt(position)); }
    int slotAt(int position) const;
    void showSlot(int slot);
    // What the two lists over the current row open on.
    int fieldEntry() const;
    int sortEntry() const;
    // A selection in CmbFields for the current row.
    void chooseField(int position);
    // False when a click on the sort column of the current row opens no CmbSort: the row has no field.
    bool opensSort() const;
    // A selection in CmbSort for the current row.
    void chooseSort(int position);

    void cmdUp();
    void cmdDown();
    void CmdAdd();    // goes to the first free row
    void CmdRemove(); // the entry "none" of CmbFields
    void cmdClear();  // with its question

    // Saves the view shown under its name; the dialog stays open. True when it was saved; otherwise nothing was.
    bool cmdOK();

    bool RenameView(const std::string& newName, int viewIndex);
    bool SaveView(int viewIndex);
    void ShowAllFields();
    void ResetAll();
    void ResetGrid(std::string_view mark);
    int GetFieldNo() const; // slot of the current row's field, 0 for none

private:
    // A row with the column that it stands for: two fields may share a name.
    struct Line {
        Row row;
        model::ViewColumn column;
        bool isFree() const { return row.Fields.empty(); }
        bool operator==(const Line&) const = default;
    };
    // What a save would store.
    struct State {
        std::string TxtView;
        int cols = 0;
        int filter = 0;
        bool filterChosen = false;
        std::vector<Line> lines;
        std::array<SortKey, 3> keys{};
        bool operator==(const State&) const = default;
    };
    State state() const { return {TxtView, cols, filter, m_filterChosen, m_lines, m_keys}; }
    std::vector<int> viewSlots() const; // by entry of CmbView
    std::string nameOf(int slot) const;
    std::string markOf(int field) const;
    Line lineOf(const model::ViewColumn& column) const;
    Line& current() { return m_lines[static_cast<std::size_t>(m_row)]; }
    const Line& current() const { return m_lines[static_cast<std::size_t>(m_row)]; }
    void fillFields();
    int shownCols(const model::ViewDef& view) const;
    int shownFilter(const model::ViewDef& view) const;
    int firstFreeRow() const;
    void keepFreeRow();
    bool exchange(int other);
    std::uint16_t filterMask() const;
    void storeColumns(model::ViewDef& view);
    void removeColumns(model::ViewDef& view);

    model::Document& m_doc;
    platform::Services& m_services;
    std::vector<int> m_used;   // slots of the used fields
    std::vector<int> m_fields; // by entry of CmbFields: these, then what else the view's columns show
    int m_numFields = 0;
    int m_slot = 0;
    int m_row = 0;
    std::vector<Line> m_lines;
    std::array<SortKey, 3> m_keys{};
    bool m_filterChosen = false;
    State m_saved; // as it was loaded or saved last
};

} // namespace tallybook::design
