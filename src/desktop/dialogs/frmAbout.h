// The about box.
#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmAbout;
}

namespace tallybook::desktop {

class frmAbout : public QDialog {
    Q_OBJECT

public:
    explicit frmAbout(QWidget* parent);
    ~frmAbout() override;

private:
    std::unique_ptr<Ui::frmAbout> m_ui;
};

} // namespace tallybook::desktop
