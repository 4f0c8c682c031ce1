// The user of an edit script: answers what was put in a queue, and keeps what was said for the script to expect.
#pragma once

#include "core/platform/UserInterface.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tallybook::cli {

// A question that no answer waits for is turned down and remembered as a failure, so that a script never changes
// what its writer did not think of. All texts are Windows-1252.
class ScriptUser : public platform::UserInterface {
public:
    struct QueuedAnswer {
        platform::Answer answer = platform::Answer::Ok;
        std::optional<std::string> question; // when given, the very text that must be asked
    };
    std::deque<QueuedAnswer> answers;
    bool yes = false; // a question that no answer waits for is answered with Yes or OK
    std::deque<std::string> passwords;
    std::optional<std::string> passwordForAll; // of the password file, for actions that none is queued for
    std::deque<std::string> typedTexts;        // for the input box
    std::optional<std::filesystem::path> saveName;

    // Messages that no expectation has taken yet, oldest first.
    std::deque<std::string> messages;

    // Why the running command failed; empty while it did not. Reading it forgets it.
    std::string takeFailure();
    // True when something was said or asked since the last call.
    bool takeSpoke();

    // Where notes go, which stop no script; nothing: nowhere.
    std::function<void(const std::string&)> onNote;

    platform::Answer message(const platform::Message& message) override;
    void note(const std::string& text) override {
        if (onNote)
            onNote(text);
    }
    std::optional<std::string> askPassword(const std::string& actionWord, const std::string& fileName) override;
    std::optional<std::string> askText(const std::string& title, const std::string& prompt,
                                       const std::string& preset) override;
    platform::ErrorAnswer showError(const platform::Error& error) override;
    std::optional<std::filesystem::path> askSaveName(const std::string& title, const std::string& filter,
                                                     const std::filesystem::path& suggestion) override;

private:
    void fail(std::string text);

    std::string m_failure;
    std::string m_passwordGivenFor;
    bool m_spoke = false;
};

} // namespace tallybook::cli
