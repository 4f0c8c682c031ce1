#include "core/design/FieldAttributes.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tallybook::design {

namespace {

using model::FieldType;

constexpr std::uint8_t kBarcodeFlag = 0x80;
constexpr std::array<std::uint8_t, 3> kImageDepths = {1, 4, 8};

class AttributeStore {
public:
    AttributeStore(const FieldChange& change, model::DatabaseModel& db, int slot)
        : m_change(change), m_draft(change.draft), m_newType(change.newType), m_db(db), m_slot(slot),
          m_field(db.Fields[static_cast<std::size_t>(slot)]) {}

    bool store(CheckedTexts texts) {
        const bool bothChanged = bothFieldsChange();
        storeDefinition(std::move(texts.expression));
        storeDecimals();
        if (!m_change.keeps(&FieldPropDraft::txtFieldName))
            m_field.Name = std::move(texts.name);
        storeDefault(texts.nextValue);
        storeAutoWriter();
        storeIncDec();
        if (m_newType == FieldType::Text) {
            const unsigned others = m_field.FieldFlags & ~static_cast<unsigned>(kBarcodeFlag);
            m_field.FieldFlags = static_cast<std::uint8_t>(others | (m_draft.chkBarcodeScan ? kBarcodeFlag : 0u));
        }
        return bothChanged;
    }

private:
    bool bothFieldsChange() const {
        const model::ExternalDef& external = std::as_const(m_db).Externals.at(m_slot);
        return m_newType == FieldType::DBJoin && m_change.oldType == FieldType::DBJoin &&
               external.MatchField != m_draft.external.displayField &&
               external.SourceField != m_draft.external.joinField;
    }

    void storeDefinition(model::ExprDef expression) {
        switch (m_newType) {
        case FieldType::Expression:
        case FieldType::AdvExpression:
            m_db.Expressions[m_slot] = std::move(expression);
            break;
        case FieldType::DBJoin:
        case FieldType::DBLookup:
            storeExternal();
            break;
        case FieldType::AddressBookJoin:
        case FieldType::AddressBookLookup:
            if (m_change.keeps(&FieldPropDraft::external))
                break;
            m_db.Externals[m_slot].ABField1 = m_draft.external.ABField1;
            m_db.Externals[m_slot].Extra = m_draft.external.ABField2;
            break;
        case FieldType::OneToMany:
            if (!m_change.keeps(&FieldPropDraft::frmMasterDetail))
                m_db.OneToManys[m_slot] = m_draft.frmMasterDetail;
            break;
        case FieldType::ConditionalExpression:
            storeCondition();
            break;
        default:
            break;
        }
    }

    void storeExternal() {
        if (m_change.keeps(&FieldPropDraft::external))
            return;
        const ExternalDraft& draft = m_draft.external;
        model::ExternalDef& external = m_db.Externals[m_slot];
        external.Source = draft.Source;
        external.MatchField = draft.displayField.value_or(0);
        external.SourceField = draft.joinField.value_or(0);
        if (m_newType == FieldType::DBJoin) {
            external.ABField1 = draft.CmbViewList.value_or(0);
            external.KeyType = draft.KeyType;
        }
    }

    void storeCondition() {
        model::CondExprDef condition = m_draft.condition;
        const BranchDraft& whenTrue = m_draft.branchThen;
        const BranchDraft& whenFalse = m_draft.branchElse;
        condition.TrueKind = whenTrue.colour;
        condition.TrueText = whenTrue.text;
        condition.TrueField = whenTrue.useField ? whenTrue.field : std::uint8_t{0};
        condition.FalseKind = whenFalse.colour;
        condition.FalseText = whenFalse.text;
        condition.FalseField = whenFalse.useField ? whenFalse.field : std::uint8_t{0};
        m_db.CondExprs[m_slot] = std::move(condition);
    }

