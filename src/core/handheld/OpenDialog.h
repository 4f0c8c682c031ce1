// The Open dialog and the install dialog without their widgets.
#pragma once

#include "core/handheld/DatabaseList.h"
#include "core/handheld/Users.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::handheld {

inline constexpr std::string_view kNoValidFile = "No the Valid file for Tallybook Pocket.";
inline constexpr std::string_view kBrowseTitle = "Open Tallybook";
inline constexpr std::string_view kBrowseFilter = "PDB file (*.pdb)|MS2_*.pdb";

// What the dialog was left with, to be opened.
struct ChosenFile {
    std::filesystem::path CurrFilePath;
    std::filesystem::path CurrFolder;
    std::string CurrFileName; // Windows-1252

    bool operator==(const ChosenFile&) const = default;
};

// frmOpen. Each handler of a control is a function of its name; what has to be said has been said when it returns.
class OpenDialog {
public:
    // Fills the list of the chosen user. `saveUser` is told each change of the user, Windows-1252. The references
    // outlive the dialog.
    OpenDialog(platform::Services& services, UserList& users,
               std::function<void(const std::string& UserID)> saveUser = {});

    const std::vector<std::string>& cmbUser() const { return m_users.UserNames; }
    int userPosition() const { return m_user; } // -1 without users
    void chooseUser(int position);

    const std::vector<DatabaseRow>& ListView1() const { return m_rows; }
    // -1 for none. Filling the list selects none.
    void select(int row);
    int selection() const { return m_selection; }

    // Without a selection OKButton can be pressed and says that one is needed.
    bool OKButtonEnabled() const { return !isOlder(m_selection); }
    bool CmdConvertEnabled() const { return isOlder(m_selection); }
    bool CmdDelEnabled() const { return m_selection >= 0; }

    // The file to open; nothing when the dialog stays.
    std::optional<ChosenFile> OKButton();
    void CmdDel();
    // What it made is selected, where the list has it.
    void CmdConvert();
    // For a file that the file dialog gave, in whatever folder.
    std::optional<ChosenFile> cmdBrowse(const std::filesystem::path& path);

private:
    bool isOlder(int row) const;
    std::filesystem::path folder() const;
    std::filesystem::path selectedPath() const;
    void fill();
    void selectFile(const std::filesystem::path& file);
    void convert(const std::filesystem::path& path, std::string_view failure);

    platform::Services& m_services;
    UserList& m_users;
    std::function<void(const std::string&)> m_saveUser;
    int m_user = -1;
    std::vector<DatabaseRow> m_rows;
    int m_selection = -1;
};

// What frmUser is left with, beside the position of a user.
inline constexpr std::uint16_t kInstallToAll = 100;
inline constexpr std::uint16_t kInstallCancelled = 65535;

// frmUser.
class InstallDialog {
public:
    // Shows CurrentUser, or the first one. `users` outlives the dialog.
    explicit InstallDialog(UserList& users);

    const std::vector<std::string>& cmbUser() const { return m_users.UserNames; }
    int userPosition = -1;
    bool OptAll = false; // otherwise optUser

    std::uint16_t InstallTarget() const { return m_target; } // a cancel until OKButton
    void OKButton();
    void CancelButton() { m_target = kInstallCancelled; }

private:
    UserList& m_users;
    std::uint16_t m_target = kInstallCancelled;
};

} // namespace tallybook::handheld
