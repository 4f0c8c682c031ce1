#include "core/handheld/OpenDialog.h"

#include "core/calc/values/Text.h"
#include "core/document/file/OpenSave.h"
#include "core/pdb/Names.h"
#include "core/platform/Containment.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"
#include "core/platform/RecycleBin.h"

#include <algorithm>
#include <utility>

namespace tallybook::handheld {

namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;
using platform::Services;
using Path = std::filesystem::path;

constexpr std::string_view kSelectFirst = "Select a database first";
constexpr std::string_view kSureToDelete = "Are you sure that you want to delete file";
constexpr std::string_view kNotOpened = "Failed to open PDB file";

void say(Services& services, std::string_view text, Icon icon) {
    services.ui.message({.text = std::string(text), .icon = icon, .title = {}});
}

bool asksYes(Services& services, std::string_view text) {
    return services.ui.message({.text = std::string(text),
                                .icon = Icon::Question,
                                .buttons = Buttons::YesNo,
                                .title = {},
                                .preferred = Answer::No}) == Answer::Yes;
}

bool startsWith(const Path& path, std::string_view prefix) {
    const std::string name = path.filename().string();
    return calc::equalText(std::string_view(name).substr(0, prefix.size()), prefix, calc::TextCase::Folded);
}

ChosenFile chosen(const Path& path) {
    return {
        .CurrFilePath = path, .CurrFolder = path.parent_path(), .CurrFileName = platform::shownPath(path.filename())};
}

} // namespace

OpenDialog::OpenDialog(Services& services, UserList& users, std::function<void(const std::string&)> saveUser)
    : m_services(services), m_users(users), m_saveUser(std::move(saveUser)), m_user(users.shownPosition()) {
    fill();
}

void OpenDialog::chooseUser(int position) {
    m_user = position;
    m_users.CurrentUser = m_users.UserNames.at(static_cast<std::size_t>(position));
    if (m_saveUser)
        m_saveUser(m_users.CurrentUser);
    fill();
}

void OpenDialog::fill() {
    m_selection = -1;
    m_rows.clear();
    if (m_user < 0)
        return;
    auto rows = getDBList(m_services.files, folder());
    if (rows)
        m_rows = std::move(rows).value();
    else
        say(m_services, rows.error().text, Icon::Critical);
}

void OpenDialog::select(int row) {
    m_selection = row < static_cast<int>(m_rows.size()) ? row : -1;
}

bool OpenDialog::isOlder(int row) const {
    return row >= 0 && m_rows[static_cast<std::size_t>(row)].format == kFormat1x;
}

Path OpenDialog::folder() const {
    return m_users.UserFolders.at(static_cast<std::size_t>(m_user));
}

Path OpenDialog::selectedPath() const {
    return folder() / m_rows[static_cast<std::size_t>(m_selection)].file;
}

std::optional<ChosenFile> OpenDialog::OKButton() {
    if (m_selection < 0) {
        say(m_services, kSelectFirst, Icon::Information);
        return std::nullopt;
    }
    if (!OKButtonEnabled())
        return std::nullopt;
    m_users.CurrentUser = m_users.UserNames.at(static_cast<std::size_t>(m_user));
    return chosen(selectedPath());
}

void OpenDialog::CmdDel() {
    if (m_selection < 0 || !asksYes(m_services, kSureToDelete))
        return;
    platform::MoveToRecycleBin(m_services, selectedPath());
    fill();
}

void OpenDialog::CmdConvert() {
    if (m_selection < 0)
        say(m_services, kSelectFirst, Icon::Information);
    else if (CmdConvertEnabled())
        convert(selectedPath(), document::kLoadFailed);
}

std::optional<ChosenFile> OpenDialog::cmdBrowse(const Path& path) {
    if (startsWith(path, pdb::kPrefix2x))
        return chosen(path);
    if (startsWith(path, pdb::kPrefix1x))
        convert(path, kNotOpened);
    else
        say(m_services, kNoValidFile, Icon::Critical);
    return std::nullopt;
}

void OpenDialog::convert(const Path& path, std::string_view failure) {
    const Path target = platform::findIgnoringCase(m_services.files, document::savedPath(path));
    if (const platform::Status inside = platform::staysInFolder(m_services.files, target); !inside) {
        say(m_services, inside.error().text, Icon::Critical);
        return;
    }
    if (document::convertOlder(m_services, path, target, failure) != document::Outcome::Done)
        return;
    fill();
    if (m_user >= 0 && platform::isSamePlace(m_services.files, target.parent_path(), folder()))
        selectFile(target.filename());
    say(m_services, platform::texts::convertedTo(platform::shownPath(target)), Icon::Information);
}

void OpenDialog::selectFile(const Path& file) {
    const auto found =
        std::find_if(m_rows.begin(), m_rows.end(), [&](const DatabaseRow& row) { return row.file == file; });
    m_selection = found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

InstallDialog::InstallDialog(UserList& users) : userPosition(users.shownPosition()), m_users(users) {}

void InstallDialog::OKButton() {
    m_users.CurrentUser = m_users.UserNames.at(static_cast<std::size_t>(userPosition));
    m_target = OptAll ? kInstallToAll : static_cast<std::uint16_t>(userPosition);
}

} // namespace tallybook::handheld
