#include "desktop/forms/frmDesignForm.h"

#include "core/forms/Tags.h"
#include "core/platform/Operation.h"
#include "desktop/forms/FieldList.h"
#include "desktop/forms/FormScreen.h"
#include "desktop/forms/dlgColour.h"
#include "desktop/forms/dlgPopHlp.h"
#include "desktop/platform/Text.h"
#include "desktop/platform/TypedText.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

namespace tallybook::desktop {

namespace {

namespace tags = forms::tags;
using forms::ItemSettings;
using forms::RowPlace;
using forms::Side;

constexpr int kMarkWidth = 14; // pixels left of the screen, for the marks

template <class Widget> Widget* named(Widget* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QPushButton* button(const QString& text, const char* name, QWidget* parent) {
    auto* made = named(new QPushButton(text, parent), name);
    made->setAutoDefault(false);
    return made;
}

QToolButton* arrow(Qt::ArrowType direction, const char* name, const QString& tip, QWidget* parent) {
    auto* made = named(new QToolButton(parent), name);
    made->setArrowType(direction);
    made->setToolTip(tip);
    made->setAccessibleName(tip);
    return made;
}

QIcon colourIcon(const model::Colour& colour) {
    QPixmap box(16, 16);
    box.fill(QColor(colour.red, colour.green, colour.blue));
    return box;
}

} // namespace

frmDesignForm::frmDesignForm(model::Document& doc, platform::Services& services, QWidget* parent)
    : QDialog(parent), m_services(services), m_design(doc, services) {
    setObjectName(QStringLiteral("frmDesignForm"));
    setWindowTitle(tr("Form Designer"));
    auto* middle = new QHBoxLayout;
    middle->addWidget(makeFields(), 3);
    middle->addWidget(makeScreen(), 5);
    auto* right = new QVBoxLayout;
    right->addWidget(makeItem());
    right->addWidget(makeTabs());
    right->addWidget(makeValues());
    right->addStretch();
    middle->addLayout(right, 0);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(middle, 1);
    layout->addWidget(makeButtons());
    resize(1040, 620);
    connectScreen();
    connectItem();
    connectTabs();
    perform(tags::kLoading, [] {});
    m_fields->setFocus();
}

QWidget* frmDesignForm::makeFields() {
    auto* box = new QGroupBox(tr("&Fields"), this);
    auto* list = new FieldList(box);
    list->fill(m_design.fields());
    list->setToolTip(tr("Drag a field to a row of the screen, or press Enter"));
    list->installEventFilter(this);
    m_fields = list;
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(list);
    box->setMinimumWidth(220);
    return box;
}

QWidget* frmDesignForm::makeScreen() {
    m_area = new QScrollArea(this);
    m_area->setObjectName(QStringLiteral("screenArea"));
    m_area->setFocusPolicy(Qt::NoFocus);
    m_area->setMinimumSize(forms::kScreenWidth * 2 + kMarkWidth + 40, 360);
    auto* sheet = new QWidget;
    m_screen = new FormScreen(m_design, sheet);
    m_markUp = named(new QLabel(QStringLiteral("\u25B6"), sheet), "LblMarkUp");
    m_markUp->setToolTip(tr("The tabs begin here"));
    m_markDown = named(new QLabel(QStringLiteral("\u25C0"), sheet), "LblMarkDown");
    m_markDown->setToolTip(tr("The handheld shows this much at once"));
    m_area->setWidget(sheet);
    m_slider = named(new QSlider(Qt::Vertical, this), "Slider2");
    m_slider->setRange(1, forms::kSliderEnd);
    m_slider->setInvertedAppearance(true);
    m_slider->setInvertedControls(true);
    m_slider->setToolTip(tr("The row where the tabs begin"));
    m_slider->setAccessibleName(m_slider->toolTip());
    auto* box = new QWidget(this);
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_slider);
    layout->addWidget(m_area, 1);
    return box;
}

QWidget* frmDesignForm::makeTabs() {
    auto* box = new QGroupBox(tr("Tabs"), this);
    m_tabs = named(new QSpinBox(box), "UpDown1");
    m_tabs->setRange(0, forms::kMostTabs);
    m_tabs->findChild<QLineEdit*>()->setObjectName(QStringLiteral("Text2"));
    m_start = named(new QSpinBox(box), "UpDown2");
    m_start->setRange(1, forms::kSliderEnd);
    m_tabName = named(new QLineEdit(box), "Text4");
    auto* layout = new QFormLayout(box);
    layout->addRow(tr("&Number:"), m_tabs);
    layout->addRow(tr("Begin at ro&w:"), m_start);
    layout->addRow(tr("N&ame:"), m_tabName);
    return box;
}

QWidget* frmDesignForm::makeItem() {
    auto* box = new QGroupBox(tr("Selected item"), this);
    m_which = named(new QLabel(box), "lblSelected");
    m_text = named(new QLineEdit(box), "FldLabel");
    m_fontFrame = named(new QFrame(box), "FontFrame");
    auto* fonts = new QHBoxLayout(m_fontFrame);
    fonts->setContentsMargins(0, 0, 0, 0);
    const QString names[] = {tr("Std"), tr("Bold"), tr("Large"), tr("L. Bold")};
    for (int font = 0; font < forms::kFonts; ++font) {
        auto* option = new QRadioButton(names[font], m_fontFrame);
        option->setObjectName(QStringLiteral("OptFont%1").arg(font));
        m_fonts[static_cast<std::size_t>(font)] = option;
        fonts->addWidget(option);
    }
    m_alignFrame = named(new QFrame(box), "alignmentFrame");
    auto* aligns = new QHBoxLayout(m_alignFrame);
    aligns->setContentsMargins(0, 0, 0, 0);
    const QString places[] = {tr("Left"), tr("Centre"), tr("Right")};
    for (int place = 0; place < 3; ++place) {
        auto* option = new QToolButton(m_alignFrame);
        option->setObjectName(QStringLiteral("alignBtn%1").arg(place));
        option->setText(places[place]);
        option->setCheckable(true);
        option->setAutoExclusive(true);
        m_align[static_cast<std::size_t>(place)] = option;
        aligns->addWidget(option);
    }
    aligns->addStretch();
    m_fore = button(tr("&Text Colour..."), "cmdForecolor", box);
    m_back = button(tr("Bac&k Colour..."), "cmdBackcolor", box);
    m_help = button(tr("Popup &Help..."), "Cmdpophlp", box);
    m_lock = named(new QCheckBox(tr("&Locked"), box), "FldLock");
    m_combo = named(new QCheckBox(tr("Display as c&ombo"), box), "DisplayAsCombo");
    m_label = named(new QCheckBox(tr("&Display as label"), box), "DisplayAsLabel");
    m_sample = named(new QLabel(box), "lblSample");
    m_sample->setAutoFillBackground(true);
    m_sample->setAlignment(Qt::AlignCenter);
    m_sample->setFrameShape(QFrame::Box);
    m_sample->setFixedHeight(34);
    auto* colours = new QHBoxLayout;
    colours->addWidget(m_fore);
    colours->addWidget(m_back);
    auto* display = new QHBoxLayout;
    display->addWidget(m_combo);
    display->addWidget(m_label);
    auto* layout = new QFormLayout(box);
    layout->addRow(m_which);
    layout->addRow(tr("La&bel:"), m_text);
    layout->addRow(tr("Font:"), m_fontFrame);
    layout->addRow(tr("Place:"), m_alignFrame);
    layout->addRow(colours);
    layout->addRow(m_lock, m_help);
    layout->addRow(display);
    layout->addRow(m_sample);
    return box;
}

QWidget* frmDesignForm::makeValues() {
    auto* box = new QWidget(this);
    m_values = named(new QCheckBox(tr("Show &values"), box), "chkShowValues");
    m_values->setToolTip(tr("Fill the screen with the values of a record"));
    m_previous = arrow(Qt::LeftArrow, "cmdPreviousRecord", tr("Previous record"), box);
    m_next = arrow(Qt::RightArrow, "cmdNextRecord", tr("Next record"), box);
    m_record = named(new QLabel(box), "lblRecord");
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_values);
    layout->addWidget(m_previous);
    layout->addWidget(m_next);
    layout->addWidget(m_record, 1);
    connect(m_values, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_showing)
            perform(tags::kShowValues, [&] { m_design.showValues(on); });
    });
    connect(m_previous, &QToolButton::clicked, this,
            [this] { perform(tags::kShowValues, [this] { m_design.stepRecord(-1); }); });
    connect(m_next, &QToolButton::clicked, this,
            [this] { perform(tags::kShowValues, [this] { m_design.stepRecord(1); }); });
    return box;
}

