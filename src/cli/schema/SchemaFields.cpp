#include "cli/schema/SchemaFields.h"

#include "cli/frame/Texts.h"
#include "cli/schema/SchemaConditions.h"
#include "core/calc/values/Ansi.h"
#include "core/calc/values/Text.h"
#include "core/design/ListItems.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <array>
#include <set>

namespace tallybook::cli {

namespace {

using design::FieldPropDraft;
using design::Panel;
using model::DatabaseModel;
using model::FieldType;

constexpr std::array<std::string_view, 5> kColours = {"black", "red", "green", "blue", "yellow"};
constexpr int kHighestItemId = 254;

std::string utf8(std::string_view text) {
    return calc::ansi::toUtf8(text);
}

bool takesDefaultText(FieldType type) {
    return design::showsPanel(type, Panel::txtDefault) || type == FieldType::Memo;
}

// The default of these is chosen among entries.
bool choosesDefault(FieldType type) {
    return !design::defaultEntries(type).empty();
}

bool isJoin(FieldType type) {
    return type == FieldType::DBJoin;
}

std::vector<std::string_view> attributeNames(FieldType type) {
    struct Row {
        Panel panel;
        std::vector<std::string_view> names;
    };
    static const std::array<Row, 11> kRows = {{{Panel::AutoWriter, {"autoWriter"}},
                                               {Panel::chkBarcodeScan, {"barcodeScan"}},
                                               {Panel::checkDisableAutoShift, {"disableAutoShift"}},
                                               {Panel::checkIncrementDecrement, {"incrementButtons"}},
                                               {Panel::cmbDecDigs, {"decimals"}},
                                               {Panel::ListItems, {"items"}},
                                               {Panel::frmExpr, {"expression"}},
                                               {Panel::frmExprAdv, {"advancedExpression"}},
                                               {Panel::FrmAddress, {"addressBook"}},
                                               {Panel::frmMasterDetail, {"masterDetail"}},
                                               {Panel::FrmRadio, {"options", "selected"}}}};
    std::vector<std::string_view> names;
    for (const Row& row : kRows)
        if (design::showsPanel(type, row.panel))
            names.insert(names.end(), row.names.begin(), row.names.end());
    if (takesDefaultText(type) || choosesDefault(type))
        names.push_back("default");
    if (type == FieldType::AutoIncremental)
        names.push_back("nextValue");
    if (type == FieldType::ConditionalExpression)
        names.insert(names.end(), {"conditions", "then", "else"});
    if (design::showsPanel(type, Panel::frmExternal))
        names.push_back(isJoin(type) ? "join" : "lookup");
    return names;
}

template <class Numbers> Json numbersJson(const Numbers& numbers) {
    Json all = Json::array();
    for (const auto number : numbers)
        all.push_back(static_cast<int>(number));
    return all;
}

bool hasIdsInOrder(const model::ListDef& list) {
    for (std::size_t i = 0; i < list.ItemIds.size(); ++i)
        if (list.ItemIds[i] != i + 1)
            return false;
    return true;
}

// Expressions ------------------------------------------------------------------------------------------------

std::string_view trimmed(std::string_view entry) {
    const std::size_t first = entry.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view{}
                                           : entry.substr(first, entry.find_last_not_of(' ') - first + 1);
}

// Operands and operators up to the last one that is chosen.
Json simpleJson(const DatabaseModel& db, const design::SimpleChoices& choices) {
    Json json = Json::object();
    if (choices.format >= 0)
        json["format"] = trimmed(design::expressionFormats()[static_cast<std::size_t>(choices.format)]);
    const std::vector<std::string> entries = design::operandEntries(db);
    Json operands = Json::array();
    for (const design::OperandChoice& operand : choices.operands) {
        const bool typed = operand.position == design::kTypedNumber;
        const std::string& entry = typed ? operand.text : entries[static_cast<std::size_t>(operand.position)];
        operands.push_back(utf8(operand.position == 0 ? std::string_view{} : std::string_view(entry)));
    }
    Json operators = Json::array();
    for (int i = 0; i < design::kOperators; ++i) {
        const auto position = static_cast<std::size_t>(choices.operators[static_cast<std::size_t>(i)]);
        operators.push_back(trimmed(design::operatorEntries(choices.format, i)[position]));
    }
    for (Json* list : {&operands, &operators})
        while (!list->empty() && isEmptyText(list->back()))
            list->erase(list->size() - 1);
    json["operands"] = std::move(operands);
    if (!operators.empty())
        json["operators"] = std::move(operators);
    return json;
}

// A text that no entry of the list is counts as typed.
design::OperandChoice operandChoice(const std::vector<std::string>& entries, const std::string& text) {
    if (trimmed(text).empty())
        return {};
    const auto found = std::find(entries.begin() + 1, entries.end(), text);
    if (found == entries.end())
        return {design::kTypedNumber, text};
    return {static_cast<int>(found - entries.begin()), {}};
}

design::SimpleChoices simpleChoices(const DatabaseModel& db, const SchemaObject& described) {
    described.allowOnly(std::array<std::string_view, 3>{"format", "operands", "operators"});
    design::SimpleChoices choices;
    choices.format = described.entry("format", design::expressionFormats(), -1);
    const std::vector<std::string> entries = design::operandEntries(db);
    const std::vector<std::string> operands = described.texts("operands");
    const std::vector<std::string> operators = described.texts("operators");
    if (operands.size() > choices.operands.size())
        described.refuse("operands", std::string(kTooManyOperands));
    if (operators.size() > choices.operators.size())
        described.refuse("operators", std::string(kTooManyOperators));
    for (std::size_t i = 0; i < operands.size(); ++i)
        choices.operands[i] = operandChoice(entries, operands[i]);
    for (std::size_t i = 0; i < operators.size(); ++i) {
        const auto offered = design::operatorEntries(choices.format, static_cast<int>(i));
        const auto found = std::find_if(offered.begin(), offered.end(), [&](std::string_view entry) {
            return trimmed(entry) == trimmed(operators[i]);
        });
        if (found == offered.end())
            described.refuse("operators", noSuchOperator(utf8(operators[i])));
        choices.operators[i] = static_cast<int>(found - offered.begin());
    }
    return choices;
}

Json advancedJson(const design::AdvancedChoices& choices) {
    return {{"format", design::advancedFormats()[static_cast<std::size_t>(choices.format)]},
            {"text", utf8(choices.text)}};
}

design::AdvancedChoices advancedChoices(const SchemaObject& described) {
    described.allowOnly(std::array<std::string_view, 2>{"format", "text"});
    return {described.text("text"), described.entry("format", design::advancedFormats())};
}

// Conditional expressions ------------------------------------------------------------------------------------

Json branchJson(const DatabaseModel& db, const design::BranchDraft& branch) {
    Json json = Json::object();
    if (branch.useField && branch.field <= model::MaxUserFields)
        json["field"] = utf8(db.Fields[branch.field].Name);
    if (!branch.text.empty())
        json["text"] = utf8(branch.text);
    if (branch.colour > 0 && branch.colour < kColours.size())
        json["colour"] = kColours[branch.colour];
    return json;
}

design::BranchDraft branchDraft(const DatabaseModel& db, const SchemaObject& described) {
    described.allowOnly(std::array<std::string_view, 3>{"field", "text", "colour"});
    design::BranchDraft branch;
    branch.text = described.text("text");
    branch.colour = static_cast<std::uint8_t>(described.entry("colour", kColours));
    if (described.has("field")) {
        const std::string name = described.text("field");
        const int slot = slotNamed(db, name);
        if (slot == 0)
            described.refuse("field", utf8(platform::texts::noSuchField(name)));
        design::chooseBranch(branch, static_cast<std::uint8_t>(slot));
    }
    return branch;
}

void enterCondition(const SchemaObject& field, const DatabaseModel& db, platform::Services& services,
                    FieldPropDraft& draft) {
    if (field.has("conditions") &&
        !design::conditionOk(db, services, conditionControls(db, field), draft.condition).accepted)
        field.refuse("conditions");
    if (field.has("then"))
        draft.branchThen = branchDraft(db, field.object("then"));
    if (field.has("else"))
        draft.branchElse = branchDraft(db, field.object("else"));
}

// Other databases --------------------------------------------------------------------------------------------

Json joinJson(const design::ExternalDraft& draft) {
    Json json = {{"source", utf8(draft.Source)}};
    if (draft.CmbViewList)
        json["view"] = *draft.CmbViewList;
    if (draft.displayField)
        json["displayField"] = *draft.displayField;
    if (draft.joinField)
        json["joinField"] = *draft.joinField;
    if (const auto type = model::fieldTypeName(static_cast<FieldType>(draft.KeyType)); !type.empty())
        json["keyType"] = type;
    return json;
}

Json lookupJson(const DatabaseModel& db, const design::ExternalDraft& draft) {
    Json json = {{"source", utf8(draft.Source)}};
    if (draft.displayField)
        json["displayField"] = *draft.displayField;
    if (draft.joinField && *draft.joinField > 0 && *draft.joinField <= model::MaxUserFields)
        json["join"] = utf8(db.Fields[*draft.joinField].Name);
    return json;
}

std::optional<std::uint8_t> chosenNumber(const SchemaObject& described, std::string_view key) {
    if (!described.has(key))
        return std::nullopt;
    return static_cast<std::uint8_t>(described.number(key, 0, 255));
}

void enterJoin(const SchemaObject& described, design::ExternalDraft& draft) {
    described.allowOnly(std::array<std::string_view, 5>{"source", "view", "displayField", "joinField", "keyType"});
    draft.Source = described.text("source");
    draft.CmbViewList = chosenNumber(described, "view");
    draft.displayField = chosenNumber(described, "displayField");
    draft.joinField = chosenNumber(described, "joinField");
    draft.KeyType = static_cast<std::uint8_t>(
        described.entry("keyType", model::FieldTypeNames, static_cast<int>(FieldType::Key)));
}

void enterLookup(const SchemaObject& described, const DatabaseModel& db, design::ExternalDraft& draft) {
    described.allowOnly(std::array<std::string_view, 3>{"source", "displayField", "join"});
    draft.Source = described.text("source");
    draft.displayField = chosenNumber(described, "displayField");
    draft.joinField.reset();
    if (!described.has("join"))
        return;
    const std::string name = described.text("join");
    const int slot = slotNamed(db, name);
    if (slot == 0)
        described.refuse("join", utf8(platform::texts::noSuchField(name)));
    draft.joinField = static_cast<std::uint8_t>(slot);
}

Json addressBookJson(const design::ExternalDraft& draft) {
    Json json = Json::object();
    if (draft.ABField1 > 0 && draft.ABField1 < model::AddressBookFieldNames.size())
        json["first"] = model::AddressBookFieldNames[draft.ABField1];
    if (draft.ABField2 > 0 && draft.ABField2 < model::AddressBookFieldNames.size())
        json["second"] = model::AddressBookFieldNames[draft.ABField2];
    return json;
}

void enterAddressBook(const SchemaObject& described, design::ExternalDraft& draft) {
    described.allowOnly(std::array<std::string_view, 2>{"first", "second"});
    draft.ABField1 = static_cast<std::uint8_t>(described.entry("first", model::AddressBookFieldNames));
    draft.ABField2 = static_cast<std::uint8_t>(described.entry("second", model::AddressBookFieldNames));
}

template <std::size_t n>
std::array<std::uint8_t, n> threeNumbers(const SchemaObject& described, std::string_view key,
                                         std::array<std::uint8_t, n> otherwise) {
    if (!described.has(key))
        return otherwise;
    const Json& json = described.json()[std::string(key)];
    const auto isByte = [](const Json& value) {
        return value.is_number_unsigned() && value.get<std::uint64_t>() < 256;
    };
    if (!json.is_array() || json.size() != n || !std::all_of(json.begin(), json.end(), isByte))
        described.misuse(key, "Three numbers from 0 to 255 belong here.");
    for (std::size_t i = 0; i < n; ++i)
        otherwise[i] = json[i].get<std::uint8_t>();
    return otherwise;
}

Json masterDetailJson(const model::OneToManyDef& def) {
    Json json = {{"source", utf8(def.Source)}};
    const model::OneToManyDef none;
    if (def.MatchFields != none.MatchFields)
        json["matchFields"] = numbersJson(def.MatchFields);
    if (def.SortFields != none.SortFields)
        json["sortFields"] = numbersJson(def.SortFields);
    if (!def.Label1.empty())
        json["label1"] = utf8(def.Label1);
    if (!def.Label2.empty())
        json["label2"] = utf8(def.Label2);
    if (def.Options != none.Options)
        json["options"] = numbersJson(def.Options);
    return json;
}

void enterMasterDetail(const SchemaObject& described, model::OneToManyDef& def) {
    described.allowOnly(
        std::array<std::string_view, 6>{"source", "matchFields", "sortFields", "label1", "label2", "options"});
    def.Source = described.text("source");
    def.Label1 = described.text("label1");
    def.Label2 = described.text("label2");
    def.MatchFields = threeNumbers(described, "matchFields", def.MatchFields);
    def.SortFields = threeNumbers(described, "sortFields", def.SortFields);
    def.Options = threeNumbers(described, "options", def.Options);
}

// Defaults, options, auto-writers ----------------------------------------------------------------------------

void addDefaultJson(const FieldPropDraft& draft, Json& json) {
    const FieldType type = draft.type();
    if (takesDefaultText(type) && !draft.txtDefault.empty())
        json["default"] = utf8(draft.txtDefault);
    else if (choosesDefault(type) && draft.cmbDefault > 0)
        json["default"] = design::defaultEntries(type)[static_cast<std::size_t>(draft.cmbDefault)];
    else if (type == FieldType::AutoIncremental)
        json["nextValue"] = std::stoi(draft.cmbDefaultText);
}

void enterDefault(const SchemaObject& field, FieldPropDraft& draft) {
    const FieldType type = draft.type();
    if (takesDefaultText(type)) {
        const Json& json = field.json();
        draft.txtDefault = json["default"].is_number() ? json["default"].dump() : field.text("default");
    } else {
        draft.cmbDefault = field.entry("default", design::defaultEntries(type));
    }
}

Json radioOptionsJson(const design::RadioDraft& radio) {
    Json options = Json::array();
    for (int i = 0; i < radio.count(); ++i)
        options.push_back(utf8(radio.Optxt[static_cast<std::size_t>(i)]));
    return options;
}

void enterOptions(const SchemaObject& field, design::RadioDraft& radio) {
    const std::vector<std::string> options = field.texts("options");
    if (options.size() < design::kFewestRadioOptions || options.size() > design::kRadioOptions)
        field.refuse("options", std::string(kWrongOptionCount));
    radio = {};
    std::copy(options.begin(), options.end(), radio.Optxt.begin());
    radio.CmbNobuton = static_cast<int>(options.size()) - design::kFewestRadioOptions;
}

void enterAutoWriter(const SchemaObject& described, platform::Services& services, FieldPropDraft& draft) {
    described.allowOnly(std::array<std::string_view, 2>{"separator", "items"});
    draft.checkAutoWriter = true;
    draft.cmbSeparate = described.entry("separator", design::separatorEntries(), 1);
    draft.ListAW = {};
    enterItems(described, services, draft.ListAW);
}

void enterItem(const SchemaObject& owner, const Json& item, const std::string& place, platform::Services& services,
               model::ListDef& list) {
    const std::string text = item.is_object() ? SchemaObject(item, place).text("text") : schemaText(item, place);
    if (text.empty())
        throw SchemaFault{ExitCode::Refused, place, std::string(kEmptyItem)};
    if (design::refusesFullList(list, services) || !design::addItem(list, text, services))
        owner.refuse("items");
}

// An item with an id of its own: one that the list editor would have left after items were deleted and moved.
std::uint8_t itemId(const Json& item, const std::string& place, std::size_t position) {
    if (!item.is_object())
        return static_cast<std::uint8_t>(position + 1);
    const SchemaObject described(item, place);
    described.allowOnly(std::array<std::string_view, 2>{"id", "text"});
    return static_cast<std::uint8_t>(described.number("id", 1, kHighestItemId, static_cast<int>(position) + 1));
}

} // namespace

std::optional<FieldType> fieldTypeNamed(std::string_view name) {
    for (std::size_t code = 0; code < model::FieldTypeNames.size(); ++code)
        if (calc::equalText(model::FieldTypeNames[code], name, calc::TextCase::Folded))
            return static_cast<FieldType>(code);
    return std::nullopt;
}

int slotNamed(const DatabaseModel& db, std::string_view name) {
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        const model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
        if (field.Type != FieldType::NotUsed && field.Name == name)
            return slot;
    }
    return 0;
}

