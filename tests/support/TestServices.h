// All that an operation asks for, in the form that tests share: a scripted user, files in memory, a clock that
// stands at 2003-03-05 13:05:09, and US English settings.
#pragma once

#include "core/platform/Services.h"
#include "support/MemoryFiles.h"
#include "support/ScriptedUser.h"

namespace tallybook::test {

struct TestServices {
    ScriptedUser user;
    MemoryFiles files;
    platform::FixedClock clock{{2003, 3, 5, 13, 5, 9}};
    platform::Regional regional;
    platform::Services services{user, user, files, clock, regional, "/app"};

    TestServices() { files.addFolder("/app"); }
    operator platform::Services&() { return services; }
};

} // namespace tallybook::test
