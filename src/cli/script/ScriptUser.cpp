#include "cli/script/ScriptUser.h"

#include "cli/frame/TerminalUser.h"

#include <utility>

namespace tallybook::cli {

namespace {

using platform::Answer;
using platform::Buttons;
using platform::Message;

bool offers(Buttons buttons, Answer answer) {
    switch (buttons) {
    case Buttons::Ok:
        return answer == Answer::Ok;
    case Buttons::OkCancel:
        return answer == Answer::Ok || answer == Answer::Cancel;
    case Buttons::YesNo:
        return answer == Answer::Yes || answer == Answer::No;
    case Buttons::YesNoCancel:
        return answer != Answer::Ok;
    }
    return false;
}

Answer refusal(Buttons buttons) {
    return buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
}

} // namespace

std::string ScriptUser::takeFailure() {
    return std::exchange(m_failure, {});
}

bool ScriptUser::takeSpoke() {
    return std::exchange(m_spoke, false);
}

void ScriptUser::fail(std::string text) {
    if (m_failure.empty()) // what came first is the reason
        m_failure = std::move(text);
}

Answer ScriptUser::message(const Message& message) {
    m_spoke = true;
    if (message.buttons == Buttons::Ok) {
        messages.push_back(message.text);
        return Answer::Ok;
    }
    if (answers.empty() && isComplaint(message)) {
        messages.push_back(message.text);
        return Answer::Cancel;
    }
    if (answers.empty() && yes)
        return message.buttons == Buttons::OkCancel ? Answer::Ok : Answer::Yes;
    if (answers.empty()) {
        fail("unanswered question: " + message.text);
        return refusal(message.buttons);
    }
    const QueuedAnswer next = answers.front();
    answers.pop_front();
    if (next.question && *next.question != message.text) {
        fail("another question came: " + message.text);
        return refusal(message.buttons);
    }
    if (!offers(message.buttons, next.answer)) {
        fail("the question does not offer this answer: " + message.text);
        return refusal(message.buttons);
    }
    return next.answer;
}

std::optional<std::string> ScriptUser::askPassword(const std::string& actionWord, const std::string&) {
    m_spoke = true;
    if (!passwords.empty()) {
        std::string password = passwords.front();
        passwords.pop_front();
        return password;
    }
    if (passwordForAll && m_passwordGivenFor != actionWord) {
        m_passwordGivenFor = actionWord;
        return passwordForAll;
    }
    // A password that was refused has left its message, which stops the script or is expected by it.
    if (messages.empty())
        fail("a password is needed: " + actionWord);
    return std::nullopt;
}

std::optional<std::string> ScriptUser::askText(const std::string&, const std::string& prompt, const std::string&) {
    m_spoke = true;
    if (typedTexts.empty()) {
        fail("a text is needed: " + prompt);
        return std::nullopt;
    }
    std::string text = typedTexts.front();
    typedTexts.pop_front();
    return text;
}

platform::ErrorAnswer ScriptUser::showError(const platform::Error& error) {
    m_spoke = true;
    fail(error.tag + ": " + error.description());
    return platform::ErrorAnswer::Leave;
}

std::optional<std::filesystem::path> ScriptUser::askSaveName(const std::string&, const std::string&,
                                                             const std::filesystem::path&) {
    m_spoke = true;
    return std::exchange(saveName, std::nullopt);
}

} // namespace tallybook::cli
