#include "core/design/ViewDesign.h"

#include "core/calc/values/Text.h"
#include "core/design/FieldNames.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tallybook::design {

namespace {

constexpr std::array<std::string_view, 3> kMarks = {"Pri", "Sec", "Ter"};
constexpr std::array<std::string_view, 2> kDirections = {"Ascending", "Descending"};
constexpr std::array<std::string_view, 7> kSortEntries = {"none",
                                                          "Primary,Ascending",
                                                          "Primary,Descending",
                                                          "Secondary,Ascending",
                                                          "Secondary,Descending",
                                                          "Tertiary,Ascending",
                                                          "Tertiary,Descending"};
constexpr std::array<std::string_view, 4> kColsEntries = {"0", "1", "2", "3"};
constexpr std::uint8_t kColumnWidth = 60;       // of every column that is saved here
constexpr int kViewSlots = model::MaxViews - 1; // the last one is carried, not offered
constexpr int kNoneEntry = 0;
constexpr int kAllFieldsEntry = 1;
constexpr int kFirstFieldEntry = 2;

std::string sortText(std::size_t key, std::uint8_t direction) {
    return std::string(kMarks[key]) + ' ' + std::string(kDirections[direction == 0 ? 0 : 1]);
}

int filterCount(std::uint16_t mask) {
    int count = 0;
    for (int slot = 0; slot < model::MaxFilters; ++slot)
        count += mask >> slot & 1;
    return count;
}

int highestView(const model::DatabaseModel& db) {
    int slot = model::MaxViews;
    while (slot > 0 && db.Views[static_cast<std::size_t>(slot) - 1].Name.empty())
        --slot;
    return slot;
}

} // namespace

ViewDesign::ViewDesign(model::Document& doc, platform::Services& services) : m_doc(doc), m_services(services) {
    for (int slot = model::MaxUserFields; slot >= 1; --slot) {
        const model::FieldDef& field = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
        if (field.Type == model::FieldType::NotUsed)
            continue;
        m_numFields = std::max(m_numFields, slot + 1);
        m_used.insert(m_used.begin(), slot);
    }
    const std::vector<int> slots = viewSlots();
    const auto shown = std::find_if(slots.begin(), slots.end(), [&](int slot) {
        return !doc.CurrentView.empty() && doc.CurrDB20.Views[static_cast<std::size_t>(slot)].Name == doc.CurrentView;
    });
    showSlot(shown == slots.end() ? slots.front() : *shown);
}

std::vector<int> ViewDesign::viewSlots() const {
    std::vector<int> slots;
    for (const bool named : {true, false})
        for (int slot = 0; slot < kViewSlots; ++slot)
            if (m_doc.CurrDB20.Views[static_cast<std::size_t>(slot)].Name.empty() != named)
                slots.push_back(slot);
    return slots;
}

std::string ViewDesign::nameOf(int slot) const {
    const std::string& name = m_doc.CurrDB20.Views[static_cast<std::size_t>(slot)].Name;
    return name.empty() ? "View" + std::to_string(slot) : name;
}

std::vector<std::string> ViewDesign::CmbView() const {
    std::vector<std::string> entries;
    for (const int slot : viewSlots())
        entries.push_back(nameOf(slot));
    return entries;
}

int ViewDesign::viewPosition() const {
    const std::vector<int> slots = viewSlots();
    return static_cast<int>(std::find(slots.begin(), slots.end(), m_slot) - slots.begin());
}

std::vector<std::string> ViewDesign::CmbFields() const {
    std::vector<std::string> entries{"none", "All Fields"};
    for (const int slot : m_fields)
        entries.push_back(shownName(m_doc.CurrDB20, slot));
    return entries;
}

std::span<const std::string_view> ViewDesign::CmbSort() {
    return kSortEntries;
}

std::span<const std::string_view> ViewDesign::CmbCols() {
    return kColsEntries;
}

std::vector<std::string> ViewDesign::CmbFilter() const {
    std::vector<std::string> entries{"No Filter"};
    for (std::size_t slot = 0; slot < model::MaxFilters; ++slot)
        if (!m_doc.CurrDB20.Filters[slot].Name.empty())
            entries.push_back(m_doc.CurrDB20.Filters[slot].Name);
    entries.emplace_back("Multiple");
    return entries;
}

