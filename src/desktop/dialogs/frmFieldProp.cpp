#include "desktop/dialogs/frmFieldProp.h"

#include "core/design/Tags.h"
#include "core/platform/Guards.h"
#include "core/platform/Operation.h"
#include "desktop/dialogs/frmListEditor.h"
#include "desktop/platform/Text.h"
#include "desktop/platform/TypedText.h"
#include "desktop/platform/VisibleBoxes.h"
#include "ui_frmFieldProp.h"

#include <QEventLoop>
#include <QFocusEvent>
#include <QShortcut>

#include <utility>

namespace tallybook::desktop {

namespace tags = design::tags;

using design::FieldPropFocus;
using design::Panel;
using model::FieldType;

namespace {

constexpr int kMostDigits = 3;

void select(QWidget& control) {
    control.setFocus();
    if (auto* line = qobject_cast<QLineEdit*>(&control))
        line->selectAll();
}

QString nextValueCaption() {
    return frmFieldProp::tr("Ne&xt value:");
}

// What lies above the dialog's controls while the mouse is down must not stay there under a message.
void letGo(QWidget* focus) {
    if (QWidget* list = QApplication::activePopupWidget())
        list->close();
    if (auto* button = qobject_cast<QAbstractButton*>(focus))
        button->setDown(false);
}

} // namespace

frmFieldProp::frmFieldProp(model::Document& doc, platform::Services& services, design::OtherFolder& otherFolder,
                           int slot, design::FieldPropMode mode, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmFieldProp>()), m_doc(doc), m_services(services), m_slot(slot),
      m_mode(mode), m_context{*this, *m_ui, m_draft, doc, services, otherFolder, slot} {
    m_ui->setupUi(this);
    platform::runOperation(services.ui, tags::kFieldLoading, [this] {
        makePanels();
        fillAttributes();
        makeBoxesVisible(*this);
        connectControls();
    });
    if (std::as_const(m_doc).CurrDB20.Lists.has(slot))
        m_listBefore = std::as_const(m_doc).CurrDB20.Lists.at(slot);
    platform::runOperation(services.ui, tags::kFieldValues, [this] {
        m_draft = design::fillAttributeValues(m_doc.CurrDB20, m_slot, m_services);
        showDraft();
    });
    m_ui->txtFieldName->setFocus();
    m_ui->txtFieldName->selectAll();
}

frmFieldProp::~frmFieldProp() = default;

void frmFieldProp::makePanels() {
    m_panels.push_back(std::make_unique<AutoWriterPanel>(m_context));
    m_panels.push_back(std::make_unique<SimpleExpressionPanel>(m_context));
    auto advanced = std::make_unique<AdvancedExpressionPanel>(m_context);
    m_advanced = advanced.get();
    m_panels.push_back(std::move(advanced));
    m_panels.push_back(std::make_unique<ExternalPanel>(m_context));
    m_panels.push_back(std::make_unique<AddressPanel>(m_context));
    m_panels.push_back(std::make_unique<OneToManyPanel>(m_context));
    m_panels.push_back(std::make_unique<RadioPanel>(m_context));
    m_panels.push_back(std::make_unique<ConditionPanel>(m_context));
}

// Fill Attributes: the lists that are the same for every type.
void frmFieldProp::fillAttributes() {
    const bool categories = !design::typeMayChange(m_slot);
    setWindowTitle(categories ? tr("Field Properties - Categories") : tr("Field Properties - Field %1").arg(m_slot));
    m_ui->cmbFieldType->addItems(qtEntries(model::FieldTypeNames));
    m_ui->cmbFieldType->setEnabled(!categories);
    for (int digits = 0; digits <= kMostDigits; ++digits)
        m_ui->cmbDecDigs->addItem(QString::number(digits));
    keepLabelWidth();
    m_ui->lblNoPanel->setText(tr("Fields of this type have no further properties here."));
    if (isList())
        m_ui->lblItems->setText(tr("Items are changed at once, without OK."));
}

// The boxes stay in their place when a type has other labels than the one before.
void frmFieldProp::keepLabelWidth() {
    int width = m_ui->top->columnMinimumWidth(0);
    for (int row = 0; row < m_ui->top->rowCount(); ++row)
        width = std::max(width, m_ui->top->itemAtPosition(row, 0)->widget()->sizeHint().width());
    m_ui->lblChoice->setText(nextValueCaption());
    m_ui->top->setColumnMinimumWidth(0, std::max(width, m_ui->lblChoice->sizeHint().width()));
}

void frmFieldProp::connectControls() {
    m_ui->txtDefault->installEventFilter(this);
    connect(m_ui->cmbFieldType, &QComboBox::activated, this, &frmFieldProp::chooseType);
    connect(m_ui->cmdListItems, &QPushButton::clicked, this, &frmFieldProp::editItems);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &frmFieldProp::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &frmFieldProp::reject);
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) // Enter alone is a line of the expression
        connect(new QShortcut(QKeySequence(Qt::CTRL | enter), this), &QShortcut::activated, m_ui->OKButton,
                &QPushButton::click);
}

