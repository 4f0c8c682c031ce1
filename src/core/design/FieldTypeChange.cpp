// The OK of Field Properties: checks, questions, the change of the column, and what is stored.
#include "core/calc/values/Conversion.h"
#include "core/calc/values/Numbers.h"
#include "core/design/Dialog.h"
#include "core/design/ExpressionBuilder.h"
#include "core/design/FieldProperties.h"
#include "core/design/ListItems.h"
#include "core/design/Tags.h"
#include "core/document/grid/GridDisplay.h"
#include "core/platform/Operation.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <utility>

namespace tallybook::design {

namespace {

using model::FieldType;
using Focus = FieldPropFocus;

constexpr std::uint8_t kBarcodeFlag = 0x80;
constexpr std::array<std::uint8_t, 3> kImageDepths = {1, 4, 8};

bool isWholeOrFloat(FieldType type) {
    return type == FieldType::Integer || type == FieldType::Long || type == FieldType::Float;
}

class OkPath {
public:
    OkPath(model::Document& doc, platform::Services& services, int slot, FieldPropDraft& draft, FieldPropMode mode,
           const std::function<void(DialogShown)>& show)
        : m_doc(doc), m_services(services), m_slot(slot), m_draft(draft), m_mode(mode), m_show(show),
          m_oldType(field().Type), m_newType(typeMayChange(slot) ? draft.type() : m_oldType) {}

    FieldPropResult run() {
        using Step = bool (OkPath::*)();
        static constexpr std::array<Step, 16> kSteps = {
            &OkPath::checkName,     &OkPath::checkTexts,    &OkPath::checkSimpleForm, &OkPath::checkCondition,
            &OkPath::checkOptions,  &OkPath::checkExternal, &OkPath::checkNextValue,  &OkPath::agreeToConversion,
            &OkPath::agreeToKeys,   &OkPath::makeList,      &OkPath::compileAdvanced, &OkPath::storeOptions,
            &OkPath::convertColumn, &OkPath::reformat,      &OkPath::storeAttributes, &OkPath::storeType,
        };
        m_result.accepted =
            std::all_of(kSteps.begin(), kSteps.end(), [this](const Step step) { return (this->*step)(); });
        return m_result;
    }

private:
    model::DatabaseModel& db() { return m_doc.CurrDB20; }
    model::FieldDef& field() { return db().Fields[static_cast<std::size_t>(m_slot)]; }
    bool hasGrid() const { return m_mode == FieldPropMode::Document; }

    // Data that a change of the type would touch, in a field that was in use.
    bool convertsData() const {
        return hasGrid() && m_doc.NumDataRecs > 0 && m_oldType != FieldType::NotUsed && m_oldType != m_newType;
    }

    void show(DialogShown shown) {
        if (m_show)
            m_show(shown);
    }

    bool refuse(Focus focus, int index = 0) {
        m_result.focus = focus;
        m_result.index = index;
        return false;
    }
    bool refuse(std::string_view text, std::string_view title, Focus focus, int index = 0) {
        say(m_services, text, title);
        return refuse(focus, index);
    }

    bool checkName() {
        m_name = trimmed(m_draft.txtFieldName);
        if (m_name.empty())
            return refuse("Field Name cannot be blank", "Information", Focus::txtFieldName);
        for (int slot = 0; slot <= model::MaxUserFields; ++slot)
            if (slot != m_slot && db().Fields[static_cast<std::size_t>(slot)].Name == m_name)
                return refuse("Another Field exists with this name.\nEnter another name and save the field "
                              "information ",
                              "Duplicate field name", Focus::txtFieldName);
        return !refusesText(m_services, "A name", m_name, model::kTextLength) || refuse(Focus::txtFieldName);
    }

