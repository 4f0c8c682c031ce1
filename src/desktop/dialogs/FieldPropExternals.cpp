// The panels of fields that live in other databases and in the handheld's address book.
#include "core/design/Tags.h"
#include "desktop/dialogs/FieldPropPanels.h"
#include "desktop/platform/TypedText.h"
#include "ui_frmFieldProp.h"

#include <QSpinBox>

namespace tallybook::desktop {

namespace tags = design::tags;

namespace {

constexpr int kNothing = 0;
constexpr int kFirstRow = 5; // of the match fields, in the grid of their panel

// Lists the databases of the chosen folder; what stands in the box stays.
void listTallybooks(QComboBox& box, const design::OtherFolder& folder) {
    const QString typed = box.currentText();
    box.clear();
    box.addItems(qtEntries(folder.tallybooks()));
    box.setEditText(typed);
}

void makeLists(QComboBox& users, QComboBox& tallybooks, const design::OtherFolder& folder) {
    users.addItems(qtEntries(folder.cmbUser()));
    users.setCurrentIndex(folder.userPosition());
    users.setEnabled(users.count() > 0);
    tallybooks.setInsertPolicy(QComboBox::NoInsert);
    listTallybooks(tallybooks, folder);
}

// The user may have been chosen in the panel of another type. True when the lists had to follow.
bool followUser(QComboBox& users, QComboBox& tallybooks, const design::OtherFolder& folder) {
    if (users.currentIndex() == folder.userPosition())
        return false;
    users.setCurrentIndex(folder.userPosition());
    listTallybooks(tallybooks, folder);
    return true;
}

// A number that the other database does not have any more is no choice.
void keepKnown(std::optional<std::uint8_t>& number, const std::vector<design::NumberedEntry>& entries) {
    if (std::none_of(entries.begin(), entries.end(), [&](const auto& entry) { return entry.number == number; }))
        number.reset();
}

std::vector<design::NumberedEntry> addressBookFields() {
    std::vector<design::NumberedEntry> entries;
    entries.reserve(model::AddressBookFieldNames.size());
    for (const std::string_view name : model::AddressBookFieldNames)
        entries.push_back({static_cast<std::uint8_t>(entries.size()), std::string(name)});
    return entries;
}

} // namespace

ExternalPanel::ExternalPanel(const FieldPropContext& context) : FieldPropPanel(context) {
    makeLists(*ui().cmbUser, *ui().cmbSource, context.otherFolder);
    connect(ui().cmbUser, &QComboBox::activated, this, &ExternalPanel::chooseUser);
    connect(ui().cmbSource, &QComboBox::activated, this, &ExternalPanel::chooseSource);
    connect(ui().cmbSource->lineEdit(), &QLineEdit::editingFinished, this, &ExternalPanel::chooseSource);
    connect(ui().cmbFollows, &QComboBox::activated, this, &ExternalPanel::followJoin);
}

void ExternalPanel::show() {
    const bool lookup = isLookup();
    if (followUser(*ui().cmbUser, *ui().cmbSource, context().otherFolder))
        forgetOther();
    readOther();
    design::ExternalDraft& external = draft().external;
    for (QWidget* one : {static_cast<QWidget*>(ui().lblFollows), static_cast<QWidget*>(ui().cmbFollows)})
        one->setVisible(lookup);
    for (QWidget* one : {static_cast<QWidget*>(ui().lblViewList), static_cast<QWidget*>(ui().CmbViewList),
                         static_cast<QWidget*>(ui().lblJoin), static_cast<QWidget*>(ui().cmbJoin)})
        one->setVisible(!lookup);
    ui().cmbSource->setEditText(toQt(external.Source));
    ui().cmbSource->setEnabled(!lookup);
    showNumbers(*ui().CmbViewList, design::otherViews(m_other.get()), external.CmbViewList);
    showNumbers(*ui().cmbDisplay, design::otherFields(m_other.get()), external.displayField);
    showNumbers(*ui().cmbJoin, design::otherKeyFields(m_other.get()), external.joinField);
    showNumbers(*ui().cmbFollows, design::joinsOf(db()), external.joinField);
    showHint();
}

void ExternalPanel::showHint() {
    const bool unknown = m_other == nullptr && !draft().external.Source.empty();
    const bool elsewhere = !context().otherFolder.isOwn();
    ui().lblExternal->setVisible(unknown || elsewhere);
    ui().lblExternal->setText(
        unknown ? tr("The folder has no such Tallybook: its views and fields are shown by their numbers.")
                : tr("Joins read the other Tallybook from the folder of this one: it has to be there, too."));
}

void ExternalPanel::take() {
    design::ExternalDraft& external = draft().external;
    takeChosen(*ui().cmbSource, external.Source);
    external.CmbViewList = chosenNumber(*ui().CmbViewList);
    external.displayField = chosenNumber(*ui().cmbDisplay);
    external.joinField = chosenNumber(isLookup() ? *ui().cmbFollows : *ui().cmbJoin);
    if (!isLookup())
        takeKeyType();
}

// The keys that records hold are of the type that is stored with them, as long as the join stays the same.
void ExternalPanel::takeKeyType() {
    design::ExternalDraft& external = draft().external;
    const model::ExternalDef& stored = db().Externals.at(context().slot);
    const bool same = db().Fields[static_cast<std::size_t>(context().slot)].Type == model::FieldType::DBJoin &&
                      external.Source == stored.Source && external.joinField == stored.SourceField;
    if (same)
        external.KeyType = stored.KeyType;
    else if (const auto keyType = design::keyTypeOf(m_other.get(), external.joinField.value_or(0)))
        external.KeyType = *keyType;
}

// What is chosen already stays, even if the new folder does not have it.
void ExternalPanel::chooseUser(int position) {
    change(tags::kFieldSource, [this, position] {
        context().otherFolder.chooseUser(position);
        listTallybooks(*ui().cmbSource, context().otherFolder);
        forgetOther();
    });
}

// It is read again from the folder that is listed now.
void ExternalPanel::forgetOther() {
    m_read.clear();
    m_other.reset();
}

void ExternalPanel::chooseSource() {
    if (fromQt(ui().cmbSource->currentText()) == m_read)
        return;
    change(tags::kFieldSource, [this] {
        readOther();
        forgetWhatIsNotThere();
    });
}

// A lookup reads the database of the join that it follows.
void ExternalPanel::followJoin() {
    change(tags::kFieldSource, [this] {
        draft().external.Source = db().Externals.at(draft().external.joinField.value_or(0)).Source;
        readOther();
        if (m_other != nullptr)
            keepKnown(draft().external.displayField, design::otherFields(m_other.get()));
    });
}

void ExternalPanel::readOther() {
    const std::string& source = draft().external.Source;
    if (source == m_read)
        return;
    m_read = source;
    m_other = context().otherFolder.read(source);
}

void ExternalPanel::forgetWhatIsNotThere() {
    if (m_other == nullptr)
        return;
    design::ExternalDraft& external = draft().external;
    keepKnown(external.CmbViewList, design::otherViews(m_other.get()));
    keepKnown(external.displayField, design::otherFields(m_other.get()));
    keepKnown(external.joinField, design::otherKeyFields(m_other.get()));
}

AddressPanel::AddressPanel(const FieldPropContext& context) : FieldPropPanel(context) {}

void AddressPanel::show() {
    showNumbers(*ui().cmbABField1, addressBookFields(), draft().external.ABField1);
    showNumbers(*ui().cmbABField2, addressBookFields(), draft().external.ABField2);
}

void AddressPanel::take() {
    draft().external.ABField1 = chosenNumber(*ui().cmbABField1).value_or(kNothing);
    draft().external.ABField2 = chosenNumber(*ui().cmbABField2).value_or(kNothing);
}

OneToManyPanel::OneToManyPanel(const FieldPropContext& context) : FieldPropPanel(context) {
    makeLists(*ui().cmbMDUser, *ui().cmbMDSource, context.otherFolder);
    QWidget* before = ui().txtLabel2;
    const auto place = [&](QWidget* one, const char* name, const QString& accessible, int row, int column) {
        one->setObjectName(QString::fromLatin1(name));
        one->setAccessibleName(accessible);
        ui().detailGrid->addWidget(one, row + kFirstRow, column);
        QWidget::setTabOrder(before, one);
        before = one;
    };
    for (int row = 0; row < kRows; ++row) {
        const auto at = static_cast<std::size_t>(row);
        m_match[at] = new QComboBox(ui().frmMasterDetail);
        m_sort[at] = new QComboBox(ui().frmMasterDetail);
        m_options[at] = new QSpinBox(ui().frmMasterDetail);
        m_options[at]->setRange(0, 255);
        place(m_match[at], "cmbMatch", tr("Match field %1").arg(row + 1), row, 1);
        place(m_sort[at], "cmbSort", tr("Sort field %1").arg(row + 1), row, 2);
        place(m_options[at], "spnOption", tr("Option %1").arg(row + 1), row, 3);
    }
    connect(ui().cmbMDUser, &QComboBox::activated, this, &OneToManyPanel::chooseUser);
    const auto read = [this] { change(tags::kFieldSource, [] {}); };
    connect(ui().cmbMDSource, &QComboBox::activated, this, read);
}

void OneToManyPanel::chooseUser(int position) {
    change(tags::kFieldSource, [this, position] {
        context().otherFolder.chooseUser(position);
        listTallybooks(*ui().cmbMDSource, context().otherFolder);
    });
}

void OneToManyPanel::show() {
    const model::OneToManyDef& def = draft().frmMasterDetail;
    followUser(*ui().cmbMDUser, *ui().cmbMDSource, context().otherFolder);
    const auto other = context().otherFolder.read(def.Source);
    std::vector<design::NumberedEntry> fields = design::otherFields(other.get());
    fields.insert(fields.begin(), {0, " "});
    ui().cmbMDSource->setEditText(toQt(def.Source));
    ui().txtLabel1->setText(toQt(def.Label1));
    ui().txtLabel2->setText(toQt(def.Label2));
    for (std::size_t row = 0; row < m_match.size(); ++row) {
        showNumbers(*m_match[row], fields, def.MatchFields[row]);
        showNumbers(*m_sort[row], fields, def.SortFields[row]);
        m_options[row]->setValue(def.Options[row]);
    }
}

void OneToManyPanel::take() {
    model::OneToManyDef& def = draft().frmMasterDetail;
    takeChosen(*ui().cmbMDSource, def.Source);
    takeTyped(*ui().txtLabel1, def.Label1);
    takeTyped(*ui().txtLabel2, def.Label2);
    for (std::size_t row = 0; row < m_match.size(); ++row) {
        def.MatchFields[row] = chosenNumber(*m_match[row]).value_or(kNothing);
        def.SortFields[row] = chosenNumber(*m_sort[row]).value_or(kNothing);
        def.Options[row] = static_cast<std::uint8_t>(m_options[row]->value());
    }
}

} // namespace tallybook::desktop
