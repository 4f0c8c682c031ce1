#include "core/pdb/Properties.h"

#include "core/calc/values/Numbers.h"
#include "core/pdb/AttributeBlocks.h"
#include "core/pdb/Layout.h"
#include "core/pdb/Screens.h"

#include <algorithm>

namespace tallybook::pdb {

namespace {

using model::DatabaseModel;
using model::FieldDef;
using model::FieldType;

enum class BlockKind : std::uint8_t {
    Empty,
    List,
    Expression,
    AdvExpression,
    External,
    OneToMany,
    Plugin,
    ConditionalExp,
    NextValue,
};

// What the attribute record of a slot holds. Codes that are no type have the empty block.
BlockKind blockOf(const DatabaseModel& db, int slot) {
    const FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    if (slot == 0)
        return BlockKind::List; // the categories
    switch (field.Type) {
    case FieldType::List:
    case FieldType::RadioButton:
        return BlockKind::List;
    case FieldType::Expression:
        return BlockKind::Expression;
    case FieldType::AdvExpression:
        return BlockKind::AdvExpression;
    case FieldType::DBJoin:
    case FieldType::DBLookup:
    case FieldType::AddressBookJoin:
    case FieldType::AddressBookLookup:
        return BlockKind::External;
    case FieldType::OneToMany:
        return BlockKind::OneToMany;
    case FieldType::Plugin:
        return BlockKind::Plugin;
    case FieldType::ConditionalExpression:
        return BlockKind::ConditionalExp;
    case FieldType::AutoIncremental:
        return BlockKind::NextValue;
    case FieldType::Text:
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Float:
    case FieldType::Memo:
        return field.AutoWriter != 0 ? BlockKind::List : BlockKind::Empty;
    default:
        return BlockKind::Empty;
    }
}

// Moves a value that was read to its place, or hands its error on.
template <class T> platform::Status keep(platform::Result<T> read, T& place) {
    if (!read.ok())
        return read.error();
    place = std::move(read).value();
    return {};
}

platform::Status readOlderNextValue(ByteReader& in, DatabaseModel& db, int slot) {
    std::int32_t next = 1;
    if (in.getByte() == 1) {
        std::string& text = db.Fields[static_cast<std::size_t>(slot)].Default;
        text = in.getText();
        next = calc::toInt32(text, calc::Regional{}).value_or(1);
    }
    db.AutoIncNext[slot] = next;
    return in.status("Load_DBProps : getDBProps20");
}

platform::Status readNextValue(ByteReader& in, DatabaseModel& db, int slot, NextValueLayout layout) {
    if (layout == NextValueLayout::Older)
        return readOlderNextValue(in, db, slot);
    db.AutoIncNext[slot] = in.getLong();
    return in.status("Load_DBProps : readPDBFile20");
}

void buildHeaderValues(const DatabaseModel& db, ByteWriter& out) {
    out.outByte(db.HdrByte1);
    out.outByte(db.HdrByte2);
    out.outByte(db.HdrByte3);
    out.outWord(db.HdrWord1);
    out.outByte(db.HdrByte4);
    out.outByte(db.FormatVersion);
    out.outByte(db.HdrByte5);
    out.outByte(db.NoBackup);
    out.outByte(db.ReadOnly);
    out.outByte(db.ShowStartup);
    out.outWord(db.DefaultFilterMask);
    out.outByte(db.SearchFlags);
    out.outBytes(db.OpaqueHeader9);
    for (const model::PasswordKind kind : layout::kPasswordOrder)
        out.outArea(db.Passwords[static_cast<std::size_t>(kind)], model::kPasswordLength);
    out.outBytes(db.OpaqueHeader40);
    out.outZeroText(db.StartupText);
}

void buildField(const FieldDef& field, int slot, ByteWriter& out) {
    const FieldType written = slot == 0 ? FieldType::NotUsed : field.Type;
    out.outByte(static_cast<std::uint8_t>(slot));
    out.outByte(static_cast<std::uint8_t>(written));
    out.outByte(field.HandheldByte);
    out.outByte(field.Decimals);
    out.outByte(field.AutoWriter);
    out.outByte(field.IncDec);
    out.outByte(field.SearchField);
    out.outByte(field.FieldFlags);
    out.outBytes(field.Reserved);
    out.outZeroText(field.Name);
    out.outZeroText(field.Default);
}

void buildFieldTable(const DatabaseModel& db, ByteWriter& out) {
    out.outByte(db.NumFields);
    for (int slot = 0; slot < db.NumFields; ++slot)
        buildField(db.Fields[static_cast<std::size_t>(slot)], slot, out);
}

void recompute(DatabaseModel& db) {
    db.FormatVersion = layout::kFormatVersion;
    db.NumFields = static_cast<std::uint8_t>(std::max(1, model::highestField(db))); // slot 0 is always there
    db.NumFilters = static_cast<std::uint8_t>(model::highestFilter(db));
    for (model::ViewDef& view : db.Views)
        view.NumCols = static_cast<std::uint8_t>(model::highestColumn(view));
}

ByteWriter& beginFixed(OutRecords& out, int record) {
    ByteWriter& bytes = out.begin();
    bytes.outByte(static_cast<std::uint8_t>(record));
    return bytes;
}

} // namespace

// | 1 | HdrByte1 | 1 | HdrByte2 | 1 | HdrByte3 | 2 | HdrWord1 | 1 | HdrByte4 | 1 | FormatVersion | 1 | HdrByte5 |
// | 1 | NoBackup | 1 | ReadOnly | 1 | ShowStartup | 2 | DefaultFilterMask | 1 | SearchFlags |
// | 9 | OpaqueHeader9 | 60 | six passwords | 40 | OpaqueHeader40 | n+1 | StartupText |
platform::Status loadDBProps120(ByteReader& in, DatabaseModel& db) {
    db.HdrByte1 = in.getByte();
    db.HdrByte2 = in.getByte();
    db.HdrByte3 = in.getByte();
    db.HdrWord1 = in.getWord();
    db.HdrByte4 = in.getByte();
    db.FormatVersion = in.getByte();
    db.HdrByte5 = in.getByte();
    db.NoBackup = in.getByte();
    db.ReadOnly = in.getByte();
    db.ShowStartup = in.getByte();
    db.DefaultFilterMask = in.getWord();
    db.SearchFlags = in.getByte();
    in.getBytes(db.OpaqueHeader9);
    for (const model::PasswordKind kind : layout::kPasswordOrder)
        db.Passwords[static_cast<std::size_t>(kind)] = in.getPaddedText(model::kPasswordLength);
    in.getBytes(db.OpaqueHeader40);
    db.StartupText = in.getText();
    return in.status("Load_DBProps : loadDBProps120");
}

// | 1 | NumFields | then for each field:
// | 1 | slot | 1 | Type | 1 | HandheldByte | 1 | Decimals | 1 | AutoWriter | 1 | IncDec | 1 | SearchField |
// | 1 | FieldFlags | 4 | Reserved | n+1 | Name | n+1 | Default |
platform::Status loadDBProps220(ByteReader& in, DatabaseModel& db) {
    db.NumFields = in.getByte();
    for (int entry = 0; entry < db.NumFields && in.ok(); ++entry) {
        const int slot = in.getByte();
        if (slot >= model::MaxFieldSlots) {
            in.fail(platform::texts::slotBeyond(slot, model::MaxFieldSlots - 1));
            break;
        }
        FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
        field.Type = static_cast<FieldType>(in.getByte());
        field.HandheldByte = in.getByte();
        field.Decimals = in.getByte();
        field.AutoWriter = in.getByte();
        field.IncDec = in.getByte();
        field.SearchField = in.getByte();
        field.FieldFlags = in.getByte();
        in.getBytes(field.Reserved);
        field.Name = in.getText();
        field.Default = in.getText();
    }
    return in.status("Load_DBProps : loadDBProps220");
}

platform::Status readAttribute(ByteReader& in, DatabaseModel& db, int slot, const AttributeRead& how) {
    const auto expression = [&](int tokens) {
        return readExpression(in, {tokens, how.blockLength, db.FormatVersion});
    };
    switch (blockOf(db, slot)) {
    case BlockKind::Empty:
        in.skipBytes(1);
        return in.status("Load_DBProps : readPDBFile20");
    case BlockKind::List:
        return keep(readLists(in), db.Lists[slot]);
    case BlockKind::Expression:
        return keep(expression(model::kShortTokens), db.Expressions[slot]);
    case BlockKind::AdvExpression:
        return keep(expression(model::kTokens), db.Expressions[slot]);
    case BlockKind::External:
        return keep(readExternal(in, FormatGeneration::Format2x), db.Externals[slot]);
    case BlockKind::OneToMany:
        return keep(ReadOneToMany(in), db.OneToManys[slot]);
    case BlockKind::Plugin:
        return keep(ReadPlugin(in), db.Plugins[slot]);
    case BlockKind::ConditionalExp:
        return keep(ReadConditionalExp(in), db.CondExprs[slot]);
    case BlockKind::NextValue:
        return readNextValue(in, db, slot, how.nextValue);
    }
    return {};
}

void buildAttribute(const DatabaseModel& db, int slot, ByteWriter& out) {
    switch (blockOf(db, slot)) {
    case BlockKind::Empty:
        return out.outByte(layout::kEmptyBlock);
    case BlockKind::List:
        return buildList(db.Lists.at(slot), out);
    case BlockKind::Expression:
        return buildExpression(db.Expressions.at(slot), out);
    case BlockKind::AdvExpression:
        return buildNewExpression(db.Expressions.at(slot), out);
    case BlockKind::External:
        return buildExternal(db.Externals.at(slot), out);
    case BlockKind::OneToMany:
        return BuildOneToMany(db.OneToManys.at(slot), out);
    case BlockKind::Plugin:
        return BuildPlugin(db.Plugins.at(slot), out);
    case BlockKind::ConditionalExp:
        return buildConditionalExp(db.CondExprs.at(slot), out);
    case BlockKind::NextValue:
        return out.outLong(static_cast<std::uint32_t>(db.AutoIncNext.at(slot)));
    }
}

platform::Status getLastKey(ByteReader& in, DatabaseModel& db, int fileRecords) {
    db.LastKey = fileRecords > model::kFixedRecords ? in.getLong() : layout::kOldestKey;
    return in.status("Load_DBProps : getLastKey");
}

void buildNewKey(const DatabaseModel& db, ByteWriter& out) {
    out.outLong(static_cast<std::uint32_t>(db.LastKey));
}

void buildDBProps20(DatabaseModel& db, OutRecords& out) {
    recompute(db);
    buildHeaderValues(db, beginFixed(out, layout::kHeaderValues));
    buildFieldTable(db, beginFixed(out, layout::kFieldTable));
    for (int record = layout::kFirstAttribute; record <= layout::kLastAttribute; ++record)
        buildAttribute(db, record - layout::kFirstAttribute, beginFixed(out, record));
    buildNewKey(db, beginFixed(out, layout::kLastKey));
    buildForms(db, beginFixed(out, layout::kForms));
    buildViews(db, beginFixed(out, layout::kViews));
    buildFilters(db, beginFixed(out, layout::kFilters));
}

} // namespace tallybook::pdb
