#include "core/convert/CellImporter.h"

#include "core/calc/cells/CellCoders.h"
#include "core/calc/values/Conversion.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/SingleText.h"
#include "core/calc/values/Text.h"
#include "core/pdb/CellForms.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tallybook::convert {

namespace {

using model::FieldType;
namespace texts = platform::texts;

constexpr std::size_t kRadioItems = 8;
constexpr std::size_t kListItems = 255;

// Whole numbers of the place behind the last one that counts, a half to the even one.
std::int64_t roundedToEven(std::uint64_t magnitude, int places) {
    std::uint64_t power = 1;
    for (int i = 0; i < places; ++i)
        power *= 10;
    const std::uint64_t whole = magnitude / power;
    const std::uint64_t rest = magnitude % power;
    const bool up = rest > power - rest || (rest == power - rest && rest != 0 && whole % 2 == 1);
    return static_cast<std::int64_t>(whole + (up ? 1 : 0));
}

bool hasFraction(const DecimalNumber& number) {
    std::uint64_t power = 1;
    for (int i = 0; i < number.places; ++i)
        power *= 10;
    return number.magnitude % power != 0;
}

} // namespace

bool travelsIn(FieldType type) {
    return !typeWord(type).empty();
}

CellImporter::CellImporter(model::Tallybook& book, int slot, std::string name, const BridgeValues& values,
                           bool listsAsIndex, BridgeLog& log)
    : m_book(book), m_slot(slot), m_name(std::move(name)), m_values(values), m_log(log),
      m_texts(book.grd.column(model::columnOfSlot(slot))), m_longs(book.CellLongs.slotColumn(slot)) {
    const model::FieldDef& field = book.CurrDB20.Fields[static_cast<std::size_t>(slot)];
    const FieldType type = slot == 0 ? FieldType::List : field.Type;
    m_decimals = field.Decimals;
    m_hasDecimalWords = pdb::cellForm(m_texts).words == model::WordForm::Decimal;
    m_store = storeOf(type);
    if (m_store != &CellImporter::storeItem)
        return;
    m_mostItems = type == FieldType::RadioButton ? kRadioItems : kListItems;
    learnItems();
    if (listsAsIndex)
        m_store = &CellImporter::storeItemIndex;
}

CellImporter::Store CellImporter::storeOf(FieldType type) {
    switch (type) {
    case FieldType::Text:
        return &CellImporter::storeText;
    case FieldType::Memo:
        return &CellImporter::storeMemo;
    case FieldType::Integer:
        return &CellImporter::storeInteger;
    case FieldType::Long:
        return &CellImporter::storeLong;
    case FieldType::Float:
        return &CellImporter::storeFloat;
    case FieldType::List:
    case FieldType::RadioButton:
        return &CellImporter::storeItem;
    case FieldType::Checkbox:
        return &CellImporter::storeCheck;
    case FieldType::Date:
        return &CellImporter::storeDate;
    case FieldType::Time:
        return &CellImporter::storeTime;
    case FieldType::Key:
        return &CellImporter::storeKey;
    case FieldType::AutoIncremental:
        return &CellImporter::storeAuto;
    default:
        return &CellImporter::passOver;
    }
}

void CellImporter::learnItems() {
    const model::ListDef& list = m_book.CurrDB20.Lists.at(m_slot);
    for (std::size_t item = 0; item < list.Items.size(); ++item)
        m_items.emplace(list.Items[item], list.ItemIds[item]); // of two equal ones the first
}

BridgeCode CellImporter::store(std::string_view value, std::uint32_t row, std::uint64_t record) {
    m_row = row;
    m_record = record;
    return (this->*m_store)(value);
}

BridgeCode CellImporter::storeText(std::string_view value) {
    if (value.size() > model::kTextLength) {
        tell(value, ValueFate::Cut, texts::kTextCut);
        value = value.substr(0, model::kTextLength);
    }
    m_texts.setText(m_row, value);
    return BridgeCode::Good;
}

