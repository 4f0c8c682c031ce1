#include "core/pdb/RecordBuilder.h"

#include "core/calc/cells/CellCoders.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/SingleText.h"
#include "core/pdb/Layout.h"
#include "core/platform/AppFolders.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace tallybook::pdb {

namespace {

using model::FieldType;
using platform::Status;

bool hasCells(FieldType type) {
    switch (type) {
    case FieldType::NotUsed:
    case FieldType::Key:
    case FieldType::DBLookup:
    case FieldType::OneToMany:
    case FieldType::Plugin:
        return false;
    default:
        return static_cast<int>(type) < model::kFieldTypes;
    }
}

bool isKeyType(std::uint8_t type) {
    const auto fieldType = static_cast<FieldType>(type);
    return fieldType == FieldType::Text || fieldType == FieldType::Integer || fieldType == FieldType::Long ||
           fieldType == FieldType::Key || fieldType == FieldType::AutoIncremental;
}

// True when the text that shows a single with these digits reads back as the same single. Enough of a test, not an
// exact one: it holds when the single is the nearest to some whole number of units of the last place.
bool readsBack(float value, int decimals) {
    constexpr double kMostUnits = 1e9;
    const double power = calc::kPowersOfTen[decimals];
    const double units = value * power;
    if (!(std::abs(units) < kMostUnits))
        return false;
    const auto whole = static_cast<std::int64_t>(units + (units < 0 ? -0.5 : 0.5));
    return static_cast<float>(static_cast<double>(whole) / power) == value;
}

std::optional<std::size_t> colourIndex(std::uint32_t colour) {
    const auto& colours = layout::kResultColours;
    const auto found = std::find(colours.begin(), colours.end(), colour);
    if (found == colours.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - colours.begin());
}

std::uint32_t bitsOf(std::int32_t value) {
    return static_cast<std::uint32_t>(value);
}

} // namespace

RecordBuilder::RecordBuilder(const model::Document& doc, platform::Services& services, OutRecords& out)
    : m_doc(doc), m_services(services), m_out(out), m_thisYear(services.clock.now().year), m_categories(slotOf(0)),
      m_copy(services.files, doc.TempCopyPath) {
    m_categories.type = FieldType::List; // whatever type a file gives them
    const int fields = model::highestField(doc.CurrDB20);
    for (int number = 1; number < fields; ++number)
        if (hasCells(doc.CurrDB20.Fields[static_cast<std::size_t>(number)].Type))
            m_slots.push_back(slotOf(number));
}

RecordBuilder::Slot RecordBuilder::slotOf(int number) const {
    const int column = model::columnOfSlot(number);
    Slot slot;
    slot.number = number;
    slot.type = m_doc.CurrDB20.Fields[static_cast<std::size_t>(number)].Type;
    slot.keyType = m_doc.CurrDB20.Externals.at(number).KeyType;
    slot.result = resultKind(m_doc.CurrDB20.Expressions.at(number).ResultType);
    slot.texts = &m_doc.grd.column(column);
    slot.form = cellForm(*slot.texts);
    slot.longs = &m_doc.CellLongs.slotColumn(number);
    slot.pictures = &m_doc.grd.pictures(column);
    slot.colours = &m_doc.grd.colours(column);
    slot.keys = &m_doc.CellVals.slotColumn(number);
    return slot;
}

// | 1 | 87 | 1 | category | 4 | key | ... | cells | 2 | 0 |
Status RecordBuilder::buildRecord20(int record) {
    enterRow(record);
    m_bytes = &m_out.begin();
    m_bytes->outByte(layout::kFirstData);
    m_bytes->outByte(category());
    m_bytes->outLong(bitsOf(m_doc.RecKeys[record]));
    for (Slot& slot : m_slots) {
        const StoredCell cell = cellOf(slot);
        if (cell.kind == StoredCell::Kind::Empty && slot.type != FieldType::Checkbox)
            continue;
        if (Status built = buildCell(slot, cell); !built.ok())
            return built;
    }
    m_bytes->zeros(layout::kEndMark);
    return {};
}

