#include "core/pdb/Passwords.h"

#include "core/platform/Guards.h"

#include <algorithm>
#include <array>

namespace tallybook::pdb {

namespace {

// The handheld scrambles with the same pair. That both are equal lets only a NUL scramble to NUL.
constexpr unsigned kAdded = 0x5A;
constexpr unsigned kXored = 0x5A;
constexpr char kPadding = static_cast<char>(kXored); // stands behind the typed text

constexpr std::size_t kUnpadded = 9; // a typed text of this length or more is not tested for what follows it
constexpr int kTries = 3;

constexpr std::array<std::string_view, model::kPasswordKinds> kActionWords = {"Login", "Modify", "Design",
                                                                              "View",  "Beam",   "Copywrite"};
constexpr std::array<std::string_view, model::kPasswordKinds> kLabels = {
    "Tallybook Password:",   "Record Update Password:", "Design Change Password:",
    "View Change Password:", "Beam Password:",          "Copy Password:"};

char scrambled(char c) {
    return static_cast<char>((static_cast<unsigned char>(c) + kAdded) ^ kXored);
}

// Asks until the right password comes, the user cancels or the tries are used up.
bool askFor(model::PasswordKind kind, model::Document& doc, platform::Services& services) {
    const auto index = static_cast<std::size_t>(kind);
    for (int i = 0; i < kTries; ++i) {
        const auto typed = services.ui.askPassword(std::string(actionWord(kind)), doc.CurrFileName);
        if (!typed)
            return false;
        if (matchPassword20(*typed, doc.CurrDB20.Passwords[index])) {
            doc.SessionPwd[index] = *typed;
            return true;
        }
        services.ui.message({.text = "Incorrect password", .icon = platform::Icon::Critical});
    }
    return false;
}

} // namespace

std::string ApplyPwd(std::string_view typed) {
    std::string stored(model::kPasswordLength, kPadding);
    const std::size_t length = std::min(typed.size(), stored.size());
    std::transform(typed.begin(), typed.begin() + static_cast<std::ptrdiff_t>(length), stored.begin(), scrambled);
    return stored;
}

bool passwordExists20(std::string_view stored) {
    return stored.find_first_not_of('\0') != std::string_view::npos;
}

bool matchPassword20(std::string_view typed, std::string_view stored) {
    for (std::size_t i = 0; i < typed.size(); ++i)
        if (typed[i] != '\0' && (i >= stored.size() || scrambled(typed[i]) != stored[i]))
            return false;
    if (typed.size() >= kUnpadded)
        return true;
    return typed.size() < stored.size() && stored[typed.size()] == kPadding;
}

std::string_view actionWord(model::PasswordKind kind) {
    return kActionWords[static_cast<std::size_t>(kind)];
}

std::string_view passwordLabel(model::PasswordKind kind) {
    return kLabels[static_cast<std::size_t>(kind)];
}

bool AuthorizeDB(model::Document& doc, platform::Services& services, model::PasswordKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    const std::string& stored = doc.CurrDB20.Passwords[index];
    if (!passwordExists20(stored))
        return true;
    const platform::DefaultCursor pointer(services.screen);
    return matchPassword20(doc.SessionPwd[index], stored) || askFor(kind, doc, services);
}

} // namespace tallybook::pdb