QWidget* frmDesignForm::makeButtons() {
    auto* box = new QWidget(this);
    auto* clear = button(tr("&Clear Form"), "Command5", box);
    auto* position = button(tr("Select &Position"), "Command4", box);
    position->setToolTip(tr("Select the next free row"));
    auto* save = button(tr("&Save"), "CmdSaveForm", box);
    auto* quit = button(tr("&Quit"), "cmdQuit", box);
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(clear);
    layout->addWidget(position);
    layout->addStretch();
    layout->addWidget(save);
    layout->addWidget(quit);
    connect(clear, &QPushButton::clicked, this,
            [this] { perform(tags::kClearForm, [this] { m_design.clearForm(); }); });
    connect(position, &QPushButton::clicked, this, [this] {
        perform(tags::kSelectPosition, [this] {
            if (!m_design.selectPosition())
                m_services.screen.beep();
        });
    });
    connect(save, &QPushButton::clicked, this, [this] { perform(tags::kSave, [this] { m_design.save(); }); });
    connect(quit, &QPushButton::clicked, this, &frmDesignForm::reject);
    return box;
}

void frmDesignForm::connectScreen() {
    connect(m_screen, &FormScreen::clicked, this, [this](RowPlace place, Side side) {
        perform(place.onTab ? tags::kLabelOnTab : tags::kLabelOnForm, [&] { m_design.click(place, side); });
    });
    connect(m_screen, &FormScreen::fieldDropped, this, [this](RowPlace place, int field) {
        perform(tags::kDrop, [&] { m_design.AddValue(place, static_cast<std::uint8_t>(field)); });
    });
    connect(m_screen, &FormScreen::rowDropped, this,
            [this](RowPlace from, RowPlace to) { perform(tags::kDrop, [&] { m_design.moveRow(from, to); }); });
    connect(m_screen, &FormScreen::splitterMoved, this, [this](bool onTab, int position, int width) {
        perform(tags::kSplitter, [&] { m_design.setSplitter(onTab, position, width); });
    });
    connect(m_screen, &FormScreen::tabChosen, this,
            [this](int tab) { perform(tags::kSelectTab, [&] { m_design.selectTab(tab); }); });
    connect(m_screen, &FormScreen::helpWanted, this, &frmDesignForm::editHelp);
    connect(m_screen, &FormScreen::clearWanted, this,
            [this] { perform(tags::kClearOnForm, [this] { m_design.ClearFld(); }); });
    connect(m_screen, &FormScreen::designKey, this, &frmDesignForm::pressKey);
    connect(m_fields, &QTreeWidget::itemDoubleClicked, this, [this] { addSelectedField(); });
}

