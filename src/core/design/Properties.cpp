#include "core/design/Properties.h"

#include "core/calc/values/Text.h"
#include "core/design/Dialog.h"
#include "core/document/file/Copies.h"
#include "core/document/file/OpenSave.h"
#include "core/pdb/Names.h"
#include "core/platform/Ansi.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <utility>

namespace tallybook::design {

namespace {

constexpr std::uint8_t kSearchFlag = 0x80;
// As the message has it; the quote belongs with them, since no file system of the handheld's desktop takes it.
constexpr std::string_view kForbidden = "\\/:*?<>|\"";
constexpr std::size_t kMostInDatabaseName = model::kNameLength - pdb::kPrefix2x.size();

std::string withoutPrefix(const std::string& name) {
    const bool has = calc::upper(std::string_view(name).substr(0, pdb::kPrefix2x.size())) == pdb::kPrefix2x;
    return has ? name.substr(pdb::kPrefix2x.size()) : name;
}

// The name in the header of a file, or its stem where the header has none; nothing for a new database.
std::string shownName(const model::Document& doc) {
    if (!doc.CurrDB20.DBName.empty() || document::isNewDatabase(doc))
        return withoutPrefix(doc.CurrDB20.DBName);
    return withoutPrefix(platform::ansi::fromUtf8(doc.CurrFilePath.stem().string()));
}

template <class T> void take(T& target, const T& value, bool& changed) {
    changed = changed || target != value;
    target = value;
}

// A box that is checked for any byte but 0 leaves the byte of another program until it is changed.
void takeCheck(std::uint8_t& target, bool checked, bool& changed) {
    if ((target != 0) != checked)
        take(target, static_cast<std::uint8_t>(checked ? 1 : 0), changed);
}

} // namespace

Properties::Properties(model::Document& doc, platform::Services& services, UserList& users,
                       std::function<void(const std::string&)> saveUser)
    : txtPDBname(shownName(doc)), m_doc(doc), m_services(services), m_users(users), m_saveUser(std::move(saveUser)),
      m_before(doc.CurrDB20), m_modifiedBefore(doc.DocModified) {
    model::DatabaseModel& db = doc.CurrDB20;
    if (document::isNewDatabase(doc) && users.CurrentUser.empty() && !users.UserNames.empty())
        users.CurrentUser = users.UserNames.front();
    db.NumFields = static_cast<std::uint8_t>(std::max(model::highestField(db), 1));
    ChkSearch = (db.SearchFlags & kSearchFlag) != 0;
    ChkReadOnly = db.ReadOnly != 0;
    ChkNoBackup = db.NoBackup != 0;
    fillStartup();
    fillFields();
}

void Properties::fillStartup() {
    ChkStartup = m_doc.CurrDB20.ShowStartup != 0;
    TxtStartup = calc::LfToCrLf(m_doc.CurrDB20.StartupText);
    m_startup = TxtStartup;
}

void Properties::fillFields() {
    LstFields.clear();
    for (int slot = 1; slot < m_doc.CurrDB20.NumFields; ++slot) {
        const model::FieldDef& field = m_doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
        LstFields.push_back({slot, field.Name, field.SearchField != 0});
    }
}

int Properties::userPosition() const {
    return m_users.currentPosition();
}

void Properties::chooseUser(int position) {
    m_users.CurrentUser = m_users.UserNames.at(static_cast<std::size_t>(position));
    if (m_saveUser)
        m_saveUser(m_users.CurrentUser);
}

void Properties::CmdLstOK() {
    auto& fields = m_doc.CurrDB20.Fields;
    const bool touched = std::any_of(LstFields.begin(), LstFields.end(), [&](const SearchedField& line) {
        return line.selected != (fields[static_cast<std::size_t>(line.slot)].SearchField != 0);
    });
    if (!touched)
        return; // other bytes of another program mean the same
    for (model::FieldDef& field : fields)
        field.SearchField = 0;
    for (const SearchedField& line : LstFields)
        fields[static_cast<std::size_t>(line.slot)].SearchField = line.selected ? 1 : 0;
    m_doc.DocModified = true;
}

void Properties::CmdLstCancel() {
    fillFields();
}

void Properties::leaveStartup() {
    fillStartup();
}

bool Properties::CmdDone() {
    // A text that nobody touched stays as it is, whatever line ends a file has given it.
    const bool touched = TxtStartup != m_startup;
    const std::string text = calc::CrLfToLf(TxtStartup);
    if (touched && refusesText(m_services, "A start-up text", text, kMostInStartup))
        return false;
    bool changed = false;
    takeCheck(m_doc.CurrDB20.ShowStartup, ChkStartup, changed);
    if (touched)
        take(m_doc.CurrDB20.StartupText, text, changed);
    m_startup = TxtStartup;
    m_doc.DocModified = m_doc.DocModified || changed;
    return true;
}

bool Properties::refusesName() {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    const bool control = std::any_of(txtPDBname.begin(), txtPDBname.end(), isControl);
    if (!control && txtPDBname.find_first_of(kForbidden) == std::string::npos)
        return refusesText(m_services, "The name of a Tallybook", txtPDBname, kMostInDatabaseName);
    say(m_services, "Tallybook name cannot have the following characters:\n\\ / : *  ? < > !");
    txtPDBname.clear();
    return true;
}

// The place of a new database; without a user it is asked for by the first save. False when the user keeps the file
// that is there.
bool Properties::takeFilePath() {
    const int user = userPosition();
    if (!document::isNewDatabase(m_doc) || user < 0 || user >= static_cast<int>(m_users.UserFolders.size()))
        return true;
    std::string name = txtPDBname;
    std::replace(name.begin(), name.end(), ' ', '_');
    const std::string file = std::string(pdb::kPrefix2x) + name + std::string(pdb::kExtension);
    const std::filesystem::path path =
        m_users.UserFolders[static_cast<std::size_t>(user)] / platform::ansi::toUtf8(file);
    const auto there = m_services.files.state(path);
    const bool exists = there.ok() && there.value().kind != platform::FileKind::Missing;
    if (exists && path != m_doc.CurrFilePath && !asks(m_services, "The file already exist\nOverwrite it ?"))
        return false;
    m_doc.CurrFilePath = path;
    m_doc.CurrFolder = path.parent_path();
    const auto mark = document::markOf(m_services.files, path); // what lies there now has been given up
    m_doc.fileMark = mark ? mark.value() : model::FileMark{};
    return true;
}

Properties::Accepted Properties::cmdOK() {
    if (trimmed(txtPDBname).empty()) {
        say(m_services, "Enter Tallybook Name.");
        return Accepted::NameMissing;
    }
    if (refusesName())
        return Accepted::NameRefused;
    if (!takeFilePath())
        return Accepted::NotOverwritten;
    model::DatabaseModel& db = m_doc.CurrDB20;
    bool changed = false;
    if (txtPDBname != shownName(m_doc) || document::isNewDatabase(m_doc)) {
        const std::string name = std::string(pdb::kPrefix2x) + txtPDBname;
        m_doc.CurrFileName = name + std::string(pdb::kExtension);
        take(db.DBName, name, changed);
    }
    const unsigned others = db.SearchFlags & ~static_cast<unsigned>(kSearchFlag);
    take(db.SearchFlags, static_cast<std::uint8_t>(others | (ChkSearch ? kSearchFlag : 0u)), changed);
    takeCheck(db.ReadOnly, ChkReadOnly, changed);
    takeCheck(db.NoBackup, ChkNoBackup, changed);
    m_doc.DocModified = m_doc.DocModified || changed;
    return Accepted::Done;
}

void Properties::cmdCancel() {
    for (std::size_t slot = 0; slot < m_before.Fields.size(); ++slot)
        m_doc.CurrDB20.Fields[slot].SearchField = m_before.Fields[slot].SearchField;
    m_doc.CurrDB20.ShowStartup = m_before.ShowStartup;
    m_doc.CurrDB20.StartupText = m_before.StartupText;
    m_doc.DocModified = m_modifiedBefore;
}

} // namespace tallybook::design
