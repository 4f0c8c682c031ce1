// The handheld's users and queue as the window sees them, without it.
#pragma once

#include "adapters/PosixFiles.h"
#include "adapters/SystemClock.h"
#include "cli/frame/Terminal.h"
#include "cli/frame/TerminalUser.h"
#include "cli/frame/Verb.h"
#include "core/handheld/Users.h"
#include "core/platform/Services.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace tallybook::cli {

struct HandheldOptions {
    std::string region = "us";
    std::string user;                        // UTF-8; empty: whom the window has chosen last
    std::string handheld;                    // instead of the setting of the window
    std::filesystem::path applicationFolder; // empty: that of the window
};

void addHandheldOptions(Verb& verb, HandheldOptions& options);
void addUserOption(Verb& verb, HandheldOptions& options);

class HandheldSession {
public:
    HandheldSession(Terminal& terminal, const HandheldOptions& options);

    // Learns the users. False when there are none; the reason then stands on standard error.
    bool start();

    // The position of the user of the options, or of the one that the window has chosen; nothing when there is no
    // such user, which has been said then, or when none was chosen.
    std::optional<int> user();

    platform::Services& services() { return m_services; }
    handheld::HandheldDesktop& desktop() { return *m_desktop; }
    handheld::UserList& users() { return m_users; }
    TerminalUser& terminalUser() { return m_user; }

private:
    TerminalUser m_user;
    platform::Screen m_screen;
    adapters::PosixFiles m_files;
    adapters::SystemClock m_clock;
    platform::Regional m_regional;
    platform::Services m_services;
    std::string m_wanted; // UTF-8
    std::unique_ptr<handheld::HandheldDesktop> m_desktop;
    handheld::UserList m_users;
};

} // namespace tallybook::cli
