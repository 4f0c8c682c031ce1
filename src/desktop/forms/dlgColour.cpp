#include "desktop/forms/dlgColour.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace tallybook::desktop {

namespace {

constexpr int kColumns = 8;
constexpr std::array<std::pair<const char*, QRgb>, 24> kColours = {{
    {"Black", 0xFF000000},     {"Dark grey", 0xFF555555}, {"Grey", 0xFF888888},       {"Light grey", 0xFFBBBBBB},
    {"Pale grey", 0xFFDDDDDD}, {"White", 0xFFFFFFFF},     {"Dark red", 0xFF800000},   {"Red", 0xFFFF0000},
    {"Orange", 0xFFFF9900},    {"Yellow", 0xFFFFFF00},    {"Dark green", 0xFF008000}, {"Green", 0xFF00FF00},
    {"Teal", 0xFF008080},      {"Cyan", 0xFF00FFFF},      {"Dark blue", 0xFF000099},  {"Blue", 0xFF0000FF},
    {"Sky blue", 0xFF99CCFF},  {"Purple", 0xFF800080},    {"Magenta", 0xFFFF00FF},    {"Pink", 0xFFFFCCCC},
    {"Brown", 0xFF996633},     {"Sand", 0xFFFFFFCC},      {"Mint", 0xFFCCFFCC},       {"Lilac", 0xFFCCCCFF},
}};

QIcon boxIcon(QRgb rgb, int side) {
    QPixmap box(side, side);
    box.fill(QColor(rgb));
    return box;
}

} // namespace

dlgColour::dlgColour(const QString& title, const model::Colour& colour, QWidget* parent)
    : QDialog(parent), m_colour(colour) {
    constexpr int kSide = 22;
    setObjectName(QStringLiteral("dlgColour"));
    setWindowTitle(title);
    auto* grid = new QGridLayout;
    grid->setSpacing(2);
    const QRgb now = qRgb(colour.red, colour.green, colour.blue);
    for (std::size_t i = 0; i < kColours.size(); ++i) {
        const auto& [name, rgb] = kColours[i];
        auto* box = new QToolButton(this);
        box->setObjectName(QStringLiteral("box%1").arg(i));
        box->setIcon(boxIcon(rgb, kSide));
        box->setIconSize({kSide, kSide});
        box->setToolTip(tr(name));
        box->setAccessibleName(tr(name));
        box->setCheckable(true);
        box->setChecked(rgb == now);
        if (rgb == now)
            box->setFocus();
        connect(box, &QToolButton::clicked, this, [this, rgb = rgb] { choose(QColor(rgb)); });
        grid->addWidget(box, static_cast<int>(i) / kColumns, static_cast<int>(i) % kColumns);
    }
    auto* more = new QPushButton(tr("&More Colours..."), this);
    more->setObjectName(QStringLiteral("cmdMoreColor"));
    more->setAutoDefault(false);
    connect(more, &QPushButton::clicked, this, &dlgColour::chooseMore);
    auto* cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAutoDefault(false);
    connect(cancel, &QPushButton::clicked, this, &dlgColour::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(more);
    buttons->addStretch();
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void dlgColour::choose(const QColor& colour) {
    m_colour = {static_cast<std::uint8_t>(colour.red()), static_cast<std::uint8_t>(colour.green()),
                static_cast<std::uint8_t>(colour.blue())};
    accept();
}

void dlgColour::chooseMore() {
    const QColor chosen =
        QColorDialog::getColor(QColor(m_colour.red, m_colour.green, m_colour.blue), this, windowTitle());
    if (chosen.isValid())
        choose(chosen);
}

} // namespace tallybook::desktop
