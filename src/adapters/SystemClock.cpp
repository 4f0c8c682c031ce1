#include "adapters/SystemClock.h"

#include <algorithm>
#include <ctime>

namespace tallybook::adapters {

platform::LocalTime SystemClock::now() const {
    const std::time_t moment = std::time(nullptr);
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

} // namespace tallybook::adapters