void frmDesignForm::connectItem() {
    connect(m_text, &QLineEdit::textEdited, this, [this] { takeText(); });
    for (QRadioButton* font : m_fonts)
        connect(font, &QRadioButton::clicked, this, [this] { takeItem(); });
    for (QToolButton* align : m_align)
        connect(align, &QToolButton::clicked, this, [this] { takeItem(); });
    connect(m_lock, &QCheckBox::clicked, this, [this] { takeItem(); });
    connect(m_combo, &QCheckBox::clicked, this, [this](bool on) { // one of the two at most
        m_label->setChecked(m_label->isChecked() && !on);
        takeItem();
    });
    connect(m_label, &QCheckBox::clicked, this, [this](bool on) {
        m_combo->setChecked(m_combo->isChecked() && !on);
        takeItem();
    });
    connect(m_fore, &QPushButton::clicked, this, [this] { chooseColour(false); });
    connect(m_back, &QPushButton::clicked, this, [this] { chooseColour(true); });
    connect(m_help, &QPushButton::clicked, this, &frmDesignForm::editHelp);
}

void frmDesignForm::connectTabs() {
    connect(m_tabs, &QSpinBox::valueChanged, this, [this](int tabs) {
        if (!m_showing)
            perform(tabs > m_design.builder().tabs ? tags::kAddTabs : tags::kRemoveTabs,
                    [&] { m_design.setTabs(tabs); });
    });
    connect(m_slider, &QSlider::valueChanged, this, [this](int value) {
        if (!m_showing)
            perform(tags::kSliderChange, [&] { m_design.setSlider(value); });
    });
    connect(m_start, &QSpinBox::valueChanged, this, [this](int value) {
        if (!m_showing)
            perform(tags::kUpDown2, [&] { m_design.setSlider(value); });
    });
    connect(m_tabName, &QLineEdit::textEdited, this, [this] {
        perform(tags::kTabName, [this] {
            if (!refusesForeign(m_services, m_tabName->text()))
                m_design.setTabName(fromQt(typedText(*m_tabName)));
        });
    });
}