// Rows mostly follow each other as they are stored, so that their cells are met one behind the other in their blocks.
void RecordBuilder::enterRow(int record) {
    m_record = record;
    m_row = m_doc.grd.order().id(record);
    const std::uint32_t block = m_row / model::kBlockRows;
    const std::uint32_t place = m_row % model::kBlockRows;
    const bool isOther = m_block != block;
    if (isOther) {
        m_block = block;
        enterBlock(m_categories, block);
        for (Slot& slot : m_slots)
            enterBlock(slot, block);
    }
    if (isOther ? place != 0 : place != m_place + 1) {
        m_categories.next = model::countBitsBefore(m_categories.block.filled, place);
        for (Slot& slot : m_slots)
            slot.next = model::countBitsBefore(slot.block.filled, place);
    }
    m_place = place;
}

// By what decides whether a cell of the type is written at all.
void RecordBuilder::enterBlock(Slot& slot, std::uint32_t block) const {
    slot.next = 0;
    switch (slot.type) {
    case FieldType::Checkbox:
        slot.block = slot.pictures->storedBlock(block);
        break;
    case FieldType::List:
    case FieldType::RadioButton:
    case FieldType::AddressBookJoin:
        slot.block = slot.longs->storedBlock(block);
        break;
    case FieldType::DBJoin:
        slot.block = slot.keys->storedBlock(block);
        break;
    default:
        slot.block = slot.texts->storedBlock(block);
        slot.noNul =
            slot.texts->coder() == nullptr && slot.texts->plainTexts(block).find('\0') == std::string_view::npos;
        break;
    }
}

// The current row's cell in the slot's block; each row once, in the order of the block.
StoredCell RecordBuilder::cellOf(Slot& slot) const {
    if (!model::bitOf(slot.block.filled, m_place))
        return {};
    const std::uint32_t word = slot.block.words[slot.next++];
    if (model::bitOf(slot.block.plain, m_place))
        return {StoredCell::Kind::Text, 0, slot.block.texts->at(word)};
    return {StoredCell::Kind::Word, word, {}};
}

std::string_view RecordBuilder::textOf(const Slot& slot, const StoredCell& cell) {
    return cell.kind == StoredCell::Kind::Word ? slot.texts->coder()->text(cell.word, m_scratch) : cell.text;
}

std::uint8_t RecordBuilder::category() {
    return static_cast<std::uint8_t>(cellOf(m_categories).word);
}

Status RecordBuilder::buildCell(const Slot& slot, const StoredCell& cell) {
    switch (slot.type) {
    case FieldType::Text:
    case FieldType::AddressBookLookup:
        buildText(slot, cell);
        break;
    case FieldType::Integer:
        buildInteger(slot, cell);
        break;
    case FieldType::Long:
    case FieldType::AutoIncremental:
        buildLong(slot, cell);
        break;
    case FieldType::Float:
        buildFloat(slot, cell);
        break;
    case FieldType::List:
    case FieldType::RadioButton:
        buildItem(slot, cell);
        break;
    case FieldType::Checkbox:
        buildCheck(slot, cell);
        break;
    case FieldType::Date:
        buildDate(slot, cell);
        break;
    case FieldType::Time:
        buildTime(slot, cell);
        break;
    case FieldType::Expression:
        buildResult(slot, cell);
        break;
    case FieldType::Memo:
        buildMemo(slot, cell);
        break;
    case FieldType::DBJoin:
        buildJoin(slot, cell);
        break;
    case FieldType::AddressBookJoin:
        buildAddress(slot, cell);
        break;
    case FieldType::Image:
        return buildPicture(slot, cell);
    case FieldType::ConditionalExpression:
        buildConditional(slot, cell);
        break;
    case FieldType::AdvExpression:
        buildAdvResult(slot, cell);
        break;
    default:
        break;
    }
    return {};
}

// What of a cell's text the file can hold.
std::string_view RecordBuilder::textFor(const Slot& slot, const StoredCell& cell, std::size_t length) {
    const std::string_view text = textOf(slot, cell);
    return slot.noNul ? text.substr(0, length) : storedPart(text, length);
}

