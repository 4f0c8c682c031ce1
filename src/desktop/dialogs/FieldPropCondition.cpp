// The panel of Conditional Expressions.
#include "core/design/ConditionText.h"
#include "core/design/Tags.h"
#include "desktop/dialogs/FieldPropPanels.h"
#include "desktop/dialogs/dlgFilterDesg.h"
#include "desktop/platform/TypedText.h"
#include "ui_frmFieldProp.h"

namespace tallybook::desktop {

namespace tags = design::tags;

namespace {

constexpr std::array kColours = {"Black", "Red", "Green", "Blue", "Yellow"};

// "Constant", then the used fields.
std::vector<design::NumberedEntry> branchFields(const model::DatabaseModel& db) {
    std::vector<design::NumberedEntry> entries = design::otherFields(&db);
    entries.insert(entries.begin(), {0, "Constant"});
    return entries;
}

} // namespace

ConditionPanel::ConditionPanel(const FieldPropContext& context) : FieldPropPanel(context) {
    ui().lblCondition->setTextFormat(Qt::PlainText); // of names and constants
    ui().OptThenText->setObjectName(QStringLiteral("OptThen"));
    ui().OptElseText->setObjectName(QStringLiteral("OptElse"));
    for (const Branch& branch : branches()) {
        for (const char* colour : kColours)
            branch.colours.addItem(tr(colour));
        connectBranch(branch);
    }
    connect(ui().Command1, &QPushButton::clicked, this,
            [this] { change(tags::kFieldCondition, [this] { editCondition(); }); });
}

std::array<ConditionPanel::Branch, 2> ConditionPanel::branches() {
    return {Branch{draft().branchThen, *ui().OptThen, *ui().OptThenText, *ui().CmbThen, *ui().TxtThen,
                   *ui().cmbThenColour},
            Branch{draft().branchElse, *ui().OptElse, *ui().OptElseText, *ui().CmbElse, *ui().TxtElse,
                   *ui().cmbElseColour}};
}

void ConditionPanel::connectBranch(const Branch& branch) {
    const auto choose = [this, branch](std::uint8_t slot) {
        change(tags::kFieldAttributes, [&] { design::chooseBranch(branch.draft, slot); });
    };
    connect(&branch.field, &QRadioButton::clicked, this, [branch, choose] {
        const std::uint8_t chosen = chosenNumber(branch.fields).value_or(0);
        const bool hasFields = branch.fields.count() > 1;
        choose(chosen == 0 && hasFields ? static_cast<std::uint8_t>(branch.fields.itemData(1).toInt()) : chosen);
        branch.fields.setFocus();
    });
    connect(&branch.constant, &QRadioButton::clicked, this, [branch, choose] {
        choose(0);
        branch.text.setFocus();
    });
    connect(&branch.fields, &QComboBox::activated, this,
            [branch, choose] { choose(chosenNumber(branch.fields).value_or(0)); });
}

void ConditionPanel::showBranch(const Branch& branch) {
    showNumbers(branch.fields, branchFields(db()), branch.draft.field);
    branch.field.setChecked(branch.draft.useField);
    branch.constant.setChecked(!branch.draft.useField);
    branch.text.setText(toQt(branch.draft.text));
    branch.text.setEnabled(!branch.draft.useField);
    branch.colours.setCurrentIndex(branch.draft.colour);
}

void ConditionPanel::show() {
    ui().lblCondition->setTextFormat(Qt::PlainText); // a constant may look like HTML
    const std::string text = design::conditionText(db(), draft().condition);
    ui().lblCondition->setText(text.empty() ? tr("No condition yet") : toQt(text));
    for (const Branch& branch : branches())
        showBranch(branch);
}

void ConditionPanel::takeBranch(const Branch& branch) {
    branch.draft.useField = branch.field.isChecked();
    branch.draft.field = chosenNumber(branch.fields).value_or(0);
    takeTyped(branch.text, branch.draft.text);
    if (branch.colours.currentIndex() >= 0) // a code that no entry has is carried
        branch.draft.colour = static_cast<std::uint8_t>(branch.colours.currentIndex());
}

void ConditionPanel::take() {
    for (const Branch& branch : branches())
        takeBranch(branch);
}

void ConditionPanel::editCondition() {
    dlgFilterDesg(db(), services(), draft().condition, &context().window).exec();
}

} // namespace tallybook::desktop