void frmDesignForm::perform(std::string_view tag, const std::function<void()>& operation) {
    platform::runOperation(m_services.ui, tag, operation);
    showDesign();
}

void frmDesignForm::showDesign() {
    m_showing = true;
    chooseZoom();
    showMarks();
    showItem();
    showTabs();
    const bool shows = m_design.showsValues();
    m_values->setChecked(shows);
    m_previous->setEnabled(shows);
    m_next->setEnabled(shows);
    m_record->setText(shows ? tr("Record %1").arg(m_design.record() + 1) : QString());
    m_showing = false;
}

void frmDesignForm::chooseZoom() {
    const QSize room = m_area->size();
    const int zoom = forms::zoomFor(room.width() - 2 * kMarkWidth - 20, room.height() - 8);
    m_screen->move(kMarkWidth, 0);
    m_screen->setZoom(zoom);
    m_screen->parentWidget()->resize(m_screen->width() + 2 * kMarkWidth, m_screen->height());
}

void frmDesignForm::showMarks() {
    const forms::FormGeometry geometry = m_design.geometry();
    const bool hasTabs = m_design.tabInView() > 0;
    m_markUp->setVisible(hasTabs);
    m_slider->setVisible(hasTabs);
    const int zoom = m_screen->zoom();
    m_markUp->setGeometry(0, geometry.strip().y * zoom, kMarkWidth, forms::kRowHeight * zoom);
    const bool isLonger = geometry.height() > forms::kScreenHeight;
    m_markDown->setVisible(isLonger);
    m_markDown->setGeometry(kMarkWidth + m_screen->width(), (forms::kScreenHeight - forms::kRowHeight / 2) * zoom,
                            kMarkWidth, forms::kRowHeight * zoom);
    if (const auto& selection = m_design.selection()) {
        const QRect row = m_screen->rectOf(geometry.row(selection->place));
        m_area->ensureVisible(0, row.center().y(), 0, row.height());
    }
}

void frmDesignForm::showItem() {
    const bool has = m_design.hasItem();
    const ItemSettings settings = m_design.settings();
    const auto& selection = m_design.selection();
    const bool isLabel = selection && selection->side == Side::Label;
    const bool isText = has && forms::isStaticText(m_design.item(selection->place));
    m_which->setText(!selection ? tr("Nothing is selected")
                     : !has     ? tr("Row %1, free").arg(selection->place.row + 1)
                     : isText   ? tr("Row %1, static text").arg(selection->place.row + 1)
                     : isLabel  ? tr("Row %1, label").arg(selection->place.row + 1)
                                : tr("Row %1, value").arg(selection->place.row + 1));
    const forms::FormLimits& limits = m_design.limits();
    m_text->setEnabled(has && isLabel);
    const std::string label = has && isLabel ? settings.text : std::string();
    if (fromQt(m_text->text()) != label)
        m_text->setText(toQt(label));
    m_text->setPlaceholderText(has && isLabel ? toQt(forms::kNoLabel) : QString());
    m_fontFrame->setEnabled(limits.font);
    m_alignFrame->setEnabled(limits.alignment);
    m_fonts[static_cast<std::size_t>(settings.font)]->setChecked(true);
    m_align[static_cast<std::size_t>(settings.alignment)]->setChecked(true);
    m_fore->setEnabled(limits.colours);
    m_back->setEnabled(limits.colours);
    m_fore->setIcon(colourIcon(settings.fore));
    m_back->setIcon(colourIcon(settings.back));
    m_help->setEnabled(limits.help);
    m_help->setText(m_design.help().empty() ? tr("Popup &Help...") : tr("Popup &Help... \u2713"));
    m_lock->setEnabled(limits.lock);
    m_lock->setChecked(settings.locked);
    m_combo->setEnabled(limits.display);
    m_combo->setChecked(settings.asCombo);
    m_label->setEnabled(limits.display);
    m_label->setChecked(settings.asLabel);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(settings.back.red, settings.back.green, settings.back.blue));
    palette.setColor(QPalette::WindowText, QColor(settings.fore.red, settings.fore.green, settings.fore.blue));
    m_sample->setPalette(palette);
    m_sample->setFont(handheldFont(settings.font, 2));
    m_sample->setText(tr("Sample"));
}