void frmFieldProp::showDraft() {
    const design::FieldPropDraft& draft = m_draft;
    m_ui->txtFieldName->setText(toQt(draft.txtFieldName));
    m_ui->cmbFieldType->setCurrentIndex(draft.cmbFieldType);
    m_ui->txtDefault->setText(toQt(draft.txtDefault));
    m_ui->cmbDecDigs->setCurrentIndex(draft.cmbDecDigs);
    m_ui->checkIncrementDecrement->setChecked(draft.checkIncrementDecrement);
    m_ui->chkBarcodeScan->setChecked(draft.chkBarcodeScan);
    m_ui->checkDisableAutoShift->setChecked(draft.checkDisableAutoShift);
    showChoices();
    showPanels();
    for (const auto& panel : m_panels)
        panel->show();
}

// cmbDefault: a list, or the next value of an Auto Incremental field, which is typed.
void frmFieldProp::showChoices() {
    const FieldType type = m_draft.type();
    const bool typed = type == FieldType::AutoIncremental;
    m_ui->cmbDefault->clear();
    m_ui->cmbDefault->addItems(qtEntries(design::defaultEntries(type)));
    m_ui->cmbDefault->setEditable(typed);
    if (typed)
        m_ui->cmbDefault->setEditText(toQt(m_draft.cmbDefaultText));
    else
        m_ui->cmbDefault->setCurrentIndex(m_draft.cmbDefault);
    const QString caption = typed ? tr("Ne&xt value:") : type == FieldType::Image ? tr("&Colors:") : tr("&Default:");
    m_ui->lblChoice->setText(caption);
    m_ui->cmbDefault->setAccessibleName(QString(caption).remove(QLatin1Char('&')).chopped(1));
}

void frmFieldProp::showPanels() {
    const std::pair<Panel, std::vector<QWidget*>> panels[] = {
        {Panel::AutoWriter, {m_ui->checkAutoWriter}}, // FrmAWProp follows it
        {Panel::chkBarcodeScan, {m_ui->chkBarcodeScan}},
        {Panel::checkDisableAutoShift, {m_ui->checkDisableAutoShift}},
        {Panel::checkIncrementDecrement, {m_ui->checkIncrementDecrement}},
        {Panel::txtDefault, {m_ui->lblDefault, m_ui->txtDefault}},
        {Panel::cmbDecDigs, {m_ui->lblDecDigs, m_ui->cmbDecDigs}},
        {Panel::ListItems, {m_ui->ListItems}},
        {Panel::cmbDefault, {m_ui->lblChoice, m_ui->cmbDefault}},
        {Panel::frmExpr, {m_ui->frmExpr}},
        {Panel::frmExprAdv, {m_ui->frmExprAdv}},
        {Panel::frmExternal, {m_ui->frmExternal}},
        {Panel::FrmAddress, {m_ui->FrmAddress}},
        {Panel::frmMasterDetail, {m_ui->frmMasterDetail}},
        {Panel::FrmRadio, {m_ui->FrmRadio}},
        {Panel::FrmCondExpression, {m_ui->FrmCondExpression}},
    };
    bool any = false;
    for (const auto& [panel, controls] : panels) {
        const bool shown = design::showsPanel(m_draft.type(), panel);
        any |= shown;
        for (QWidget* control : controls)
            control->setVisible(shown);
    }
    m_ui->lblNoPanel->setVisible(!any);
}

void frmFieldProp::take() {
    takeTyped(*m_ui->txtFieldName, m_draft.txtFieldName);
    takeTyped(*m_ui->txtDefault, m_draft.txtDefault);
    if (m_ui->cmbDefault->isEditable())
        m_draft.cmbDefaultText = fromQt(m_ui->cmbDefault->currentText());
    else if (m_ui->cmbDefault->count() > 0)
        m_draft.cmbDefault = m_ui->cmbDefault->currentIndex();
    m_draft.cmbDecDigs = m_ui->cmbDecDigs->currentIndex();
    m_draft.checkIncrementDecrement = m_ui->checkIncrementDecrement->isChecked();
    m_draft.chkBarcodeScan = m_ui->chkBarcodeScan->isChecked();
    m_draft.checkDisableAutoShift = m_ui->checkDisableAutoShift->isChecked();
    for (const auto& panel : m_panels)
        panel->take();
}

void frmFieldProp::chooseType(int type) {
    take();
    platform::runOperation(m_services.ui, tags::kFieldType, [this, type] {
        design::selectFieldType(m_draft, static_cast<FieldType>(type), m_doc.CurrDB20, m_slot, m_services);
    });
    showDraft();
}

