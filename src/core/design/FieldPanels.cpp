// What Field Properties shows: panels by type, and the values of a slot in the controls.
#include "core/calc/values/Numbers.h"
#include "core/design/Dialog.h"
#include "core/design/FieldProperties.h"
#include "core/design/ListItems.h"

#include <algorithm>

namespace tallybook::design {

namespace {

using model::FieldType;

constexpr std::array<std::string_view, 8> kSeparators = {"none",  "Comma",      "Space", "Semicolon",
                                                         "Slash", "Back-Slash", "Dash",  "None"};
constexpr std::array<std::string_view, 2> kCheckDefaults = {"Unchecked", "Checked"};
constexpr std::array<std::string_view, 3> kStampDefaults = {"none", "Record Added", "Record Updated"};
constexpr std::array<std::string_view, 3> kImageDefaults = {"black & white", "16 grayscale", "256 colors"};
constexpr int kMostDigits = 3;
constexpr int kFirstSeparator = 1;

std::vector<Panel> panelsOf(FieldType type) {
    switch (type) {
    case FieldType::Text:
        return {Panel::AutoWriter, Panel::chkBarcodeScan, Panel::checkDisableAutoShift, Panel::txtDefault};
    case FieldType::Integer:
    case FieldType::Long:
        return {Panel::AutoWriter, Panel::checkIncrementDecrement, Panel::txtDefault};
    case FieldType::Float:
        return {Panel::cmbDecDigs, Panel::AutoWriter, Panel::txtDefault};
    case FieldType::List:
        return {Panel::ListItems};
    case FieldType::Checkbox:
    case FieldType::Date:
    case FieldType::Time:
    case FieldType::Image:
    case FieldType::AutoIncremental:
        return {Panel::cmbDefault};
    case FieldType::Expression:
        return {Panel::frmExpr, Panel::cmbDecDigs};
    case FieldType::AdvExpression:
        return {Panel::frmExprAdv, Panel::cmbDecDigs};
    case FieldType::Memo:
        return {Panel::AutoWriter};
    case FieldType::DBJoin:
    case FieldType::DBLookup:
        return {Panel::frmExternal};
    case FieldType::AddressBookJoin:
    case FieldType::AddressBookLookup:
        return {Panel::FrmAddress};
    case FieldType::OneToMany:
        return {Panel::frmMasterDetail};
    case FieldType::RadioButton:
        return {Panel::FrmRadio};
    case FieldType::ConditionalExpression:
        return {Panel::FrmCondExpression};
    case FieldType::NotUsed:
    case FieldType::Key:
    case FieldType::Plugin:
        break;
    }
    return {};
}

int defaultPosition(const model::FieldDef& field) {
    switch (field.Type) {
    case FieldType::Checkbox:
        return field.Decimals == 1 ? 1 : 0;
    case FieldType::Date:
    case FieldType::Time:
        return field.Default == "A" ? 1 : field.Default == "U" ? 2 : 0;
    case FieldType::Image:
        return field.Decimals == 4 ? 1 : field.Decimals == 8 ? 2 : 0;
    default:
        return 0;
    }
}

// A number of digits that the list does not have is no selection.
int digitsPosition(const model::FieldDef& field) {
    if (!showsPanel(field.Type, Panel::cmbDecDigs))
        return 0;
    return field.Decimals <= kMostDigits ? field.Decimals : -1;
}

ExternalDraft externalDraft(const model::DatabaseModel& db, int slot) {
    ExternalDraft draft;
    if (!db.Externals.has(slot))
        return draft;
    const model::ExternalDef& external = db.Externals.at(slot);
    draft.Source = external.Source;
    if (!external.Source.empty()) {
        draft.CmbViewList = external.SortField();
        draft.displayField = external.MatchField;
        draft.joinField = external.SourceField;
    }
    draft.KeyType = external.KeyType;
    draft.ABField1 = external.ABField1;
    draft.ABField2 = external.ABField2();
    return draft;
}

// The number of the selected option is kept as the default's text, from 1.
int selectedOption(const model::FieldDef& field, int options) {
    const int number = static_cast<int>(calc::val(field.Default));
    return number >= 1 && number <= options ? number - 1 : -1;
}

void sayTooManyOptions(const model::ListDef& list, platform::Services& services) {
    if (list.Count() > kRadioOptions)
        say(services, "Only the first Eight values of the list will be considered", "Existing options found");
}

void takeOptions(RadioDraft& radio, const model::ListDef& list) {
    const int taken = std::min(list.Count(), kRadioOptions);
    for (int option = 0; option < taken; ++option)
        radio.Optxt[static_cast<std::size_t>(option)] = list.Items[static_cast<std::size_t>(option)];
    radio.CmbNobuton = std::max(taken - kFewestRadioOptions, 0);
}

} // namespace

bool showsPanel(FieldType type, Panel panel) {
    const std::vector<Panel> shown = panelsOf(type);
    return std::find(shown.begin(), shown.end(), panel) != shown.end();
}

std::span<const std::string_view> defaultEntries(FieldType type) {
    switch (type) {
    case FieldType::Checkbox:
        return kCheckDefaults;
    case FieldType::Date:
    case FieldType::Time:
        return kStampDefaults;
    case FieldType::Image:
        return kImageDefaults;
    default:
        return {};
    }
}

std::span<const std::string_view> separatorEntries() {
    return kSeparators;
}

void chooseBranch(BranchDraft& branch, std::uint8_t slot) {
    branch.field = slot;
    branch.useField = slot != 0;
}

bool storesDefaultText(FieldType type) {
    return showsPanel(type, Panel::txtDefault) || type == FieldType::Memo;
}

FieldPropDraft valuesOf(const model::DatabaseModel& db, int slot) {
    const model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    const model::CondExprDef& condition = db.CondExprs.at(slot);
    FieldPropDraft draft;
    draft.txtFieldName = field.Name;
    draft.cmbFieldType = static_cast<int>(field.Type);
    draft.txtDefault = storesDefaultText(field.Type) ? field.Default : std::string();
    draft.cmbDefault = defaultPosition(field);
    draft.cmbDefaultText = std::to_string(db.AutoIncNext.has(slot) ? db.AutoIncNext.at(slot) : 1);
    draft.cmbDecDigs = digitsPosition(field);
    draft.checkAutoWriter = field.AutoWriter != 0;
    draft.cmbSeparate = std::min<int>(field.AutoWriter, static_cast<int>(kSeparators.size()) - 1);
    draft.ListAW = db.Lists.at(slot);
    draft.checkIncrementDecrement = field.IncDec == 1;
    draft.chkBarcodeScan = (field.FieldFlags & 0x80) != 0;
    draft.checkDisableAutoShift = field.Type == FieldType::Text && field.Decimals == 1;
    draft.frmExpr = choicesOf(db.Expressions.at(slot));
    draft.frmExprAdv = DisplayExpression25(db, db.Expressions.at(slot));
    draft.external = externalDraft(db, slot);
    draft.frmMasterDetail = db.OneToManys.at(slot);
    draft.condition = condition;
    draft.branchThen = {condition.TrueField != 0, condition.TrueField, condition.TrueText, condition.TrueKind};
    draft.branchElse = {condition.FalseField != 0, condition.FalseField, condition.FalseText, condition.FalseKind};
    if (field.Type == FieldType::RadioButton) {
        takeOptions(draft.FrmRadio, db.Lists.at(slot));
        draft.FrmRadio.OptSel = selectedOption(field, draft.FrmRadio.count());
    }
    return draft;
}

FieldPropDraft fillAttributeValues(const model::DatabaseModel& db, int slot, platform::Services& services) {
    if (db.Fields[static_cast<std::size_t>(slot)].Type == FieldType::RadioButton)
        sayTooManyOptions(db.Lists.at(slot), services);
    return valuesOf(db, slot);
}

void selectFieldType(FieldPropDraft& draft, FieldType type, const model::DatabaseModel& db, int slot,
                     platform::Services& services) {
    const FieldType before = draft.type();
    const model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    draft.cmbFieldType = static_cast<int>(type);
    if (before != type && type == FieldType::RadioButton && field.Type != FieldType::RadioButton &&
        db.Lists.at(slot).Count() > 0) {
        sayTooManyOptions(db.Lists.at(slot), services);
        takeOptions(draft.FrmRadio, db.Lists.at(slot));
    }
    // A choice means nothing in another list: "Checked" is no stamp.
    if (defaultEntries(before).data() != defaultEntries(type).data())
        draft.cmbDefault = field.Type == type ? defaultPosition(field) : 0;
}

void clickAutoWriter(FieldPropDraft& draft) {
    draft.checkAutoWriter = !draft.checkAutoWriter;
    if (draft.checkAutoWriter && draft.cmbSeparate < kFirstSeparator)
        draft.cmbSeparate = kFirstSeparator;
}

bool cmdAddToList(FieldPropDraft& draft, const std::string& TxtAW, platform::Services& services) {
    return !refusesFullList(draft.ListAW, services) && addItem(draft.ListAW, TxtAW, services);
}

void cmdRemFrmList(FieldPropDraft& draft, int selected) {
    if (selected >= 0 && selected < draft.ListAW.Count())
        removeItem(draft.ListAW, selected);
}

} // namespace tallybook::design
