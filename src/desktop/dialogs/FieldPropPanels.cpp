#include "desktop/dialogs/FieldPropPanels.h"

#include "core/design/Tags.h"
#include "core/platform/Operation.h"
#include "desktop/platform/TypedText.h"
#include "ui_frmFieldProp.h"

#include <QButtonGroup>
#include <QKeyEvent>
#include <QRadioButton>

namespace tallybook::desktop {

namespace tags = design::tags;

void FieldPropPanel::change(std::string_view tag, const std::function<void()>& operation) {
    take();
    platform::runOperation(services().ui, tag, operation);
    show();
}

void showNumbers(QComboBox& box, std::vector<design::NumberedEntry> entries, std::optional<std::uint8_t> number) {
    const int position = design::positionOfNumber(entries, number);
    box.clear();
    for (const design::NumberedEntry& entry : entries)
        box.addItem(toQt(entry.text), entry.number);
    box.setCurrentIndex(position);
}

std::optional<std::uint8_t> chosenNumber(const QComboBox& box) {
    if (box.currentIndex() < 0)
        return std::nullopt;
    return static_cast<std::uint8_t>(box.currentData().toInt());
}

void takeChosen(const QComboBox& box, std::string& text) {
    if (box.currentText() != toQt(text))
        text = fromQt(box.currentText());
}

AutoWriterPanel::AutoWriterPanel(const FieldPropContext& context) : FieldPropPanel(context) {
    ui().cmbSeparate->addItems(qtEntries(design::separatorEntries()));
    ui().TxtAW->installEventFilter(this);
    connect(ui().checkAutoWriter, &QCheckBox::clicked, this,
            [this] { change(tags::kFieldAutoWriter, [this] { design::clickAutoWriter(draft()); }); });
    connect(ui().cmdAddToList, &QPushButton::clicked, this,
            [this] { change(tags::kFieldAddToList, [this] { addText(); }); });
    connect(ui().cmdRemFrmList, &QPushButton::clicked, this,
            [this] { change(tags::kFieldRemoveFromList, [this] { removeText(); }); });
    connect(ui().ListAW, &QListWidget::currentRowChanged, this,
            [this](int row) { ui().cmdRemFrmList->setEnabled(row >= 0); });
}

void AutoWriterPanel::show() {
    ui().checkAutoWriter->setChecked(draft().checkAutoWriter);
    ui().FrmAWProp->setVisible(draft().checkAutoWriter &&
                               design::showsPanel(draft().type(), design::Panel::AutoWriter));
    ui().cmbSeparate->setCurrentIndex(draft().cmbSeparate);
    const int row = ui().ListAW->currentRow();
    ui().ListAW->clear();
    ui().ListAW->addItems(qtEntries(draft().ListAW.Items));
    ui().ListAW->setCurrentRow(std::min(row, ui().ListAW->count() - 1));
    ui().cmdRemFrmList->setEnabled(ui().ListAW->currentRow() >= 0);
}

void AutoWriterPanel::take() {
    draft().cmbSeparate = ui().cmbSeparate->currentIndex();
}

// The text stays to be mended when it is refused; the focus stays for the next one.
void AutoWriterPanel::addText() {
    if (!refusesForeign(services(), ui().TxtAW->text()) &&
        design::cmdAddToList(draft(), fromQt(typedText(*ui().TxtAW)), services()))
        ui().TxtAW->clear();
    ui().TxtAW->setFocus();
}

void AutoWriterPanel::removeText() {
    design::cmdRemFrmList(draft(), ui().ListAW->currentRow());
}

// Enter adds the text, Delete in the list takes it out; neither is meant for the dialog's default button.
bool AutoWriterPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !ui().TxtAW->text().isEmpty()) {
            ui().cmdAddToList->click();
            return true;
        }
    }
    return FieldPropPanel::eventFilter(watched, event);
}

RadioPanel::RadioPanel(const FieldPropContext& context) : FieldPropPanel(context), m_group(new QButtonGroup(this)) {
    for (int count = design::kFewestRadioOptions; count <= design::kRadioOptions; ++count)
        ui().CmbNobuton->addItem(QString::number(count));
    QWidget* before = ui().CmbNobuton;
    for (int option = 0; option < design::kRadioOptions; ++option) {
        const auto place = static_cast<std::size_t>(option);
        m_marks[place] = new QRadioButton(ui().FrmRadio);
        m_marks[place]->setObjectName(QStringLiteral("OptSel"));
        m_marks[place]->setAccessibleName(tr("Option %1 stands in new records").arg(option + 1));
        m_marks[place]->setToolTip(tr("Stands in new records"));
        m_group->addButton(m_marks[place], option);
        m_texts[place] = new QLineEdit(ui().FrmRadio);
        m_texts[place]->setObjectName(QStringLiteral("Optxt"));
        m_texts[place]->setAccessibleName(tr("Option %1").arg(option + 1));
        ui().options->addWidget(m_marks[place], option, 0);
        ui().options->addWidget(m_texts[place], option, 1);
        QWidget::setTabOrder(before, m_marks[place]);
        QWidget::setTabOrder(m_marks[place], m_texts[place]);
        before = m_texts[place];
    }
    connect(ui().CmbNobuton, &QComboBox::activated, this, [this] { change(tags::kFieldAttributes, [] {}); });
}

void RadioPanel::show() {
    const design::RadioDraft& radio = draft().FrmRadio;
    ui().CmbNobuton->setCurrentIndex(radio.CmbNobuton);
    m_group->setExclusive(false); // so that none may be marked
    for (int option = 0; option < design::kRadioOptions; ++option) {
        const auto place = static_cast<std::size_t>(option);
        m_texts[place]->setText(toQt(radio.Optxt[place]));
        m_marks[place]->setChecked(option == radio.OptSel);
        m_marks[place]->setVisible(option < radio.count());
        m_texts[place]->setVisible(option < radio.count());
    }
    m_group->setExclusive(true);
}

void RadioPanel::take() {
    design::RadioDraft& radio = draft().FrmRadio;
    radio.CmbNobuton = ui().CmbNobuton->currentIndex();
    for (std::size_t place = 0; place < m_texts.size(); ++place)
        takeTyped(*m_texts[place], radio.Optxt[place]);
    radio.OptSel = m_group->checkedId() < radio.count() ? m_group->checkedId() : -1;
}

} // namespace tallybook::desktop
