#include "core/pdb/RecordLoader.h"

#include "core/calc/cells/CellCoders.h"
#include "core/calc/values/Conversion.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/SingleText.h"
#include "core/pdb/Database.h"
#include "core/pdb/Layout.h"
#include "core/pdb/OlderLayout.h"

#include <bit>
#include <charconv>
#include <cmath>

namespace tallybook::pdb {

namespace {

using model::FieldType;

constexpr int kItemIds = 256;

calc::Date dateOf(std::uint32_t word) {
    return {static_cast<int>(word >> 16), static_cast<int>(word >> 8 & 0xFF), static_cast<int>(word & 0xFF)};
}

std::optional<calc::TimeOfDay> timeOf(std::uint32_t word) {
    const calc::TimeOfDay time{static_cast<int>(word >> 16), static_cast<int>(word >> 8 & 0xFF),
                               static_cast<int>(word & 0xFF)};
    if (time.hour > 23 || time.minute > 59 || time.second > 59)
        return std::nullopt;
    return time;
}

// "h:m:s" or "h:m" of a number of seconds, without leading zeros; empty for what no duration can be.
std::string durationText(float seconds, ResultKind kind) {
    constexpr float kMost = 1e9F;
    if (!(seconds >= 0 && seconds <= kMost))
        return {};
    const long total = std::lrint(seconds);
    std::string text = std::to_string(total / 3600) + ':' + std::to_string(total / 60 % 60);
    if (kind == ResultKind::Seconds)
        text += ':' + std::to_string(total % 60);
    return text;
}

// A text behind its length byte; a length of 0 has its NUL too.
std::string_view readCountedText(ByteReader& in) {
    if (in.getByte() > 0)
        return in.getOpenText();
    in.skipBytes(1);
    return {};
}

// Reads a join's key and calls take(key) with a text or a number; a type that no key has has no bytes.
template <class Take> void readKey(ByteReader& in, Take&& take) {
    switch (static_cast<FieldType>(in.getByte())) {
    case FieldType::Text:
        return take(readCountedText(in));
    case FieldType::Integer:
        return take(std::int32_t{in.getInt()});
    case FieldType::Long:
    case FieldType::Key:
    case FieldType::AutoIncremental:
        return take(in.getLong());
    default:
        return take(std::string_view{});
    }
}

// Bytes of a result's value in an Expression's cell.
std::size_t widthOf(ResultKind result) {
    return result == ResultKind::Text || result == ResultKind::Unknown ? 0 : 4;
}

// Bytes of a cell's body, of the types that always have the same.
std::size_t widthOf(FieldType type, ResultKind result) {
    switch (type) {
    case FieldType::List:
    case FieldType::RadioButton:
    case FieldType::Checkbox:
        return 1;
    case FieldType::Integer:
        return 2;
    case FieldType::Long:
    case FieldType::AutoIncremental:
    case FieldType::Float:
    case FieldType::Date:
    case FieldType::Time:
        return 4;
    case FieldType::Expression:
        return widthOf(result);
    default:
        return 0;
    }
}

} // namespace

RecordLoader::RecordLoader(model::Tallybook& doc, const platform::Regional& regional,
                           const std::optional<FieldSet>& onlyFields)
    : m_doc(doc), m_regional(regional) {
    for (int number = 0; number < model::MaxFieldSlots; ++number) {
        Slot& slot = m_slots[static_cast<std::size_t>(number)];
        const model::FieldDef& field = doc.CurrDB20.Fields[static_cast<std::size_t>(number)];
        slot.number = number;
        slot.type = field.Type;
        slot.wanted = !onlyFields || onlyFields->test(static_cast<std::size_t>(number));
        slot.decimals = field.Decimals;
        slot.result = resultKind(doc.CurrDB20.Expressions.at(number).ResultType);
        if (slot.wanted)
            prepare(slot);
    }
    if (onlyFields)
        m_endSlot = model::MaxUserFields + 1;
    doc.RecKeys.reserve(doc.NumDataRecs);
}

// The columns that the slot's cells go to, with their coders.
void RecordLoader::prepare(Slot& slot) {
    slot.texts = &m_doc.grd.column(model::columnOfSlot(slot.number));
    slot.texts->setCoder(calc::coderForField(m_doc.CurrDB20, slot.number, m_regional));
    slot.form = cellForm(*slot.texts);
    slot.longs = &m_doc.CellLongs.slotColumn(slot.number);
    slot.keys = &m_doc.CellVals.slotColumn(slot.number);
    if (slot.type == FieldType::DBJoin)
        slot.keys->setCoder(calc::coderForField(m_doc.CurrDB20, slot.number, m_regional));
    prepareItems(slot);
    const bool isCheck = slot.type == FieldType::Checkbox;
    m_quick.add(slot.number, {.type = slot.type,
                              .form = slot.form,
                              .decimals = slot.decimals,
                              .texts = slot.texts,
                              .words = isCheck ? &m_doc.grd.pictures(model::columnOfSlot(slot.number)) : slot.longs,
                              .items = &slot.items});
}

// Looks up each item once, however many records have it.
void RecordLoader::prepareItems(Slot& slot) {
    slot.items.assign(kItemIds, kNoWord);
    if (slot.texts->coder() == nullptr || slot.texts->coder()->form().words != WordForm::Other)
        return;
    const auto prepareItem = [&](std::uint8_t item) { slot.items[item] = wordOfItem(slot, item); };
    prepareItem(0);
    for (const std::uint8_t item : m_doc.CurrDB20.Lists.at(slot.number).ItemIds)
        prepareItem(item);
}

bool RecordLoader::loadHead(ByteReader& in, int record) {
    if (in.left() < layout::kRecordHeader) {
        in.fail(platform::texts::fewerThan(static_cast<std::int64_t>(in.left()), "bytes", layout::kRecordHeader));
        return false;
    }
    m_row = static_cast<std::uint32_t>(record);
    in.skipBytes(1);
    const std::uint8_t category = in.getByte();
    if (m_slots[0].wanted && !m_quick.takeCategory(category)) {
        m_quick.close(0);
        showItem(m_slots[0], category);
    }
    m_doc.RecKeys.setById(m_row, in.getLong());
    return true;
}

// | 1 | 87 | 1 | category | 4 | key | ... | cells | 2 | 0 |
platform::Status RecordLoader::loadRecord20(ByteReader& in, int record) {
    m_quick.enter(static_cast<std::uint32_t>(record));
    if (!loadHead(in, record))
        return in.error("Load_DB : loadRecord20");
    for (;;) {
        in.skipBytes(m_quick.take(in.rest()));
        if (in.left() < layout::kCellHeader)
            break;
        const std::uint8_t type = in.getByte();
        const std::uint8_t slot = type == 0 ? std::uint8_t{0} : in.getByte();
        if (slot == 0 || slot >= m_endSlot)
            break;
        loadOtherCell(type, slot, in);
    }
    return {};
}

void RecordLoader::loadOtherCell(std::uint8_t type, std::uint8_t slot, ByteReader& in) {
    m_quick.close(slot);
    loadCell(static_cast<FieldType>(type), m_slots[slot], in);
}

// | 1 | 40 | 1 | category | 4 | key | ... | cells | 2 | 0 |
platform::Status RecordLoader::loadRecord(ByteReader& in, int record) {
    constexpr std::string_view kTag = "Load_DB : loadRecord";
    if (!loadHead(in, record))
        return in.error(kTag);
    while (in.left() > layout::kEndMark) {
        const std::uint8_t type = in.getByte();
        const std::uint8_t slot = in.getByte();
        if (!older::hasCells(static_cast<FieldType>(type)))
            in.fail(platform::texts::unknownType(type));
        else if (slot == 0 || slot >= older::kFieldSlots)
            in.fail(platform::texts::slotBeyond(slot, older::kFieldSlots - 1));
        else
            loadCell(static_cast<FieldType>(type), m_slots[slot], in);
    }
    if (in.ok() && (in.left() < layout::kEndMark || in.getWord() != 0))
        in.fail(platform::texts::kNoEndMark);
    return in.status(kTag);
}

// What a cell of another type leaves in a column of pictures: a save would take it for a picture, and find none.
void RecordLoader::emptyCell(Slot& slot) {
    showText(slot, {});
    setLong(slot, 0);
}

void RecordLoader::finish() {
    m_quick.finish();
    for (Slot& slot : m_slots) {
        if (!slot.wanted)
            continue;
        if (slot.type == FieldType::Key)
            fillKeys(slot);
        else if (slot.type == FieldType::Checkbox)
            fillChecks(slot);
    }
}

void RecordLoader::fillKeys(Slot& slot) {
    for (int record = 0; record < m_doc.NumDataRecs; ++record) {
        m_row = static_cast<std::uint32_t>(record);
        setLong(slot, m_doc.RecKeys[record]);
        showWhole(slot, m_doc.RecKeys[record]);
    }
}

void RecordLoader::fillChecks(const Slot& slot) {
    model::WordColumn& pictures = m_doc.grd.pictures(model::columnOfSlot(slot.number));
    for (int record = 0; record < m_doc.NumDataRecs; ++record) {
        const auto row = static_cast<std::uint32_t>(record);
        if (!pictures.has(row))
            pictures.set(row, static_cast<std::uint32_t>(model::Picture::CheckOff));
    }
}

void RecordLoader::loadCell(FieldType type, Slot& slot, ByteReader& in) {
    if (!slot.wanted)
        return skipCell(type, slot, in);
    readCell(type, slot, in);
    if (slot.type == FieldType::Image && type != FieldType::Image)
        emptyCell(slot);
}

// A cell of the types that are not here has no body: what stands behind it is read as the next cell.
void RecordLoader::readCell(FieldType type, Slot& slot, ByteReader& in) {
    switch (type) {
    case FieldType::Text:
    case FieldType::AddressBookLookup:
        return loadText(slot, in);
    case FieldType::Integer:
        return loadInteger(slot, in);
    case FieldType::Long:
    case FieldType::AutoIncremental:
        return loadLong(type, slot, in);
    case FieldType::Float:
        return loadNumber(slot, slot.decimals, in);
    case FieldType::List:
    case FieldType::RadioButton:
        return loadItem(slot, in);
    case FieldType::Checkbox:
        return loadCheck(slot, in);
    case FieldType::Date:
        return loadDate(slot, in);
    case FieldType::Time:
        return loadTime(slot, in);
    case FieldType::Expression:
        return loadResult(slot, in);
    case FieldType::Memo:
        return loadMemo(slot, in);
    case FieldType::DBJoin:
        return loadJoin(slot, in);
    case FieldType::AddressBookJoin:
        return loadAddress(slot, in);
    case FieldType::Image:
        return loadPicture(slot, in);
    case FieldType::ConditionalExpression:
        return loadConditional(slot, in);
    case FieldType::AdvExpression:
        return loadAdvResult(slot, in);
    default:
        return;
    }
}

// Consumes what readCell would.
void RecordLoader::skipCell(FieldType type, const Slot& slot, ByteReader& in) {
    switch (type) {
    case FieldType::Text:
    case FieldType::AddressBookLookup:
        readCountedText(in);
        break;
    case FieldType::Memo:
        if (in.getWord() > 0)
            in.getOpenText();
        break;
    case FieldType::DBJoin:
        readKey(in, [](const auto&) {});
        break;
    case FieldType::AddressBookJoin:
        in.skipBytes(4);
        readCountedText(in);
        break;
    case FieldType::Image:
        in.skipBytes(in.getWord() + std::size_t{1});
        break;
    case FieldType::ConditionalExpression:
        in.skipBytes(1);
        readCountedText(in);
        break;
    case FieldType::AdvExpression:
        in.skipBytes(1 + (slot.result == ResultKind::Text ? 4 : widthOf(slot.result)));
        if (in.getByte() > 0)
            in.getOpenText();
        break;
    default:
        in.skipBytes(widthOf(type, slot.result));
        break;
    }
}

// | 1 | length | n+1 | text |
void RecordLoader::loadText(Slot& slot, ByteReader& in) {
    const std::string_view text = readCountedText(in);
    if (in.ok())
        showText(slot, text);
}

// | 2 | length | n+1 | text |, and nothing behind a length of 0
void RecordLoader::loadMemo(Slot& slot, ByteReader& in) {
    if (in.getWord() > 0)
        showText(slot, in.getOpenText());
}

void RecordLoader::loadInteger(Slot& slot, ByteReader& in) {
    const std::int16_t value = in.getInt();
    if (in.ok())
        showWhole(slot, value);
}

// The 4 bytes of a field that has another type by now are skipped.
void RecordLoader::loadLong(FieldType type, Slot& slot, ByteReader& in) {
    const std::int32_t value = in.getLong();
    if (in.ok() && type == slot.type)
        showWhole(slot, value);
}

void RecordLoader::loadNumber(Slot& slot, int decimals, ByteReader& in) {
    const float value = in.getFloat();
    if (!in.ok() || decimals > kMostDecimals || !std::isfinite(value))
        return;
    if (slot.form.words == WordForm::Decimal && slot.form.decimals == decimals) {
        slot.texts->setWord(m_row, std::bit_cast<std::uint32_t>(value));
        return;
    }
    m_scratch.clear();
    calc::appendSingle(value, decimals, m_regional.decimal, m_scratch);
    showText(slot, m_scratch);
}

void RecordLoader::loadItem(Slot& slot, ByteReader& in) {
    const std::uint8_t item = in.getByte();
    if (in.ok())
        showItem(slot, item);
}

void RecordLoader::loadCheck(Slot& slot, ByteReader& in) {
    const model::Picture picture = in.getByte() == 1 ? model::Picture::CheckOn : model::Picture::CheckOff;
    if (in.ok())
        m_doc.grd.pictures(model::columnOfSlot(slot.number)).set(m_row, static_cast<std::uint32_t>(picture));
}

// A date that no calendar has leaves the cell empty.
void RecordLoader::loadDate(Slot& slot, ByteReader& in) {
    const std::uint32_t word = in.getUnsignedLong();
    const calc::Date date = dateOf(word);
    if (!in.ok() || !calc::isRealDate(date))
        return;
    if (slot.form.words == WordForm::Date)
        slot.texts->setWord(m_row, word);
    else
        showText(slot, calc::shortDate(date, m_regional));
}

// A time that no clock has is shown as the conversion of times shows what it cannot read.
void RecordLoader::loadTime(Slot& slot, ByteReader& in) {
    const std::uint32_t word = in.getUnsignedLong();
    if (!in.ok())
        return;
    const auto time = timeOf(word);
    if (!time)
        showText(slot, "0");
    else if (slot.form.words == WordForm::Time)
        slot.texts->setWord(m_row, word);
    else
        showText(slot, calc::longTime(*time, m_regional));
}

void RecordLoader::loadDuration(Slot& slot, ByteReader& in) {
    const float seconds = in.getFloat();
    if (in.ok())
        showText(slot, durationText(seconds, slot.result));
}

// | 1 | type of the key | then the key by that type
void RecordLoader::loadJoin(Slot& slot, ByteReader& in) {
    readKey(in, [&](const auto& key) {
        if (in.ok())
            showKey(slot, key);
    });
}

// | 4 | the handheld's id | then a text as in loadText
void RecordLoader::loadAddress(Slot& slot, ByteReader& in) {
    const std::int32_t id = in.getLong();
    if (!in.ok())
        return;
    setLong(slot, id);
    loadText(slot, in);
}

// | 2 | L | 1 | 0 | L - 1 | picture | 1 | 0 |; the place kept is that of the cell's type byte, counted from 1
void RecordLoader::loadPicture(Slot& slot, ByteReader& in) {
    const std::size_t position = in.position() - layout::kCellHeader + 1;
    const std::size_t length = in.getWord();
    in.skipBytes(length + 1);
    if (!in.ok())
        return;
    setLong(slot, static_cast<std::int32_t>(position));
    showText(slot, kPictureMark);
}

// | 1 | colour | then a text as in loadText
void RecordLoader::loadConditional(Slot& slot, ByteReader& in) {
    setColour(slot, in.getByte());
    loadText(slot, in);
}

// The value by the field's result type. A text stands behind it, in advanced results alone.
void RecordLoader::loadResult(Slot& slot, ByteReader& in) {
    switch (slot.result) {
    case ResultKind::Number:
        return loadNumber(slot, slot.decimals, in);
    case ResultKind::Whole:
        return loadNumber(slot, 0, in);
    case ResultKind::Date:
        return loadDate(slot, in);
    case ResultKind::Time:
        return loadTime(slot, in);
    case ResultKind::Seconds:
    case ResultKind::Minutes:
        return loadDuration(slot, in);
    case ResultKind::Text:
    case ResultKind::Unknown:
        return;
    }
}

// | 1 | colour | ... | value, 4 bytes without meaning for a text | 1 | length | n+1 | text, none for a length of 0 |
void RecordLoader::loadAdvResult(Slot& slot, ByteReader& in) {
    setColour(slot, in.getByte());
    if (slot.result == ResultKind::Text)
        in.skipBytes(4);
    else
        loadResult(slot, in);
    if (in.getByte() > 0)
        showText(slot, in.getOpenText());
}

void RecordLoader::showItem(Slot& slot, std::uint8_t item) {
    setLong(slot, item);
    const std::int64_t word = slot.items[item];
    if (word >= 0)
        slot.texts->setWord(m_row, static_cast<std::uint32_t>(word));
    else
        showText(slot, calc::getListText(m_doc.CurrDB20, slot.number, item));
}

void RecordLoader::showWhole(Slot& slot, std::int32_t value) {
    if (slot.form.words == WordForm::Whole)
        slot.texts->setWord(m_row, static_cast<std::uint32_t>(value));
    else
        showText(slot, decimalText(value));
}

void RecordLoader::showKey(Slot& slot, std::int32_t key) {
    if (cellForm(*slot.keys).words == WordForm::Whole)
        slot.keys->setWord(m_row, static_cast<std::uint32_t>(key));
    else
        slot.keys->setText(m_row, decimalText(key));
    showWhole(slot, key);
}

void RecordLoader::showKey(Slot& slot, std::string_view key) {
    slot.keys->setText(m_row, key);
    showText(slot, key);
}

// An index above the colours leaves the cell black, which is no colour to the grid.
void RecordLoader::setColour(Slot& slot, std::uint8_t index) {
    if (index > 0 && index < layout::kResultColours.size())
        m_doc.grd.colours(model::columnOfSlot(slot.number)).set(m_row, layout::kResultColours[index]);
}

std::int64_t RecordLoader::wordOfItem(Slot& slot, std::uint8_t item) const {
    const std::string_view text = calc::getListText(m_doc.CurrDB20, slot.number, item);
    const auto word = text.empty() ? std::nullopt : slot.texts->coder()->encode(text);
    return word ? std::int64_t{*word} : kNoWord;
}

std::string_view RecordLoader::decimalText(std::int32_t value) {
    const auto end = std::to_chars(m_digits.data(), m_digits.data() + m_digits.size(), value).ptr;
    return {m_digits.data(), static_cast<std::size_t>(end - m_digits.data())};
}

} // namespace tallybook::pdb
