#include "desktop/dialogs/frmUser.h"

#include "desktop/platform/Text.h"
#include "desktop/platform/VisibleBoxes.h"
#include "ui_frmUser.h"

namespace tallybook::desktop {

frmUser::frmUser(handheld::UserList& users, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmUser>()), m_dialog(users) {
    m_ui->setupUi(this);
    makeBoxesVisible(*this);
    for (const std::string& name : m_dialog.cmbUser())
        m_ui->cmbUser->addItem(toQt(name));
    m_ui->cmbUser->setCurrentIndex(m_dialog.userPosition);
    connect(m_ui->optUser, &QRadioButton::toggled, m_ui->cmbUser, &QComboBox::setEnabled);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

frmUser::~frmUser() = default;

void frmUser::accept() {
    m_dialog.userPosition = m_ui->cmbUser->currentIndex();
    m_dialog.OptAll = m_ui->OptAll->isChecked();
    m_dialog.OKButton();
    QDialog::accept();
}

void frmUser::reject() {
    m_dialog.CancelButton();
    QDialog::reject();
}

} // namespace tallybook::desktop
