// What check says about the data records.
#include "cli/inspect/Findings.h"
#include "cli/inspect/RecordCells.h"
#include "core/calc/values/Ansi.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/forms/PalmBitmap.h"
#include "core/pdb/Layout.h"

#include <algorithm>
#include <array>
#include <bit>
#include <bitset>
#include <unordered_map>
#include <utility>

namespace tallybook::cli {

namespace {

namespace layout = pdb::layout;
using model::DatabaseModel;
using model::FieldType;

constexpr std::size_t kHandheldRecord = 65505; // bytes that a record may have on the handheld
constexpr std::uint8_t kLastColour = 4;

// What the checks of a cell need to know of its field, settled once for all records.
struct FieldKind {
    FieldType type = FieldType::NotUsed;
    int decimals = 0;
    std::bitset<256> ids; // of its list's items
};

class RecordCheck {
public:
    RecordCheck(platform::ByteSpan file, const DatabaseModel& db, const platform::Regional& regional,
                Findings& findings)
        : m_file(file), m_db(db), m_regional(regional), m_findings(findings) {
        for (int slot = 0; slot < model::MaxFieldSlots; ++slot)
            m_kinds[static_cast<std::size_t>(slot)] = kindOf(db, slot);
        m_lastKey = db.LastKey;
    }

    void check(const ListEntry& entry) {
        m_record = entry.record;
        const RecordCells record = walkRecord(m_file, entry.bytes, m_db);
        if (!record.hasHeader)
            return add(entry.bytes.start, "shorter than the header of a data record");
        if (entry.bytes.size() > kHandheldRecord)
            add(entry.bytes.start, "more than " + byteCount(kHandheldRecord) + ": too large for the handheld");
        checkHeader(record, entry.bytes.start);
        int before = 0;
        for (const RecordCell& cell : record.cells) {
            checkCell(cell, before);
            before = cell.slot;
        }
        checkEnd(record);
    }

private:
    static FieldKind kindOf(const DatabaseModel& db, int slot) {
        const model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
        FieldKind kind{field.Type, field.Decimals, {}};
        for (const std::uint8_t id : db.Lists.at(slot).ItemIds)
            kind.ids.set(id);
        return kind;
    }

    void add(std::size_t byte, std::string text) { m_findings.push_back({m_record, byte, std::move(text)}); }

    void checkHeader(const RecordCells& record, std::size_t start) {
        if (record.category != 0 && !m_kinds[0].ids.test(record.category))
            add(start + 1, "the category " + std::to_string(record.category) + " does not exist");
        const auto [known, isNew] = m_keys.try_emplace(record.key, m_record);
        if (!isNew)
            add(start + 2,
                "the key " + std::to_string(record.key) + " is also that of record " + std::to_string(known->second));
        if (record.key > m_lastKey)
            add(start + 2,
                "the key " + std::to_string(record.key) + " is above the last key " + std::to_string(m_lastKey));
    }

    void checkCell(const RecordCell& cell, int slotBefore) {
        const FieldKind& kind = m_kinds[static_cast<std::size_t>(cell.slot)];
        const std::size_t at = cell.bytes.start;
        const std::string where = "cell of field " + std::to_string(cell.slot) + ": ";
        if (!cell.known)
            return add(at, where + "the type " + std::to_string(cell.type) + " has no cells");
        if (cell.slot <= slotBefore)
            add(at, where + "it stands behind the cell of field " + std::to_string(slotBefore));
        if (kind.type == FieldType::NotUsed)
            add(at, where + "the field is not used: a save leaves it out");
        else if (static_cast<int>(kind.type) != cell.type)
            add(at, where + "its type " + std::to_string(cell.type) + " is not the field's type " +
                        std::to_string(static_cast<int>(kind.type)));
        checkText(cell, at, where);
        checkValue(cell, kind, at, where);
    }

    void checkText(const RecordCell& cell, std::size_t at, const std::string& where) {
        if (cell.storedLength < 0)
            return;
        const auto length = static_cast<int>(cell.text.size());
        const bool memo = cell.type == static_cast<std::uint8_t>(FieldType::Memo);
        if (length != cell.storedLength)
            add(at, where + "its text has " + std::to_string(length) + " characters, not " +
                        std::to_string(cell.storedLength));
        if (memo && length > model::kMemoLength)
            add(at, where + "its memo has " + std::to_string(length) + " characters, at most " +
                        std::to_string(model::kMemoLength));
        const bool key = cell.type == static_cast<std::uint8_t>(FieldType::DBJoin);
        if (!memo && length > (key ? static_cast<int>(layout::kMostKeyText) : model::kTextLength))
            add(at, where + "its text has " + std::to_string(length) + " characters: a save cuts it to " +
                        std::to_string(model::kTextLength));
    }