std::vector<ViewDesign::Row> ViewDesign::Grid() const {
    std::vector<Row> rows;
    for (const Line& line : m_lines)
        rows.push_back(line.row);
    return rows;
}

void ViewDesign::selectRow(int row) {
    m_row = std::clamp(row, 0, static_cast<int>(m_lines.size()) - 1);
}

// A column is shown whatever it stands for: the categories, a slot that is free now, or a number beyond all slots.
// The count tells where the columns end, since those of the categories are alike to none.
void ViewDesign::showSlot(int slot) {
    const model::ViewDef& view = m_doc.CurrDB20.Views[static_cast<std::size_t>(slot)];
    m_slot = slot;
    m_row = 0;
    TxtView = nameOf(slot);
    for (std::size_t key = 0; key < m_keys.size(); ++key)
        m_keys[key] = {view.SortFields[key], view.SortDirs[key]};
    m_lines.clear();
    const int columns = std::clamp<int>(view.NumCols, model::highestColumn(view), model::MaxViewColumns);
    for (int i = 0; i < columns; ++i)
        m_lines.push_back(lineOf(view.Columns[static_cast<std::size_t>(i)]));
    fillFields();
    keepFreeRow();
    cols = shownCols(view);
    filter = shownFilter(view);
    m_filterChosen = false;
    m_saved = state();
}

ViewDesign::Line ViewDesign::lineOf(const model::ViewColumn& column) const {
    return {{shownName(m_doc.CurrDB20, column.Field), markOf(column.Field)}, column};
}

// The mark of the last key that a field is.
std::string ViewDesign::markOf(int field) const {
    std::string mark;
    for (std::size_t key = 0; key < m_keys.size(); ++key)
        if (field != 0 && m_keys[key].field == field)
            mark = sortText(key, m_keys[key].direction);
    return mark;
}

void ViewDesign::fillFields() {
    m_fields = m_used;
    for (const Line& line : m_lines)
        if (std::find(m_fields.begin(), m_fields.end(), line.column.Field) == m_fields.end())
            m_fields.push_back(line.column.Field);
}

int ViewDesign::shownCols(const model::ViewDef& view) const {
    return std::min<int>(view.FrozenCols, static_cast<int>(kColsEntries.size()) - 1);
}

int ViewDesign::shownFilter(const model::ViewDef& view) const {
    int shown = 0;
    const int filters = filterCount(view.FilterMask);
    int entry = 0;
    for (int f = 0; f < model::MaxFilters; ++f) {
        const bool named = !m_doc.CurrDB20.Filters[static_cast<std::size_t>(f)].Name.empty();
        entry += named ? 1 : 0;
        if (filters == 1 && named && (view.FilterMask >> f & 1) != 0)
            shown = entry;
    }
    return filters > 1 ? entry + 1 : shown;
}

void ViewDesign::chooseFilter(int entry) {
    filter = entry;
    m_filterChosen = true;
}

Leaving ViewDesign::leave() const {
    return state() == m_saved ? Leaving::Leave : asksToKeep(m_services, platform::texts::kKeepView);
}

int ViewDesign::slotAt(int position) const {
    return viewSlots().at(static_cast<std::size_t>(position));
}

// A view may fill every row, and then none is free.
void ViewDesign::keepFreeRow() {
    const bool full = static_cast<int>(m_lines.size()) >= model::MaxViewColumns;
    if (m_lines.empty() || (!m_lines.back().isFree() && !full))
        m_lines.emplace_back();
}

int ViewDesign::GetFieldNo() const {
    return current().isFree() ? 0 : current().column.Field;
}

int ViewDesign::firstFreeRow() const {
    const auto free = std::find_if(m_lines.begin(), m_lines.end(), [](const Line& line) { return line.isFree(); });
    return static_cast<int>(free - m_lines.begin());
}

