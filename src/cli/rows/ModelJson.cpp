#include "cli/rows/ModelJson.h"

#include "core/calc/values/Ansi.h"
#include "core/pdb/Passwords.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace tallybook::cli {

namespace {

using model::DatabaseModel;
using model::FieldDef;
using model::FieldType;

std::string text(std::string_view bytes) {
    return calc::ansi::toUtf8(bytes);
}

template <class Numbers> Json numbers(const Numbers& values) {
    Json all = Json::array();
    for (const auto value : values)
        all.push_back(static_cast<int>(value));
    return all;
}

Json texts(const std::array<std::string, 3>& values) {
    Json all = Json::array();
    for (const std::string& value : values)
        all.push_back(text(value));
    return all;
}

Json colourJson(const model::Colour& colour) {
    return Json::array({colour.red, colour.green, colour.blue});
}

// Entries up to the last one that holds something; the ones behind it are 0 and empty.
Json expressionJson(const model::ExprDef& expression) {
    std::size_t used = expression.Tokens.size();
    while (used > 0 && expression.Tokens[used - 1] == 0 && expression.TokenTexts[used - 1].empty())
        --used;
    Json tokens = Json::array();
    for (std::size_t at = 0; at < used; ++at)
        tokens.push_back({{"token", expression.Tokens[at]}, {"text", text(expression.TokenTexts[at])}});
    return {{"resultType", expression.ResultType}, {"tokens", std::move(tokens)}};
}

Json externalJson(const model::ExternalDef& external) {
    return {{"source", text(external.Source)},   {"sourceField", external.SourceField},
            {"matchField", external.MatchField}, {"abField1", external.ABField1},
            {"keyType", external.KeyType},       {"extra", external.Extra}};
}

Json oneToManyJson(const model::OneToManyDef& def) {
    return {{"source", text(def.Source)},
            {"matchFields", numbers(def.MatchFields)},
            {"sortFields", numbers(def.SortFields)},
            {"label1", text(def.Label1)},
            {"label2", text(def.Label2)},
            {"options", numbers(def.Options)}};
}

Json pluginJson(const model::PluginDef& plugin) {
    Json entries = Json::array();
    for (const model::PluginEntry& entry : plugin.Entries)
        entries.push_back({{"byte1", entry.Byte1}, {"byte2", entry.Byte2}, {"text", text(entry.Text)}});
    return {{"pluginId", plugin.PluginId},
            {"kind", plugin.Kind},
            {"params", numbers(plugin.Params)},
            {"params2", numbers(plugin.Params2)},
            {"entries", std::move(entries)}};
}

template <class Conditions> void addConditions(const Conditions& conditions, Json& json) {
    json["condFields"] = numbers(conditions.CondFields);
    json["condFields2"] = numbers(conditions.CondFields2);
    json["condValues"] = texts(conditions.CondValues);
    json["condOps"] = numbers(conditions.CondOps);
    json["condLinks"] = numbers(conditions.CondLinks);
}

Json condExprJson(const model::CondExprDef& def) {
    Json json = {{"name", text(def.Name)}};
    addConditions(def, json);
    json["trueKind"] = def.TrueKind;
    json["trueText"] = text(def.TrueText);
    json["trueField"] = def.TrueField;
    json["falseKind"] = def.FalseKind;
    json["falseText"] = text(def.FalseText);
    json["falseField"] = def.FalseField;
    return json;
}

Json formItemJson(const model::FormItem& item) {
    return {{"field", item.Field},
            {"row", item.Row},
            {"itemKind", item.ItemKind},
            {"labelFore", colourJson(item.LabelFore)},
            {"labelBack", colourJson(item.LabelBack)},
            {"itemByte1", item.ItemByte1},
            {"dataFore", colourJson(item.DataFore)},
            {"dataBack", colourJson(item.DataBack)},
            {"itemByte2", item.ItemByte2},
            {"itemPos", numbers(item.ItemPos)},
            {"caption", text(item.Caption)},
            {"itemText", text(item.ItemText)}};
}

void appendHex(std::uint8_t byte, std::string& out) {
    static constexpr std::string_view kDigits = "0123456789abcdef";
    out += kDigits[byte >> 4];
    out += kDigits[byte & 15];
}

} // namespace

std::string hex(std::span<const std::uint8_t> bytes) {
    std::string out;
    out.reserve(bytes.size() * 2);
    for (const std::uint8_t byte : bytes)
        appendHex(byte, out);
    return out;
}

std::string hex(const std::string& bytes) {
    std::string out;
    for (const char byte : bytes)
        appendHex(static_cast<std::uint8_t>(byte), out);
    return out;
}

bool hasList(const FieldDef& field) {
    switch (field.Type) {
    case FieldType::List:
    case FieldType::RadioButton:
        return true;
    case FieldType::Text:
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Float:
    case FieldType::Memo:
        return field.AutoWriter != 0;
    default:
        return false;
    }
}