    void storeDecimals() {
        switch (m_newType) {
        case FieldType::Float:
        case FieldType::Expression:
        case FieldType::AdvExpression:
            m_field.Decimals = m_change.decimals(m_field);
            break;
        case FieldType::Image:
            if (!m_change.keeps(&FieldPropDraft::cmbDefault))
                m_field.Decimals = kImageDepths[static_cast<std::size_t>(std::clamp(m_draft.cmbDefault, 0, 2))];
            break;
        case FieldType::Checkbox:
            if (!m_change.keeps(&FieldPropDraft::cmbDefault))
                m_field.Decimals = m_draft.cmbDefault == 1 ? 1 : 0;
            break;
        case FieldType::Text:
            if (m_change.oldType != m_newType || m_draft.checkDisableAutoShift != (m_field.Decimals == 1))
                m_field.Decimals = m_draft.checkDisableAutoShift ? 1 : 0;
            break;
        default:
            break;
        }
    }

    void storeDefault(std::int32_t nextValue) {
        static constexpr std::array<std::string_view, 3> kStamps = {"", "A", "U"};
        if (storesDefaultText(m_newType)) {
            m_field.Default = m_draft.txtDefault;
        } else if (m_newType == FieldType::Date || m_newType == FieldType::Time) {
            if (!m_change.keeps(&FieldPropDraft::cmbDefault))
                m_field.Default = kStamps[static_cast<std::size_t>(std::clamp(m_draft.cmbDefault, 0, 2))];
        } else if (m_newType == FieldType::RadioButton) {
            if (!m_change.keepsType() || m_draft.FrmRadio.OptSel != m_change.shown.FrmRadio.OptSel)
                m_field.Default = std::to_string(std::max(m_draft.FrmRadio.OptSel, 0) + 1);
        } else if (m_newType == FieldType::AutoIncremental) {
            if (!m_change.keeps(&FieldPropDraft::cmbDefaultText))
                m_db.AutoIncNext[m_slot] = nextValue;
        }
    }

    // Set Auto Writer / Increment Decrement Property. A type without the control loses the setting with its change;
    // otherwise the byte is carried.
    void storeAutoWriter() {
        if (!showsPanel(m_newType, Panel::AutoWriter)) {
            if (m_change.oldType != m_newType)
                m_field.AutoWriter = 0;
            return;
        }
        const int chosen = m_draft.checkAutoWriter ? std::max(m_draft.cmbSeparate, 0) : 0;
        const int known = static_cast<int>(separatorEntries().size()) - 1;
        if (chosen != std::min<int>(m_field.AutoWriter, known))
            m_field.AutoWriter = static_cast<std::uint8_t>(chosen);
        if (chosen != 0)
            m_db.Lists[m_slot] = m_draft.ListAW;
    }

    void storeIncDec() {
        const bool shown = showsPanel(m_newType, Panel::checkIncrementDecrement);
        if (shown && m_draft.checkIncrementDecrement != (m_field.IncDec == 1))
            m_field.IncDec = m_draft.checkIncrementDecrement ? 1 : 0;
        else if (!shown && m_change.oldType != m_newType)
            m_field.IncDec = 0;
    }

    const FieldChange& m_change;
    const FieldPropDraft& m_draft;
    FieldType m_newType;
    model::DatabaseModel& m_db;
    int m_slot;
    model::FieldDef& m_field;
};

} // namespace

FieldAttributes attributesOf(const model::DatabaseModel& db, int slot) {
    return {db.Fields[static_cast<std::size_t>(slot)],
            db.Lists.at(slot),
            db.AutoIncNext.at(slot),
            db.Expressions.at(slot),
            db.Externals.at(slot),
            db.OneToManys.at(slot),
            db.CondExprs.at(slot)};
}

bool storeAttributes(const FieldChange& change, CheckedTexts texts, model::DatabaseModel& db, int slot) {
    return AttributeStore(change, db, slot).store(std::move(texts));
}

} // namespace tallybook::design
