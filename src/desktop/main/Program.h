// The program from its start to its end.
#pragma once

#include "adapters/InstanceLock.h"
#include "core/platform/UserInterface.h"

#include <filesystem>
#include <optional>

namespace tallybook::desktop {

// The one running program of a user. Held while the object lives.
class Instance {
public:
    // Takes the lock in a folder. When another program holds it the user is told. Where no lock can be had the start
    // goes on: a second program is a nuisance, none at all is worse.
    Instance(const std::filesystem::path& folder, platform::UserInterface& ui);

    bool mayRun() const { return m_mayRun; }

private:
    std::optional<adapters::InstanceLock> m_lock;
    bool m_mayRun = true;
};

// Needs a QApplication. Refuses a second instance, shows the splash and the frame, runs until the frame is closed.
// Gives the exit code. The program takes no arguments.
int run();

} // namespace tallybook::desktop
