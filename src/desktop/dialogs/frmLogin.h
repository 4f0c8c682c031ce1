// The prompt for one of a database's passwords.
#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmLogin;
}

namespace tallybook::desktop {

class frmLogin : public QDialog {
    Q_OBJECT

public:
    // The action word becomes the caption; the file name is shown beside.
    frmLogin(const QString& actionWord, const QString& fileName, QWidget* parent);
    ~frmLogin() override;

    QString typed() const;

private:
    std::unique_ptr<Ui::frmLogin> m_ui;
};

} // namespace tallybook::desktop