// In a file a memo's lines end with a line feed alone.
BridgeCode CellImporter::storeMemo(std::string_view value) {
    const bool hasPairs = value.find("\r\n") != std::string_view::npos;
    const std::string lines = hasPairs ? calc::CrLfToLf(value) : std::string();
    if (hasPairs)
        value = lines;
    if (value.size() > model::kMemoLength) {
        tell(value, ValueFate::LeftOut, bridgeText(numberOf(BridgeCode::MemoTooLong)));
        return BridgeCode::MemoTooLong;
    }
    m_texts.setText(m_row, value);
    return BridgeCode::Good;
}

BridgeCode CellImporter::storeInteger(std::string_view value) {
    const auto whole = wholeOf(value);
    if (!whole)
        return leaveOut(value, BridgeCode::WrongDataType);
    if (*whole != static_cast<std::int16_t>(*whole)) {
        tell(value, ValueFate::LeftOut, bridgeText(numberOf(BridgeCode::IntegerTooLarge)));
        return BridgeCode::IntegerTooLarge;
    }
    m_texts.setWord(m_row, static_cast<std::uint32_t>(*whole));
    return BridgeCode::Good;
}

BridgeCode CellImporter::storeLong(std::string_view value) {
    const auto number = longOf(value);
    if (!number)
        return leaveOut(value, BridgeCode::WrongDataType);
    m_texts.setWord(m_row, static_cast<std::uint32_t>(*number));
    return BridgeCode::Good;
}

std::optional<std::int64_t> CellImporter::wholeOf(std::string_view value) {
    const auto number = m_values.number(value);
    if (number) {
        const std::int64_t size = roundedToEven(number->magnitude, number->places);
        if (hasFraction(*number))
            tell(value, ValueFate::Changed, texts::kRounded);
        return number->negative ? -size : size;
    }
    const auto read = m_values.wideNumber(value);
    if (!read || !(std::abs(*read) < 1e15))
        return std::nullopt;
    const double wide = std::nearbyint(*read);
    if (wide != *read)
        tell(value, ValueFate::Changed, texts::kRounded);
    return static_cast<std::int64_t>(wide);
}

std::optional<std::int32_t> CellImporter::longOf(std::string_view value) {
    const auto whole = wholeOf(value);
    if (!whole || *whole != static_cast<std::int32_t>(*whole))
        return std::nullopt;
    return static_cast<std::int32_t>(*whole);
}

BridgeCode CellImporter::storeFloat(std::string_view value) {
    const auto number = m_values.number(value);
    if (number && m_hasDecimalWords && number->places <= m_decimals) {
        std::uint64_t magnitude = number->magnitude;
        if (magnitude < (1u << 23))
            magnitude *= calc::kPowersOfTen[m_decimals - number->places];
        if (const auto word = calc::decimalWord(number->negative, magnitude, m_decimals)) {
            m_texts.setWord(m_row, *word);
            return BridgeCode::Good;
        }
    }
    const auto wide = number ? std::optional(number->value()) : m_values.wideNumber(value);
    if (!wide || !(std::abs(*wide) <= static_cast<double>(std::numeric_limits<float>::max())))
        return leaveOut(value, BridgeCode::WrongDataType);
    const int decimals = std::min(m_decimals, pdb::kMostDecimals);
    std::string shown = calc::formatDecimals(static_cast<float>(*wide), decimals, m_values.regional());
    const auto again = m_values.number(shown);
    const bool same = number && again ? number->value() == again->value() : again && again->value() == *wide;
    if (!same)
        tell(value, ValueFate::Changed, texts::becomes(shown));
    m_texts.setText(m_row, shown);
    return BridgeCode::Good;
}

BridgeCode CellImporter::storeItem(std::string_view value) {
    if (m_lastId != 0 && value == m_lastItem) {
        m_longs.set(m_row, m_lastId);
        return BridgeCode::Good;
    }
    if (value.size() > model::kTextLength) {
        tell(value, ValueFate::Cut, texts::kTextCut);
        value = value.substr(0, model::kTextLength);
    }
    auto found = m_items.find(value);
    if (found == m_items.end()) {
        if (m_slot == 0 && value == calc::kUnfiled)
            return BridgeCode::Good;
        model::ListDef& list = m_book.CurrDB20.Lists[m_slot];
        if (list.Items.size() >= m_mostItems) {
            if (m_mostItems == kRadioItems)
                return leaveOut(value, BridgeCode::WrongDataType);
            tell(value, ValueFate::LeftOut, bridgeText(numberOf(BridgeCode::ListFull)));
            return BridgeCode::ListFull;
        }
        const std::uint8_t id = freeItemId();
        list.Items.emplace_back(value);
        list.ItemIds.push_back(id);
        found = m_items.emplace(value, id).first;
    }
    m_lastItem = value;
    m_lastId = found->second;
    m_longs.set(m_row, m_lastId);
    return BridgeCode::Good;
}

