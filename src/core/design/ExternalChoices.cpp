#include "core/design/ExternalChoices.h"

#include "core/calc/values/Numbers.h"
#include "core/design/FieldNames.h"
#include "core/document/joins/ExternalFiles.h"
#include "core/document/joins/ExternalReader.h"
#include "core/handheld/DatabaseList.h"
#include "core/platform/Containment.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tallybook::design {

namespace {

using model::DatabaseModel;
using model::FieldType;
using Entries = std::vector<NumberedEntry>;
using Path = std::filesystem::path;

constexpr int kViews = model::MaxViews - 1; // the last slot is carried, not offered

std::string numbered(std::string_view what, int number) {
    return std::string(what) + ' ' + calc::zeroPadded(static_cast<std::uint64_t>(number), 2);
}

bool isKeyType(FieldType type) {
    static constexpr std::array kTypes = {FieldType::Text, FieldType::Integer, FieldType::Long, FieldType::Key,
                                          FieldType::AutoIncremental};
    return std::find(kTypes.begin(), kTypes.end(), type) != kTypes.end();
}

template <class Wanted> Entries fieldsOf(const DatabaseModel* other, Wanted wanted) {
    Entries entries;
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        const auto number = static_cast<std::uint8_t>(slot);
        if (other == nullptr) {
            entries.push_back({number, numbered("Field", slot)});
            continue;
        }
        const model::FieldDef& field = other->Fields[static_cast<std::size_t>(slot)];
        if (wanted(field.Type))
            entries.push_back({number, shownName(*other, slot)});
    }
    return entries;
}

} // namespace

OtherFolder::OtherFolder(const model::Document& doc, platform::Services& services, handheld::UserList& users,
                         std::function<void(const std::string&)> saveUser)
    : m_doc(doc), m_services(services), m_users(users), m_saveUser(std::move(saveUser)) {
    const auto& folders = m_users.UserFolders;
    const auto owner = std::find_if(folders.begin(), folders.end(), [&](const Path& folder) {
        return platform::isSamePlace(m_services.files, folder, m_doc.CurrFolder);
    });
    m_hasOwnEntry = owner == folders.end() && !m_doc.CurrFolder.empty();
    if (owner != folders.end())
        m_own = static_cast<int>(owner - folders.begin());
    else
        m_own = m_hasOwnEntry ? 0 : m_users.shownPosition(); // where a new database will be saved
    m_position = m_own;
}

std::vector<std::string> OtherFolder::cmbUser() const {
    std::vector<std::string> entries = m_users.UserNames;
    if (m_hasOwnEntry)
        entries.insert(entries.begin(), std::string(platform::texts::kOwnFolder));
    return entries;
}

void OtherFolder::chooseUser(int position) {
    m_position = position;
    const int user = position - userOffset();
    if (user < 0)
        return;
    m_users.CurrentUser = m_users.UserNames.at(static_cast<std::size_t>(user));
    if (m_saveUser)
        m_saveUser(m_users.CurrentUser);
}

Path OtherFolder::path() const {
    const int user = m_position - userOffset();
    return user < 0 ? m_doc.CurrFolder : m_users.UserFolders.at(static_cast<std::size_t>(user));
}

std::vector<std::string> OtherFolder::tallybooks() const {
    std::vector<std::string> names;
    const Path folder = path();
    if (folder.empty())
        return names;
    const auto listed = handheld::getDBList20(m_services.files, folder, handheld::NewEntry::Without);
    if (!listed)
        return names;
    for (const handheld::DatabaseEntry& entry : listed.value())
        if (!isOwn() || entry.file != m_doc.CurrFilePath.filename())
            names.push_back(platform::shownPath(entry.file.stem()));
    return names;
}

std::unique_ptr<DatabaseModel> OtherFolder::read(std::string_view source) const {
    const auto file = document::findExternalFile(m_services.files, path(), source, document::OlderFiles::No);
    auto properties = file ? document::getExternalJoinProps(m_services, *file) : std::nullopt;
    return properties ? std::make_unique<DatabaseModel>(std::move(*properties)) : nullptr;
}

Entries otherViews(const DatabaseModel* other) {
    Entries entries;
    for (int view = 0; view < kViews; ++view) {
        if (other == nullptr)
            entries.push_back({static_cast<std::uint8_t>(view), numbered("View", view + 1)});
        else if (const std::string& name = other->Views[static_cast<std::size_t>(view)].Name; !name.empty())
            entries.push_back({static_cast<std::uint8_t>(view), name});
    }
    return entries;
}

Entries otherFields(const DatabaseModel* other) {
    return fieldsOf(other, [](FieldType type) { return type != FieldType::NotUsed; });
}

Entries otherKeyFields(const DatabaseModel* other) {
    return fieldsOf(other, isKeyType);
}

std::optional<std::uint8_t> keyTypeOf(const DatabaseModel* other, int field) {
    if (other == nullptr || field < 1 || field > model::MaxUserFields)
        return std::nullopt;
    const FieldType type = other->Fields[static_cast<std::size_t>(field)].Type;
    return isKeyType(type) ? std::optional(static_cast<std::uint8_t>(type)) : std::nullopt;
}

Entries joinsOf(const DatabaseModel& db) {
    return fieldsOf(&db, [](FieldType type) { return type == FieldType::DBJoin; });
}

int positionOfNumber(Entries& entries, std::optional<std::uint8_t> number) {
    if (!number)
        return -1;
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const NumberedEntry& entry) { return entry.number == *number; });
    if (found != entries.end())
        return static_cast<int>(found - entries.begin());
    entries.push_back({*number, '(' + std::to_string(*number) + ')'});
    return static_cast<int>(entries.size()) - 1;
}

} // namespace tallybook::design
