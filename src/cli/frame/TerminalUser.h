// The person at the terminal, or nobody: messages go to standard error, questions are asked there when somebody
// can answer.
#pragma once

#include "cli/frame/Terminal.h"
#include "core/platform/UserInterface.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tallybook::cli {

// An error whose box offers OK and Cancel: OK would show what led to it again, so without a person it is cancelled.
bool isComplaint(const platform::Message& message);

// A message box's text as it leaves the command: UTF-8, one message a line.
std::string shownText(const std::string& text);

// What the error dialog would show: the description, and the operation that failed in brackets.
std::string shownError(const platform::Error& error);

class TerminalUser : public platform::UserInterface {
public:
    struct Answers {
        bool yes = false;                    // every question is answered with Yes or OK
        std::optional<std::string> password; // UTF-8; given once for each action, instead of a prompt
    };
    TerminalUser(Terminal& terminal, Answers answers);

    // True once anything was said, so that a refusal that the windows make in silence can be put into words.
    bool spoke() const { return m_spoke; }
    // True once a question was turned down because nobody could answer it.
    bool leftUnanswered() const { return m_leftUnanswered; }
    void forgetSpoken() { m_spoke = m_leftUnanswered = false; }

    // Whether every question is answered with Yes from now on; gives what was so before.
    bool setYes(bool yes) { return std::exchange(m_answers.yes, yes); }

    void say(const std::string& text);     // Windows-1252
    void sayUtf8(const std::string& text); // what the command says in words of its own

    // The file that what is said is about.
    void setSubject(std::string subject) { m_terminal.setSubject(std::move(subject)); }

    // The answer to a question whose text begins so; nobody is asked then.
    void prepareAnswer(std::string_view start, platform::Answer answer);

    platform::Answer message(const platform::Message& message) override;
    void note(const std::string& text) override;
    std::optional<std::string> askPassword(const std::string& actionWord, const std::string& fileName) override;
    std::optional<std::string> askText(const std::string& title, const std::string& prompt,
                                       const std::string& preset) override;
    platform::ErrorAnswer showError(const platform::Error& error) override;
    std::optional<std::filesystem::path> askSaveName(const std::string& title, const std::string& filter,
                                                     const std::filesystem::path& suggestion) override;

private:
    platform::Answer ask(const platform::Message& message);
    // A password as it is stored; nothing, and a message, when none can be like it.
    std::optional<std::string> storedPassword(const std::string& utf8);

    Terminal& m_terminal;
    struct Prepared {
        std::string start;
        platform::Answer answer;
    };

    Answers m_answers;
    std::vector<Prepared> m_prepared;
    std::string m_passwordGivenFor; // action word that the password file has answered already
    bool m_spoke = false;
    bool m_leftUnanswered = false;
};

} // namespace tallybook::cli