// The key stays with the field that had it: a field that comes back finds its mark.
void ViewDesign::chooseField(int position) {
    if (position == kNoneEntry) {
        ResetAll();
    } else if (position == kAllFieldsEntry) {
        ShowAllFields();
    } else {
        const int field = m_fields.at(static_cast<std::size_t>(position - kFirstFieldEntry));
        if (current().isFree() || current().column.Field != field)
            current() = lineOf({.Field = static_cast<std::uint8_t>(field)});
        keepFreeRow();
    }
}

bool ViewDesign::opensSort() const {
    return !current().isFree();
}

int ViewDesign::sortEntry() const {
    const std::string& mark = current().row.Sort;
    for (std::size_t key = 0; key < kMarks.size(); ++key)
        for (std::size_t direction = 0; direction < kDirections.size(); ++direction)
            if (mark == sortText(key, static_cast<std::uint8_t>(direction)))
                return static_cast<int>(key * kDirections.size() + direction) + 1;
    return kNoneEntry;
}

int ViewDesign::fieldEntry() const {
    const auto found = std::find(m_fields.begin(), m_fields.end(), current().column.Field);
    const bool none = current().isFree() || found == m_fields.end();
    return none ? kNoneEntry : static_cast<int>(found - m_fields.begin()) + kFirstFieldEntry;
}

void ViewDesign::chooseSort(int position) {
    if (!opensSort())
        return;
    Row& row = current().row;
    const auto field = static_cast<std::uint8_t>(GetFieldNo());
    if (position == kNoneEntry) {
        row.Sort.clear();
        for (SortKey& key : m_keys)
            if (key.field == field)
                key = {};
        return;
    }
    const auto key = static_cast<std::size_t>(position - 1) / kDirections.size();
    const auto direction = static_cast<std::uint8_t>((position - 1) % 2);
    m_keys.at(key) = {field, direction};
    ResetGrid(kMarks[key]);
    row.Sort = sortText(key, direction);
}

void ViewDesign::ResetGrid(std::string_view mark) {
    for (Line& line : m_lines)
        if (line.row.Sort.find(mark) != std::string::npos)
            line.row.Sort.clear();
}

void ViewDesign::ResetAll() {
    m_lines.erase(m_lines.begin() + m_row);
    keepFreeRow();
    selectRow(m_row);
}

// Behind the rows that stand there; a free one among them goes, as it does when the view is saved.
void ViewDesign::ShowAllFields() {
    std::vector<Line> lines;
    std::copy_if(m_lines.begin(), m_lines.end(), std::back_inserter(lines),
                 [](const Line& line) { return !line.isFree(); });
    if (lines.size() + m_used.size() > static_cast<std::size_t>(model::MaxViewColumns)) {
        say(m_services, platform::texts::kTooManyColumns);
        return;
    }
    for (const int slot : m_used)
        lines.push_back(lineOf({.Field = static_cast<std::uint8_t>(slot)}));
    m_lines = std::move(lines);
    keepFreeRow();
    selectRow(m_row);
}

bool ViewDesign::exchange(int other) {
    if (other < 0 || other >= static_cast<int>(m_lines.size()))
        return false;
    std::swap(m_lines[static_cast<std::size_t>(m_row)], m_lines[static_cast<std::size_t>(other)]);
    m_row = other;
    return true;
}

void ViewDesign::cmdUp() {
    exchange(m_row - 1);
    keepFreeRow();
}

void ViewDesign::cmdDown() {
    exchange(m_row + 1);
    keepFreeRow();
}

void ViewDesign::CmdAdd() {
    selectRow(firstFreeRow());
}

void ViewDesign::CmdRemove() {
    chooseField(kNoneEntry);
}

void ViewDesign::cmdClear() {
    if (!asksToDestroy(m_services, "Delete all the columns in this view.\nAre you sure?"))
        return;
    m_lines.assign(1, {});
    m_row = 0;
}

bool ViewDesign::cmdOK() {
    const std::string nameBefore = m_doc.CurrDB20.Views[static_cast<std::size_t>(m_slot)].Name;
    const bool modifiedBefore = m_doc.DocModified;
    if (!RenameView(TxtView, m_slot))
        return false;
    if (!SaveView(m_slot)) {
        m_doc.CurrDB20.Views[static_cast<std::size_t>(m_slot)].Name = nameBefore;
        m_doc.DocModified = modifiedBefore;
        return false;
    }
    if (m_doc.CurrDB20.Views[static_cast<std::size_t>(m_slot)].Name.empty())
        showSlot(m_slot); // a free slot again, under a new name
    m_saved = state();
    return true;
}

