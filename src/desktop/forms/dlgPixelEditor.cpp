#include "desktop/forms/dlgPixelEditor.h"

#include "desktop/forms/PictureBox.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cmath>

namespace tallybook::desktop {

namespace {

using forms::Tool;

constexpr int kBox = 16;      // pixels of a colour's box
constexpr int kLeastGrid = 4; // pixels of a pixel, from which on there are lines between them

QIcon colourBox(const model::Colour& colour) {
    QPixmap box(kBox, kBox);
    box.fill(QColor(colour.red, colour.green, colour.blue));
    return box;
}

} // namespace

PixelCanvas::PixelCanvas(forms::PixelEditor& editor, QWidget* parent) : QWidget(parent), m_editor(editor) {
    setObjectName(QStringLiteral("canvas"));
    setAccessibleName(tr("Picture"));
    setCursor(Qt::CrossCursor);
    showPicture();
}

void PixelCanvas::setScale(int pixels) {
    m_scale = pixels;
    showPicture();
}

void PixelCanvas::showPicture() {
    resize(m_editor.bitmap().width * m_scale, m_editor.bitmap().height * m_scale);
    update();
}

void PixelCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawImage(rect(), imageOf(m_editor.bitmap(), Ink::Everywhere));
    if (m_scale < kLeastGrid)
        return;
    painter.setPen(QColor(128, 128, 128, 90));
    for (int x = 0; x < width(); x += m_scale)
        painter.drawLine(x, 0, x, height());
    for (int y = 0; y < height(); y += m_scale)
        painter.drawLine(0, y, width(), y);
}

forms::Pixel PixelCanvas::pixelAt(const QMouseEvent& event) const {
    const QPointF at = event.position() / m_scale;
    return {static_cast<int>(std::floor(at.x())), static_cast<int>(std::floor(at.y()))};
}

void PixelCanvas::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    m_editor.begin(m_tool, pixelAt(*event));
    update();
}

void PixelCanvas::mouseMoveEvent(QMouseEvent* event) {
    if ((event->buttons() & Qt::LeftButton) == 0)
        return;
    m_editor.moveTo(pixelAt(*event));
    update();
}

void PixelCanvas::mouseReleaseEvent(QMouseEvent*) {
    m_editor.end();
    emit drawn();
}

dlgPixelEditor::dlgPixelEditor(const forms::Bitmap& bitmap, QWidget* parent) : QDialog(parent), m_editor(bitmap) {
    setObjectName(QStringLiteral("dlgPixelEditor"));
    setWindowTitle(tr("Edit Picture"));
    m_canvas = new PixelCanvas(m_editor, nullptr);
    m_canvas->setScale(std::clamp(480 / std::max(bitmap.width, bitmap.height), 1, 24));
    auto* area = new QScrollArea(this);
    area->setWidget(m_canvas);
    area->setAlignment(Qt::AlignCenter);
    area->setBackgroundRole(QPalette::Mid);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &dlgPixelEditor::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &dlgPixelEditor::reject);
    auto* right = new QVBoxLayout;
    right->addWidget(makeTools());
    right->addWidget(makeColours(), 1);
    right->addWidget(makeCanvasSize());
    auto* middle = new QHBoxLayout;
    middle->addWidget(area, 1);
    middle->addLayout(right);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(middle, 1);
    layout->addWidget(buttons);
    connect(m_canvas, &PixelCanvas::drawn, this, &dlgPixelEditor::showState);
    resize(780, 600);
    showState();
}

