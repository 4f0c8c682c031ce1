#include "desktop/dialogs/frmLogin.h"

#include "ui_frmLogin.h"

namespace tallybook::desktop {

frmLogin::frmLogin(const QString& actionWord, const QString& fileName, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmLogin>()) {
    m_ui->setupUi(this);
    setWindowTitle(actionWord);
    m_ui->txtDatabase->setText(fileName);
    m_ui->txtDatabase->setCursorPosition(0);
    m_ui->txtPassword->setFocus();
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmLogin::~frmLogin() = default;

QString frmLogin::typed() const {
    return m_ui->txtPassword->text();
}

} // namespace tallybook::desktop
