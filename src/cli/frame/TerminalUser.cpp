#include "cli/frame/TerminalUser.h"

#include "cli/frame/IncomingText.h"
#include "cli/frame/Texts.h"
#include "core/calc/values/Ansi.h"

#include <array>
#include <ostream>
#include <string_view>
#include <utility>
#include <vector>

namespace tallybook::cli {

namespace {

using platform::Answer;
using platform::Buttons;
using platform::Message;

struct Choice {
    std::string_view word;
    Answer answer;
};

std::vector<Choice> choices(Buttons buttons) {
    switch (buttons) {
    case Buttons::OkCancel:
        return {{"ok", Answer::Ok}, {"cancel", Answer::Cancel}};
    case Buttons::YesNo:
        return {{"yes", Answer::Yes}, {"no", Answer::No}};
    case Buttons::YesNoCancel:
        return {{"yes", Answer::Yes}, {"no", Answer::No}, {"cancel", Answer::Cancel}};
    case Buttons::Ok:
        break;
    }
    return {};
}

// The answer that changes nothing: what closing the box would give.
Answer refusal(Buttons buttons) {
    return buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
}

std::string prompt(const std::vector<Choice>& all) {
    std::string text = "(";
    for (const Choice& choice : all) {
        if (text.size() > 1)
            text += '/';
        text += choice.word;
    }
    return text + ") ";
}

} // namespace

bool isComplaint(const Message& message) {
    return message.buttons == Buttons::OkCancel && message.icon == platform::Icon::Critical;
}

std::string shownText(const std::string& text) {
    std::string shown = calc::ansi::toUtf8(text);
    std::erase(shown, '\r');
    return shown;
}

std::string shownError(const platform::Error& error) {
    return error.description() + (error.tag.empty() ? "" : " (" + error.tag + ')');
}

TerminalUser::TerminalUser(Terminal& terminal, Answers answers)
    : m_terminal(terminal), m_answers(std::move(answers)) {}

void TerminalUser::say(const std::string& text) {
    m_spoke = true;
    m_terminal.say(calc::ansi::toUtf8(text));
}

void TerminalUser::sayUtf8(const std::string& text) {
    m_spoke = true;
    m_terminal.say(text);
}

void TerminalUser::note(const std::string& text) {
    m_terminal.say(calc::ansi::toUtf8(text));
}

Answer TerminalUser::message(const Message& message) {
    say(message.text);
    if (message.buttons == Buttons::Ok)
        return Answer::Ok;
    return isComplaint(message) ? Answer::Cancel : ask(message);
}

void TerminalUser::prepareAnswer(std::string_view start, Answer answer) {
    m_prepared.push_back({std::string(start), answer});
}

Answer TerminalUser::ask(const Message& message) {
    for (const Prepared& prepared : m_prepared)
        if (message.text.starts_with(prepared.start))
            return prepared.answer;
    const std::vector<Choice> all = choices(message.buttons);
    if (m_answers.yes)
        return all.front().answer;
    while (m_terminal.interactive()) {
        const std::optional<std::string> line = m_terminal.ask(prompt(all));
        if (!line)
            return refusal(message.buttons);
        for (const Choice& choice : all)
            if (!line->empty() && choice.word.starts_with(*line))
                return choice.answer;
    }
    m_leftUnanswered = true;
    m_terminal.say(kQuestionUnanswered);
    return refusal(message.buttons);
}

std::optional<std::string> TerminalUser::askPassword(const std::string& actionWord, const std::string& fileName) {
    if (m_answers.password) {
        // The same wrong password three times over would help nobody.
        if (m_passwordGivenFor == actionWord)
            return std::nullopt;
        m_passwordGivenFor = actionWord;
        return storedPassword(*m_answers.password);
    }
    if (!m_terminal.interactive()) {
        m_spoke = true;
        m_terminal.say(kPasswordNeeded);
        return std::nullopt;
    }
    const std::optional<std::string> typed =
        m_terminal.askSecret(shownText(actionWord + " password of " + fileName + ": "));
    if (!typed)
        return std::nullopt;
    return storedPassword(*typed);
}

std::optional<std::string> TerminalUser::storedPassword(const std::string& utf8) {
    const std::string fault = faultOfText(utf8);
    if (fault.empty())
        return checkedText(utf8);
    sayUtf8(passwordFault(fault));
    return std::nullopt;
}

std::optional<std::string> TerminalUser::askText(const std::string&, const std::string& prompt,
                                                 const std::string& preset) {
    if (!m_terminal.interactive()) {
        say(prompt);
        m_terminal.say(kQuestionUnanswered);
        return std::nullopt;
    }
    const std::string shown = preset.empty() ? prompt : prompt + " [" + preset + ']';
    const std::optional<std::string> line = m_terminal.ask(shownText(shown) + ": ");
    if (!line)
        return std::nullopt;
    const std::string fault = faultOfText(*line);
    if (fault.empty())
        return checkedText(*line);
    sayUtf8(fault);
    return std::nullopt;
}

platform::ErrorAnswer TerminalUser::showError(const platform::Error& error) {
    say(shownError(error));
    return platform::ErrorAnswer::Leave;
}

std::optional<std::filesystem::path> TerminalUser::askSaveName(const std::string&, const std::string&,
                                                               const std::filesystem::path&) {
    return std::nullopt;
}

} // namespace tallybook::cli