QWidget* dlgPixelEditor::makeTools() {
    constexpr std::array kNames = {QT_TR_NOOP("Pencil"),           QT_TR_NOOP("Line"), QT_TR_NOOP("Rectangle"),
                                   QT_TR_NOOP("Filled rectangle"), QT_TR_NOOP("Fill"), QT_TR_NOOP("Pick a colour")};
    auto* box = new QWidget(this);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* group = new QButtonGroup(box);
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        auto* tool = new QToolButton(box);
        tool->setObjectName(QStringLiteral("tool%1").arg(i));
        tool->setText(tr(kNames[i]));
        tool->setCheckable(true);
        tool->setChecked(i == 0);
        tool->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        group->addButton(tool, static_cast<int>(i));
        layout->addWidget(tool);
    }
    connect(group, &QButtonGroup::idClicked, this, [this](int tool) { m_canvas->setTool(static_cast<Tool>(tool)); });
    const auto step = [&](const QString& text, const char* name, QKeySequence::StandardKey key, auto act) {
        auto* button = new QToolButton(box);
        button->setObjectName(QString::fromLatin1(name));
        button->setText(text);
        button->setShortcut(key);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        connect(button, &QToolButton::clicked, this, [this, act] {
            (m_editor.*act)();
            showState();
        });
        layout->addWidget(button);
        return button;
    };
    m_undo = step(tr("Undo"), "cmdUndo", QKeySequence::Undo, &forms::PixelEditor::undo);
    m_redo = step(tr("Redo"), "cmdRedo", QKeySequence::Redo, &forms::PixelEditor::redo);
    return box;
}

QWidget* dlgPixelEditor::makeColours() {
    constexpr int kColumns = 8;
    auto* area = new QScrollArea(this);
    auto* sheet = new QWidget;
    auto* grid = new QGridLayout(sheet);
    grid->setSpacing(1);
    grid->setContentsMargins(2, 2, 2, 2);
    const auto& palette = m_editor.bitmap().palette;
    for (std::size_t i = 0; i < palette.size(); ++i) {
        auto* box = new QToolButton(sheet);
        box->setObjectName(QStringLiteral("colour%1").arg(i));
        box->setIcon(colourBox(palette[i]));
        box->setToolTip(QColor(palette[i].red, palette[i].green, palette[i].blue).name());
        connect(box, &QToolButton::clicked, this, [this, i] {
            m_editor.setInk(static_cast<std::uint8_t>(i));
            showState();
        });
        grid->addWidget(box, static_cast<int>(i) / kColumns, static_cast<int>(i) % kColumns);
    }
    area->setWidget(sheet);
    area->setMinimumWidth(sheet->sizeHint().width() + 24);
    auto* box = new QWidget(this);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    m_ink = new QLabel(box);
    m_ink->setObjectName(QStringLiteral("lblInk"));
    m_ink->setFixedHeight(kBox + 4);
    m_ink->setAutoFillBackground(true);
    m_ink->setFrameShape(QFrame::Box);
    layout->addWidget(m_ink);
    layout->addWidget(area, 1);
    return box;
}

QWidget* dlgPixelEditor::makeCanvasSize() {
    auto* box = new QWidget(this);
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto side = [&](const char* name, int value) {
        auto* spin = new QSpinBox(box);
        spin->setObjectName(QString::fromLatin1(name));
        spin->setRange(1, forms::kMostCanvas);
        spin->setValue(value);
        layout->addWidget(spin);
        return spin;
    };
    m_width = side("spnWidth", m_editor.bitmap().width);
    layout->addWidget(new QLabel(QStringLiteral("x"), box));
    m_height = side("spnHeight", m_editor.bitmap().height);
    auto* resizeButton = new QPushButton(tr("&Resize"), box);
    resizeButton->setObjectName(QStringLiteral("cmdResize"));
    resizeButton->setAutoDefault(false);
    layout->addWidget(resizeButton);
    connect(resizeButton, &QPushButton::clicked, this, [this] {
        m_editor.resize(m_width->value(), m_height->value());
        showState();
    });
    return box;
}

void dlgPixelEditor::showState() {
    m_canvas->showPicture();
    m_undo->setEnabled(m_editor.canUndo());
    m_redo->setEnabled(m_editor.canRedo());
    m_width->setValue(m_editor.bitmap().width);
    m_height->setValue(m_editor.bitmap().height);
    const model::Colour& colour = m_editor.bitmap().palette[m_editor.ink()];
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(colour.red, colour.green, colour.blue));
    m_ink->setPalette(palette);
}

} // namespace tallybook::desktop