// | 1 | length | n+1 | text |
void RecordBuilder::buildText(const Slot& slot, const StoredCell& cell) {
    const std::string_view text = textFor(slot, cell, model::kTextLength);
    if (!text.empty())
        m_bytes->outCountedText(cellHeader(slot), text);
}

// | 2 | length | n+1 | text |
void RecordBuilder::buildMemo(const Slot& slot, const StoredCell& cell) {
    const std::string_view text = textFor(slot, cell, layout::kMostMemo);
    if (text.empty())
        return;
    outCell(slot);
    m_bytes->outWord(static_cast<std::uint16_t>(text.size()));
    m_bytes->outText(text);
    m_bytes->outByte(0);
}

void RecordBuilder::buildInteger(const Slot& slot, const StoredCell& cell) {
    const std::int32_t value = wholeOf(slot, cell).value_or(0);
    if (value == 0 || value != static_cast<std::int16_t>(value))
        return;
    outCell(slot);
    m_bytes->outWord(static_cast<std::uint16_t>(value));
}

void RecordBuilder::buildLong(const Slot& slot, const StoredCell& cell) {
    if (const std::int32_t value = wholeOf(slot, cell).value_or(0); value != 0)
        outCell(slot, bitsOf(value));
}

void RecordBuilder::buildFloat(const Slot& slot, const StoredCell& cell) {
    if (const float value = singleOf(slot, cell); value != 0)
        outCell(slot, std::bit_cast<std::uint32_t>(value));
}

void RecordBuilder::buildItem(const Slot& slot, const StoredCell& cell) {
    if (cell.word == 0)
        return;
    outCell(slot);
    m_bytes->outByte(static_cast<std::uint8_t>(cell.word));
}

void RecordBuilder::buildCheck(const Slot& slot, const StoredCell& cell) {
    outCell(slot);
    m_bytes->outByte(cell.word == static_cast<std::uint32_t>(model::Picture::CheckOn) ? 1 : 0);
}

void RecordBuilder::buildDate(const Slot& slot, const StoredCell& cell) {
    const auto date = dateOf(slot, cell);
    if (date && !isZeroText(slot, cell))
        outCell(slot, *date);
}

// "0" is no date, though it converts to the first day of the calendar of serials.
bool RecordBuilder::isZeroText(const Slot& slot, const StoredCell& cell) {
    return !(cell.kind == StoredCell::Kind::Word && slot.form.words == WordForm::Date) && textOf(slot, cell) == "0";
}

void RecordBuilder::buildTime(const Slot& slot, const StoredCell& cell) {
    if (const auto time = timeOf(slot, cell))
        outCell(slot, *time);
}

// | 1 | type of the key | then the key by that type
void RecordBuilder::buildJoin(const Slot& slot, const StoredCell& cell) {
    const std::string_view key =
        cell.kind == StoredCell::Kind::Word ? slot.keys->coder()->text(cell.word, m_scratch) : cell.text;
    if (key.empty() || !isKeyType(slot.keyType))
        return;
    outCell(slot);
    m_bytes->outByte(slot.keyType);
    switch (static_cast<FieldType>(slot.keyType)) {
    case FieldType::Text:
        m_bytes->outCountedText(storedPart(key, key.size() > layout::kMostKeyText ? model::kTextLength : key.size()));
        break;
    case FieldType::Integer:
        m_bytes->outWord(static_cast<std::uint16_t>(calc::toInt16(key, m_services.regional).value_or(0)));
        break;
    default:
        m_bytes->outLong(bitsOf(calc::toInt32(key, m_services.regional).value_or(0)));
        break;
    }
}

// | 4 | the handheld's id | then a text as in buildText, but nothing for an empty one, as the handheld has it
void RecordBuilder::buildAddress(const Slot& slot, const StoredCell& cell) {
    const auto id = static_cast<std::int32_t>(cell.word);
    if (id < 1)
        return;
    outCell(slot, bitsOf(id));
    const std::string_view text = storedPart(slot.texts->text(m_row, m_scratch), model::kTextLength);
    if (!text.empty())
        m_bytes->outCountedText(text);
}

