// The window that greets at the start, above all others, and goes away by itself.
#pragma once

#include <QFrame>

#include <memory>

namespace Ui {
class frmSplash;
}

namespace tallybook::desktop {

// Keeps a window above all others.
void MakeWindowAlwaysTop(QWidget& window);

class frmSplash : public QFrame {
    Q_OBJECT

public:
    explicit frmSplash(QWidget* parent = nullptr);
    ~frmSplash() override;

    // Shows it for a while; nothing waits for it.
    void showFor(int milliseconds);

protected:
    void mousePressEvent(QMouseEvent* event) override; // goes away at a click

private:
    std::unique_ptr<Ui::frmSplash> m_ui;
};

} // namespace tallybook::desktop
