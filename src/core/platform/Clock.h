// The time of day, so that tests and sample makers can hold it still.
#pragma once

namespace tallybook::platform {

// A moment of local time, proleptic Gregorian.
struct LocalTime {
    int year = 2000;
    int month = 1; // 1..12
    int day = 1;   // 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;

    bool operator==(const LocalTime&) const = default;
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual LocalTime now() const = 0;
};

// A clock that stands still.
class FixedClock : public Clock {
public:
    explicit FixedClock(LocalTime time) : m_time(time) {}
    LocalTime now() const override { return m_time; }

private:
    LocalTime m_time;
};

} // namespace tallybook::platform
