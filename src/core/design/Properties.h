// The dialog DB Properties without its widgets.
#pragma once

#include "core/handheld/Users.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::design {

using handheld::UserList;

class Properties {
public:
    struct SearchedField {
        int slot = 0;
        std::string name;
        bool selected = false;
        bool operator==(const SearchedField&) const = default;
    };
    // What cmdOK came to, by which the dialog moves its focus.
    enum class Accepted { Done, NameMissing, NameRefused, NotOverwritten };

    // Fills the controls. `saveUser` is told each change of the user, who is kept whatever becomes of the dialog.
    Properties(model::Document& doc, platform::Services& services, UserList& users,
               std::function<void(const std::string& UserID)> saveUser = {});

    std::string txtPDBname; // without the prefix
    bool ChkSearch = false;
    bool ChkReadOnly = false;
    bool ChkNoBackup = false;
    bool ChkStartup = false;
    std::string TxtStartup;               // line ends as editors have them
    std::vector<SearchedField> LstFields; // slots 1 to the last used one

    const std::vector<std::string>& cmbUser() const { return m_users.UserNames; }
    int userPosition() const; // -1 when there is no user
    void chooseUser(int position);

    void CmdLstOK();     // the searched fields
    void CmdLstCancel(); // back to what was set
    bool CmdDone();      // the text at the start; false with a message when a file cannot hold it
    void leaveStartup(); // without it: back to what was set
    Accepted cmdOK();
    void cmdCancel(); // all values are what they were when the dialog opened

private:
    bool refusesName();
    bool takeFilePath();
    void fillFields();
    void fillStartup();

    model::Document& m_doc;
    platform::Services& m_services;
    UserList& m_users;
    std::function<void(const std::string&)> m_saveUser;
    std::string m_startup; // TxtStartup as it was filled
    model::DatabaseModel m_before;
    bool m_modifiedBefore;
};

} // namespace tallybook::design
