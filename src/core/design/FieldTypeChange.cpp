// The OK of Field Properties: checks, questions and the change of the column.
#include "core/calc/values/Conversion.h"
#include "core/calc/values/Numbers.h"
#include "core/design/Dialog.h"
#include "core/design/ExpressionBuilder.h"
#include "core/design/FieldAttributes.h"
#include "core/design/FieldProperties.h"
#include "core/design/ListItems.h"
#include "core/design/Tags.h"
#include "core/document/grid/GridDisplay.h"
#include "core/platform/Operation.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace tallybook::design {

namespace {

using model::FieldType;
using Focus = FieldPropFocus;

constexpr std::uint8_t kMostDigits = 3; // that a Float shows

bool isWholeOrFloat(FieldType type) {
    return type == FieldType::Integer || type == FieldType::Long || type == FieldType::Float;
}

// What every record of a slot stores beside its text, for ids from 0 to 255.
using IdMap = std::array<std::int32_t, 256>;

// Where the ids of records go when the options of a Radio Button take the ids of their places: those of an option
// follow it. One that no option has any more stays what it was; only where that is another option's now it takes an
// id of nobody's, so that the record shows no option that was never chosen for it.
IdMap idsByPlace(const model::ListDef& before, int options) {
    IdMap ids{};
    std::iota(ids.begin(), ids.end(), 0);
    int spare = options + 1;
    const auto isTaken = [&](int id) {
        return std::find(before.ItemIds.begin(), before.ItemIds.end(), id) != before.ItemIds.end();
    };
    for (int place = before.Count() - 1; place >= 0; --place) {
        const std::uint8_t id = before.ItemIds[static_cast<std::size_t>(place)];
        if (place < options) {
            ids[id] = place + 1;
        } else if (id <= options) {
            while (isTaken(spare))
                ++spare;
            ids[id] = spare++;
        }
    }
    return ids;
}

class OkPath {
public:
    OkPath(model::Document& doc, platform::Services& services, int slot, FieldPropDraft& draft, FieldPropMode mode,
           const std::function<void(DialogShown)>& show)
        : m_doc(doc), m_services(services), m_slot(slot), m_draft(draft), m_mode(mode), m_show(show),
          m_shown(valuesOf(doc.CurrDB20, slot)), m_oldType(field().Type),
          m_newType(typeMayChange(slot) ? draft.type() : m_oldType), m_change{draft, m_shown, m_oldType, m_newType,
                                                                              mode} {}

    FieldPropResult run() {
        using Step = bool (OkPath::*)();
        static constexpr std::array<Step, 17> kSteps = {
            &OkPath::checkName,          &OkPath::checkTexts,    &OkPath::checkSimpleForm, &OkPath::checkCondition,
            &OkPath::checkOptions,       &OkPath::checkExternal, &OkPath::checkNextValue,  &OkPath::agreeToConversion,
            &OkPath::agreeToFewerDigits, &OkPath::agreeToKeys,   &OkPath::makeList,        &OkPath::compileAdvanced,
            &OkPath::storeOptions,       &OkPath::convertColumn, &OkPath::reformat,        &OkPath::store,
            &OkPath::storeType,
        };
        const FieldAttributes before = attributesOf(db(), m_slot);
        m_result.accepted =
            std::all_of(kSteps.begin(), kSteps.end(), [this](const Step step) { return (this->*step)(); });
        if (before != attributesOf(db(), m_slot))
            m_doc.DocModified = true;
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
        m_texts.name = trimmed(m_draft.txtFieldName);
        const std::string& name = m_texts.name;
        if (name.empty())
            return refuse("Field Name cannot be blank", "Information", Focus::txtFieldName);
        for (int slot = 0; slot <= model::MaxUserFields; ++slot)
            if (slot != m_slot && db().Fields[static_cast<std::size_t>(slot)].Name == name)
                return refuse("Another Field exists with this name.\nEnter another name and save the field "
                              "information ",
                              "Duplicate field name", Focus::txtFieldName);
        return m_change.keeps(&FieldPropDraft::txtFieldName) ||
               !refusesText(m_services, "A name", name, model::kTextLength) || refuse(Focus::txtFieldName);
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
        const bool changes = !m_change.keeps(&FieldPropDraft::txtDefault) || changesDigits();
        if (storesDefaultText(m_newType) && changes &&
            (!checkDefault(m_draft, m_services) || refusesText(m_services, "A default", m_draft.txtDefault, longest)))
            return refuse(Focus::txtDefault);
        return m_newType != FieldType::OneToMany || checkOneToMany();
    }

    // A text that a file has may be longer than one that is typed. As long as nobody changes it, it stays.
    bool refusesChanged(std::string_view what, const std::string& text, const std::string& shown, std::size_t most) {
        return (!m_change.keepsType() || text != shown) && refusesText(m_services, what, text, most);
    }

    bool checkOneToMany() {
        const model::OneToManyDef& def = m_draft.frmMasterDetail;
        const model::OneToManyDef& shown = m_shown.frmMasterDetail;
        const bool tooLong =
            refusesChanged("The name of the other Tallybook", def.Source, shown.Source, kMostInSource) ||
            refusesChanged("A label", def.Label1, shown.Label1, kMostInLabel) ||
            refusesChanged("A label", def.Label2, shown.Label2, kMostInLabel);
        return !tooLong || refuse(Focus::frmMasterDetail);
    }

