#include "desktop/forms/PictureTip.h"

#include "core/forms/ImageCell.h"
#include "core/forms/PalmBitmap.h"
#include "desktop/forms/PictureBox.h"
#include "desktop/grid/GridView.h"

#include <QBuffer>
#include <QHelpEvent>
#include <QToolTip>

namespace tallybook::desktop {

namespace {

constexpr int kMostSide = 320; // pixels

bool holdsPicture(const model::Document& doc, int row, int column) {
    const int slot = model::slotOfColumn(column);
    return row >= model::kFirstDataRow && row < doc.grd.rows() && slot >= 1 && slot <= model::MaxUserFields &&
           doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type == model::FieldType::Image &&
           forms::cellPicture(doc, row, slot) != forms::CellPicture::None;
}

} // namespace

QString pictureTip(const model::Document& doc, platform::Services& services, int row, int column) {
    if (!holdsPicture(doc, row, column))
        return {};
    const auto bytes = forms::pictureBytes(doc, services, row, model::slotOfColumn(column));
    if (!bytes)
        return {};
    const auto bitmap = forms::readPalmBitmap(bytes.value());
    if (!bitmap)
        return {};
    QImage image = imageOf(bitmap.value(), Ink::Everywhere);
    if (image.width() > kMostSide || image.height() > kMostSide)
        image = image.scaled(kMostSide, kMostSide, Qt::KeepAspectRatio);
    QByteArray png;
    QBuffer buffer(&png);
    image.save(&buffer, "BMP"); // quicker than a packed form, and gone in a moment
    return QStringLiteral("<img src=\"data:image/bmp;base64,") + QString::fromLatin1(png.toBase64()) +
           QStringLiteral("\">");
}

PictureTip::PictureTip(GridView& grid, platform::Services& services)
    : QObject(&grid), m_grid(grid), m_services(services) {
    grid.viewport()->installEventFilter(this);
}

bool PictureTip::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ToolTip || m_doc == nullptr)
        return QObject::eventFilter(watched, event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const document::MousePlace place = m_grid.placeAt(help->pos());
    const QString tip = pictureTip(*m_doc, m_services, place.row, place.col);
    if (tip.isEmpty())
        return QObject::eventFilter(watched, event); // a cell without a picture tells its text
    QToolTip::showText(help->globalPos(), tip, m_grid.viewport(), m_grid.cellRect(place.row, place.col));
    return true;
}

} // namespace tallybook::desktop