// | 1 | colour | then a text as in buildText. A colour outside the five has no byte; nothing sets one.
void RecordBuilder::buildConditional(const Slot& slot, const StoredCell& cell) {
    const std::string_view text = storedPart(textOf(slot, cell), model::kTextLength);
    if (text.empty())
        return;
    outCell(slot);
    if (const auto index = colourIndex(slot.colours->get(m_row).value_or(0)))
        m_bytes->outByte(static_cast<std::uint8_t>(*index));
    m_bytes->outCountedText(text);
}

// The value by the field's result type; no cell for a number of 0.
void RecordBuilder::buildResult(const Slot& slot, const StoredCell& cell) {
    const auto value = valueOf(slot, cell);
    const bool isNumber = slot.result != ResultKind::Date && slot.result != ResultKind::Time;
    const bool isText = slot.result == ResultKind::Text; // of advanced results alone
    if (value && !isText && !(isNumber && std::bit_cast<float>(*value) == 0))
        outCell(slot, *value);
}

// | 1 | colour | 4 | value | 1 | length of a text | n+1 | the text, none for a length of 0 |
void RecordBuilder::buildAdvResult(const Slot& slot, const StoredCell& cell) {
    const auto value = valueOf(slot, cell);
    if (!value)
        return;
    outCell(slot);
    m_bytes->outByte(static_cast<std::uint8_t>(colourIndex(slot.colours->get(m_row).value_or(0)).value_or(0)));
    m_bytes->outLong(*value);
    const std::string_view text =
        slot.result == ResultKind::Text ? storedPart(textOf(slot, cell), model::kTextLength) : std::string_view{};
    if (text.empty())
        m_bytes->outByte(0);
    else
        m_bytes->outCountedText(text);
}

// | 2 | L | 1 | 0 | L - 1 | picture | 1 | 0 |
Status RecordBuilder::buildPicture(const Slot& slot, const StoredCell& cell) {
    const std::string_view text = textOf(slot, cell);
    if (text.empty())
        return {};
    const auto number = static_cast<std::int32_t>(slot.longs->get(m_row).value_or(0));
    const auto position = static_cast<std::int32_t>(m_out.position() + 1);
    if (text == kPictureMark) {
        const auto body = m_copy.cellBody(number);
        if (!body.ok())
            return body.error();
        outCell(slot);
        m_bytes->outBytes(body.value());
    } else if (Status built = buildNewPicture(slot, number); !built.ok()) {
        return built;
    }
    m_images.push_back({m_record, slot.number, position});
    return {};
}

Status RecordBuilder::buildNewPicture(const Slot& slot, std::int32_t number) {
    const std::string name = std::string(platform::kTempFolder) + '\\' + pictureFileName(number);
    const std::filesystem::path path = platform::applicationPath(m_services, name);
    const auto picture = readNewPicture(m_services.files, path);
    if (!picture.ok())
        return picture.error();
    outCell(slot);
    m_bytes->outWord(static_cast<std::uint16_t>(picture.value().size() + 1));
    m_bytes->outByte(0);
    m_bytes->outBytes(picture.value());
    m_bytes->outByte(0);
    m_usedPictures.push_back(path);
    return {};
}

void RecordBuilder::outCell(const Slot& slot, std::uint32_t value) {
    const auto header = cellHeader(slot);
    m_bytes->outBytes(std::array{header[0], header[1], static_cast<std::uint8_t>(value >> 24),
                                 static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
                                 static_cast<std::uint8_t>(value)});
}

std::array<std::uint8_t, 2> RecordBuilder::cellHeader(const Slot& slot) {
    return {static_cast<std::uint8_t>(slot.type), static_cast<std::uint8_t>(slot.number)};
}

std::optional<std::int32_t> RecordBuilder::wholeOf(const Slot& slot, const StoredCell& cell) {
    if (cell.kind == StoredCell::Kind::Empty)
        return std::nullopt;
    if (cell.kind == StoredCell::Kind::Word && slot.form.words == WordForm::Whole)
        return static_cast<std::int32_t>(cell.word);
    return calc::toInt32(textOf(slot, cell), m_services.regional);
}

