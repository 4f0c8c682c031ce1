// Chooses a colour of an item: from boxes, or in the system's own dialog.
#pragma once

#include "core/model/Definitions.h"

#include <QDialog>

namespace tallybook::desktop {

class dlgColour : public QDialog {
    Q_OBJECT

public:
    dlgColour(const QString& title, const model::Colour& colour, QWidget* parent);

    const model::Colour& colour() const { return m_colour; }

private:
    void choose(const QColor& colour);
    void chooseMore();

    model::Colour m_colour;
};

} // namespace tallybook::desktop
