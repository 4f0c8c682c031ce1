// Dates and times as text.
#include "core/calc/values/DatePatterns.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"

#include <cstddef>
#include <utility>

namespace tallybook::calc {

namespace {

constexpr std::string_view kHalves = "AM/PM";

// Writes one moment by pictures.
class PictureWriter {
public:
    PictureWriter(double serial, std::string_view picture, const Regional& regional)
        : m_date(dateOf(serial)), m_time(timeOf(serial)), m_picture(picture), m_regional(regional),
          m_twelveHours(findText(picture, kHalves, TextCase::Folded) != 0) {}

    std::string run() {
        while (!m_picture.empty()) {
            if (equalText(m_picture.substr(0, kHalves.size()), kHalves, TextCase::Folded)) {
                m_out += m_time.hour < 12 ? "AM" : "PM";
                m_picture.remove_prefix(kHalves.size());
            } else {
                takeRun();
            }
        }
        return std::move(m_out);
    }

private:
    // A run of the same letter is one element; anything else stands for itself.
    void takeRun() {
        const char letter = lower(m_picture[0]);
        std::size_t count = 1;
        while (count < m_picture.size() && lower(m_picture[count]) == letter)
            ++count;
        if (!appendElement(letter, count))
            m_out += m_picture.substr(0, count);
        m_picture.remove_prefix(count);
    }

    bool appendElement(char letter, std::size_t count) {
        const bool behindHour = m_last == 'h';
        if (std::string_view("dmynhs").find(letter) == std::string_view::npos)
            return false;
        m_last = letter;
        switch (letter) {
        case 'd':
            appendNumber(m_date.day, count);
            break;
        case 'm':
            behindHour ? appendNumber(m_time.minute, count) : appendMonth(count);
            break;
        case 'y':
            count > 2 ? appendNumber(m_date.year, 4) : appendNumber(m_date.year % 100, 2);
            break;
        case 'n':
            appendNumber(m_time.minute, count);
            break;
        case 'h':
            appendNumber(m_twelveHours ? (m_time.hour + 11) % 12 + 1 : m_time.hour, count);
            break;
        default:
            appendNumber(m_time.second, count);
        }
        return true;
    }

    void appendNumber(int value, std::size_t digits) {
        m_out += zeroPadded(static_cast<std::uint64_t>(value), digits);
    }

    void appendMonth(std::size_t count) {
        const auto index = static_cast<std::size_t>(m_date.month - 1);
        if (count < 3)
            appendNumber(m_date.month, count);
        else
            m_out += count == 3 ? m_regional.monthAbbrevs[index] : m_regional.monthNames[index];
    }

    Date m_date;
    TimeOfDay m_time;
    std::string_view m_picture;
    const Regional& m_regional;
    bool m_twelveHours;
    char m_last = 0; // the element before, as minutes follow hours
    std::string m_out;
};

} // namespace

std::string shortDate(const Date& date, const Regional& regional) {
    std::string text;
    DatePattern(regional).append(date, text);
    return text;
}

std::string longTime(const TimeOfDay& time, const Regional& regional) {
    std::string text;
    TimePattern(regional).append(time, text);
    return text;
}

std::string generalDate(double serial, const Regional& regional) {
    const Date date = dateOf(serial);
    const TimeOfDay time = timeOf(serial);
    if (date == Date{})
        return longTime(time, regional);
    if (time == TimeOfDay{})
        return shortDate(date, regional);
    return shortDate(date, regional) + ' ' + longTime(time, regional);
}

std::string formatDate(double serial, std::string_view picture, const Regional& regional) {
    return PictureWriter(serial, picture, regional).run();
}

} // namespace tallybook::calc