// Behind the highest as long as there is room, so that the number of an item that was deleted is not given out again:
// records keep the number of an item for life.
std::uint8_t CellImporter::freeItemId() const {
    const std::vector<std::uint8_t>& ids = m_book.CurrDB20.Lists.at(m_slot).ItemIds;
    const int highest = ids.empty() ? 0 : *std::max_element(ids.begin(), ids.end());
    if (highest < static_cast<int>(kListItems))
        return static_cast<std::uint8_t>(highest + 1);
    std::uint8_t id = 1;
    while (std::find(ids.begin(), ids.end(), id) != ids.end())
        ++id;
    return id;
}

BridgeCode CellImporter::storeItemIndex(std::string_view value) {
    const auto number = m_values.number(value);
    const model::ListDef& list = m_book.CurrDB20.Lists.at(m_slot);
    const bool isIndex = number && !number->negative && number->places == 0 && number->magnitude <= list.Items.size();
    if (!isIndex) {
        tell(value, ValueFate::LeftOut, bridgeText(numberOf(BridgeCode::InvalidListIndex)));
        return BridgeCode::InvalidListIndex;
    }
    if (number->magnitude > 0)
        m_longs.set(m_row, list.ItemIds[static_cast<std::size_t>(number->magnitude) - 1]);
    return BridgeCode::Good;
}

BridgeCode CellImporter::storeCheck(std::string_view value) {
    const auto ticked = BridgeValues::truth(value);
    if (!ticked)
        return leaveOut(value, BridgeCode::WrongDataType);
    if (*ticked)
        m_book.grd.pictures(model::columnOfSlot(m_slot))
            .set(m_row, static_cast<std::uint32_t>(model::Picture::CheckOn));
    return BridgeCode::Good;
}

BridgeCode CellImporter::storeDate(std::string_view value) {
    const auto date = m_values.date(value);
    if (!date)
        return leaveOut(value, BridgeCode::WrongDataType);
    m_texts.setWord(m_row, calc::packDate(date->year, date->month, date->day));
    return BridgeCode::Good;
}

BridgeCode CellImporter::storeTime(std::string_view value) {
    const auto time = m_values.time(value);
    if (!time)
        return leaveOut(value, BridgeCode::InvalidTime);
    m_texts.setWord(m_row, calc::packTime(time->hour, time->minute, time->second));
    return BridgeCode::Good;
}

BridgeCode CellImporter::storeKey(std::string_view value) {
    const auto key = longOf(value);
    if (!key)
        return leaveOut(value, BridgeCode::WrongDataType);
    m_book.RecKeys.setById(m_row, *key);
    m_book.CurrDB20.LastKey = std::max(m_book.CurrDB20.LastKey, *key);
    return BridgeCode::Good;
}

BridgeCode CellImporter::storeAuto(std::string_view value) {
    const auto number = longOf(value);
    if (!number)
        return leaveOut(value, BridgeCode::WrongDataType);
    m_texts.setWord(m_row, static_cast<std::uint32_t>(*number));
    std::int32_t& next = m_book.CurrDB20.AutoIncNext[m_slot];
    if (*number >= next)
        next = *number == std::numeric_limits<std::int32_t>::max() ? *number : *number + 1;
    return BridgeCode::Good;
}

BridgeCode CellImporter::passOver(std::string_view value) {
    static_cast<void>(value);
    return BridgeCode::Good;
}

BridgeCode CellImporter::leaveOut(std::string_view value, BridgeCode why) {
    tell(value, ValueFate::LeftOut, bridgeText(numberOf(why)));
    return BridgeCode::Good;
}

void CellImporter::tell(std::string_view value, ValueFate fate, std::string_view reason) {
    m_log.value(m_record, m_name, value, fate, reason);
}

} // namespace tallybook::convert
