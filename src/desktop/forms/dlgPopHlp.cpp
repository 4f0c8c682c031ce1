#include "desktop/forms/dlgPopHlp.h"

#include "desktop/platform/Text.h"
#include "desktop/platform/TypedText.h"

#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tallybook::desktop {

dlgPopHlp::dlgPopHlp(platform::Services& services, const std::string& text, QWidget* parent)
    : QDialog(parent), m_services(services), m_text(new QPlainTextEdit(this)) {
    setObjectName(QStringLiteral("dlgPopHlp"));
    setWindowTitle(tr("Popup Help"));
    m_text->setObjectName(QStringLiteral("txtHelp"));
    m_text->setAccessibleName(tr("Help text"));
    m_text->setTabChangesFocus(true);
    m_text->setPlainText(toQt(text));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &dlgPopHlp::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &dlgPopHlp::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addWidget(buttons);
    resize(360, 220);
    m_text->setFocus();
}

std::string dlgPopHlp::text() const {
    return fromQt(m_text->toPlainText());
}

void dlgPopHlp::accept() {
    if (!refusesForeign(m_services, m_text->toPlainText()))
        QDialog::accept();
}

} // namespace tallybook::desktop