Json itemsJson(const model::ListDef& list) {
    const bool plain = hasIdsInOrder(list);
    Json items = Json::array();
    for (std::size_t i = 0; i < list.Items.size(); ++i)
        if (plain)
            items.push_back(utf8(list.Items[i]));
        else
            items.push_back({{"id", list.ItemIds[i]}, {"text", utf8(list.Items[i])}});
    return items;
}

void enterItems(const SchemaObject& owner, platform::Services& services, model::ListDef& list) {
    if (!owner.has("items"))
        return;
    const Json& items = owner.json()["items"];
    if (!items.is_array())
        owner.misuse("items", "An array belongs here.");
    std::vector<std::uint8_t> ids;
    for (const Json& item : items) {
        const std::string place = owner.place() + ".items[" + std::to_string(ids.size()) + ']';
        enterItem(owner, item, place, services, list);
        ids.push_back(itemId(item, place, ids.size()));
    }
    if (std::set<std::uint8_t>(ids.begin(), ids.end()).size() != ids.size())
        owner.refuse("items", std::string(kDoubledId));
    list.ItemIds = std::move(ids);
}

void allowAttributes(const SchemaObject& field, FieldType type) {
    std::vector<std::string_view> names = attributeNames(type);
    names.insert(names.end(), {"slot", "name", "type", "searched", "carried"});
    field.allowOnly(names);
}