bool ViewDesign::RenameView(const std::string& newName, int viewIndex) {
    const std::string upper = calc::upper(newName);
    std::string& stored = m_doc.CurrDB20.Views[static_cast<std::size_t>(viewIndex)].Name;
    if (upper == "SHOW ALL FIELDS" || upper == "EDIT VIEWS...") {
        say(m_services, newName + " is not a vaild view name.");
        return false;
    }
    const std::string name = trimmed(newName).empty() ? std::string() : newName;
    for (int slot = 0; slot < kViewSlots && !name.empty(); ++slot)
        if (slot != viewIndex && calc::upper(m_doc.CurrDB20.Views[static_cast<std::size_t>(slot)].Name) == upper) {
            say(m_services, "The name already exist in the list choose new name");
            return false;
        }
    if (newName == stored)
        return true; // even one that nobody could give it here
    if (refusesText(m_services, "A view's name", name, kMostInName))
        return false;
    m_doc.DocModified = m_doc.DocModified || stored != name;
    stored = name;
    return true;
}

bool ViewDesign::SaveView(int viewIndex) {
    model::ViewDef& view = m_doc.CurrDB20.Views[static_cast<std::size_t>(viewIndex)];
    const auto columns =
        std::count_if(m_lines.begin(), m_lines.end(), [](const Line& line) { return !line.isFree(); });
    if (columns == 0 &&
        !asksToDestroy(m_services,
                       "View should have atleast one column to Show.\nSelecting no columns will remove the "
                       "view.\nContinue?",
                       "View Designer : No columns to show"))
        return false;
    const model::ViewDef before = view;
    view.NumCols = static_cast<std::uint8_t>(columns);
    for (std::size_t key = 0; key < m_keys.size(); ++key) {
        view.SortFields[key] = m_keys[key].field;
        view.SortDirs[key] = m_keys[key].direction;
    }
    if (columns > 0)
        storeColumns(view);
    else
        removeColumns(view);
    if (m_filterChosen || filter != shownFilter(view))
        view.FilterMask = filterMask();
    m_filterChosen = false;
    if (columns > 0 && !view.Name.empty())
        m_doc.CurrentView = view.Name;
    const auto views = static_cast<std::uint8_t>(highestView(m_doc.CurrDB20));
    m_doc.DocModified = m_doc.DocModified || view != before || views != m_doc.CurrDB20.NumViews;
    m_doc.CurrDB20.NumViews = views;
    return true;
}

// All have the same width; the handheld's own bytes stay with their column.
void ViewDesign::storeColumns(model::ViewDef& view) {
    auto column = view.Columns.begin();
    for (const Line& line : m_lines) {
        if (line.isFree())
            continue;
        *column = line.column;
        column++->Width = kColumnWidth;
    }
    std::fill(column, view.Columns.end(), model::ViewColumn{});
    if (cols != shownCols(view))
        view.FrozenCols = static_cast<std::uint8_t>(std::clamp(cols, 0, 3));
}

// The columns go with the name: a save counts them by their fields.
void ViewDesign::removeColumns(model::ViewDef& view) {
    view.Name.clear();
    view.Columns.fill({});
    m_doc.CurrentView.clear();
}

std::uint16_t ViewDesign::filterMask() const {
    const std::vector<std::string> entries = CmbFilter();
    if (filter <= 0 || filter >= static_cast<int>(entries.size()))
        return 0;
    if (filter == static_cast<int>(entries.size()) - 1)
        return m_doc.CurrDB20.DefaultFilterMask;
    int entry = 0;
    for (int slot = 0; slot < model::MaxFilters; ++slot)
        if (!m_doc.CurrDB20.Filters[static_cast<std::size_t>(slot)].Name.empty() && ++entry == filter)
            return static_cast<std::uint16_t>(1u << slot);
    return 0;
}

} // namespace tallybook::design