    // The default, and the texts of the panels that a file gives a width.
    bool checkTexts() {
        if (isWholeOrFloat(m_newType) && m_draft.txtDefault == "-") {
            say(m_services, std::string(model::fieldTypeName(m_newType)) + " value expected!", "Warning",
                platform::Icon::Warning);
            m_draft.txtDefault.clear();
            return refuse(Focus::txtDefault);
        }
        const std::size_t longest = m_newType == FieldType::Memo ? model::kMemoLength : model::kTextLength;
        if (storesDefaultText() &&
            (!checkDefault(m_draft, m_services) || refusesText(m_services, "A default", m_draft.txtDefault, longest)))
            return refuse(Focus::txtDefault);
        return m_newType != FieldType::OneToMany || checkOneToMany();
    }

    bool checkOneToMany() {
        const model::OneToManyDef& def = m_draft.frmMasterDetail;
        const bool tooLong = refusesText(m_services, "The name of the other Tallybook", def.Source, kMostInSource) ||
                             refusesText(m_services, "A label", def.Label1, kMostInLabel) ||
                             refusesText(m_services, "A label", def.Label2, kMostInLabel);
        return !tooLong || refuse(Focus::frmMasterDetail);
    }

    // A number that the tokens cannot hold is refused here, ahead of the column, and not where it is stored.
    bool checkSimpleForm() {
        if (m_newType != FieldType::Expression)
            return true;
        if (m_oldType == FieldType::Expression)
            m_expression = std::as_const(db()).Expressions.at(m_slot);
        return (VerifyExpression(m_draft.frmExpr, db(), m_services) &&
                StoreExpression20(m_draft.frmExpr, m_services, m_expression)) ||
               refuse(Focus::cmbExpr);
    }

    bool checkCondition() {
        if (m_newType != FieldType::ConditionalExpression)
            return true;
        if (m_draft.condition.CondFields[0] == 0) {
            say(m_services, "Enter the condition for the expression", "Incomplete information",
                platform::Icon::Critical);
            return refuse(Focus::Command1);
        }
        if (refusesText(m_services, "A result", m_draft.branchThen.text, kMostInResult))
            return refuse(Focus::TxtThen);
        return !refusesText(m_services, "A result", m_draft.branchElse.text, kMostInResult) || refuse(Focus::TxtElse);
    }

    bool checkOptions() {
        if (m_newType != FieldType::RadioButton)
            return true;
        for (int option = 0; option < m_draft.FrmRadio.count(); ++option) {
            const std::string& text = m_draft.FrmRadio.Optxt[static_cast<std::size_t>(option)];
            if (text.empty())
                return refuse("Enter the values for the options of the Radio-button ", "Options cannot be empty",
                              Focus::Optxt, option);
            if (refusesText(m_services, "An option", text, model::kTextLength))
                return refuse(Focus::Optxt, option);
        }
        return true;
    }

    bool checkExternal() {
        if (m_newType == FieldType::DBJoin) {
            if (!m_draft.external.CmbViewList)
                return refuse("External view was not selected", {}, Focus::frmExternal);
            if (!m_draft.external.displayField)
                return refuse("External display field was not selected", {}, Focus::displayField);
            if (!m_draft.external.joinField)
                return refuse("External join field was not selected", {}, Focus::joinField);
        }
        const bool hasSource = m_newType == FieldType::DBJoin || m_newType == FieldType::DBLookup;
        return !hasSource ||
               !refusesText(m_services, "The name of the other Tallybook", m_draft.external.Source,
                            model::kTextLength) ||
               refuse(Focus::frmExternal);
    }

    bool checkNextValue() {
        if (m_newType != FieldType::AutoIncremental)
            return true;
        const auto next = calc::toInt32(m_draft.cmbDefaultText, m_services.regional);
        if (!next)
            return refuse(platform::texts::kNextValueNotWhole, "Warning", Focus::cmbDefault);
        m_nextValue = *next;
        return true;
    }

    bool agreeToConversion() {
        if (!convertsData())
            return true;
        return asks(m_services,
                    "Are you sure you want to convert this field from " +
                        std::string(model::fieldTypeName(m_oldType)) + " to " +
                        std::string(model::fieldTypeName(m_newType)) +
                        "?\nWarning: conversion not possible will result in blanks or zeros",
                    {}, platform::Icon::Warning) ||
               refuse(Focus::cmbFieldType);
    }

