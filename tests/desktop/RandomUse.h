// The main window over files in memory, with copies of all samples, a full file and odd databases, for a user without
// a plan.
#pragma once

#include "adapters/FolderDesktop.h"
#include "core/platform/Clock.h"
#include "desktop/RandomUser.h"
#include "desktop/dialogs/QtUserInterface.h"
#include "desktop/main/frmMain.h"
#include "shell/MemorySettings.h"
#include "support/MemoryFiles.h"

#include <cstdint>
#include <memory>

namespace tallybook::test {

class RandomUse {
public:
    explicit RandomUse(std::uint32_t seed);
    ~RandomUse();

    RandomUser& user() { return *m_user; }

private:
    MemoryFiles m_files;
    MemorySettings m_settings;
    platform::FixedClock m_clock{{2003, 3, 5, 13, 5, 9}};
    platform::Regional m_regional;
    desktop::QtUserInterface m_interface;
    platform::Services m_services{m_interface, m_interface, m_files, m_clock, m_regional, "/app"};
    adapters::FolderDesktop m_desktop{m_files, "/palm"};
    std::unique_ptr<desktop::frmMain> m_window;
    std::unique_ptr<RandomUser> m_user;
};

} // namespace tallybook::test
