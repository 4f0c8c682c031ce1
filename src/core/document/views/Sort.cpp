#include "core/document/views/Sort.h"

#include "core/calc/cells/CellCoders.h"
#include "core/calc/cells/CellReader.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/grid/Cells.h"
#include "core/document/views/RowKeys.h"
#include "core/document/views/Views.h"
#include "core/platform/Guards.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tallybook::document {

namespace {

using calc::CellReader;
using model::FieldType;
using model::StoredCell;
using model::WordForm;

// What the cells of a column are compared by.
enum class SortMode {
    None,
    Text,    // letter case counts
    Number,  // of the text
    Date,    // year, month and day
    Time,    // hour, minute and second
    Check,   // not checked, then checked
    Generic, // numbers as numbers, then texts without regard to case
};

SortMode modeOf(FieldType type) {
    switch (type) {
    case FieldType::Text:
    case FieldType::Memo:
    case FieldType::AddressBookJoin:
    case FieldType::AddressBookLookup:
        return SortMode::Text;
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Float:
    case FieldType::Expression:
    case FieldType::Key:
    case FieldType::AutoIncremental:
        return SortMode::Number;
    case FieldType::Date:
        return SortMode::Date;
    case FieldType::Time:
        return SortMode::Time;
    case FieldType::Checkbox:
        return SortMode::Check;
    case FieldType::List:
    case FieldType::DBJoin:
    case FieldType::DBLookup:
    case FieldType::RadioButton:
    case FieldType::ConditionalExpression:
    case FieldType::AdvExpression:
        return SortMode::Generic;
    default:
        return SortMode::None;
    }
}

bool hasNoOrder(FieldType type) {
    return type == FieldType::OneToMany || type == FieldType::Image || type == FieldType::Plugin;
}

// Slot 0 is the list of categories, whatever type a file gives it.
FieldType typeOfSlot(const model::Document& doc, int slot) {
    return slot == 0 ? FieldType::List : doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type;
}

constexpr std::uint32_t kMostItems = 4096; // of a column whose words stand for texts that repeat

// Copies of texts that stay where they are, many to a heap block.
class TextStore {
public:
    // Room for a text of `size` bytes.
    char* take(std::size_t size) {
        if (size > m_left) {
            m_left = std::max(size, kBlockBytes);
            m_next = m_blocks.emplace_back(std::make_unique<char[]>(m_left)).get();
        }
        m_left -= size;
        return std::exchange(m_next, m_next + size);
    }

private:
    static constexpr std::size_t kBlockBytes = 1 << 16;

    std::vector<std::unique_ptr<char[]>> m_blocks;
    char* m_next = nullptr;
    std::size_t m_left = 0;
};

std::string_view copyOf(std::string_view text, TextStore& store) {
    char* copy = store.take(text.size());
    std::copy(text.begin(), text.end(), copy);
    return {copy, text.size()};
}

std::string_view upperCopyOf(std::string_view text, TextStore& store) {
    char* copy = store.take(text.size());
    std::transform(text.begin(), text.end(), copy, [](char c) { return calc::upper(c); });
    return {copy, text.size()};
}

// The rows of a grid in the order of a column.
class ColumnSort {
public:
    ColumnSort(const model::Document& doc, platform::Services& services, int column, SortDirection direction)
        : m_order(doc.grd.order()),
          m_keyOrder(direction == SortDirection::Descending ? KeyOrder::Falling : KeyOrder::Rising),
          m_reader(doc.grd, column, services.regional, services.clock.now().year) {
        m_rows.reserve(static_cast<std::size_t>(m_order.count()));
    }

    std::vector<std::uint32_t> orderBy(SortMode mode);

private:
    template <class Key> void sortByKeys(Key keyOf);
    void sortByTexts();
    void sortGeneric();
    bool sortItems();
    void sortNumbersAndTexts();

    std::uint64_t numberKey(std::uint32_t id);
    std::uint64_t dateKey(std::uint32_t id) const;
    std::uint64_t timeKey(std::uint32_t id) const;

    // A cell in generic order.
    struct Cell {
        std::optional<double> number;
        std::string_view text; // in upper case, of a cell without a number

        bool isBefore(const Cell& other) const {
            if (number && other.number)
                return *number < *other.number;
            return number || other.number ? number.has_value() : text < other.text;
        }
    };
    Cell genericCell(const StoredCell& cell);
    std::optional<std::uint32_t> itemOf(const StoredCell& cell) const;
    std::vector<std::uint32_t> ranksOfItems();

