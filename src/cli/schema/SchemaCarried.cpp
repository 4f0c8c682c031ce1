#include "cli/schema/SchemaCarried.h"

#include "core/calc/values/Ansi.h"
#include "core/pdb/AttributeBlocks.h"
#include "core/pdb/Names.h"
#include "core/pdb/Properties.h"
#include "core/pdb/Screens.h"

#include <algorithm>
#include <array>

namespace tallybook::cli {

namespace {

using model::DatabaseModel;
using model::FieldDef;
using model::FieldType;
using platform::Bytes;

constexpr int kMostItems = 255; // the count on file is a byte

std::string utf8(std::string_view text) {
    return calc::ansi::toUtf8(text);
}

// Values, one at a time -------------------------------------------------------------------------------------

// Collects what differs.
class Differences {
public:
    Differences() noexcept(false) = default; // a JSON value may throw
    Differences(const Differences&) = delete;
    Differences& operator=(const Differences&) = delete;
    void number(const char* key, int value, int made) {
        if (value != made)
            m_json[key] = value;
    }
    void text(const char* key, const std::string& value, const std::string& made) {
        if (value != made)
            m_json[key] = utf8(value);
    }
    template <std::size_t n>
    void bytes(const char* key, const std::array<std::uint8_t, n>& value, const std::array<std::uint8_t, n>& made) {
        if (value != made)
            m_json[key] = hex(value);
    }
    void block(const char* key, const Bytes& value, const Bytes& made) {
        if (value != made)
            m_json[key] = hex(value);
    }
    void set(const char* key, Json value) { m_json[key] = std::move(value); }
    Json take() { return std::move(m_json); }

private:
    Json m_json; // null until something differs
};

// Takes what is there.
class Carrier {
public:
    explicit Carrier(const SchemaObject& carried) : m_carried(carried) {}

    void number(const char* key, std::uint8_t& value) { value = static_cast<std::uint8_t>(whole(key, value, 0xFF)); }
    void number(const char* key, std::uint16_t& value) {
        value = static_cast<std::uint16_t>(whole(key, value, 0xFFFF));
    }
    void text(const char* key, std::string& value) {
        m_known.push_back(key);
        if (m_carried.has(key))
            value = m_carried.text(key);
    }
    template <std::size_t n> void bytes(const char* key, std::array<std::uint8_t, n>& value) {
        m_known.push_back(key);
        if (!m_carried.has(key))
            return;
        const std::vector<std::uint8_t> read = m_carried.bytes(key);
        if (read.size() != n)
            m_carried.misuse(key, "There must be " + std::to_string(n) + " bytes.");
        std::copy(read.begin(), read.end(), value.begin());
    }
    // The reader gets the bytes of a block and must use them up.
    template <class Read> void block(const char* key, Read read) {
        m_known.push_back(key);
        if (!m_carried.has(key))
            return;
        const std::vector<std::uint8_t> bytes = m_carried.bytes(key);
        pdb::ByteReader in(bytes);
        const platform::Status status = read(in, bytes.size());
        if (!status.ok() || in.left() != 0)
            m_carried.misuse(key, "These bytes are no such block.");
    }
    void know(const char* key) { m_known.push_back(key); }
    void refuseOthers() const { m_carried.allowOnly(m_known); }

private:
    int whole(const char* key, int value, int most) {
        m_known.push_back(key);
        return m_carried.number(key, 0, most, value);
    }

