#include "adapters/SystemClock.h"

#include <algorithm>
#include <ctime>

namespace tallybook::adapters {

namespace {

constexpr std::int64_t kNanoseconds = 1'000'000'000; // of a second

platform::LocalTime localTime(std::time_t moment) {
    std::tm local{};
    if (localtime_r(&moment, &local) == nullptr)
        return {};
    return {.year = local.tm_year + 1900,
            .month = local.tm_mon + 1,
            .day = local.tm_mday,
            .hour = local.tm_hour,
            .minute = local.tm_min,
            .second = std::min(local.tm_sec, 59)}; // a leap second is the minute's last
}

} // namespace

platform::LocalTime SystemClock::now() const {
    return localTime(std::time(nullptr));
}

platform::LocalTime localTimeOf(std::int64_t nanoseconds) {
    return localTime(static_cast<std::time_t>(nanoseconds / kNanoseconds - (nanoseconds % kNanoseconds < 0 ? 1 : 0)));
}

} // namespace tallybook::adapters
