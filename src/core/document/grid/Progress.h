// The bar of the status line during one operation.
#pragma once

#include "core/calc/values/Digits.h"
#include "core/platform/Screen.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace tallybook::document {

// Hides the bar when the operation ends, whichever way.
class ProgressBar {
public:
    // `verb` stands before the numbers of each step, as "Reading record ".
    ProgressBar(platform::Screen& screen, std::string_view verb) : m_screen(screen), m_verb(verb) {}
    ~ProgressBar() { m_screen.progress({}, 0, 0); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void setVerb(std::string_view verb) {
        m_verb = verb;
        m_digits = 0;
    }
    void show(std::string_view caption, int value, int maximum) {
        m_caption = caption;
        m_digits = 0;
        m_screen.progress(m_caption, value, maximum);
    }

    // "Reading record 10 of 250". A save says so for each of its records, so only the digits change where they can.
    void step(int number, int total, int maximum) {
        char room[calc::kWholeRoom];
        const std::string_view digits = calc::formWhole(number, room);
        if (digits.size() == m_digits && total == m_total)
            std::copy(digits.begin(), digits.end(), m_caption.begin() + static_cast<std::ptrdiff_t>(m_verb.size()));
        else
            makeCaption(digits, total);
        m_screen.progress(m_caption, number, maximum);
    }

private:
    void makeCaption(std::string_view digits, int total) {
        char room[calc::kWholeRoom];
        m_caption = m_verb;
        m_caption += digits;
        m_caption += " of ";
        m_caption += calc::formWhole(total, room);
        m_digits = digits.size();
        m_total = total;
    }

    platform::Screen& m_screen;
    std::string_view m_verb;
    std::string m_caption;
    std::size_t m_digits = 0; // of the number in a caption that step() has made; 0 for any other caption
    int m_total = 0;
};

} // namespace tallybook::document