Json attributesJson(const DatabaseModel& db, const FieldPropDraft& draft) {
    const FieldType type = draft.type();
    Json json = Json::object();
    addDefaultJson(draft, json);
    if (design::showsPanel(type, Panel::cmbDecDigs) && draft.cmbDecDigs > 0)
        json["decimals"] = draft.cmbDecDigs;
    if (design::showsPanel(type, Panel::AutoWriter) && draft.checkAutoWriter)
        json["autoWriter"] = {{"separator", design::separatorEntries()[static_cast<std::size_t>(draft.cmbSeparate)]},
                              {"items", itemsJson(draft.ListAW)}};
    if (design::showsPanel(type, Panel::checkIncrementDecrement) && draft.checkIncrementDecrement)
        json["incrementButtons"] = true;
    if (design::showsPanel(type, Panel::chkBarcodeScan) && draft.chkBarcodeScan)
        json["barcodeScan"] = true;
    if (design::showsPanel(type, Panel::checkDisableAutoShift) && draft.checkDisableAutoShift)
        json["disableAutoShift"] = true;
    switch (type) {
    case FieldType::Expression:
        json["expression"] = simpleJson(db, draft.frmExpr);
        break;
    case FieldType::AdvExpression:
        json["advancedExpression"] = advancedJson(draft.frmExprAdv);
        break;
    case FieldType::ConditionalExpression:
        json["conditions"] = conditionsJson(db, design::CurrentDefinition(db, draft.condition));
        json["then"] = branchJson(db, draft.branchThen);
        json["else"] = branchJson(db, draft.branchElse);
        break;
    case FieldType::DBJoin:
        json["join"] = joinJson(draft.external);
        break;
    case FieldType::DBLookup:
        json["lookup"] = lookupJson(db, draft.external);
        break;
    case FieldType::AddressBookJoin:
    case FieldType::AddressBookLookup:
        json["addressBook"] = addressBookJson(draft.external);
        break;
    case FieldType::OneToMany:
        json["masterDetail"] = masterDetailJson(draft.frmMasterDetail);
        break;
    case FieldType::RadioButton:
        json["options"] = radioOptionsJson(draft.FrmRadio);
        if (draft.FrmRadio.OptSel >= 0)
            json["selected"] = draft.FrmRadio.OptSel + 1;
        break;
    default:
        break;
    }
    return json;
}