    bool agreeToKeys() {
        if (!convertsData() || m_newType != FieldType::Key)
            return true;
        const bool makesKeys = asks(
            m_services,
            "WARNING:  This action will change the field into 'key'.   Would you like to convert the values into "
            "key values?   Note: Choosing 'YES' will delete all existing keys, cannot be undone.   If you choose "
            "'NO' the existing keys will be preserved.",
            {}, platform::Icon::Warning);
        if (!makesKeys)
            return true;
        if (!calc::CreateKeys(m_doc, m_services, m_slot, calc::KeepPosition::No))
            return refuse(Focus::cmbFieldType);
        m_doc.DocModified = true;
        return true;
    }

    // The list is collected while the column still holds its old texts.
    bool makeList() {
        if (!convertsData() || m_newType != FieldType::List)
            return true;
        show(DialogShown::Hidden);
        m_doc.DocModified = true;
        const model::ListDef before = std::as_const(db()).Lists.at(m_slot);
        if (!calc::createList(m_doc, m_services, m_slot)) {
            show(DialogShown::Visible);
            return refuse(Focus::cmbFieldType);
        }
        if (before.Count() > 0 && before == std::as_const(db()).Lists.at(m_slot))
            matchStandingList(before);
        const int column = model::columnOfSlot(m_slot);
        m_doc.grd.pictures(column).clear();
        m_doc.grd.colours(column).clear();
        m_doc.CellVals.slotColumn(m_slot).clear(); // the keys of a join
        return true;
    }

    // The user kept the list that the field had. A record has the item that it shows, or none: its text alone would
    // not be saved.
    void matchStandingList(const model::ListDef& list) {
        std::string scratch;
        for (int record = 0; record < m_doc.NumDataRecs; ++record) {
            const int row = record + model::kFirstDataRow;
            const int column = model::columnOfSlot(m_slot);
            const auto item = std::find(list.Items.begin(), list.Items.end(), m_doc.grd.text(row, column, scratch));
            const bool found = item != list.Items.end();
            m_doc.CellLongs.set(record, m_slot,
                                found ? list.ItemIds[static_cast<std::size_t>(item - list.Items.begin())] : 0);
            if (!found)
                m_doc.grd.setText(row, column, {});
        }
    }

    // Ahead of the conversion, which empties the column: a fault in the text must not cost the column's values. The
    // result type takes the chosen format even so, as long as the field is of this form.
    bool compileAdvanced() {
        if (m_newType != FieldType::AdvExpression)
            return true;
        m_expression = std::as_const(db()).Expressions.at(m_slot);
        std::size_t place = 0;
        if (StoreExpression25(m_draft.frmExprAdv, db(), decimals(), m_services, m_expression, &place))
            return true;
        if (m_oldType == FieldType::AdvExpression)
            db().Expressions[m_slot].ResultType = m_expression.ResultType;
        return refuse(Focus::txtAdvExpression, static_cast<int>(place));
    }

    // Options take the ids of their places from 1. Records of the field follow theirs, so that what they show stays.
    bool storeOptions() {
        if (m_newType != FieldType::RadioButton)
            return true;
        const model::ListDef before = std::as_const(db()).Lists.at(m_slot);
        const int options = m_draft.FrmRadio.count();
        model::ListDef& list = db().Lists[m_slot];
        list = {};
        for (int option = 0; option < options; ++option) {
            list.ItemIds.push_back(static_cast<std::uint8_t>(option + 1));
            list.Items.push_back(m_draft.FrmRadio.Optxt[static_cast<std::size_t>(option)]);
        }
        field().Decimals = static_cast<std::uint8_t>(options);
        if (hasGrid() && m_oldType == FieldType::RadioButton && list != before)
            followOptions(before, options);
        return true;
    }

    void followOptions(const model::ListDef& before, int options) {
        std::array<std::int32_t, 256> newId{};
        for (int place = std::min(before.Count(), options) - 1; place >= 0; --place)
            newId[before.ItemIds[static_cast<std::size_t>(place)]] = place + 1;
        for (int record = 0; record < m_doc.NumDataRecs; ++record) {
            const std::int32_t id = m_doc.CellLongs.get(record, m_slot);
            if (id > 0)
                m_doc.CellLongs.set(record, m_slot, id < 256 ? newId[static_cast<std::size_t>(id)] : 0);
        }
        refreshItemTexts(m_doc, m_slot);
    }