Json headerValuesJson(const DatabaseModel& db) {
    Json passwords = Json::object();
    for (int kind = 0; kind < model::kPasswordKinds; ++kind)
        passwords[std::string(pdb::actionWord(static_cast<model::PasswordKind>(kind)))] =
            hex(db.Passwords[static_cast<std::size_t>(kind)]);
    return {{"hdrByte1", db.HdrByte1},
            {"hdrByte2", db.HdrByte2},
            {"hdrByte3", db.HdrByte3},
            {"hdrWord1", db.HdrWord1},
            {"hdrByte4", db.HdrByte4},
            {"formatVersion", db.FormatVersion},
            {"hdrByte5", db.HdrByte5},
            {"noBackup", db.NoBackup},
            {"readOnly", db.ReadOnly},
            {"showStartup", db.ShowStartup},
            {"defaultFilterMask", db.DefaultFilterMask},
            {"searchFlags", db.SearchFlags},
            {"opaqueHeader9", hex(db.OpaqueHeader9)},
            {"passwords", std::move(passwords)},
            {"opaqueHeader40", hex(db.OpaqueHeader40)},
            {"startupText", text(db.StartupText)}};
}

Json fieldJson(const DatabaseModel& db, int slot) {
    const FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    return {{"slot", slot},
            {"type", static_cast<int>(field.Type)},
            {"typeName", std::string(model::fieldTypeName(field.Type))},
            {"handheldByte", field.HandheldByte},
            {"decimals", field.Decimals},
            {"autoWriter", field.AutoWriter},
            {"incDec", field.IncDec},
            {"searchField", field.SearchField},
            {"fieldFlags", field.FieldFlags},
            {"reserved", hex(field.Reserved)},
            {"name", text(field.Name)},
            {"default", text(field.Default)}};
}

Json attributeJson(const DatabaseModel& db, int slot) {
    const FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    if (hasList(field))
        return {{"list", listJson(db.Lists.at(slot))}};
    switch (field.Type) {
    case FieldType::Expression:
    case FieldType::AdvExpression:
        return {{"expression", expressionJson(db.Expressions.at(slot))}};
    case FieldType::DBJoin:
    case FieldType::DBLookup:
    case FieldType::AddressBookJoin:
    case FieldType::AddressBookLookup:
        return {{"external", externalJson(db.Externals.at(slot))}};
    case FieldType::OneToMany:
        return {{"oneToMany", oneToManyJson(db.OneToManys.at(slot))}};
    case FieldType::Plugin:
        return {{"plugin", pluginJson(db.Plugins.at(slot))}};
    case FieldType::ConditionalExpression:
        return {{"conditionalExpression", condExprJson(db.CondExprs.at(slot))}};
    case FieldType::AutoIncremental:
        return {{"nextValue", db.AutoIncNext.at(slot)}};
    default:
        return nullptr;
    }
}

Json listJson(const model::ListDef& list) {
    Json items = Json::array();
    for (std::size_t at = 0; at < list.Items.size(); ++at)
        items.push_back({{"id", list.ItemIds[at]}, {"text", text(list.Items[at])}});
    return items;
}

Json viewJson(const model::ViewDef& view) {
    Json columns = Json::array();
    for (const model::ViewColumn& column :
         std::span(view.Columns)
             .first(static_cast<std::size_t>(std::max(model::highestColumn(view), static_cast<int>(view.NumCols)))))
        columns.push_back({{"field", column.Field}, {"width", column.Width}, {"spare", numbers(column.Spare)}});
    return {{"name", text(view.Name)},
            {"sortFields", numbers(view.SortFields)},
            {"sortDirs", numbers(view.SortDirs)},
            {"filterMask", view.FilterMask},
            {"frozenCols", view.FrozenCols},
            {"viewByte", view.ViewByte},
            {"viewTail", hex(view.ViewTail)},
            {"columns", std::move(columns)}};
}

Json filterJson(const model::FilterDef& filter) {
    Json json = {{"name", text(filter.Name)}};
    addConditions(filter, json);
    json["condTail"] = numbers(filter.CondTail);
    return json;
}

Json formJson(const model::FormDef& form) {
    Json items = Json::array();
    for (const model::FormItem& item : std::span(form.Items).first(form.NumItems))
        items.push_back(formItemJson(item));
    return {{"name", text(form.Name)},
            {"formByte", form.FormByte},
            {"formFlags", numbers(form.FormFlags)},
            {"items", std::move(items)}};
}

Json passwordKindsJson(const DatabaseModel& db) {
    Json kinds = Json::array();
    for (int kind = 0; kind < model::kPasswordKinds; ++kind)
        if (pdb::passwordExists20(db.Passwords[static_cast<std::size_t>(kind)]))
            kinds.push_back(std::string(pdb::actionWord(static_cast<model::PasswordKind>(kind))));
    return kinds;
}

} // namespace tallybook::cli
