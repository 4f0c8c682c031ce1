// What holds for a whole Tallybook: its name, its user, its choices, the searched fields and the text at the start.
#pragma once

#include "core/design/Properties.h"
#include "desktop/platform/MemoBox.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QPushButton;

namespace Ui {
class frmPDBProps;
}

namespace tallybook::desktop {

class frmPDBProps : public QDialog {
    Q_OBJECT

public:
    // `keepUser` is told each change of the user, which stays whatever becomes of the dialog.
    frmPDBProps(model::Document& doc, platform::Services& services, design::UserList& users,
                std::function<void(const std::string&)> keepUser, QWidget* parent);
    ~frmPDBProps() override;

    // Escape leaves a panel for the main one, and the main one as cmdCancel does.
    void reject() override;

private:
    void connectMain();
    void connectPanels();
    void showMain();
    void showFields();
    void showStartup();
    void showPanel(QWidget& panel, QPushButton& defaultButton, QWidget& focus);
    void takeFields();
    void takeStartup();
    void ok();

    std::unique_ptr<Ui::frmPDBProps> m_ui;
    platform::Services& m_services;
    design::Properties m_properties;
    std::optional<MemoBox> m_startup; // over TxtStartup
};

} // namespace tallybook::desktop