    // A number that the tokens cannot hold is refused here, ahead of the column, and not where it is stored.
    bool checkSimpleForm() {
        if (m_newType != FieldType::Expression)
            return true;
        if (m_oldType == FieldType::Expression)
            m_texts.expression = std::as_const(db()).Expressions.at(m_slot);
        return (VerifyExpression(m_draft.frmExpr, db(), m_services, m_slot) &&
                StoreExpression20(m_draft.frmExpr, m_services, m_texts.expression)) ||
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
        if (refusesChanged("A result", m_draft.branchThen.text, m_shown.branchThen.text, kMostInResult))
            return refuse(Focus::TxtThen);
        return !refusesChanged("A result", m_draft.branchElse.text, m_shown.branchElse.text, kMostInResult) ||
               refuse(Focus::TxtElse);
    }

    bool checkOptions() {
        if (m_newType != FieldType::RadioButton)
            return true;
        for (int option = 0; option < m_draft.FrmRadio.count(); ++option) {
            const auto place = static_cast<std::size_t>(option);
            const std::string& text = m_draft.FrmRadio.Optxt[place];
            if (text.empty())
                return refuse("Enter the values for the options of the Radio-button ", "Options cannot be empty",
                              Focus::Optxt, option);
            if (refusesChanged("An option", text, m_shown.FrmRadio.Optxt[place], model::kTextLength))
                return refuse(Focus::Optxt, option);
        }
        return true;
    }

    bool checkExternal() {
        const ExternalDraft& external = m_draft.external;
        if (m_newType == FieldType::DBJoin) {
            if (!external.CmbViewList)
                return refuse("External view was not selected", {}, Focus::frmExternal);
            if (!external.displayField)
                return refuse("External display field was not selected", {}, Focus::displayField);
            if (!external.joinField)
                return refuse("External join field was not selected", {}, Focus::joinField);
            if (trimmed(external.Source).empty())
                return refuse(platform::texts::kNoOtherTallybook, {}, Focus::frmExternal);
        }
        const bool hasSource = m_newType == FieldType::DBJoin || m_newType == FieldType::DBLookup;
        return !hasSource ||
               !refusesChanged("The name of the other Tallybook", external.Source, m_shown.external.Source,
                               model::kTextLength) ||
               refuse(Focus::frmExternal);
    }

    bool checkNextValue() {
        if (m_newType != FieldType::AutoIncremental)
            return true;
        const auto next = calc::toInt32(m_draft.cmbDefaultText, m_services.regional);
        if (!next)
            return refuse(platform::texts::kNextValueNotWhole, "Warning", Focus::cmbDefault);
        m_texts.nextValue = *next;
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

    // A save writes a Float as it is shown. More digits than three show nothing, so that there are none to be lost.
    bool agreeToFewerDigits() {
        const std::uint8_t before = field().Decimals;
        if (!changesDigits() || m_doc.NumDataRecs == 0 || decimals() >= before || before > kMostDigits)
            return true;
        return asksToDestroy(m_services, platform::texts::kFewerDigits, {}, platform::Icon::Warning) ||
               refuse(Focus::cmbDecDigs);
    }

    bool agreeToKeys() {
        if (!convertsData() || m_newType != FieldType::Key)
            return true;
        const bool makesKeys = asksToDestroy(
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
        const bool hasItems = std::as_const(db()).Lists.at(m_slot).Count() > 0;
        if (hasItems && !asks(m_services, "Clear existing list and create new list?", "Existing list found")) {
            matchStandingList(std::as_const(db()).Lists.at(m_slot));
        } else if (!calc::createList(m_doc, m_services, m_slot)) {
            say(m_services,
                "More than 60 unique items found.  Some items could not be included.\n"
                "Convert this field back to text, reduce the number of unique items and try again.",
                {}, platform::Icon::Critical);
            show(DialogShown::Visible);
            return refuse(Focus::cmbFieldType);
        }
        m_doc.DocModified = true;
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
        if (m_oldType == FieldType::AdvExpression)
            m_texts.expression = std::as_const(db()).Expressions.at(m_slot);
        std::size_t place = 0;
        const FieldInDesign own{m_slot, m_texts.name};
        if (StoreExpression25(m_draft.frmExprAdv, db(), own, decimals(), m_services, m_texts.expression, &place))
            return true;
        if (m_oldType == FieldType::AdvExpression)
            db().Expressions[m_slot].ResultType = m_texts.expression.ResultType;
        return refuse(Focus::txtAdvExpression, static_cast<int>(place));
    }

    // Options take the ids of their places from 1. Records of the field follow theirs, so that what they show stays.
    bool storeOptions() {
        if (m_newType != FieldType::RadioButton || m_change.keepsOptions())
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
            followOptions(idsByPlace(before, options));
        return true;
    }

    void followOptions(const IdMap& ids) {
        for (int record = 0; record < m_doc.NumDataRecs; ++record) {
            const std::int32_t id = m_doc.CellLongs.get(record, m_slot);
            if (id > 0 && id < static_cast<std::int32_t>(ids.size()))
                m_doc.CellLongs.set(record, m_slot, ids[static_cast<std::size_t>(id)]);
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

    bool changesDigits() {
        return hasGrid() && m_newType == FieldType::Float && m_oldType == FieldType::Float &&
               decimals() != field().Decimals;
    }

    bool reformat() {
        if (!changesDigits())
            return true;
        show(DialogShown::Hidden);
        field().Decimals = decimals();
        m_doc.DocModified = true;
        calc::convertType(m_doc, m_services, m_slot, m_newType, m_newType, m_draft.cmbDecDigs);
        return true;
    }

    std::uint8_t decimals() { return m_change.decimals(field()); }

    bool store() {
        if (storeAttributes(m_change, m_texts, db(), m_slot))
            say(m_services, "Both Display field and the Join Field is changed, Please reselect the join values",
                "Attention");
        return true;
    }

    bool storeType() {
        field().Type = m_newType;
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
    const FieldPropDraft m_shown; // what the dialog opened with
    const FieldType m_oldType;
    const FieldType m_newType;
    const FieldChange m_change;

    CheckedTexts m_texts;
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
