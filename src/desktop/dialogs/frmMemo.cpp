#include "desktop/dialogs/frmMemo.h"

#include "core/design/AutoWriter.h"
#include "desktop/platform/Text.h"
#include "ui_frmMemo.h"

#include <QShortcut>
#include <QTextCursor>

namespace tallybook::desktop {

frmMemo::frmMemo(const Contents& contents, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmMemo>()), m_longest(contents.longest) {
    m_ui->setupUi(this);
    m_ui->lblField->setText(contents.title + QLatin1Char(':'));
    m_memo.emplace(*m_ui->txtMemo);
    m_memo->setText(toQt(design::textForMemo(contents.text)));
    m_ui->txtMemo->moveCursor(QTextCursor::End);
    m_ui->txtMemo->setReadOnly(contents.readOnly);
    m_ui->txtMemo->setFocus();
    connect(m_ui->txtMemo, &QPlainTextEdit::textChanged, this, &frmMemo::showCount);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(QKeySequence(Qt::CTRL | enter), this), &QShortcut::activated, m_ui->OKButton,
                &QPushButton::click);
    showCount();
}

frmMemo::~frmMemo() = default;

std::string frmMemo::text() const {
    return design::textFromMemo(fromQt(m_memo->text()));
}

// A text that is too long is not cut behind the user's back: OK waits until it fits.
void frmMemo::showCount() {
    const auto length = static_cast<int>(text().size());
    m_ui->lblCount->setText(tr("%1 of %2 characters").arg(locale().toString(length), locale().toString(m_longest)));
    m_ui->OKButton->setEnabled(length <= m_longest);
}

} // namespace tallybook::desktop
