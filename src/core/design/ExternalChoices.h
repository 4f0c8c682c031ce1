// What the panels of joins and lookups offer: the other databases of the folder, and views and fields of one of them.
#pragma once

#include "core/handheld/Users.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::design {

// An entry of a list that stands for a number in the file.
struct NumberedEntry {
    std::uint8_t number = 0;
    std::string text;
    bool operator==(const NumberedEntry&) const = default;
};

// The folder whose databases are listed: at first that of the open database, then that of a user of the handheld who
// was chosen. It is for finding a name and seeing what the database has; a join is always looked up beside the open
// database.
class OtherFolder {
public:
    // `saveUser` is told each change of the user, who is kept whatever becomes of the dialog. All outlive this.
    OtherFolder(const model::Document& doc, platform::Services& services, handheld::UserList& users,
                std::function<void(const std::string& UserID)> saveUser = {});

    // The users; ahead of them an entry for the folder of a database that lies with none of them.
    std::vector<std::string> cmbUser() const;
    int userPosition() const { return m_position; } // -1 without an entry
    void chooseUser(int position);

    // Where joins find what is listed.
    bool isOwn() const { return m_position == m_own; }

    // The names of the databases, without ".pdb", by name, the open one left out. None when there is no folder.
    std::vector<std::string> tallybooks() const;

    // The structure of the database that a name stands for; nothing when the folder has none that can be read. The
    // name may lack its prefix and have ".pdb" at its end. Only files of the folder are looked at, whatever the name
    // holds.
    std::unique_ptr<model::DatabaseModel> read(std::string_view source) const;

private:
    int userOffset() const { return m_hasOwnEntry ? 1 : 0; }
    std::filesystem::path path() const;

    const model::Document& m_doc;
    platform::Services& m_services;
    handheld::UserList& m_users;
    std::function<void(const std::string&)> m_saveUser;
    bool m_hasOwnEntry = false; // ahead of the users
    int m_own = -1;             // position of the folder of the open database, or where a new one will be saved
    int m_position = -1;
};

// Views and fields of another database. Without its structure they are numbers alone, so that what is stored can be
// seen and kept.
std::vector<NumberedEntry> otherViews(const model::DatabaseModel* other);
std::vector<NumberedEntry> otherFields(const model::DatabaseModel* other);
// Fields that can be the key of a join.
std::vector<NumberedEntry> otherKeyFields(const model::DatabaseModel* other);
// The type code of a key field; nothing when the structure is not known or its field is no key.
std::optional<std::uint8_t> keyTypeOf(const model::DatabaseModel* other, int field);

// The joins of a database, for a lookup to follow.
std::vector<NumberedEntry> joinsOf(const model::DatabaseModel& db);

// Position of a number, which is added at the end when no entry has it: what a file holds is not lost by looking at
// it. -1 for no number.
int positionOfNumber(std::vector<NumberedEntry>& entries, std::optional<std::uint8_t> number);

} // namespace tallybook::design
