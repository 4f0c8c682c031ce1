// The computer's clock.
#pragma once

#include "core/platform/Clock.h"

#include <cstdint>

namespace tallybook::adapters {

class SystemClock : public platform::Clock {
public:
    platform::LocalTime now() const override; // in the user's time zone
};

// A moment that FileState tells, in the user's time zone.
platform::LocalTime localTimeOf(std::int64_t nanoseconds);

} // namespace tallybook::adapters
