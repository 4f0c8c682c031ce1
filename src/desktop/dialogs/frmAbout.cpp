#include "desktop/dialogs/frmAbout.h"

#include "core/shell/Version.h"
#include "desktop/platform/Resources.h"
#include "desktop/platform/Text.h"
#include "ui_frmAbout.h"

namespace tallybook::desktop {

frmAbout::frmAbout(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmAbout>()) {
    m_ui->setupUi(this);
    m_ui->lblIcon->setPixmap(icon(QStringLiteral("tallybook")).pixmap(QSize(64, 64), devicePixelRatioF()));
    m_ui->lblName->setText(toQt(shell::kProgramName));
    m_ui->lblVersion->setText(toQt(shell::versionText(shell::programVersion())));
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
}

frmAbout::~frmAbout() = default;

} // namespace tallybook::desktop
