// Chooses a database of a handheld user to be opened, and deletes and converts them.
#pragma once

#include "core/handheld/OpenDialog.h"
#include "desktop/dialogs/QtUserInterface.h"

#include <QDialog>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QPushButton;

namespace Ui {
class frmOpen;
}

namespace tallybook::desktop {

class frmOpen : public QDialog {
    Q_OBJECT

public:
    // The file dialog of cmdBrowse begins in `folder`. `ui` must be the one of `services`.
    frmOpen(platform::Services& services, QtUserInterface& ui, handheld::UserList& users,
            std::function<void(const std::string& UserID)> saveUser, std::filesystem::path folder, QWidget* parent);
    ~frmOpen() override;

    // Once the dialog was accepted: the file to open, or nothing when a new database is wanted.
    const std::optional<handheld::ChosenFile>& chosen() const { return m_chosen; }
    // Where a file was browsed for last.
    const std::filesystem::path& folder() const { return m_folder; }

private:
    void run(const std::function<void()>& handler);
    void fillList();
    void showSelection();
    void pressEnabled();
    void acceptFile(std::optional<handheld::ChosenFile> file);
    void browse();
    void connectControls();

    std::unique_ptr<Ui::frmOpen> m_form;
    platform::Services& m_services;
    QtUserInterface& m_ui;
    handheld::OpenDialog m_dialog;
    std::filesystem::path m_folder;
    std::optional<handheld::ChosenFile> m_chosen;
};

} // namespace tallybook::desktop
