#include "desktop/dialogs/dlgMulFilter.h"

#include "desktop/platform/Text.h"
#include "desktop/platform/VisibleBoxes.h"
#include "ui_dlgMulFilter.h"

namespace tallybook::desktop {

namespace {

constexpr int kSlotRole = Qt::UserRole;

} // namespace

dlgMulFilter::dlgMulFilter(const std::vector<document::FilterLine>& lines, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::dlgMulFilter>()) {
    m_ui->setupUi(this);
    for (const document::FilterLine& line : lines) {
        auto* item = new QListWidgetItem(toQt(line.text), m_ui->ListFilters);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(line.checked ? Qt::Checked : Qt::Unchecked);
        item->setData(kSlotRole, line.slot);
        item->setToolTip(plainTip(item->text())); // a long name is cut in the list
    }
    makeBoxesVisible(*this);
    m_ui->ListFilters->setCurrentRow(0);
    m_ui->ListFilters->setFocus();
    connect(m_ui->OKButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

dlgMulFilter::~dlgMulFilter() = default;

std::bitset<model::MaxFilters> dlgMulFilter::slotsChecked() const {
    std::bitset<model::MaxFilters> chosen;
    for (int row = 0; row < m_ui->ListFilters->count(); ++row) {
        const QListWidgetItem* item = m_ui->ListFilters->item(row);
        if (item->checkState() == Qt::Checked)
            chosen.set(static_cast<std::size_t>(item->data(kSlotRole).toInt()));
    }
    return chosen;
}

} // namespace tallybook::desktop
