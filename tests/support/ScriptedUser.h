// The user of a test: everything that is said is kept, every question is answered from a script. A question
// without a scripted answer fails the test, and so does an answer that nobody asked for.
#pragma once

#include "core/platform/Screen.h"
#include "core/platform/UserInterface.h"

#include <deque>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace tallybook::test {

class ScriptedUser : public platform::UserInterface, public platform::Screen {
public:
    struct Progress {
        std::string caption;
        int value = 0;
        int maximum = 0;
        bool operator==(const Progress&) const = default;
    };
    struct SaveQuestion {
        std::string title;
        std::string filter;
        std::filesystem::path suggestion;
    };

    // The script, in the order of the questions. A message with the single button Ok needs no answer.
    std::deque<platform::Answer> answers;
    std::deque<std::optional<std::string>> passwords;
    std::deque<std::optional<std::string>> typedTexts; // into the input box
    std::deque<platform::ErrorAnswer> errorAnswers;
    std::deque<std::optional<std::filesystem::path>> saveNames;

    // What happened.
    std::vector<platform::Message> messages;
    std::vector<std::pair<std::string, std::string>> passwordQuestions; // action word and file name
    struct TextQuestion {
        std::string title;
        std::string prompt;
        std::string preset;
        bool operator==(const TextQuestion&) const = default;
    };
    std::vector<TextQuestion> textQuestions;
    std::vector<platform::Error> errors;
    std::vector<SaveQuestion> saveQuestions;
    std::vector<Progress> progresses;
    int stopsAfter = -1; // looks at stopWanted() before it says so; -1: never
    int beeps = 0;
    int waits = 0;   // times that the wait pointer was set
    int freezes = 0; // times that repainting was stopped
    bool gridRepaints = true;

    ~ScriptedUser() override {
        EXPECT_TRUE(answers.empty()) << answers.size() << " scripted answers were not asked for";
        EXPECT_TRUE(passwords.empty()) << passwords.size() << " scripted passwords were not asked for";
        EXPECT_TRUE(typedTexts.empty()) << typedTexts.size() << " scripted texts were not asked for";
        EXPECT_TRUE(errorAnswers.empty()) << errorAnswers.size() << " scripted errors did not come";
        EXPECT_TRUE(saveNames.empty()) << saveNames.size() << " scripted file names were not asked for";
    }

    // The texts of the messages so far, in order.
    std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (const platform::Message& shown : messages)
            all.push_back(shown.text);
        return all;
    }

    // True when pointer, repainting and progress are as they were before an operation.
    bool atRest() const {
        const bool barHidden = progresses.empty() || progresses.back().maximum == 0;
        return m_pointer == Pointer::Default && gridRepaints && barHidden && !m_stoppable;
    }

    platform::Answer message(const platform::Message& shown) override {
        messages.push_back(shown);
        if (shown.buttons == platform::Buttons::Ok)
            return platform::Answer::Ok;
        return next(answers, platform::closingOf(shown.buttons), "message: " + shown.text);
    }

    void beep() override { ++beeps; }

    std::optional<std::string> askPassword(const std::string& actionWord, const std::string& fileName) override {
        passwordQuestions.emplace_back(actionWord, fileName);
        return next(passwords, std::optional<std::string>{}, "password: " + actionWord);
    }

    std::optional<std::string> askText(const std::string& title, const std::string& prompt,
                                       const std::string& preset) override {
        textQuestions.push_back({title, prompt, preset});
        return next(typedTexts, std::optional<std::string>{}, "text: " + prompt);
    }

    platform::ErrorAnswer showError(const platform::Error& error) override {
        errors.push_back(error);
        return next(errorAnswers, platform::ErrorAnswer::Leave, "error: " + error.tag + ": " + error.description());
    }

    std::optional<std::filesystem::path> askSaveName(const std::string& title, const std::string& filter,
                                                     const std::filesystem::path& suggestion) override {
        saveQuestions.push_back({title, filter, suggestion});
        return next(saveNames, std::optional<std::filesystem::path>{}, "file name: " + title);
    }

    void progress(const std::string& caption, int value, int maximum) override {
        progresses.push_back({caption, value, maximum});
    }

    void setStoppable(bool stoppable) override { m_stoppable = stoppable; }
    bool stopWanted() override {
        EXPECT_TRUE(m_stoppable) << "an operation that cannot be stopped asks whether to";
        if (stopsAfter > 0)
            --stopsAfter;
        return stopsAfter == 0;
    }

    Pointer pointer() const override { return m_pointer; }
    void setPointer(Pointer pointer) override {
        m_pointer = pointer;
        waits += pointer == Pointer::Wait ? 1 : 0;
    }
    void setGridRepainting(bool repaints) override {
        gridRepaints = repaints;
        freezes += repaints ? 0 : 1;
    }

private:
    template <class T> static T next(std::deque<T>& script, T closed, const std::string& question) {
        if (script.empty()) {
            ADD_FAILURE() << "unscripted " << question;
            return closed;
        }
        T answer = std::move(script.front());
        script.pop_front();
        return answer;
    }

    Pointer m_pointer = Pointer::Default;
    bool m_stoppable = false;
};

} // namespace tallybook::test
