#include "desktop/dialogs/frmPDBProps.h"

#include "core/design/Tags.h"
#include "core/platform/Operation.h"
#include "desktop/platform/Combos.h"
#include "desktop/platform/TypedText.h"
#include "desktop/platform/VisibleBoxes.h"
#include "ui_frmPDBProps.h"

#include <QShortcut>
#include <QTextCursor>

#include <utility>

namespace tallybook::desktop {

namespace {

using Accepted = design::Properties::Accepted;
namespace tags = design::tags;

} // namespace

frmPDBProps::frmPDBProps(model::Document& doc, platform::Services& services, design::UserList& users,
                         std::function<void(const std::string&)> keepUser, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmPDBProps>()), m_services(services),
      m_properties(doc, services, users, std::move(keepUser)) {
    m_ui->setupUi(this);
    m_startup.emplace(*m_ui->TxtStartup);
    makeBoxesVisible(*this);
    platform::runOperation(services.ui, tags::kPropertiesLoading, [this] {
        m_ui->txtPDBname->setText(toQt(m_properties.txtPDBname));
        fillCombo(*m_ui->cmbUser, m_properties.cmbUser(), m_properties.userPosition());
        m_ui->cmbUser->setEnabled(!m_properties.cmbUser().empty());
        m_ui->ChkReadOnly->setChecked(m_properties.ChkReadOnly);
        m_ui->ChkNoBackup->setChecked(m_properties.ChkNoBackup);
        m_ui->ChkSearch->setChecked(m_properties.ChkSearch);
    });
    connectMain();
    connectPanels();
    showMain();
}

frmPDBProps::~frmPDBProps() = default;

void frmPDBProps::connectMain() {
    connect(m_ui->cmbUser, &QComboBox::activated, this, [this](int position) {
        platform::runOperation(m_services.ui, tags::kPropertiesUser,
                               [this, position] { m_properties.chooseUser(position); });
    });
    connect(m_ui->CmdSearch, &QPushButton::clicked, this, &frmPDBProps::showFields);
    connect(m_ui->CmdStartup, &QPushButton::clicked, this, &frmPDBProps::showStartup);
    connect(m_ui->cmdOK, &QPushButton::clicked, this,
            [this] { platform::runOperation(m_services.ui, tags::kPropertiesOk, [this] { ok(); }); });
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmPDBProps::reject);
}

void frmPDBProps::connectPanels() {
    connect(m_ui->CmdLstOK, &QPushButton::clicked, this,
            [this] { platform::runOperation(m_services.ui, tags::kPropertiesSearch, [this] { takeFields(); }); });
    connect(m_ui->CmdLstCancel, &QPushButton::clicked, this, &frmPDBProps::reject);
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(QKeySequence(Qt::CTRL | enter), m_ui->FrmStartup), &QShortcut::activated, m_ui->CmdDone,
                &QPushButton::click);
    connect(m_ui->CmdDone, &QPushButton::clicked, this,
            [this] { platform::runOperation(m_services.ui, tags::kPropertiesStartup, [this] { takeStartup(); }); });
}

void frmPDBProps::showPanel(QWidget& panel, QPushButton& defaultButton, QWidget& focus) {
    m_ui->panels->setCurrentWidget(&panel);
    defaultButton.setDefault(true);
    focus.setFocus();
}

void frmPDBProps::showMain() {
    QWidget* left = m_ui->panels->currentWidget();
    QWidget* focus = left == m_ui->frmFields    ? static_cast<QWidget*>(m_ui->CmdSearch)
                     : left == m_ui->FrmStartup ? static_cast<QWidget*>(m_ui->CmdStartup)
                                                : m_ui->txtPDBname;
    showPanel(*m_ui->FrmMain, *m_ui->cmdOK, *focus);
}

void frmPDBProps::showFields() {
    m_ui->LstFields->clear();
    for (const auto& field : m_properties.LstFields) {
        auto* line = new QListWidgetItem(toQt(field.name), m_ui->LstFields);
        line->setToolTip(plainTip(line->text()));
        line->setSelected(field.selected);
    }
    m_ui->LstFields->setCurrentRow(0, QItemSelectionModel::NoUpdate);
    showPanel(*m_ui->frmFields, *m_ui->CmdLstOK, *m_ui->LstFields);
}

void frmPDBProps::showStartup() {
    m_ui->ChkStartup->setChecked(m_properties.ChkStartup);
    m_startup->setText(toQt(m_properties.TxtStartup));
    m_ui->TxtStartup->moveCursor(QTextCursor::End);
    showPanel(*m_ui->FrmStartup, *m_ui->CmdDone, *m_ui->TxtStartup);
}

void frmPDBProps::takeFields() {
    for (int row = 0; row < m_ui->LstFields->count(); ++row)
        m_properties.LstFields[static_cast<std::size_t>(row)].selected = m_ui->LstFields->item(row)->isSelected();
    m_properties.CmdLstOK();
    showMain();
}

void frmPDBProps::takeStartup() {
    if (refusesForeignIn(m_services, *m_ui->FrmStartup))
        return;
    m_properties.ChkStartup = m_ui->ChkStartup->isChecked();
    m_properties.TxtStartup = fromQt(m_startup->text());
    if (m_properties.CmdDone())
        showMain();
    else
        m_ui->TxtStartup->setFocus();
}

void frmPDBProps::ok() {
    if (refusesForeignIn(m_services, *m_ui->FrmMain))
        return;
    m_properties.txtPDBname = fromQt(typedText(*m_ui->txtPDBname));
    m_properties.ChkReadOnly = m_ui->ChkReadOnly->isChecked();
    m_properties.ChkNoBackup = m_ui->ChkNoBackup->isChecked();
    m_properties.ChkSearch = m_ui->ChkSearch->isChecked();
    if (m_properties.cmdOK() == Accepted::Done) {
        accept();
        return;
    }
    if (fromQt(m_ui->txtPDBname->text()) != m_properties.txtPDBname)
        m_ui->txtPDBname->setText(toQt(m_properties.txtPDBname));
    m_ui->txtPDBname->setFocus();
    m_ui->txtPDBname->selectAll();
}

void frmPDBProps::reject() {
    const QWidget* panel = m_ui->panels->currentWidget();
    if (panel == m_ui->FrmMain) {
        platform::runOperation(m_services.ui, tags::kPropertiesCancel, [this] { m_properties.cmdCancel(); });
        QDialog::reject();
        return;
    }
    if (panel == m_ui->frmFields)
        m_properties.CmdLstCancel();
    else
        m_properties.leaveStartup();
    showMain();
}

} // namespace tallybook::desktop
