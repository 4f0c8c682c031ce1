// The dialog Field Properties without its widgets: what its controls hold, what they show by type, the check of the
// default, and the OK that changes the field and its column.
#pragma once

#include "core/design/ExpressionStore.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::design {

// The dialog over the open grid, or (mode "Ma") while a database is being made, with neither grid nor data behind it.
enum class FieldPropMode : std::uint8_t { Document, Ma };

// The groups of controls that depend on the type.
enum class Panel : std::uint8_t {
    AutoWriter, // checkAutoWriter, FrmAWProp
    chkBarcodeScan,
    checkDisableAutoShift,
    checkIncrementDecrement,
    txtDefault,
    cmbDecDigs,
    ListItems, // the button that opens frmListEditor
    cmbDefault,
    frmExpr,
    frmExprAdv,
    frmExternal,
    FrmAddress,
    frmMasterDetail,
    FrmRadio,
    FrmCondExpression,
};
bool showsPanel(model::FieldType type, Panel panel);

// The entries of cmbDefault: none for a type without it, and none for Auto Incremental, where it is typed into.
std::span<const std::string_view> defaultEntries(model::FieldType type);
// The entries of cmbSeparate, by the number that a field stores.
std::span<const std::string_view> separatorEntries();

inline constexpr int kRadioOptions = 8;       // Optxt, OptSel
inline constexpr int kFewestRadioOptions = 2; // position 0 of CmbNobuton

// FrmRadio.
struct RadioDraft {
    int CmbNobuton = 0; // position; two more options
    std::array<std::string, kRadioOptions> Optxt{};
    int OptSel = -1; // the first selected option, from 0; -1 for none
    int count() const { return CmbNobuton + kFewestRadioOptions; }
    bool operator==(const RadioDraft&) const = default;
};

// A branch of FrmCondExpression: OptThen, CmbThen, TxtThen, or those of "else".
struct BranchDraft {
    bool useField = false;  // the option: the field instead of the text
    std::uint8_t field = 0; // of the list; 0 for its entry "Constant"
    std::string text;
    std::uint8_t colour = 0; // 0 to 4
    bool operator==(const BranchDraft&) const = default;
};
// A selection in CmbThen or CmbElse: slot 0 is "Constant", which selects the text box.
void chooseBranch(BranchDraft& branch, std::uint8_t slot);

// frmExternal and FrmAddress. What is not chosen yet is empty.
struct ExternalDraft {
    std::string Source;
    std::optional<std::uint8_t> CmbViewList;  // number of the other database's view
    std::optional<std::uint8_t> displayField; // slot of the other database
    std::optional<std::uint8_t> joinField;    // join: slot of the other database; lookup: slot of the join here
    std::uint8_t KeyType = 11;
    std::uint8_t ABField1 = 0;
    std::uint8_t ABField2 = 0;
    bool operator==(const ExternalDraft&) const = default;
};

// What the controls hold. `cmbFieldType` is a type's code; lists hold positions, -1 for no selection.
struct FieldPropDraft {
    std::string txtFieldName;
    int cmbFieldType = 0;
    std::string txtDefault;
    int cmbDefault = 0;
    std::string cmbDefaultText; // of Auto Incremental: the next value
    int cmbDecDigs = 0;
    bool checkAutoWriter = false;
    int cmbSeparate = 0;
    model::ListDef ListAW;
    bool checkIncrementDecrement = false;
    bool chkBarcodeScan = false;
    bool checkDisableAutoShift = false;
    SimpleChoices frmExpr;
    AdvancedChoices frmExprAdv;
    ExternalDraft external;
    model::OneToManyDef frmMasterDetail;
    RadioDraft FrmRadio;
    model::CondExprDef condition; // what the Filter Designer left
    BranchDraft branchThen, branchElse;

    model::FieldType type() const { return static_cast<model::FieldType>(cmbFieldType); }
    bool operator==(const FieldPropDraft&) const = default;
};

// Types whose default is the text of txtDefault. Other types keep something else in its place in a file.
bool storesDefaultText(model::FieldType type);

// What the controls hold when the dialog opens on a slot.
FieldPropDraft valuesOf(const model::DatabaseModel& db, int slot);

// Fill Attribute Values: the same, and a Radio Button with more than eight options says that only eight are taken.
FieldPropDraft fillAttributeValues(const model::DatabaseModel& db, int slot, platform::Services& services);

// Field Type: a selection in cmbFieldType. A field with list items gives a Radio Button its first eight as options.
void selectFieldType(FieldPropDraft& draft, model::FieldType type, const model::DatabaseModel& db, int slot,
                     platform::Services& services);

// False for the categories: they stay a list.
constexpr bool typeMayChange(int slot) {
    return slot != 0;
}

// Auto Writer: checkAutoWriter was clicked. FrmAWProp follows it.
void clickAutoWriter(FieldPropDraft& draft);
// cmdAddToList: TxtAW becomes an item. False when nothing was added; a message says why, unless the text is empty.
bool cmdAddToList(FieldPropDraft& draft, const std::string& TxtAW, platform::Services& services);
// cmdRemFrmList: takes out the item selected in ListAW.
void cmdRemFrmList(FieldPropDraft& draft, int selected);

// The check of txtDefault as the user leaves it, and at OK. False with the message; an empty text and a lone "-"
// pass.
bool checkDefault(const FieldPropDraft& draft, platform::Services& services);

// Where the focus belongs after a refusal.
enum class FieldPropFocus : std::uint8_t {
    None,
    txtFieldName,
    cmbFieldType,
    txtDefault,
    cmbDefault,
    cmbDecDigs,
    cmbExpr,
    txtAdvExpression,
    Command1,
    Optxt, // `index` tells which
    frmExternal,
    displayField,
    joinField,
    frmMasterDetail,
    TxtThen,
    TxtElse,
};

struct FieldPropResult {
    bool accepted = false; // the dialog closes
    FieldPropFocus focus = FieldPropFocus::None;
    int index = 0; // option, or the place of an error in txtAdvExpression
    bool operator==(const FieldPropResult&) const = default;
};

enum class DialogShown : std::uint8_t { Hidden, Visible };

// OK of the dialog on a slot: checks, asks, changes the column and stores the attributes. What the draft holds as the
// dialog opened with it keeps what is stored, which may be more than a control can show: an OK without a change
// changes nothing. A refusal leaves the dialog open; the draft may lose a default that was no number. `show` is told
// to hide the dialog while a column is rewritten and to show it again after a refusal; it may be empty. After it was
// accepted the caller runs recalcExpressions and shows the grid anew.
//
// Options of a Radio Button are checked early and stored when the user has agreed to the change: a list or the
// digits of a Float would be lost by an answer of No otherwise. For the same reason the advanced form is compiled
// before the column is rewritten.
FieldPropResult fieldPropertiesOK(model::Document& doc, platform::Services& services, int slot, FieldPropDraft& draft,
                                  FieldPropMode mode, const std::function<void(DialogShown)>& show = {});

} // namespace tallybook::design