// The editor calls the field by the name that stands in the dialog.
void frmFieldProp::editItems() {
    take();
    platform::runOperation(m_services.ui, tags::kFieldListItems,
                           [this] { frmListEditor(m_doc, m_services, m_slot, this, m_draft.txtFieldName).exec(); });
    m_draft.ListAW = m_doc.CurrDB20.Lists.at(m_slot);
}

// The check of the default waits for the focus to have arrived. OK makes the same check, and Cancel needs none.
bool frmFieldProp::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        const bool byUser =
            reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::OtherFocusReason;
        if (byUser)
            QMetaObject::invokeMethod(this, &frmFieldProp::leaveDefault, Qt::QueuedConnection);
    }
    return QDialog::eventFilter(watched, event);
}

void frmFieldProp::leaveDefault() {
    QWidget* focus = focusWidget();
    if (!isVisible() || !m_ui->txtDefault->isVisible() || focus == m_ui->txtDefault || focus == m_ui->OKButton ||
        focus == m_ui->CancelButton)
        return;
    take();
    letGo(focus);
    platform::runOperation(m_services.ui, tags::kFieldDefault, [this] {
        if (!design::checkDefault(m_draft, m_services))
            select(*m_ui->txtDefault);
    });
}

int frmFieldProp::exec() {
    setModal(true);
    setResult(Rejected);
    setVisible(true);
    QEventLoop loop;
    connect(this, &QDialog::finished, &loop, &QEventLoop::quit);
    loop.exec();
    return result();
}

void frmFieldProp::accept() {
    if (refusesForeignIn(m_services, *this))
        return;
    take();
    design::FieldPropResult outcome;
    {
        const platform::HourGlass wait(m_services.screen);
        outcome =
            design::fieldPropertiesOK(m_doc, m_services, m_slot, m_draft, m_mode, [this](design::DialogShown shown) {
                setVisible(shown == design::DialogShown::Visible);
            });
    }
    if (outcome.accepted) {
        QDialog::accept();
        return;
    }
    setVisible(true);
    showDraft();
    setFocusTo(outcome);
}

bool frmFieldProp::isList() const {
    return m_doc.CurrDB20.Fields[static_cast<std::size_t>(m_slot)].Type == FieldType::List;
}

// The items of a list are changed at once. Those of an auto writer or a Radio Button that was to become a list are
// still what the field had.
void frmFieldProp::reject() {
    model::SlotTable<model::ListDef>& lists = m_doc.CurrDB20.Lists;
    if (!isList() && m_listBefore)
        lists[m_slot] = *m_listBefore;
    else if (!isList())
        lists.erase(m_slot);
    QDialog::reject();
}

QWidget* frmFieldProp::controlOf(const design::FieldPropResult& result) {
    switch (result.focus) {
    case FieldPropFocus::txtFieldName:
        return m_ui->txtFieldName;
    case FieldPropFocus::cmbFieldType:
        return m_ui->cmbFieldType;
    case FieldPropFocus::txtDefault:
        return m_ui->txtDefault;
    case FieldPropFocus::cmbDefault:
        return m_ui->cmbDefault->isEditable() ? static_cast<QWidget*>(m_ui->cmbDefault->lineEdit())
                                              : m_ui->cmbDefault;
    case FieldPropFocus::cmbDecDigs:
        return m_ui->cmbDecDigs;
    case FieldPropFocus::cmbExpr:
        return m_ui->frmExpr->findChild<QComboBox*>(QStringLiteral("cmbExpr"));
    case FieldPropFocus::txtAdvExpression:
        return m_ui->txtAdvExpression;
    case FieldPropFocus::Command1:
        return m_ui->Command1;
    case FieldPropFocus::Optxt:
        return m_ui->FrmRadio->findChildren<QLineEdit*>(QStringLiteral("Optxt")).value(result.index);
    case FieldPropFocus::frmExternal:
        return m_draft.external.Source.empty() ? m_ui->cmbSource : m_ui->CmbViewList;
    case FieldPropFocus::displayField:
        return m_ui->cmbDisplay;
    case FieldPropFocus::joinField:
        return m_ui->cmbJoin;
    case FieldPropFocus::frmMasterDetail:
        return m_ui->cmbMDSource;
    case FieldPropFocus::TxtThen:
        return m_ui->TxtThen;
    case FieldPropFocus::TxtElse:
        return m_ui->TxtElse;
    case FieldPropFocus::None:
        break;
    }
    return nullptr;
}

void frmFieldProp::setFocusTo(const design::FieldPropResult& result) {
    if (QWidget* control = controlOf(result))
        select(*control);
    if (result.focus == FieldPropFocus::txtAdvExpression)
        m_advanced->select(result.index);
}

} // namespace tallybook::desktop
