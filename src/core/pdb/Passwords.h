// The passwords of a database: how they are stored and matched, and the guard of protected actions.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <string>
#include <string_view>

namespace tallybook::pdb {

// The stored form of a typed password: always 10 characters.
std::string ApplyPwd(std::string_view typed);

// True when any character has a code above 0.
bool passwordExists20(std::string_view stored);

// True when the typed text, scrambled, is the stored one.
bool matchPassword20(std::string_view typed, std::string_view stored);

// The word that the prompt shows for a kind: "Login", "Modify", "Design", "View", "Beam", "Copywrite".
std::string_view actionWord(model::PasswordKind kind);

// The label of a kind in the Security Setting dialog, as "Tallybook Password:".
std::string_view passwordLabel(model::PasswordKind kind);

// Asks for the kind's password when there is one that was not typed yet since the database was opened, up to
// three times. True when the action may go on.
bool AuthorizeDB(model::Document& doc, platform::Services& services, model::PasswordKind kind);

} // namespace tallybook::pdb
