#include "desktop/dialogs/frmOpen.h"

#include "adapters/SystemClock.h"
#include "core/platform/Operation.h"
#include "desktop/platform/Text.h"
#include "ui_frmOpen.h"

#include <QHeaderView>
#include <QShortcut>

#include <utility>

namespace tallybook::desktop {

namespace {

constexpr std::string_view kTag = "Tallybook Pocket : Open";
enum Column { kName, kFormat, kRecords, kModified };

} // namespace

frmOpen::frmOpen(platform::Services& services, QtUserInterface& ui, handheld::UserList& users,
                 std::function<void(const std::string&)> saveUser, std::filesystem::path folder, QWidget* parent)
    : QDialog(parent), m_form(std::make_unique<Ui::frmOpen>()), m_services(services), m_ui(ui),
      m_dialog(services, users, std::move(saveUser)), m_folder(std::move(folder)) {
    m_form->setupUi(this);
    QHeaderView* header = m_form->ListView1->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(kName, QHeaderView::Stretch);
    m_form->ListView1->headerItem()->setTextAlignment(kRecords, Qt::AlignRight | Qt::AlignVCenter);
    for (const std::string& name : m_dialog.cmbUser())
        m_form->cmbUser->addItem(toQt(name));
    m_form->cmbUser->setCurrentIndex(m_dialog.userPosition());
    m_form->cmbUser->setEnabled(m_form->cmbUser->count() > 1);
    fillList();
    connectControls();
    m_form->ListView1->setFocus();
}

frmOpen::~frmOpen() = default;

void frmOpen::run(const std::function<void()>& handler) {
    platform::runOperation(m_services.ui, kTag, handler);
}

void frmOpen::fillList() {
    const int selected = m_dialog.selection(); // what a conversion has made
    m_form->ListView1->clear();
    for (const handheld::DatabaseRow& row : m_dialog.ListView1()) {
        auto* line = new QTreeWidgetItem(m_form->ListView1);
        line->setText(kName, toQt(row.name));
        line->setToolTip(kName, plainTip(pathToQt(row.file)));
        line->setText(kFormat, toQt(row.format));
        line->setText(kRecords, QString::number(row.records));
        line->setTextAlignment(kRecords, Qt::AlignRight | Qt::AlignVCenter);
        line->setText(kModified,
                      toQt(handheld::lastModifiedText(adapters::localTimeOf(row.modified), m_services.regional)));
    }
    m_form->ListView1->setCurrentItem(m_form->ListView1->topLevelItem(selected));
    showSelection();
}

void frmOpen::showSelection() {
    const auto selected = m_form->ListView1->selectedItems();
    m_dialog.select(selected.isEmpty() ? -1 : m_form->ListView1->indexOfTopLevelItem(selected.front()));
    m_form->OKButton->setEnabled(m_dialog.OKButtonEnabled());
    m_form->CmdConvert->setEnabled(m_dialog.CmdConvertEnabled());
    m_form->CmdDel->setEnabled(m_dialog.CmdDelEnabled());
    // Enter does what a double click does.
    (m_form->OKButton->isEnabled() ? m_form->OKButton : m_form->CmdConvert)->setDefault(true);
}

void frmOpen::pressEnabled() {
    (m_form->OKButton->isEnabled() ? m_form->OKButton : m_form->CmdConvert)->click();
}

void frmOpen::acceptFile(std::optional<handheld::ChosenFile> file) {
    if (!file)
        return;
    m_chosen = std::move(file);
    accept();
}

void frmOpen::browse() {
    const auto path =
        m_ui.askOpenName(std::string(handheld::kBrowseTitle), std::string(handheld::kBrowseFilter), m_folder);
    if (!path)
        return;
    m_folder = path->parent_path();
    acceptFile(m_dialog.cmdBrowse(*path));
    fillList();
}

void frmOpen::connectControls() {
    connect(m_form->cmbUser, &QComboBox::currentIndexChanged, this, [this](int position) {
        run([this, position] { m_dialog.chooseUser(position); });
        fillList();
    });
    connect(m_form->ListView1, &QTreeWidget::itemSelectionChanged, this, &frmOpen::showSelection);
    connect(m_form->ListView1, &QTreeWidget::itemDoubleClicked, this, &frmOpen::pressEnabled);
    connect(m_form->OKButton, &QPushButton::clicked, this,
            [this] { run([this] { acceptFile(m_dialog.OKButton()); }); });
    connect(m_form->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_form->cmdNew, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_form->cmdBrowse, &QPushButton::clicked, this, [this] { run([this] { browse(); }); });
    connect(m_form->CmdConvert, &QPushButton::clicked, this, [this] {
        run([this] { m_dialog.CmdConvert(); });
        fillList();
    });
    connect(m_form->CmdDel, &QPushButton::clicked, this, [this] {
        run([this] { m_dialog.CmdDel(); });
        fillList();
    });
    auto* remove = new QShortcut(QKeySequence(Qt::Key_Delete), m_form->ListView1);
    remove->setContext(Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, m_form->CmdDel, &QPushButton::click);
}

} // namespace tallybook::desktop