    bool convertColumn() {
        if (!hasGrid() || m_oldType == m_newType || m_newType == FieldType::List)
            return true;
        m_doc.DocModified = true;
        calc::convertType(m_doc, m_services, m_slot, m_oldType, m_newType, m_draft.cmbDecDigs);
        m_doc.CellVals.slotColumn(m_slot).clear();
        if (m_newType == FieldType::DBJoin)
            keepJoinKeys();
        return true;
    }

    // What a join stores of a record is its key, not the text that it shows.
    void keepJoinKeys() {
        std::string scratch;
        for (int record = 0; record < m_doc.NumDataRecs; ++record)
            m_doc.CellVals.set(record, m_slot,
                               m_doc.grd.text(record + model::kFirstDataRow, model::columnOfSlot(m_slot), scratch));
    }

    bool reformat() {
        const bool digitsChange =
            m_newType == FieldType::Float && m_oldType == FieldType::Float && decimals() != field().Decimals;
        if (!digitsChange || !hasGrid())
            return true;
        show(DialogShown::Hidden);
        field().Decimals = decimals();
        m_doc.DocModified = true;
        calc::convertType(m_doc, m_services, m_slot, m_newType, m_newType, m_draft.cmbDecDigs);
        return true;
    }

    // The digits of cmbDecDigs; those of the field when the list has no selection.
    std::uint8_t decimals() {
        return m_draft.cmbDecDigs >= 0 ? static_cast<std::uint8_t>(m_draft.cmbDecDigs) : field().Decimals;
    }

    bool storeAttributes() {
        storeDefinition();
        storeDecimals();
        field().Name = m_name;
        storeDefault();
        storeAutoWriter();
        if (m_newType == FieldType::Text) {
            const unsigned others = field().FieldFlags & ~static_cast<unsigned>(kBarcodeFlag);
            field().FieldFlags = static_cast<std::uint8_t>(others | (m_draft.chkBarcodeScan ? kBarcodeFlag : 0u));
        }
        return true;
    }

    void storeDefinition() {
        switch (m_newType) {
        case FieldType::Expression:
        case FieldType::AdvExpression:
            db().Expressions[m_slot] = m_expression;
            break;
        case FieldType::DBJoin:
        case FieldType::DBLookup:
            storeExternal();
            break;
        case FieldType::AddressBookJoin:
        case FieldType::AddressBookLookup:
            db().Externals[m_slot].ABField1 = m_draft.external.ABField1;
            db().Externals[m_slot].Extra = m_draft.external.ABField2;
            break;
        case FieldType::OneToMany:
            db().OneToManys[m_slot] = m_draft.frmMasterDetail;
            break;
        case FieldType::ConditionalExpression:
            storeCondition();
            break;
        default:
            break;
        }
    }

    void storeExternal() {
        const ExternalDraft& draft = m_draft.external;
        model::ExternalDef& external = db().Externals[m_slot];
        const bool bothChanged = m_newType == FieldType::DBJoin && m_oldType == FieldType::DBJoin &&
                                 external.MatchField != *draft.displayField &&
                                 external.SourceField != *draft.joinField;
        external.Source = draft.Source;
        external.MatchField = draft.displayField.value_or(0);
        external.SourceField = draft.joinField.value_or(0);
        if (m_newType == FieldType::DBJoin) {
            external.ABField1 = *draft.CmbViewList;
            external.KeyType = draft.KeyType;
        }
        if (bothChanged)
            say(m_services, "Both Display field and the Join Field is changed, Please reselect the join values",
                "Attention");
    }

