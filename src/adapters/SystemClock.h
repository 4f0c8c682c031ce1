// The computer's clock.
#pragma once

#include "core/platform/Clock.h"

namespace tallybook::adapters {

class SystemClock : public platform::Clock {
public:
    platform::LocalTime now() const override; // in the user's time zone
};

} // namespace tallybook::adapters