    const SchemaObject& m_carried;
    std::vector<std::string_view> m_known;
};

// Attribute blocks -------------------------------------------------------------------------------------------

Bytes attributeBytes(const DatabaseModel& db, int slot) {
    pdb::ByteWriter out;
    pdb::buildAttribute(db, slot, out);
    return out.take();
}

platform::Status readAttributeBytes(pdb::ByteReader& in, std::size_t size, DatabaseModel& db, int slot) {
    const auto length = static_cast<std::int64_t>(size) + 1; // with the record's number
    const FieldType type = db.Fields[static_cast<std::size_t>(slot)].Type;
    platform::Status status = pdb::readAttribute(in, db, slot, {length, pdb::NextValueLayout::Present});
    if (type == FieldType::ConditionalExpression)
        straightenLinks(db.CondExprs[slot]);
    if (type == FieldType::Expression || type == FieldType::AdvExpression)
        in.skipBytes(1); // the zero behind an expression, which nobody reads
    return status;
}

// The categories have a list whatever their type.
bool hasItems(const DatabaseModel& db, int slot) {
    return slot == 0 || hasList(db.Fields[static_cast<std::size_t>(slot)]);
}

void carryList(const SchemaObject& carried, DatabaseModel& db, int slot) {
    if (!carried.has("list"))
        return;
    model::ListDef list;
    for (const SchemaObject& item : carried.objects("list")) {
        item.allowOnly(std::array<std::string_view, 2>{"id", "text"});
        list.ItemIds.push_back(static_cast<std::uint8_t>(item.number("id", 0, 255)));
        list.Items.push_back(item.text("text"));
    }
    if (!hasItems(db, slot) || list.Count() > kMostItems)
        carried.misuse("list", "The field cannot have such a list.");
    db.Lists[slot] = std::move(list);
}

Bytes formBytes(const DatabaseModel& db) {
    pdb::ByteWriter out;
    pdb::buildForms(db, out);
    return out.take();
}

// Columns ----------------------------------------------------------------------------------------------------

Json columnsJson(const model::ViewDef& view) {
    Json columns = Json::array();
    for (int i = 0; i < model::highestColumn(view); ++i) {
        const model::ViewColumn& column = view.Columns[static_cast<std::size_t>(i)];
        Json json = {{"field", column.Field}, {"width", column.Width}};
        if (column.Spare != model::ViewColumn{}.Spare)
            json["spare"] = hex(column.Spare);
        columns.push_back(std::move(json));
    }
    return columns;
}

void carryColumns(const SchemaObject& carried, model::ViewDef& view) {
    if (!carried.has("columns"))
        return;
    const std::vector<SchemaObject> columns = carried.objects("columns");
    if (columns.size() > view.Columns.size())
        carried.misuse("columns", "There are 81 columns at most.");
    view.Columns.fill({});
    for (std::size_t i = 0; i < columns.size(); ++i) {
        Carrier column(columns[i]);
        column.number("field", view.Columns[i].Field);
        column.number("width", view.Columns[i].Width);
        column.bytes("spare", view.Columns[i].Spare);
        column.refuseOthers();
    }
}

// Texts of a filter's conditions.
Json valuesJson(const std::array<std::string, 3>& values) {
    Json all = Json::array();
    for (const std::string& value : values)
        all.push_back(utf8(value));
    return all;
}

void carryValues(const SchemaObject& carried, std::array<std::string, 3>& values) {
    if (!carried.has("condValues"))
        return;
    const std::vector<std::string> texts = carried.texts("condValues");
    if (texts.size() != values.size())
        carried.misuse("condValues", "There must be 3 texts.");
    std::copy(texts.begin(), texts.end(), values.begin());
}

} // namespace

void straightenLinks(model::CondExprDef& condition) {
    const auto& links = condition.CondLinks;
    condition.CondLinks = {links[1], links[2], 0};
}

void clearSlot(DatabaseModel& db, int slot) {
    db.Fields[static_cast<std::size_t>(slot)] = {};
    if (slot == 0) { // the categories are there whatever a description says
        db.Fields[0].Type = FieldType::List;
        db.Fields[0].Name = kCategoriesName;
    }
    db.Lists.erase(slot);
    db.Expressions.erase(slot);
    db.Externals.erase(slot);
    db.OneToManys.erase(slot);
    db.Plugins.erase(slot);
    db.CondExprs.erase(slot);
    db.AutoIncNext[slot] = 1;
}

Json carriedOfField(const DatabaseModel& db, const DatabaseModel& made, int slot) {
    const FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    const FieldDef& other = made.Fields[static_cast<std::size_t>(slot)];
    Differences differences;
    differences.number("type", static_cast<int>(field.Type), static_cast<int>(other.Type));
    differences.number("handheldByte", field.HandheldByte, other.HandheldByte);
    differences.number("decimals", field.Decimals, other.Decimals);
    differences.number("autoWriter", field.AutoWriter, other.AutoWriter);
    differences.number("incDec", field.IncDec, other.IncDec);
    differences.number("searchField", field.SearchField, other.SearchField);
    differences.number("fieldFlags", field.FieldFlags, other.FieldFlags);
    differences.bytes("reserved", field.Reserved, other.Reserved);
    differences.text("name", field.Name, other.Name);
    differences.text("default", field.Default, other.Default);
    const Bytes block = attributeBytes(db, slot);
    const Bytes otherBlock = attributeBytes(made, slot);
    if (!hasItems(db, slot))
        differences.block("attribute", block, otherBlock);
    else if (block != otherBlock)
        differences.set("list", listJson(db.Lists.at(slot)));
    return differences.take();
}

void carryField(const SchemaObject& carried, DatabaseModel& db, int slot) {
    FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    Carrier carrier(carried);
    auto type = static_cast<std::uint8_t>(field.Type);
    carrier.number("type", type);
    field.Type = slot == 0 ? FieldType::List : static_cast<FieldType>(type);
    carrier.number("handheldByte", field.HandheldByte);
    carrier.number("decimals", field.Decimals);
    carrier.number("autoWriter", field.AutoWriter);
    carrier.number("incDec", field.IncDec);
    carrier.number("searchField", field.SearchField);
    carrier.number("fieldFlags", field.FieldFlags);
    carrier.bytes("reserved", field.Reserved);
    carrier.text("name", field.Name);
    carrier.text("default", field.Default);
    carrier.block("attribute",
                  [&](pdb::ByteReader& in, std::size_t size) { return readAttributeBytes(in, size, db, slot); });
    carrier.know("list");
    carrier.refuseOthers();
    carryList(carried, db, slot);
}

Json carriedOfView(const model::ViewDef& view, const model::ViewDef& made) {
    Differences differences;
    differences.text("name", view.Name, made.Name);
    differences.bytes("sortFields", view.SortFields, made.SortFields);
    differences.bytes("sortDirs", view.SortDirs, made.SortDirs);
    differences.number("filterMask", view.FilterMask, made.FilterMask);
    differences.number("frozenCols", view.FrozenCols, made.FrozenCols);
    differences.number("viewByte", view.ViewByte, made.ViewByte);
    differences.bytes("viewTail", view.ViewTail, made.ViewTail);
    if (Json columns = columnsJson(view); columns != columnsJson(made))
        differences.set("columns", std::move(columns));
    return differences.take();
}

void carryView(const SchemaObject& carried, model::ViewDef& view) {
    Carrier carrier(carried);
    carrier.text("name", view.Name);
    carrier.bytes("sortFields", view.SortFields);
    carrier.bytes("sortDirs", view.SortDirs);
    carrier.number("filterMask", view.FilterMask);
    carrier.number("frozenCols", view.FrozenCols);
    carrier.number("viewByte", view.ViewByte);
    carrier.bytes("viewTail", view.ViewTail);
    carrier.know("columns");
    carrier.refuseOthers();
    carryColumns(carried, view);
}

Json carriedOfFilter(const model::FilterDef& filter, const model::FilterDef& made) {
    Differences differences;
    differences.text("name", filter.Name, made.Name);
    differences.bytes("condFields", filter.CondFields, made.CondFields);
    differences.bytes("condFields2", filter.CondFields2, made.CondFields2);
    if (filter.CondValues != made.CondValues)
        differences.set("condValues", valuesJson(filter.CondValues));
    differences.bytes("condOps", filter.CondOps, made.CondOps);
    differences.bytes("condLinks", filter.CondLinks, made.CondLinks);
    differences.bytes("condTail", filter.CondTail, made.CondTail);
    return differences.take();
}

void carryFilter(const SchemaObject& carried, model::FilterDef& filter) {
    Carrier carrier(carried);
    carrier.text("name", filter.Name);
    carrier.bytes("condFields", filter.CondFields);
    carrier.bytes("condFields2", filter.CondFields2);
    carrier.bytes("condOps", filter.CondOps);
    carrier.bytes("condLinks", filter.CondLinks);
    carrier.bytes("condTail", filter.CondTail);
    carrier.know("condValues");
    carrier.refuseOthers();
    carryValues(carried, filter.CondValues);
}

Json carriedOfDatabase(const DatabaseModel& db, const DatabaseModel& made) {
    Differences differences;
    differences.text("dbName", db.DBName, made.DBName);
    differences.number("hdrByte1", db.HdrByte1, made.HdrByte1);
    differences.number("hdrByte2", db.HdrByte2, made.HdrByte2);
    differences.number("hdrByte3", db.HdrByte3, made.HdrByte3);
    differences.number("hdrWord1", db.HdrWord1, made.HdrWord1);
    differences.number("hdrByte4", db.HdrByte4, made.HdrByte4);
    differences.number("hdrByte5", db.HdrByte5, made.HdrByte5);
    differences.number("noBackup", db.NoBackup, made.NoBackup);
    differences.number("readOnly", db.ReadOnly, made.ReadOnly);
    differences.number("showStartup", db.ShowStartup, made.ShowStartup);
    differences.number("defaultFilterMask", db.DefaultFilterMask, made.DefaultFilterMask);
    differences.number("searchFlags", db.SearchFlags, made.SearchFlags);
    differences.bytes("opaqueHeader9", db.OpaqueHeader9, made.OpaqueHeader9);
    differences.bytes("opaqueHeader40", db.OpaqueHeader40, made.OpaqueHeader40);
    differences.text("startupText", db.StartupText, made.StartupText);
    differences.number("numViews", db.NumViews, made.NumViews);
    differences.block("forms", formBytes(db), formBytes(made));
    return differences.take();
}

void carryDatabase(const SchemaObject& carried, DatabaseModel& db) {
    Carrier carrier(carried);
    carrier.text("dbName", db.DBName);
    carrier.number("hdrByte1", db.HdrByte1);
    carrier.number("hdrByte2", db.HdrByte2);
    carrier.number("hdrByte3", db.HdrByte3);
    carrier.number("hdrWord1", db.HdrWord1);
    carrier.number("hdrByte4", db.HdrByte4);
    carrier.number("hdrByte5", db.HdrByte5);
    carrier.number("noBackup", db.NoBackup);
    carrier.number("readOnly", db.ReadOnly);
    carrier.number("showStartup", db.ShowStartup);
    carrier.number("defaultFilterMask", db.DefaultFilterMask);
    carrier.number("searchFlags", db.SearchFlags);
    carrier.bytes("opaqueHeader9", db.OpaqueHeader9);
    carrier.bytes("opaqueHeader40", db.OpaqueHeader40);
    carrier.text("startupText", db.StartupText);
    carrier.number("numViews", db.NumViews);
    carrier.block("forms", [&](pdb::ByteReader& in, std::size_t) { return pdb::LoadFormProp20(in, db); });
    carrier.refuseOthers();
    if (db.NumViews > db.Views.size())
        carried.misuse("numViews", "There are 13 views at most.");
}

} // namespace tallybook::cli