    void storeCondition() {
        model::CondExprDef& condition = db().CondExprs[m_slot];
        condition = m_draft.condition;
        const BranchDraft& whenTrue = m_draft.branchThen;
        const BranchDraft& whenFalse = m_draft.branchElse;
        condition.TrueKind = whenTrue.colour;
        condition.TrueText = whenTrue.text;
        condition.TrueField = whenTrue.useField ? whenTrue.field : std::uint8_t{0};
        condition.FalseKind = whenFalse.colour;
        condition.FalseText = whenFalse.text;
        condition.FalseField = whenFalse.useField ? whenFalse.field : std::uint8_t{0};
    }

    void storeDecimals() {
        switch (m_newType) {
        case FieldType::Float:
        case FieldType::Expression:
        case FieldType::AdvExpression:
            field().Decimals = decimals();
            break;
        case FieldType::Image:
            field().Decimals = kImageDepths[static_cast<std::size_t>(std::clamp(m_draft.cmbDefault, 0, 2))];
            break;
        case FieldType::Checkbox:
            field().Decimals = m_draft.cmbDefault == 1 ? 1 : 0;
            break;
        case FieldType::Text:
            if (m_oldType != m_newType || m_draft.checkDisableAutoShift != (field().Decimals == 1))
                field().Decimals = m_draft.checkDisableAutoShift ? 1 : 0;
            break;
        default:
            break;
        }
    }

    bool storesDefaultText() const {
        return m_newType == FieldType::Text || m_newType == FieldType::Memo || isWholeOrFloat(m_newType);
    }

    void storeDefault() {
        static constexpr std::array<std::string_view, 3> kStamps = {"", "A", "U"};
        if (storesDefaultText())
            field().Default = m_draft.txtDefault;
        else if (m_newType == FieldType::Date || m_newType == FieldType::Time)
            field().Default = kStamps[static_cast<std::size_t>(std::clamp(m_draft.cmbDefault, 0, 2))];
        else if (m_newType == FieldType::RadioButton)
            field().Default = std::to_string(std::max(m_draft.FrmRadio.OptSel, 0) + 1);
        else if (m_newType == FieldType::AutoIncremental)
            db().AutoIncNext[m_slot] = m_nextValue;
    }

    // Set Auto Writer / Increment Decrement Property. A type without the control loses the setting with its change;
    // otherwise the byte is carried.
    void storeAutoWriter() {
        const bool changes = m_oldType != m_newType;
        if (showsPanel(m_newType, Panel::AutoWriter)) {
            const int chosen = m_draft.checkAutoWriter ? std::max(m_draft.cmbSeparate, 0) : 0;
            const int known = static_cast<int>(separatorEntries().size()) - 1;
            if (chosen != std::min<int>(field().AutoWriter, known))
                field().AutoWriter = static_cast<std::uint8_t>(chosen);
            if (chosen != 0)
                db().Lists[m_slot] = m_draft.ListAW;
        } else if (changes) {
            field().AutoWriter = 0;
        }
        if (showsPanel(m_newType, Panel::checkIncrementDecrement))
            field().IncDec = m_draft.checkIncrementDecrement ? 1 : 0;
        else if (changes)
            field().IncDec = 0;
    }

    bool storeType() {
        field().Type = m_newType;
        m_doc.DocModified = true;
        if (hasGrid())
            document::gridLoadField(m_doc, m_services.regional, m_slot);
        return true;
    }

    model::Document& m_doc;
    platform::Services& m_services;
    int m_slot;
    FieldPropDraft& m_draft;
    FieldPropMode m_mode;
    const std::function<void(DialogShown)>& m_show;
    FieldType m_oldType;
    FieldType m_newType;

    std::string m_name;
    model::ExprDef m_expression;
    std::int32_t m_nextValue = 1;
    FieldPropResult m_result;
};

} // namespace

FieldPropResult fieldPropertiesOK(model::Document& doc, platform::Services& services, int slot, FieldPropDraft& draft,
                                  FieldPropMode mode, const std::function<void(DialogShown)>& show) {
    FieldPropResult result;
    platform::runOperation(services.ui, tags::kFieldOk,
                           [&] { result = OkPath(doc, services, slot, draft, mode, show).run(); });
    return result;
}

} // namespace tallybook::design