void enterAttributes(const SchemaObject& field, const DatabaseModel& db, platform::Services& services,
                     FieldPropDraft& draft) {
    allowAttributes(field, draft.type());
    if (field.has("default"))
        enterDefault(field, draft);
    if (field.has("nextValue"))
        draft.cmbDefaultText = field.json()["nextValue"].dump();
    draft.cmbDecDigs = field.number("decimals", 0, 3, draft.cmbDecDigs);
    if (field.has("autoWriter"))
        enterAutoWriter(field.object("autoWriter"), services, draft);
    if (field.has("incrementButtons"))
        draft.checkIncrementDecrement = field.flag("incrementButtons");
    if (field.has("barcodeScan"))
        draft.chkBarcodeScan = field.flag("barcodeScan");
    if (field.has("disableAutoShift"))
        draft.checkDisableAutoShift = field.flag("disableAutoShift");
    if (field.has("expression"))
        draft.frmExpr = simpleChoices(db, field.object("expression"));
    if (field.has("advancedExpression"))
        draft.frmExprAdv = advancedChoices(field.object("advancedExpression"));
    enterCondition(field, db, services, draft);
    if (field.has("join"))
        enterJoin(field.object("join"), draft.external);
    if (field.has("lookup"))
        enterLookup(field.object("lookup"), db, draft.external);
    if (field.has("addressBook"))
        enterAddressBook(field.object("addressBook"), draft.external);
    if (field.has("masterDetail"))
        enterMasterDetail(field.object("masterDetail"), draft.frmMasterDetail);
    if (field.has("options"))
        enterOptions(field, draft.FrmRadio);
    if (field.has("selected"))
        draft.FrmRadio.OptSel = field.number("selected", 1, draft.FrmRadio.count()) - 1;
}

std::uint8_t describedResultType(const SchemaObject& field, FieldType type) {
    if (type == FieldType::Expression && field.has("expression"))
        return static_cast<std::uint8_t>(
            std::max(field.object("expression").entry("format", design::expressionFormats(), -1), 0));
    if (type == FieldType::AdvExpression && field.has("advancedExpression"))
        return design::resultTypeOfFormat(
            field.object("advancedExpression").entry("format", design::advancedFormats()));
    return 0;
}

} // namespace tallybook::cli
