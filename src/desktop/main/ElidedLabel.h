// A label that shortens a long text in its middle, and shows all of it as its tool tip.
#pragma once

#include <QLabel>

namespace tallybook::desktop {

class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);
    void setFullText(const QString& text);
    QSize minimumSizeHint() const override { return {40, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tallybook::desktop
