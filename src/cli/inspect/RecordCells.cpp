#include "cli/inspect/RecordCells.h"

#include "core/pdb/ByteReader.h"
#include "core/pdb/CellForms.h"
#include "core/pdb/Layout.h"

namespace tallybook::cli {

namespace {

namespace layout = pdb::layout;
using model::FieldType;
using pdb::ByteReader;
using pdb::ResultKind;

// A length byte, the text, a NUL. A length of 0 has the NUL alone.
void readText(ByteReader& in, RecordCell& cell) {
    cell.storedLength = in.getByte();
    if (cell.storedLength > 0)
        cell.text = in.getOpenText();
    else
        in.skipBytes(1);
}

// The same without a NUL behind a length of 0, and with a word for the length in a memo.
void readTail(ByteReader& in, RecordCell& cell) {
    cell.storedLength = in.getByte();
    if (cell.storedLength > 0)
        cell.text = in.getOpenText();
}
void readMemo(ByteReader& in, RecordCell& cell) {
    cell.storedLength = in.getWord();
    if (cell.storedLength > 0)
        cell.text = in.getOpenText();
}

void readJoinKey(ByteReader& in, RecordCell& cell) {
    cell.keyType = in.getByte();
    switch (static_cast<FieldType>(cell.keyType)) {
    case FieldType::Text:
        return readText(in, cell);
    case FieldType::Integer:
        cell.word = in.getWord();
        return;
    case FieldType::Long:
    case FieldType::Key:
    case FieldType::AutoIncremental:
        cell.word = in.getUnsignedLong();
        return;
    default:
        return;
    }
}

void readPicture(ByteReader& in, RecordCell& cell) {
    const std::size_t length = in.getWord();
    in.skipBytes(1);
    const std::size_t start = in.position();
    in.skipBytes(length);
    cell.picture = {start, start + (length > 0 ? length - 1 : 0)};
}

bool readBody(ByteReader& in, RecordCell& cell, ResultKind result) {
    switch (static_cast<FieldType>(cell.type)) {
    case FieldType::Text:
    case FieldType::AddressBookLookup:
        readText(in, cell);
        return true;
    case FieldType::Integer:
        cell.word = in.getWord();
        return true;
    case FieldType::Long:
    case FieldType::Float:
    case FieldType::Date:
    case FieldType::Time:
    case FieldType::AutoIncremental:
        cell.word = in.getUnsignedLong();
        return true;
    case FieldType::Expression:
        if (result != ResultKind::Text && result != ResultKind::Unknown)
            cell.word = in.getUnsignedLong();
        return true;
    case FieldType::List:
    case FieldType::RadioButton:
    case FieldType::Checkbox:
        cell.word = in.getByte();
        return true;
    case FieldType::Memo:
        readMemo(in, cell);
        return true;
    case FieldType::DBJoin:
        readJoinKey(in, cell);
        return true;
    case FieldType::AddressBookJoin:
        cell.word = in.getUnsignedLong();
        readText(in, cell);
        return true;
    case FieldType::Image:
        readPicture(in, cell);
        return true;
    case FieldType::ConditionalExpression:
        cell.colour = in.getByte();
        readText(in, cell);
        return true;
    case FieldType::AdvExpression:
        cell.colour = in.getByte();
        if (result != ResultKind::Unknown)
            cell.word = in.getUnsignedLong();
        readTail(in, cell);
        return true;
    default:
        return false;
    }
}

// Takes the cells up to the end of the record, whichever way it ends.
void walkCells(ByteReader& in, platform::ByteSpan file, const model::DatabaseModel& db, RecordCells& record) {
    for (;;) {
        record.endPosition = in.position();
        if (in.left() == 0) {
            record.end = RecordEnd::RecordOver;
            return;
        }
        RecordCell cell;
        cell.bytes.start = in.position();
        cell.type = in.getByte();
        if (cell.type == 0) {
            record.end = in.left() > 0 ? RecordEnd::EndMark : RecordEnd::RecordOver;
            if (in.left() > 0 && file[in.position()] == 0)
                in.skipBytes(1);
            return;
        }
        cell.slot = in.getByte();
        if (in.ok() && (cell.slot == 0 || cell.slot >= model::MaxFieldSlots)) {
            record.end = RecordEnd::WrongSlot;
            return;
        }
        cell.known = readBody(in, cell, pdb::resultKind(db.Expressions.at(cell.slot).ResultType));
        if (!in.ok()) {
            record.end = RecordEnd::InsideCell;
            return;
        }
        cell.bytes.end = in.position();
        record.cells.push_back(cell);
    }
}

} // namespace

RecordCells walkRecord(platform::ByteSpan file, const ByteRange& range, const model::DatabaseModel& db) {
    RecordCells record;
    ByteReader in(file, range.start, range.end);
    record.number = in.getByte();
    record.category = in.getByte();
    record.key = in.getLong();
    record.hasHeader = in.ok();
    record.endPosition = in.position();
    if (record.hasHeader)
        walkCells(in, file, db, record);
    record.unread = {in.position(), range.end};
    return record;
}

} // namespace tallybook::cli