float RecordBuilder::singleOf(const Slot& slot, const StoredCell& cell) {
    if (cell.kind == StoredCell::Kind::Empty)
        return 0;
    const auto value = std::bit_cast<float>(cell.word);
    const bool isValue = cell.kind == StoredCell::Kind::Word && slot.form.words == WordForm::Decimal;
    if (isValue && readsBack(value, slot.form.decimals))
        return value == 0 ? 0 : value; // a minus zero is shown without its sign
    return calc::toSingle(textOf(slot, cell), m_services.regional).value_or(0);
}

std::optional<std::uint32_t> RecordBuilder::dateOf(const Slot& slot, const StoredCell& cell) {
    if (cell.kind == StoredCell::Kind::Empty)
        return std::nullopt;
    if (cell.kind == StoredCell::Kind::Word && slot.form.words == WordForm::Date)
        return cell.word;
    const auto serial = calc::toDate(textOf(slot, cell), m_services.regional, m_thisYear);
    if (!serial)
        return std::nullopt;
    const calc::Date date = calc::dateOf(*serial);
    return calc::packDate(date.year, date.month, date.day);
}

std::optional<std::uint32_t> RecordBuilder::timeOf(const Slot& slot, const StoredCell& cell) {
    if (cell.kind == StoredCell::Kind::Empty)
        return std::nullopt;
    if (cell.kind == StoredCell::Kind::Word && slot.form.words == WordForm::Time)
        return cell.word;
    const auto serial = calc::toDate(textOf(slot, cell), m_services.regional, m_thisYear);
    if (!serial)
        return std::nullopt;
    const calc::TimeOfDay time = calc::timeOf(*serial);
    return calc::packTime(time.hour, time.minute, time.second);
}

// A duration is a text of hours, minutes and, for one of the two kinds, seconds; a time of day must be able to be so.
float RecordBuilder::secondsOf(const Slot& slot, const StoredCell& cell) {
    const auto serial = calc::readDate(textOf(slot, cell), m_services.regional, m_thisYear);
    if (!serial)
        return 0;
    const calc::TimeOfDay time = calc::timeOf(*serial);
    const int minutes = time.hour * 60 + time.minute;
    const int seconds = slot.result == ResultKind::Seconds ? time.second : 0;
    return static_cast<float>(minutes * 60 + seconds);
}

std::optional<std::uint32_t> RecordBuilder::valueOf(const Slot& slot, const StoredCell& cell) {
    if (cell.kind == StoredCell::Kind::Empty)
        return std::nullopt;
    switch (slot.result) {
    case ResultKind::Number:
    case ResultKind::Whole:
        return std::bit_cast<std::uint32_t>(singleOf(slot, cell));
    case ResultKind::Date:
        return dateOf(slot, cell);
    case ResultKind::Time:
        return timeOf(slot, cell);
    case ResultKind::Seconds:
    case ResultKind::Minutes:
        return std::bit_cast<std::uint32_t>(secondsOf(slot, cell));
    case ResultKind::Text:
        return 0;
    case ResultKind::Unknown:
        return std::nullopt;
    }
    return std::nullopt;
}

std::size_t expectedSize(const model::Document& doc) {
    constexpr std::size_t kFixedGuess = 64 * 1024; // what the fixed records seldom pass
    constexpr std::size_t kRecord = layout::kEntrySize + layout::kRecordHeader + layout::kEndMark;
    constexpr std::size_t kCell = 8; // rather more than most kinds take
    const auto records = static_cast<std::size_t>(doc.NumDataRecs);
    std::size_t size = kFixedGuess + records * kRecord;
    for (int number = 1; number < model::highestField(doc.CurrDB20); ++number) {
        const model::TextColumn& column = doc.grd.column(model::columnOfSlot(number));
        const bool isCheck = doc.CurrDB20.Fields[static_cast<std::size_t>(number)].Type == FieldType::Checkbox;
        size += (isCheck ? records : column.cells()) * kCell + column.textBytes();
    }
    return size;
}

} // namespace tallybook::pdb