void frmDesignForm::showTabs() {
    const forms::FormBuilder& builder = m_design.builder();
    m_tabs->setValue(builder.tabs);
    m_slider->setValue(m_design.slider());
    m_start->setValue(m_design.slider());
    const bool hasTabs = builder.tabs > 0;
    m_start->setEnabled(hasTabs);
    m_tabName->setEnabled(hasTabs);
    const std::string name = hasTabs ? builder.part(m_design.tabInView()).Name : std::string();
    if (fromQt(m_tabName->text()) != name)
        m_tabName->setText(toQt(name));
    m_tabName->setPlaceholderText(hasTabs ? toQt(forms::tabCaption(builder, m_design.tabInView())) : QString());
}

void frmDesignForm::addSelectedField() {
    const int slot = static_cast<FieldList*>(m_fields)->currentSlot();
    if (slot == 0)
        return;
    perform(tags::kPickField, [&] {
        if (!m_design.addToSelected(static_cast<std::uint8_t>(slot)))
            m_services.screen.beep();
    });
}

void frmDesignForm::takeText() {
    perform(tags::kSetValue, [this] {
        if (refusesForeign(m_services, m_text->text()))
            return;
        ItemSettings settings = m_design.settings();
        settings.text = fromQt(typedText(*m_text));
        m_design.setValue(settings);
    });
}

void frmDesignForm::takeItem() {
    perform(tags::kSetValue, [this] {
        ItemSettings settings = m_design.settings();
        for (int font = 0; font < forms::kFonts; ++font)
            if (m_fonts[static_cast<std::size_t>(font)]->isChecked())
                settings.font = font;
        for (int place = 0; place < 3; ++place)
            if (m_align[static_cast<std::size_t>(place)]->isChecked())
                settings.alignment = static_cast<forms::Alignment>(place);
        settings.locked = m_lock->isChecked();
        settings.asCombo = m_combo->isChecked();
        settings.asLabel = m_label->isChecked();
        m_design.setValue(settings);
    });
}

void frmDesignForm::chooseColour(bool back) {
    perform(back ? tags::kBackColour : tags::kTextColour, [&] {
        ItemSettings settings = m_design.settings();
        model::Colour& colour = back ? settings.back : settings.fore;
        dlgColour dialog(back ? tr("Back Colour") : tr("Text Colour"), colour, this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        colour = dialog.colour();
        m_design.setValue(settings);
    });
}

void frmDesignForm::editHelp() {
    perform(tags::kPopupHelp, [this] {
        if (!m_design.hasItem())
            return;
        dlgPopHlp dialog(m_services, m_design.help(), this);
        if (dialog.exec() == QDialog::Accepted)
            m_design.setHelp(dialog.text());
    });
}

// The keyboard's way for each drag.
void frmDesignForm::pressKey(QKeyEvent* event) {
    const bool alt = (event->modifiers() & Qt::AltModifier) != 0;
    const bool control = (event->modifiers() & Qt::ControlModifier) != 0;
    const int key = event->key();
    event->accept();
    if (key == Qt::Key_Up || key == Qt::Key_Down) {
        const int step = key == Qt::Key_Up ? -1 : 1;
        perform(tags::kEditValue, [&] { alt ? static_cast<void>(m_design.exchange(step)) : m_design.walk(step); });
    } else if (key == Qt::Key_Left || key == Qt::Key_Right) {
        const bool left = key == Qt::Key_Left;
        perform(tags::kSplitter, [&] {
            control ? m_design.moveSplitter(left ? -1 : 1) : m_design.selectSide(left ? Side::Label : Side::Value);
        });
    } else if (key == Qt::Key_Delete) {
        perform(tags::kRemoveField, [this] { m_design.ClearFld(); });
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        addSelectedField();
    } else if (key == Qt::Key_F2 && m_text->isEnabled()) {
        m_text->setFocus();
        m_text->selectAll();
    } else {
        event->ignore();
    }
}

// In the list of fields, Enter puts the field into the selected row; Delete and Alt with the arrows work there too.
bool frmDesignForm::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        const bool arrows = key->key() == Qt::Key_Up || key->key() == Qt::Key_Down || key->key() == Qt::Key_Left ||
                            key->key() == Qt::Key_Right;
        const bool modified = (key->modifiers() & (Qt::AltModifier | Qt::ControlModifier)) != 0;
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter || key->key() == Qt::Key_Delete ||
            (arrows && modified)) {
            pressKey(key);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmDesignForm::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    showDesign();
}

void frmDesignForm::reject() {
    bool leaves = false;
    platform::runOperation(m_services.ui, tags::kQuit, [&] { leaves = m_design.mayLeave(); });
    if (leaves)
        QDialog::reject();
}

} // namespace tallybook::desktop
