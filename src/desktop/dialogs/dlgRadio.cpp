#include "desktop/dialogs/dlgRadio.h"

#include "desktop/platform/VisibleBoxes.h"
#include "ui_dlgRadio.h"

#include <QButtonGroup>
#include <QRadioButton>

namespace tallybook::desktop {

dlgRadio::dlgRadio(const QString& fieldName, const QStringList& options, int selected, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::dlgRadio>()), m_group(new QButtonGroup(this)) {
    m_ui->setupUi(this);
    m_ui->LblFld->setTextFormat(Qt::PlainText);
    m_ui->LblFld->setText(fieldName + QLatin1Char(':'));
    QWidget* before = nullptr;
    for (int i = 0; i < options.size(); ++i) {
        auto* option = new QRadioButton(QString(options.at(i)).replace(QLatin1Char('&'), QStringLiteral("&&")), this);
        option->setObjectName(QStringLiteral("Option1"));
        option->setAccessibleName(options.at(i));
        m_ui->options->addWidget(option);
        m_group->addButton(option, i);
        setTabOrder(before == nullptr ? option : before, option);
        before = option;
        if (i == selected || (selected < 0 && i == 0))
            option->setFocus();
    }
    if (before != nullptr)
        setTabOrder(before, m_ui->OKButton);
    setTabOrder(m_ui->OKButton, m_ui->CancelButton);
    if (QAbstractButton* button = m_group->button(selected))
        button->setChecked(true);
    makeBoxesVisible(*this);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &dlgRadio::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

dlgRadio::~dlgRadio() = default;

int dlgRadio::selected() const {
    return m_group->checkedId();
}

void dlgRadio::accept() {
    if (!m_acceptor || m_acceptor(selected()))
        QDialog::accept();
}

} // namespace tallybook::desktop