    const model::RowOrder& m_order;
    KeyOrder m_keyOrder;
    CellReader m_reader;
    TextStore m_store;
    std::vector<RowKey> m_rows;
    std::string m_scratch;
};

std::vector<std::uint32_t> ColumnSort::orderBy(SortMode mode) {
    switch (mode) {
    case SortMode::Text:
        sortByTexts();
        break;
    case SortMode::Number:
        sortByKeys([this](std::uint32_t id) { return numberKey(id); });
        break;
    case SortMode::Date:
        sortByKeys([this](std::uint32_t id) { return dateKey(id); });
        break;
    case SortMode::Time:
        sortByKeys([this](std::uint32_t id) { return timeKey(id); });
        break;
    case SortMode::Check:
        sortByKeys([this](std::uint32_t id) { return std::uint64_t{m_reader.isChecked(id)}; });
        break;
    default:
        sortGeneric();
        break;
    }
    std::vector<std::uint32_t> order;
    order.reserve(m_rows.size());
    for (const RowKey& row : m_rows)
        order.push_back(row.place);
    return order;
}

template <class Key> void ColumnSort::sortByKeys(Key keyOf) {
    for (int place = 0; place < m_order.count(); ++place)
        m_rows.push_back({keyOf(m_order.id(place)), static_cast<std::uint32_t>(place)});
    sortByKey(m_rows, m_keyOrder);
}

// Texts that stand in the column are compared where they stand.
void ColumnSort::sortByTexts() {
    std::vector<std::string_view> texts;
    texts.reserve(static_cast<std::size_t>(m_order.count()));
    for (int place = 0; place < m_order.count(); ++place) {
        const StoredCell cell = m_reader.texts().stored(m_order.id(place));
        const bool inColumn = cell.kind != StoredCell::Kind::Word;
        texts.push_back(inColumn ? cell.text : copyOf(m_reader.text(m_order.id(place), m_scratch), m_store));
        m_rows.push_back({0, static_cast<std::uint32_t>(place)});
    }
    sortByText(m_rows, texts, m_keyOrder);
}

void ColumnSort::sortGeneric() {
    if (!sortItems())
        sortNumbersAndTexts();
}

// Where the column has nothing but a list's items, these are sorted, and the rows go by the places of their items.
bool ColumnSort::sortItems() {
    for (int place = 0; place < m_order.count(); ++place) {
        const auto item = itemOf(m_reader.texts().stored(m_order.id(place)));
        if (!item) {
            m_rows.clear();
            return false;
        }
        m_rows.push_back({*item, static_cast<std::uint32_t>(place)});
    }
    const std::vector<std::uint32_t> ranks = ranksOfItems();
    for (RowKey& row : m_rows)
        row.key = ranks[row.key];
    sortByKey(m_rows, m_keyOrder);
    return true;
}

// An empty cell is item 0, a word one more than itself; nothing for a text that is no item.
std::optional<std::uint32_t> ColumnSort::itemOf(const StoredCell& cell) const {
    if (cell.kind == StoredCell::Kind::Empty)
        return 0;
    const bool isItem =
        cell.kind == StoredCell::Kind::Word && m_reader.form().words == WordForm::Other && cell.word < kMostItems;
    return isItem ? std::optional(cell.word + 1) : std::nullopt;
}

// By the items in use, which the rows' keys name: their places in generic order. Items that count as the same have
// the same place.
std::vector<std::uint32_t> ColumnSort::ranksOfItems() {
    std::vector<std::uint32_t> ranks(kMostItems + 1);
    for (const RowKey& row : m_rows)
        ranks[row.key] = 1;
    std::vector<std::pair<Cell, std::size_t>> items;
    for (std::size_t item = 0; item < ranks.size(); ++item)
        if (ranks[item] != 0) {
            const auto word = static_cast<std::uint32_t>(item - 1);
            items.emplace_back(item == 0 ? Cell{} : genericCell({StoredCell::Kind::Word, word, {}}), item);
        }
    std::sort(items.begin(), items.end(), [](const auto& a, const auto& b) { return a.first.isBefore(b.first); });
    for (std::size_t i = 1; i < items.size(); ++i) {
        const auto& [cell, item] = items[i];
        const auto& [before, itemBefore] = items[i - 1];
        ranks[item] = ranks[itemBefore] + (before.isBefore(cell) ? 1 : 0);
    }
    return ranks;
}

// Numbers and texts are sorted apart, the numbers coming first in rising order.
void ColumnSort::sortNumbersAndTexts() {
    std::vector<std::string_view> texts(static_cast<std::size_t>(m_order.count()));
    std::vector<RowKey> numbers;
    for (int place = 0; place < m_order.count(); ++place) {
        const auto row = static_cast<std::uint32_t>(place);
        const Cell cell = genericCell(m_reader.texts().stored(m_order.id(place)));
        texts[row] = cell.text;
        if (cell.number)
            numbers.push_back({keyOfDouble(*cell.number), row});
        else
            m_rows.push_back({0, row});
    }
    sortByKey(numbers, m_keyOrder);
    sortByText(m_rows, texts, m_keyOrder);
    m_rows.insert(m_keyOrder == KeyOrder::Falling ? m_rows.end() : m_rows.begin(), numbers.begin(), numbers.end());
}

std::uint64_t ColumnSort::numberKey(std::uint32_t id) {
    const std::optional<double> number = m_reader.number(id);
    return keyOfDouble(number ? *number : calc::val(m_reader.text(id, m_scratch)));
}

// Digits of the year, the month and the day behind one another, 0 for a cell that has no date. The word of a date
// compares the same.
std::uint64_t ColumnSort::dateKey(std::uint32_t id) const {
    const StoredCell cell = m_reader.texts().stored(id);
    if (cell.kind == StoredCell::Kind::Word && m_reader.form().words == WordForm::Date)
        return cell.word;
    const std::optional<double> serial = m_reader.date(id);
    if (!serial)
        return 0;
    const calc::Date date = calc::dateOf(*serial);
    return calc::packDate(date.year, date.month, date.day);
}

std::uint64_t ColumnSort::timeKey(std::uint32_t id) const {
    const StoredCell cell = m_reader.texts().stored(id);
    if (cell.kind == StoredCell::Kind::Word && m_reader.form().words == WordForm::Time)
        return cell.word;
    const std::optional<double> serial = m_reader.date(id);
    if (!serial)
        return 0;
    const calc::TimeOfDay time = calc::timeOf(*serial);
    return calc::packTime(time.hour, time.minute, time.second);
}

ColumnSort::Cell ColumnSort::genericCell(const StoredCell& cell) {
    if (const std::optional<double> number = m_reader.number(cell))
        return {number, {}};
    return {std::nullopt, upperCopyOf(m_reader.text(cell, m_scratch), m_store)};
}

bool refuseWithoutOrder(const model::Document& doc, platform::Services& services, int slot) {
    if (!hasNoOrder(typeOfSlot(doc, slot)))
        return false;
    services.ui.message({.text = "Sort utility is not available for the field : " +
                                 doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Name,
                         .icon = platform::Icon::Information,
                         .title = {}});
    return true;
}

// Sorts on the column of a slot. Neither the current cell nor the numbers of column 0 need care: places are
// positions, and the number of a record is made from its position.
bool sortSlot(model::Document& doc, platform::Services& services, int slot, SortDirection direction) {
    if (refuseWithoutOrder(doc, services, slot))
        return false;
    saveCell(doc, services);
    const SortMode mode = modeOf(typeOfSlot(doc, slot));
    if (mode == SortMode::None)
        return true;
    const platform::Freeze freeze(services.screen, doc);
    doc.grd.permuteRows(ColumnSort(doc, services, model::columnOfSlot(slot), direction).orderBy(mode));
    return true;
}

} // namespace

bool sortCol(model::Document& doc, platform::Services& services, SortDirection direction) {
    if (doc.grd.col() == model::kNumberColumn)
        doc.grd.setCell(doc.grd.row(), model::columnOfSlot(0));
    return sortSlot(doc, services, model::slotOfColumn(doc.grd.col()), direction);
}

void SortGrid(model::Document& doc, platform::Services& services, int slot, SortDirection direction) {
    if (slot >= 0 && slot <= model::MaxUserFields)
        sortSlot(doc, services, slot, direction);
}

bool sortFromToolBar(model::Document& doc, platform::Services& services, SortDirection direction) {
    if (isViewShown(doc)) {
        services.ui.message(
            {.text = "Sort not available in the Views.", .icon = platform::Icon::Information, .title = {}});
        return false;
    }
    return sortCol(doc, services, direction);
}

} // namespace tallybook::document
