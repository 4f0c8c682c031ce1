#include "cli/inspect/RecordJson.h"

#include "cli/inspect/RecordCells.h"
#include "core/calc/values/Ansi.h"
#include "core/pdb/Layout.h"

#include <algorithm>
#include <bit>
#include <nlohmann/json.hpp>

namespace tallybook::cli {

namespace {

namespace layout = pdb::layout;
using model::DatabaseModel;
using model::FieldType;

Json fieldTableJson(const DatabaseModel& db) {
    Json fields = Json::array();
    for (int slot = 0; slot < std::max<int>(db.NumFields, model::highestField(db)); ++slot)
        fields.push_back(fieldJson(db, slot));
    return {{"numFields", db.NumFields}, {"fields", std::move(fields)}};
}

// The attribute of a slot; the empty block has none.
Json attributeRecordJson(const DatabaseModel& db, int slot) {
    Json json = {{"slot", slot}};
    const Json attribute = slot == 0 ? Json{{"list", listJson(db.Lists.at(0))}} : attributeJson(db, slot);
    if (attribute.is_object())
        json.update(attribute);
    return json;
}

Json formsJson(const DatabaseModel& db) {
    Json forms = Json::array();
    for (std::size_t slot = 0; slot < db.NumForms; ++slot)
        forms.push_back(formJson(db.Forms[slot]));
    return {{"startForm", db.StartForm}, {"forms", std::move(forms)}};
}

Json viewsJson(const DatabaseModel& db) {
    Json views = Json::array();
    for (std::size_t slot = 0; slot < db.NumViews; ++slot)
        views.push_back(viewJson(db.Views[slot]));
    return {{"views", std::move(views)}};
}

Json filtersJson(const DatabaseModel& db) {
    Json filters = Json::array();
    for (std::size_t slot = 0; slot < db.NumFilters; ++slot)
        filters.push_back(filterJson(db.Filters[slot]));
    Json spare = Json::array();
    for (const model::FilterDef& filter : db.SpareFilters)
        spare.push_back(filterJson(filter));
    return {{"filters", std::move(filters)}, {"spareFilters", std::move(spare)}};
}

// Data records ----------------------------------------------------------------------------------------------

Json dateJson(std::uint32_t word) {
    return {{"year", word >> 16}, {"month", word >> 8 & 255}, {"day", word & 255}};
}
Json timeJson(std::uint32_t word) {
    return {{"hour", word >> 16}, {"minute", word >> 8 & 255}, {"second", word & 255}};
}
// A single that is no number has no form in JSON and stays in the hex.
Json singleJson(std::uint32_t word) {
    const auto value = std::bit_cast<float>(word);
    return value - value == 0 ? Json(static_cast<double>(value)) : Json(nullptr);
}

// Four bytes of a calculated result, by the kind of result that its field has.
Json resultJson(std::uint32_t word, std::uint8_t resultType) {
    if (resultType >= 1 && resultType <= 3)
        return dateJson(word);
    return resultType == 7 ? timeJson(word) : singleJson(word);
}

void addValue(const RecordCell& cell, std::uint8_t resultType, Json& json) {
    switch (static_cast<FieldType>(cell.type)) {
    case FieldType::Integer:
        json["value"] = static_cast<std::int16_t>(cell.word);
        break;
    case FieldType::Long:
    case FieldType::AutoIncremental:
    case FieldType::AddressBookJoin:
        json["value"] = static_cast<std::int32_t>(cell.word);
        break;
    case FieldType::Float:
        json["value"] = singleJson(cell.word);
        break;
    case FieldType::List:
    case FieldType::RadioButton:
    case FieldType::Checkbox:
        json["value"] = cell.word;
        break;
    case FieldType::Date:
        json["value"] = dateJson(cell.word);
        break;
    case FieldType::Time:
        json["value"] = timeJson(cell.word);
        break;
    case FieldType::AdvExpression:
        json["colour"] = cell.colour;
        json["value"] = resultJson(cell.word, resultType);
        break;
    case FieldType::Expression:
        json["value"] = resultJson(cell.word, resultType);
        break;
    case FieldType::ConditionalExpression:
        json["colour"] = cell.colour;
        break;
    case FieldType::DBJoin:
        json["keyType"] = cell.keyType;
        if (cell.storedLength < 0)
            json["value"] =
                cell.keyType == 2 ? static_cast<std::int16_t>(cell.word) : static_cast<std::int32_t>(cell.word);
        break;
    case FieldType::Image:
        json["picture"] = {{"position", cell.picture.start}, {"length", cell.picture.size()}};
        break;
    default:
        break;
    }
    if (cell.storedLength >= 0) {
        json["storedLength"] = cell.storedLength;
        json["text"] = calc::ansi::toUtf8(cell.text);
    }
}

Json cellJson(const RecordCell& cell, const DatabaseModel& db) {
    Json json = {{"position", cell.bytes.start}, {"type", cell.type}, {"slot", cell.slot}};
    if (!cell.known)
        json["unknown"] = true;
    else
        addValue(cell, db.Expressions.at(cell.slot).ResultType, json);
    return json;
}

const char* endName(RecordEnd end) {
    switch (end) {
    case RecordEnd::EndMark:
        return "end mark";
    case RecordEnd::WrongSlot:
        return "wrong slot";
    case RecordEnd::RecordOver:
        return "end of record";
    case RecordEnd::InsideCell:
        return "inside a cell";
    }
    return "";
}

} // namespace

Json fixedRecordJson(const DatabaseModel& db, int record) {
    switch (record) {
    case layout::kHeaderValues:
        return headerValuesJson(db);
    case layout::kFieldTable:
        return fieldTableJson(db);
    case layout::kLastKey:
        return {{"lastKey", db.LastKey}};
    case layout::kForms:
        return formsJson(db);
    case layout::kViews:
        return viewsJson(db);
    case layout::kFilters:
        return filtersJson(db);
    default:
        return attributeRecordJson(db, record - layout::kFirstAttribute);
    }
}

Json dataRecordJson(platform::ByteSpan file, const ByteRange& range, const DatabaseModel& db) {
    const RecordCells record = walkRecord(file, range, db);
    if (!record.hasHeader)
        return {{"error", "shorter than the header of a data record"}};
    Json cells = Json::array();
    for (const RecordCell& cell : record.cells)
        cells.push_back(cellJson(cell, db));
    Json json = {{"leading", record.number},
                 {"category", record.category},
                 {"key", record.key},
                 {"cells", std::move(cells)},
                 {"end", endName(record.end)}};
    if (record.unread.size() > 0)
        json["unread"] = record.unread.size();
    return json;
}

} // namespace tallybook::cli
