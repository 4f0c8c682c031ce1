#include "desktop/dialogs/dlgAutoWriter.h"

#include "desktop/platform/Text.h"
#include "desktop/platform/VisibleBoxes.h"
#include "ui_dlgAutoWriter.h"

namespace tallybook::desktop {

dlgAutoWriter::dlgAutoWriter(const std::vector<std::string>& items, Choice choice, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::dlgAutoWriter>()) {
    m_ui->setupUi(this);
    makeBoxesVisible(*this);
    for (const std::string& item : items) {
        auto* line = new QListWidgetItem(toQt(item), m_ui->List1);
        line->setToolTip(plainTip(line->text())); // a long item is cut in the list
    }
    if (choice == Choice::One) {
        m_ui->List1->setSelectionMode(QAbstractItemView::SingleSelection);
        m_ui->lblItems->setText(tr("Choose &an item:"));
        m_ui->OptAction->setVisible(false);
        connect(m_ui->List1, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    }
    // Current, so that the keys start there, and yet not chosen.
    m_ui->List1->setCurrentRow(0, QItemSelectionModel::NoUpdate);
    m_ui->List1->setFocus();
    connect(m_ui->OKButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

dlgAutoWriter::~dlgAutoWriter() = default;

std::vector<int> dlgAutoWriter::selected() const {
    std::vector<int> positions;
    for (int row = 0; row < m_ui->List1->count(); ++row)
        if (m_ui->List1->item(row)->isSelected())
            positions.push_back(row);
    return positions;
}

design::OptAction dlgAutoWriter::action() const {
    const bool appends = !m_ui->OptAction->isHidden() && m_ui->optAppend->isChecked();
    return appends ? design::OptAction::Append : design::OptAction::Replace;
}

} // namespace tallybook::desktop
