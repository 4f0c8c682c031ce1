// The tool tip of a cell that holds a picture: the picture.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <QObject>
#include <QString>

namespace tallybook::desktop {

class GridView;

// The picture of a cell as rich text, at most 320 pixels wide and high; empty for a cell without one, and for one
// that cannot be read.
QString pictureTip(const model::Document& doc, platform::Services& services, int row, int column);

// Answers a grid's questions for tool tips. The grid owns it.
class PictureTip : public QObject {
    Q_OBJECT

public:
    PictureTip(GridView& grid, platform::Services& services);

    // The document whose grid is shown; nothing for none.
    void setDocument(const model::Document* doc) { m_doc = doc; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    GridView& m_grid;
    platform::Services& m_services;
    const model::Document* m_doc = nullptr;
};

} // namespace tallybook::desktop
