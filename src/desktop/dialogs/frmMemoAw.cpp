#include "desktop/dialogs/frmMemoAw.h"

#include "desktop/platform/Text.h"
#include "ui_frmMemoAw.h"

#include <QKeyEvent>
#include <QTextCursor>

namespace tallybook::desktop {

frmMemoAw::frmMemoAw(const Contents& contents, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmMemoAw>()), m_screen(contents.screen),
      m_longest(contents.longest) {
    m_ui->setupUi(this);
    m_memo.emplace(*m_ui->txtMemo);
    const bool number = m_screen == Screen::Number;
    m_ui->lblField->setText(contents.fieldName + QLatin1Char(':'));
    m_ui->txtMemo->setVisible(!number);
    m_ui->lblCount->setVisible(!number);
    m_ui->MaskEdBox1->setVisible(number);
    m_ui->CmdAw->setVisible(contents.autoWriter);
    if (number) {
        m_ui->MaskEdBox1->setText(contents.text);
        m_ui->MaskEdBox1->selectAll();
        m_ui->MaskEdBox1->setFocus();
        resize(width(), minimumSizeHint().height());
    } else {
        m_memo->setText(contents.text);
        m_ui->txtMemo->moveCursor(QTextCursor::End);
        m_ui->txtMemo->setFocus();
        m_ui->txtMemo->installEventFilter(this);
        connect(m_ui->txtMemo, &QPlainTextEdit::textChanged, this, &frmMemoAw::showCount);
        showCount();
    }
    m_ui->txtMemo->setReadOnly(contents.readOnly);
    m_ui->MaskEdBox1->setReadOnly(contents.readOnly);
    m_ui->CmdAw->setEnabled(!contents.readOnly);
    connect(m_ui->CmdAw, &QPushButton::clicked, this, &frmMemoAw::autoWriterAsked);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

frmMemoAw::~frmMemoAw() = default;

QString frmMemoAw::text() const {
    return m_screen == Screen::Number ? m_ui->MaskEdBox1->text() : m_memo->text();
}

void frmMemoAw::replaceText(const QString& text) {
    if (m_screen == Screen::Number) {
        m_ui->MaskEdBox1->selectAll();
        m_ui->MaskEdBox1->insert(text);
        return;
    }
    QTextCursor all(m_ui->txtMemo->document());
    all.select(QTextCursor::Document);
    all.insertText(text);
    m_ui->txtMemo->moveCursor(QTextCursor::End);
}

// A text that is too long is not cut behind the user's back: OK waits until it fits.
void frmMemoAw::showCount() {
    const auto length = static_cast<int>(fromQt(text()).size());
    m_ui->lblCount->setText(tr("%1 of %2 characters").arg(locale().toString(length), locale().toString(m_longest)));
    m_ui->OKButton->setEnabled(length <= m_longest);
}

bool frmMemoAw::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (enter && key->modifiers().testFlag(Qt::ControlModifier)) {
            if (m_ui->OKButton->isEnabled())
                accept();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tallybook::desktop
