// Security Setting: sets, changes and deletes the passwords of the open database.
#pragma once

#include "core/document/file/SecuritySetting.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmPwd;
}

namespace tallybook::desktop {

class frmPwd : public QDialog {
    Q_OBJECT

public:
    frmPwd(model::Document& doc, platform::Services& services, QWidget* parent);
    ~frmPwd() override;

private:
    void LoadPwdFrm();
    void showPanel();
    void choose(document::PasswordAction action);
    void verify();
    void confirm();

    std::unique_ptr<Ui::frmPwd> m_ui;
    platform::Services& m_services;
    document::SecuritySetting m_setting;
};

} // namespace tallybook::desktop
