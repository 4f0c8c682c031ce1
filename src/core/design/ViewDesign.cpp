#include "core/design/ViewDesign.h"

#include "core/calc/conditions/EvalCond.h"
#include "core/calc/values/Text.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
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
        m_names.insert(m_names.begin(), field.Name);
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
    entries.insert(entries.end(), m_names.begin(), m_names.end());
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

void ViewDesign::selectRow(int row) {
    m_row = std::clamp(row, 0, static_cast<int>(m_rows.size()) - 1);
}

void ViewDesign::showSlot(int slot) {
    const model::ViewDef& view = m_doc.CurrDB20.Views[static_cast<std::size_t>(slot)];
    m_slot = slot;
    m_row = 0;
    TxtView = nameOf(slot);
    m_rows.clear();
    for (int i = 0; i < model::highestColumn(view); ++i) {
        const std::size_t field = view.Columns[static_cast<std::size_t>(i)].Field;
        if (field >= 1 && field <= model::MaxUserFields &&
            m_doc.CurrDB20.Fields[field].Type != model::FieldType::NotUsed)
            m_rows.push_back({m_doc.CurrDB20.Fields[field].Name, ""});
    }
    for (std::size_t key = 0; key < m_keys.size(); ++key) {
        m_keys[key] = {view.SortFields[key], view.SortDirs[key]};
        for (Row& row : m_rows)
            if (m_keys[key].field != 0 && fieldNo(row.Fields) == m_keys[key].field)
                row.Sort = sortText(key, m_keys[key].direction);
    }
    keepFreeRow();
    cols = std::min<int>(view.FrozenCols, static_cast<int>(kColsEntries.size()) - 1);
    filter = 0;
    const int filters = filterCount(view.FilterMask);
    int entry = 0;
    for (int f = 0; f < model::MaxFilters; ++f) {
        const bool named = !m_doc.CurrDB20.Filters[static_cast<std::size_t>(f)].Name.empty();
        entry += named ? 1 : 0;
        if (filters == 1 && named && (view.FilterMask >> f & 1) != 0)
            filter = entry;
    }
    if (filters > 1)
        filter = entry + 1;
    m_saved = state();
}

Leaving ViewDesign::leave() const {
    return state() == m_saved ? Leaving::Leave : asksToKeep(m_services, platform::texts::kKeepView);
}

int ViewDesign::slotAt(int position) const {
    return viewSlots().at(static_cast<std::size_t>(position));
}

// A view may fill every row, and then none is free.
void ViewDesign::keepFreeRow() {
    const bool full = static_cast<int>(m_rows.size()) >= model::MaxViewColumns;
    if (m_rows.empty() || (!m_rows.back().Fields.empty() && !full))
        m_rows.emplace_back();
}

int ViewDesign::fieldNo(const std::string& name) const {
    return name.empty() ? 0 : calc::GetDBFieldNo20(m_doc.CurrDB20, name);
}

int ViewDesign::GetFieldNo() const {
    return fieldNo(m_rows[static_cast<std::size_t>(m_row)].Fields);
}

int ViewDesign::firstFreeRow() const {
    const auto free = std::find_if(m_rows.begin(), m_rows.end(), [](const Row& row) { return row.Fields.empty(); });
    return static_cast<int>(free - m_rows.begin());
}

void ViewDesign::chooseField(int position) {
    if (position == kNoneEntry) {
        ResetAll();
    } else if (position == kAllFieldsEntry) {
        ShowAllFields();
    } else {
        const std::string& name = m_names.at(static_cast<std::size_t>(position - kFirstFieldEntry));
        Row& row = m_rows[static_cast<std::size_t>(m_row)];
        if (row.Fields != name)
            row = {name, ""}; // the key stays with the field that had it
        keepFreeRow();
    }
}

bool ViewDesign::opensSort() const {
    return !m_rows[static_cast<std::size_t>(m_row)].Fields.empty();
}

