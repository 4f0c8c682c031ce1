// Asks for which users of the handheld a file is installed.
#pragma once

#include "core/handheld/OpenDialog.h"

#include <QDialog>

#include <cstdint>
#include <memory>

namespace Ui {
class frmUser;
}

namespace tallybook::desktop {

class frmUser : public QDialog {
    Q_OBJECT

public:
    frmUser(handheld::UserList& users, QWidget* parent);
    ~frmUser() override;

    std::uint16_t InstallTarget() const { return m_dialog.InstallTarget(); }

    void accept() override;
    void reject() override;

private:
    std::unique_ptr<Ui::frmUser> m_ui;
    handheld::InstallDialog m_dialog;
};

} // namespace tallybook::desktop
