#include "desktop/dialogs/frmPwd.h"

#include "core/pdb/Passwords.h"
#include "core/platform/Operation.h"
#include "desktop/platform/Text.h"
#include "desktop/platform/TypedText.h"
#include "ui_frmPwd.h"

#include <QHeaderView>

namespace tallybook::desktop {

namespace {

using document::PasswordAction;
using document::SecuritySetting;

constexpr std::string_view kList = "Security Setting : List";
constexpr std::string_view kVerify = "Security Setting : Verify";
constexpr std::string_view kOk = "Security Setting : OK";

void showAll(std::initializer_list<QWidget*> widgets, bool visible) {
    for (QWidget* widget : widgets)
        widget->setVisible(visible);
}

} // namespace

frmPwd::frmPwd(model::Document& doc, platform::Services& services, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmPwd>()), m_services(services), m_setting(doc, services) {
    m_ui->setupUi(this);
    m_ui->lstPwd->setHeaderLabels({tr("Password"), tr("State")});
    m_ui->lstPwd->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    for (QLineEdit* field : {m_ui->TxtExist, m_ui->txtNew, m_ui->txtConfirm})
        field->setMaxLength(document::kPasswordCharacters);
    LoadPwdFrm();
    connect(m_ui->lstPwd, &QTreeWidget::itemSelectionChanged, this, [this] { choose(PasswordAction::Set); });
    connect(m_ui->cmdChange, &QPushButton::clicked, this, [this] { choose(PasswordAction::Change); });
    connect(m_ui->cmdDelete, &QPushButton::clicked, this, [this] { choose(PasswordAction::Delete); });
    connect(m_ui->CmdVerify, &QPushButton::clicked, this,
            [this] { platform::runOperation(m_services.ui, kVerify, [this] { verify(); }); });
    connect(m_ui->cmdOK, &QPushButton::clicked, this,
            [this] { platform::runOperation(m_services.ui, kOk, [this] { confirm(); }); });
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, [this] {
        m_setting.cancel();
        LoadPwdFrm();
    });
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
}

frmPwd::~frmPwd() = default;

// Fills the list anew with each kind and whether its password is set. Nothing is chosen afterwards.
void frmPwd::LoadPwdFrm() {
    const QSignalBlocker quiet(m_ui->lstPwd);
    m_ui->lstPwd->clear();
    for (int i = 0; i < model::kPasswordKinds; ++i) {
        const auto kind = static_cast<model::PasswordKind>(i);
        new QTreeWidgetItem(m_ui->lstPwd,
                            {toQt(pdb::passwordLabel(kind)), m_setting.isSet(kind) ? tr("Set") : tr("Not set")});
    }
    showPanel();
    m_ui->lstPwd->setFocus();
}

void frmPwd::choose(PasswordAction action) {
    const auto selected = m_ui->lstPwd->selectedItems();
    if (selected.isEmpty())
        return;
    const auto kind = static_cast<model::PasswordKind>(m_ui->lstPwd->indexOfTopLevelItem(selected.first()));
    platform::runOperation(m_services.ui, kList, [&] { m_setting.choose(kind, action); });
    showPanel();
}

void frmPwd::showPanel() {
    const bool chosen = m_setting.mode() != SecuritySetting::Mode::None;
    m_ui->FrmPassword->setEnabled(chosen);
    m_ui->FrmPassword->setTitle(chosen ? toQt(m_setting.frameCaption()) : tr("Choose a password"));
    m_ui->lblHint->setText(toQt(m_setting.hint()));
    showAll({m_ui->lblExist, m_ui->TxtExist, m_ui->CmdVerify}, m_setting.asksExisting());
    showAll({m_ui->lblNew, m_ui->txtNew, m_ui->lblConfirm, m_ui->txtConfirm, m_ui->cmdOK}, m_setting.asksNew());
    m_ui->cmdCancel->setVisible(chosen);
    for (QLineEdit* field : {m_ui->TxtExist, m_ui->txtNew, m_ui->txtConfirm})
        field->clear();
    m_ui->CmdVerify->setText(toQt(m_setting.verifyCaption()));
    m_ui->CmdVerify->setDefault(m_setting.asksExisting());
    m_ui->cmdOK->setDefault(m_setting.asksNew());
    const bool picked = !m_ui->lstPwd->selectedItems().isEmpty();
    m_ui->cmdChange->setEnabled(picked);
    m_ui->cmdDelete->setEnabled(picked);
}

void frmPwd::verify() {
    if (refusesForeignIn(m_services, *this))
        return;
    switch (m_setting.verify(fromQt(m_ui->TxtExist->text()))) {
    case SecuritySetting::Verified::Wrong:
        m_ui->TxtExist->setFocus();
        m_ui->TxtExist->selectAll();
        break;
    case SecuritySetting::Verified::Deleted:
        LoadPwdFrm();
        break;
    case SecuritySetting::Verified::Accepted:
        showPanel();
        m_ui->txtNew->setFocus();
        break;
    case SecuritySetting::Verified::Nothing:
        break;
    }
}

void frmPwd::confirm() {
    if (refusesForeignIn(m_services, *this))
        return;
    switch (m_setting.confirm(fromQt(m_ui->txtNew->text()), fromQt(m_ui->txtConfirm->text()))) {
    case SecuritySetting::Confirmed::Differs:
        m_ui->txtConfirm->setFocus();
        m_ui->txtConfirm->selectAll();
        break;
    case SecuritySetting::Confirmed::Blank:
        m_ui->txtNew->setFocus();
        break;
    case SecuritySetting::Confirmed::Set:
        LoadPwdFrm();
        break;
    case SecuritySetting::Confirmed::Nothing:
        break;
    }
}

} // namespace tallybook::desktop
