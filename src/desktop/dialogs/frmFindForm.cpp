#include "desktop/dialogs/frmFindForm.h"

#include "desktop/platform/Text.h"
#include "desktop/platform/VisibleBoxes.h"
#include "ui_frmFindForm.h"

#include <QLineEdit>

namespace tallybook::desktop {

namespace {

// A line end that was pasted is one character of the box and one of a memo's cell.
std::string searchText(QString typed) {
    for (const QChar lineEnd : {QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)})
        typed.replace(lineEnd, QLatin1Char('\n'));
    return fromQt(typed);
}

} // namespace

frmFindForm::frmFindForm(const document::FindMemory& memory, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmFindForm>()) {
    m_ui->setupUi(this);
    m_ui->cmbFindText->setCompleter(nullptr); // it would put an older text in place of the beginning that is typed
    for (const std::string& text : memory.texts)
        m_ui->cmbFindText->addItem(toQt(text));
    const document::FindSettings& settings = memory.settings;
    m_ui->cmbFindText->setEditText(toQt(settings.text));
    m_ui->chkCase->setChecked(settings.chkCase);
    m_ui->chkWholeWord->setChecked(settings.chkWholeWord);
    m_ui->chkExpression->setChecked(settings.chkExpression);
    (settings.optForward ? m_ui->optForward : m_ui->optBackward)->setChecked(true);
    (settings.optForward ? m_ui->optBackward : m_ui->optForward)->setFocusPolicy(Qt::ClickFocus); // as after a choice
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmFindForm::accept);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    makeBoxesVisible(*this);
    selectText();
}

frmFindForm::~frmFindForm() = default;

document::FindSettings frmFindForm::settings() const {
    return {.text = searchText(m_ui->cmbFindText->currentText()),
            .chkCase = m_ui->chkCase->isChecked(),
            .chkWholeWord = m_ui->chkWholeWord->isChecked(),
            .chkExpression = m_ui->chkExpression->isChecked(),
            .optForward = m_ui->optForward->isChecked()};
}

void frmFindForm::selectText() {
    m_ui->cmbFindText->setFocus();
    m_ui->cmbFindText->lineEdit()->selectAll();
}

void frmFindForm::accept() {
    if (!m_acceptor || m_acceptor(settings()))
        QDialog::accept();
    else
        selectText();
}

} // namespace tallybook::desktop