    void checkValue(const RecordCell& cell, const FieldKind& kind, std::size_t at, const std::string& where) {
        switch (static_cast<FieldType>(cell.type)) {
        case FieldType::Float:
            return checkFloat(cell, kind, at, where);
        case FieldType::Image:
            if (const auto read = forms::readPalmBitmap(cell.picture.of(m_file)); !read)
                add(cell.picture.start, where + "the picture cannot be read: " + read.error().text);
            return;
        case FieldType::List:
        case FieldType::RadioButton:
            if (cell.word != 0 && !kind.ids.test(cell.word))
                add(at, where + "the item " + std::to_string(cell.word) + " does not exist");
            return;
        case FieldType::Checkbox:
            if (cell.word > 1)
                add(at, where + "the check state is " + std::to_string(cell.word) + ", not 0 or 1");
            return;
        case FieldType::Date:
            if (!calc::isRealDate({static_cast<int>(cell.word >> 16), static_cast<int>(cell.word >> 8 & 255),
                                   static_cast<int>(cell.word & 255)}))
                add(at, where + "it is no date");
            return;
        case FieldType::Time:
            if (cell.word >> 16 > 23 || (cell.word >> 8 & 255) > 59 || (cell.word & 255) > 59)
                add(at, where + "it is no time of day");
            return;
        case FieldType::ConditionalExpression:
        case FieldType::AdvExpression:
            if (cell.colour > kLastColour)
                add(at, where + "the colour " + std::to_string(cell.colour) + " does not exist");
            return;
        default:
            return;
        }
    }

    // A Float goes through its display: what a save writes is what the digits show.
    void checkFloat(const RecordCell& cell, const FieldKind& kind, std::size_t at, const std::string& where) {
        const auto value = std::bit_cast<float>(cell.word);
        if (value - value != 0)
            return add(at, where + "it is no number");
        if (kind.type != FieldType::Float)
            return;
        if (kind.decimals > 3)
            return add(at, where + "its value is lost when saved, as its field has " + std::to_string(kind.decimals) +
                               " decimals");
        const std::string shown = calc::formatDecimals(value, kind.decimals, m_regional);
        if (calc::toSingle(shown, m_regional) != value)
            add(at, where + "its value " + calc::ansi::toUtf8(calc::decimalText(value, m_regional)) +
                        " is saved as " + calc::ansi::toUtf8(shown));
    }

    void checkEnd(const RecordCells& record) {
        switch (record.end) {
        case RecordEnd::EndMark:
            break;
        case RecordEnd::WrongSlot:
            add(record.endPosition, "a cell of field " + std::to_string(m_file[record.endPosition + 1]) +
                                        ", which does not exist: nothing behind it is read");
            break;
        case RecordEnd::RecordOver:
            add(record.endPosition, "the record has no end mark");
            break;
        case RecordEnd::InsideCell:
            add(record.endPosition, "the record ends inside this cell");
            break;
        }
        if (record.unread.size() > 0 && record.end == RecordEnd::EndMark)
            add(record.unread.start,
                byteCount(record.unread.size()) + " behind the end mark not read: a save leaves them out");
    }

    platform::ByteSpan m_file;
    const DatabaseModel& m_db;
    const platform::Regional& m_regional;
    Findings& m_findings;
    std::array<FieldKind, model::MaxFieldSlots> m_kinds;
    std::int32_t m_lastKey = 0;
    std::unordered_map<std::int32_t, int> m_keys; // first record of each key
    int m_record = 0;
};

} // namespace

void checkDataRecords(platform::ByteSpan file, const FileMap& map, const DatabaseModel& db,
                      const platform::Regional& regional, Findings& findings) {
    RecordCheck check(file, db, regional, findings);
    for (const ListEntry& entry : map.entries)
        if (entry.record >= model::kFixedRecords && entry.bytes.size() > 0 && !entry.passed)
            check.check(entry);
}

} // namespace tallybook::cli
