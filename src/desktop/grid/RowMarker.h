// The small triangle at the left edge of the row that is being worked on.
#pragma once

#include <QWidget>

namespace tallybook::desktop {

class RowMarker : public QWidget {
public:
    explicit RowMarker(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tallybook::desktop
