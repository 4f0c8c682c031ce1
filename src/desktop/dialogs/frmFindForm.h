// Asks what to look for in the records.
#pragma once

#include "core/document/find/Find.h"

#include <QDialog>

#include <functional>
#include <memory>

namespace Ui {
class frmFindForm;
}

namespace tallybook::desktop {

class frmFindForm : public QDialog {
    Q_OBJECT

public:
    // Shows the settings and lists the texts of this run of the program.
    frmFindForm(const document::FindMemory& memory, QWidget* parent);
    ~frmFindForm() override;

    document::FindSettings settings() const;

    // Asked at OK with the settings; the dialog stays open, with its text selected, when it says no.
    void setAcceptor(std::function<bool(const document::FindSettings&)> acceptor) {
        m_acceptor = std::move(acceptor);
    }
    void accept() override;

private:
    void selectText();

    std::unique_ptr<Ui::frmFindForm> m_ui;
    std::function<bool(const document::FindSettings&)> m_acceptor;
};

} // namespace tallybook::desktop
