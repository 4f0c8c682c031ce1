#include "core/document/file/SecuritySetting.h"

#include "core/document/grid/Cells.h"
#include "core/pdb/Passwords.h"

namespace tallybook::document {

using model::PasswordKind;
using platform::Icon;

namespace {

void say(platform::Services& services, std::string text) {
    services.ui.message({.text = std::move(text), .icon = Icon::Information, .title = {}});
}

} // namespace

bool SecuritySetting::mayOpen(const model::Document& doc, platform::Services& services) {
    return !refuseReadOnly(doc, services);
}

std::string& SecuritySetting::stored() const {
    return m_doc.CurrDB20.Passwords[static_cast<std::size_t>(m_kind)];
}

bool SecuritySetting::isSet(PasswordKind kind) const {
    return pdb::passwordExists20(m_doc.CurrDB20.Passwords[static_cast<std::size_t>(kind)]);
}

void SecuritySetting::choose(PasswordKind kind, PasswordAction action) {
    cancel();
    m_kind = kind;
    m_compare = stored();
    if (isSet(kind)) {
        m_mode = action == PasswordAction::Delete ? Mode::Delete : Mode::Change;
        return;
    }
    m_mode = Mode::New;
    if (action == PasswordAction::Change)
        say(m_services, "No existing password to change");
}

SecuritySetting::Verified SecuritySetting::verify(std::string_view typed) {
    if (typed.empty() || !asksExisting())
        return Verified::Nothing;
    if (!pdb::matchPassword20(typed, m_compare)) {
        showCritical(m_services, "Incorrect password");
        return Verified::Wrong;
    }
    if (m_mode == Mode::Change) {
        m_verified = true;
        return Verified::Accepted;
    }
    stored().clear();
    say(m_services, "Password deleted");
    rebuild();
    return Verified::Deleted;
}

SecuritySetting::Confirmed SecuritySetting::confirm(std::string_view typed, std::string_view again) {
    if (!asksNew())
        return Confirmed::Nothing;
    if (typed != again) {
        showCritical(m_services, "New Password and Confirm Password does not match");
        return Confirmed::Differs;
    }
    if (typed.empty()) {
        showCritical(m_services, "Blank password not allowed");
        return Confirmed::Blank;
    }
    const std::string password(typed.substr(0, kPasswordCharacters));
    stored() = pdb::ApplyPwd(password);
    say(m_services, "The Tallybook is now protected with password :" + password +
                        " WARNING: If you forget this password the Tallybook will no longer be accessible");
    rebuild();
    return Confirmed::Set;
}

void SecuritySetting::cancel() {
    m_mode = Mode::None;
    m_verified = false;
    m_compare.clear();
}

void SecuritySetting::rebuild() {
    cancel();
}

std::string_view SecuritySetting::frameCaption() const {
    return m_mode == Mode::None ? std::string_view{} : pdb::passwordLabel(m_kind);
}

std::string_view SecuritySetting::hint() const {
    switch (m_mode) {
    case Mode::Delete:
        return "Enter existing password and then Click Delete ";
    case Mode::New:
        return "Enter New Password and Confirm Password and then Click OK";
    case Mode::Change:
        return m_verified ? "Enter New Password and confirm Password and then Click OK"
                          : "Enter existing password and then Click Verify";
    case Mode::None:
        break;
    }
    return {};
}

bool SecuritySetting::asksExisting() const {
    return m_mode == Mode::Delete || (m_mode == Mode::Change && !m_verified);
}

std::string_view SecuritySetting::verifyCaption() const {
    switch (m_mode) {
    case Mode::Delete:
        return "&Delete";
    case Mode::Change:
        return "&Verify";
    default:
        return {};
    }
}

bool SecuritySetting::asksNew() const {
    return m_mode == Mode::New || (m_mode == Mode::Change && m_verified);
}

} // namespace tallybook::document
