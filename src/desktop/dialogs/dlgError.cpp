#include "desktop/dialogs/dlgError.h"

#include "core/shell/Version.h"
#include "desktop/platform/Text.h"
#include "ui_dlgError.h"

#include <QDesktopServices>
#include <QUrl>

namespace tallybook::desktop {

namespace {

QString linesOf(const platform::Error& error) {
    const std::string text = "Source  : " + std::string(shell::kProgramName) + "\n" +
                             "Error No: " + std::to_string(error.number) + "\n" + "------------- \n" +
                             "Description : " + error.description();
    return toQt(text);
}

} // namespace

dlgError::dlgError(const platform::Error& error, const QString& supportPage, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::dlgError>()) {
    m_ui->setupUi(this);
    if (!error.tag.empty())
        m_ui->LblProcName->setText(toQt(error.tag));
    m_ui->Text1->setPlainText(linesOf(error));
    m_ui->lblMail->setVisible(!supportPage.isEmpty());
    m_ui->lblMail->setText(
        QStringLiteral("<a href=\"%1\">%2</a>").arg(supportPage.toHtmlEscaped(), tr("Support on the web")));
    connect(m_ui->lblMail, &QLabel::linkActivated, this,
            [supportPage] { QDesktopServices::openUrl(QUrl(supportPage)); });
    connect(m_ui->OKButton, &QPushButton::clicked, this, [this] { answerWith(platform::ErrorAnswer::GoOn); });
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, [this] { answerWith(platform::ErrorAnswer::Leave); });
    connect(m_ui->CmdAbort, &QPushButton::clicked, this, [this] { answerWith(platform::ErrorAnswer::Abort); });
    m_ui->OKButton->setFocus();
}

dlgError::~dlgError() = default;

void dlgError::answerWith(platform::ErrorAnswer answer) {
    m_answer = answer;
    accept();
}

} // namespace tallybook::desktop
