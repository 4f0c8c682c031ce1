// Picks one option of a Radio Button field.
#pragma once

#include <QDialog>
#include <QStringList>

#include <functional>
#include <memory>

class QButtonGroup;

namespace Ui {
class dlgRadio;
}

namespace tallybook::desktop {

class dlgRadio : public QDialog {
    Q_OBJECT

public:
    // `selected` counts from 0; -1 for none.
    dlgRadio(const QString& fieldName, const QStringList& options, int selected, QWidget* parent);
    ~dlgRadio() override;

    int selected() const; // from 0, -1 for none

    // Asked at OK with the option; the dialog stays open when it says no.
    void setAcceptor(std::function<bool(int)> acceptor) { m_acceptor = std::move(acceptor); }
    void accept() override;

private:
    std::unique_ptr<Ui::dlgRadio> m_ui;
    QButtonGroup* m_group;
    std::function<bool(int)> m_acceptor;
};

} // namespace tallybook::desktop
