#include "desktop/dialogs/frmListEditor.h"

#include "core/design/Tags.h"
#include "core/platform/Operation.h"
#include "desktop/platform/Text.h"
#include "ui_frmListEditor.h"

#include <QShortcut>

#include <utility>

namespace tallybook::desktop {

namespace tags = design::tags;

frmListEditor::frmListEditor(model::Document& doc, platform::Services& services, int slot, QWidget* parent,
                             const std::string& name)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmListEditor>()), m_services(services),
      m_editor(doc, services, slot, name) {
    m_ui->setupUi(this);
    buildCombo();
    buildList(0);
    connectButtons();
    connectKeys();
    m_ui->lst->setFocus();
}

frmListEditor::~frmListEditor() = default;

void frmListEditor::buildCombo() {
    for (const std::string& name : m_editor.cmbList())
        m_ui->cmbList->addItem(toQt(name));
    m_ui->cmbList->setCurrentIndex(m_editor.listPosition());
    connect(m_ui->cmbList, &QComboBox::currentIndexChanged, this, [this](int position) {
        m_editor.chooseList(position);
        buildList(0);
    });
}

void frmListEditor::buildList(int selected) {
    m_ui->lst->clear();
    for (const std::string& item : m_editor.lst()) {
        auto* line = new QListWidgetItem(toQt(item), m_ui->lst);
        line->setToolTip(plainTip(line->text())); // a long item is cut in the list
    }
    m_ui->lst->setCurrentRow(selected);
    for (QPushButton* button : {m_ui->cmdEdit, m_ui->cmdDelete, m_ui->cmdSort, m_ui->cmdUp, m_ui->cmdDown})
        button->setEnabled(m_ui->lst->count() > 0);
}

void frmListEditor::press(std::string_view tag, const std::function<int(int)>& operation) {
    const bool none = m_ui->lst->selectedItems().isEmpty();
    int selected = none ? -1 : m_ui->lst->currentRow();
    platform::runOperation(m_services.ui, tag, [&] { selected = operation(selected); });
    buildList(selected);
}

void frmListEditor::connectButtons() {
    connect(m_ui->CmdAdd, &QPushButton::clicked, this, [this] {
        press(tags::kListAdd, [this](int selected) {
            const int added = m_editor.CmdAdd();
            return added < 0 ? selected : added;
        });
    });
    connect(m_ui->cmdEdit, &QPushButton::clicked, this,
            [this] { press(tags::kListEdit, [this](int selected) { return m_editor.cmdEdit(selected); }); });
    connect(m_ui->cmdDelete, &QPushButton::clicked, this,
            [this] { press(tags::kListDelete, [this](int selected) { return m_editor.cmdDelete(selected); }); });
    connect(m_ui->cmdSort, &QPushButton::clicked, this, [this] {
        press(tags::kListSort, [this](int selected) {
            m_editor.cmdSort();
            return selected;
        });
    });
    connect(m_ui->cmdUp, &QPushButton::clicked, this,
            [this] { press(tags::kListUp, [this](int selected) { return m_editor.cmdUp(selected); }); });
    connect(m_ui->cmdDown, &QPushButton::clicked, this,
            [this] { press(tags::kListDown, [this](int selected) { return m_editor.cmdDown(selected); }); });
    connect(m_ui->lst, &QListWidget::itemDoubleClicked, m_ui->cmdEdit, &QPushButton::click);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &QDialog::accept);
}

// The keys that lists have everywhere, so that a hand on the list needs no button.
void frmListEditor::connectKeys() {
    const std::pair<int, QPushButton*> keys[] = {
        {Qt::Key_Insert, m_ui->CmdAdd},
        {Qt::Key_F2, m_ui->cmdEdit},
        {Qt::Key_Delete, m_ui->cmdDelete},
        {static_cast<int>(Qt::CTRL) | static_cast<int>(Qt::Key_Up), m_ui->cmdUp},
        {static_cast<int>(Qt::CTRL) | static_cast<int>(Qt::Key_Down), m_ui->cmdDown},
    };
    for (const auto& [key, button] : keys) {
        const QKeySequence sequence(key);
        auto* shortcut = new QShortcut(sequence, m_ui->lst);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
        button->setToolTip(sequence.toString(QKeySequence::NativeText));
    }
}

void frmListEditor::done(int result) {
    platform::runOperation(m_services.ui, tags::kListOk, [this] { m_editor.OKButton(); });
    QDialog::done(result);
}

} // namespace tallybook::desktop