int ViewDesign::sortEntry() const {
    const std::string& mark = m_rows[static_cast<std::size_t>(m_row)].Sort;
    for (std::size_t key = 0; key < kMarks.size(); ++key)
        for (std::size_t direction = 0; direction < kDirections.size(); ++direction)
            if (mark == sortText(key, static_cast<std::uint8_t>(direction)))
                return static_cast<int>(key * kDirections.size() + direction) + 1;
    return kNoneEntry;
}

int ViewDesign::fieldEntry() const {
    const std::string& name = m_rows[static_cast<std::size_t>(m_row)].Fields;
    const auto found = std::find(m_names.begin(), m_names.end(), name);
    return found == m_names.end() ? kNoneEntry : static_cast<int>(found - m_names.begin()) + kFirstFieldEntry;
}

void ViewDesign::chooseSort(int position) {
    if (!opensSort())
        return;
    Row& row = m_rows[static_cast<std::size_t>(m_row)];
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
    for (Row& row : m_rows)
        if (row.Sort.find(mark) != std::string::npos)
            row.Sort.clear();
}

void ViewDesign::ResetAll() {
    m_rows.erase(m_rows.begin() + m_row);
    keepFreeRow();
    selectRow(m_row);
}

void ViewDesign::ShowAllFields() {
    const int free = firstFreeRow();
    if (free + static_cast<int>(m_names.size()) > model::MaxViewColumns) {
        say(m_services, platform::texts::kTooManyColumns);
        return;
    }
    m_rows.resize(static_cast<std::size_t>(free));
    for (const std::string& name : m_names)
        m_rows.push_back({name, ""});
    keepFreeRow();
}

bool ViewDesign::exchange(int other) {
    if (other < 0 || other >= static_cast<int>(m_rows.size()))
        return false;
    std::swap(m_rows[static_cast<std::size_t>(m_row)], m_rows[static_cast<std::size_t>(other)]);
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
    m_rows.assign(1, {});
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
    if (refusesText(m_services, "A view's name", name, kMostInName))
        return false;
    std::string& stored = m_doc.CurrDB20.Views[static_cast<std::size_t>(viewIndex)].Name;
    m_doc.DocModified = m_doc.DocModified || stored != name;
    stored = name;
    return true;
}

bool ViewDesign::SaveView(int viewIndex) {
    model::ViewDef& view = m_doc.CurrDB20.Views[static_cast<std::size_t>(viewIndex)];
    const auto columns =
        std::count_if(m_rows.begin(), m_rows.end(), [](const Row& row) { return !row.Fields.empty(); });
    if (columns == 0 &&
        !asksToDestroy(m_services,
                       "View should have atleast one column to Show.\nSelecting no columns will remove the "
                       "view.\nContinue?",
                       "View Designer : No columns to show"))
        return false;
    view.NumCols = static_cast<std::uint8_t>(columns);
    for (std::size_t key = 0; key < m_keys.size(); ++key) {
        view.SortFields[key] = m_keys[key].field;
        view.SortDirs[key] = m_keys[key].direction;
    }
    if (columns > 0)
        storeColumns(view);
    else
        removeColumns(view);
    view.FilterMask = filterMask();
    if (columns > 0 && !view.Name.empty())
        m_doc.CurrentView = view.Name;
    m_doc.CurrDB20.NumViews = static_cast<std::uint8_t>(highestView(m_doc.CurrDB20));
    m_doc.DocModified = true;
    return true;
}

void ViewDesign::storeColumns(model::ViewDef& view) {
    std::size_t i = 0;
    for (const Row& row : m_rows) {
        if (row.Fields.empty())
            continue;
        view.Columns[i].Field = static_cast<std::uint8_t>(fieldNo(row.Fields));
        view.Columns[i].Width = kColumnWidth;
        ++i;
    }
    std::fill(view.Columns.begin() + static_cast<std::ptrdiff_t>(i), view.Columns.end(), model::ViewColumn{});
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
