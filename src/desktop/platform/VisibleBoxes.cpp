#include "desktop/platform/VisibleBoxes.h"

#include <QCheckBox>
#include <QListWidget>
#include <QPalette>
#include <QRadioButton>

namespace tallybook::desktop {

namespace {

// The style draws the edge of a box a little darker than the window's ground, which on a dark one is no edge at all.
QPalette withEdges(QPalette palette) {
    const QColor text = palette.color(QPalette::Text);
    const QColor ground = palette.color(QPalette::Base);
    palette.setColor(QPalette::Window, QColor((text.red() + ground.red()) / 2, (text.green() + ground.green()) / 2,
                                              (text.blue() + ground.blue()) / 2));
    return palette;
}

template <class Box> void giveEdges(const QWidget& window) {
    for (Box* box : window.findChildren<Box*>())
        box->setPalette(withEdges(box->palette()));
}

} // namespace

void makeBoxesVisible(const QWidget& window) {
    giveEdges<QCheckBox>(window);
    giveEdges<QRadioButton>(window);
    giveEdges<QListWidget>(window);
}

} // namespace tallybook::desktop
