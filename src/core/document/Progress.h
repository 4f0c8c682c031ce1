// The bar of the status line during one operation.
#pragma once

#include "core/calc/Digits.h"
#include "core/platform/UserInterface.h"

#include <string>
#include <string_view>

namespace tallybook::document {

// Hides the bar when the operation ends, whichever way.
class ProgressBar {
public:
    // `verb` stands before the numbers of each step, as "Reading record ".
    ProgressBar(platform::UserInterface& ui, std::string_view verb) : m_ui(ui), m_verb(verb) {}
    ~ProgressBar() { m_ui.progress({}, 0, 0); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void setVerb(std::string_view verb) { m_verb = verb; }
    void show(std::string_view caption, int value, int maximum) {
        m_caption = caption;
        m_ui.progress(m_caption, value, maximum);
    }

    // "Reading record 10 of 250". A save says so for each of its records, so the caption is made without new memory.
    void step(int number, int total, int maximum) {
        char room[calc::kWholeRoom];
        m_caption = m_verb;
        m_caption += calc::formWhole(number, room);
        m_caption += " of ";
        m_caption += calc::formWhole(total, room);
        m_ui.progress(m_caption, number, maximum);
    }

private:
    platform::UserInterface& m_ui;
    std::string_view m_verb;
    std::string m_caption;
};

} // namespace tallybook::document
