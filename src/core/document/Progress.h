// The bar of the status line during one operation.
#pragma once

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

    // "Reading record 10 of 250". The caption's memory is used again from step to step.
    void step(int number, int total, int maximum) {
        m_caption = m_verb;
        m_caption += std::to_string(number);
        m_caption += " of ";
        m_caption += std::to_string(total);
        m_ui.progress(m_caption, number, maximum);
    }

private:
    platform::UserInterface& m_ui;
    std::string_view m_verb;
    std::string m_caption;
};

} // namespace tallybook::document
