// The Security Setting dialog without its widgets: which password is being set, changed or deleted, and what the
// dialog shows for it.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <string>
#include <string_view>

namespace tallybook::document {

inline constexpr int kPasswordCharacters = 9; // what the dialog's fields take

// What is chosen for a kind in the list.
enum class PasswordAction : std::uint8_t { Set, Change, Delete };

class SecuritySetting {
public:
    enum class Mode : std::uint8_t { None, Delete, New, Change };
    // What a button did; the dialog moves its focus by it.
    enum class Verified : std::uint8_t {
        Nothing,  // no text, or no kind chosen
        Wrong,    // TxtExist is to be selected for a new try
        Deleted,  // the list is to be filled anew
        Accepted, // txtNew and txtConfirm are open
    };
    enum class Confirmed : std::uint8_t {
        Nothing, // not open for a new password
        Differs, // txtConfirm is to be selected and to take the focus
        Blank,
        Set, // the list is to be filled anew
    };

    SecuritySetting(model::Document& doc, platform::Services& services) : m_doc(doc), m_services(services) {}

    // A read-only database is refused with its message.
    static bool mayOpen(const model::Document& doc, platform::Services& services);

    bool isSet(model::PasswordKind kind) const;

    // The choice of a kind with what to do. Set on a kind with a password asks for the old one first. A kind without
    // one is open for a new one whatever was chosen; Change gives its message before.
    void choose(model::PasswordKind kind, PasswordAction action);

    Verified verify(std::string_view typed);                           // CmdVerify
    Confirmed confirm(std::string_view typed, std::string_view again); // cmdOK
    void cancel();                                                     // cmdCancel: leaves the choice

    // What is shown. Without a choice everything is hidden and the texts are empty.
    Mode mode() const { return m_mode; }
    model::PasswordKind kind() const { return m_kind; }
    std::string_view frameCaption() const; // of FrmPassword: the kind's label
    std::string_view hint() const;
    bool asksExisting() const;              // TxtExist and CmdVerify
    std::string_view verifyCaption() const; // of CmdVerify
    bool asksNew() const;                   // txtNew, txtConfirm and cmdOK

private:
    std::string& stored() const;
    void rebuild(); // LoadPwdFrm

    model::Document& m_doc;
    platform::Services& m_services;
    model::PasswordKind m_kind = model::PasswordKind::Login;
    Mode m_mode = Mode::None;
    bool m_verified = false; // the old password was given
    std::string m_compare;   // the stored form when the kind was chosen
};

} // namespace tallybook::document
