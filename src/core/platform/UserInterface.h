// What the core asks of whoever sits before the program: questions, messages, passwords. The windows,
// the command and the tests each have their own.
#pragma once

#include "core/platform/Result.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace tallybook::platform {

enum class Icon : std::uint8_t { None, Information, Question, Warning, Critical };
enum class Buttons : std::uint8_t { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer : std::uint8_t { Ok, Cancel, Yes, No };

// What closing a box with these buttons stands for: Cancel, or No, or Ok, whichever exists.
constexpr Answer closingOf(Buttons buttons) {
    if (buttons == Buttons::Ok)
        return Answer::Ok;
    return buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
}

// A message box. All texts are Windows-1252.
struct Message {
    std::string text;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    std::string title = {};               // empty: the program's name
    std::optional<Answer> preferred = {}; // the default button; nothing: the first one
};

// What the user made of the error dialog.
enum class ErrorAnswer : std::uint8_t {
    GoOn,  // with the next record, row, field or file; never with half a file
    Leave, // the operation, through its normal exit
    Abort, // the program
};

class UserInterface {
public:
    virtual ~UserInterface() = default;

    // Shows a message and gives the button pressed; closing the box is `closingOf` its buttons.
    virtual Answer message(const Message& message) = 0;

    // Something to know, that needs no answer and holds nothing up. The windows show it elsewhere. Windows-1252.
    virtual void note(const std::string& text) { static_cast<void>(text); }

    // The password prompt frmLogin with the action word as its caption; nothing when cancelled.
    virtual std::optional<std::string> askPassword(const std::string& actionWord, const std::string& fileName) = 0;

    // The input box for one line of text; nothing when cancelled. Whoever cannot be asked cancels.
    virtual std::optional<std::string> askText(const std::string& title, const std::string& prompt,
                                               const std::string& preset) {
        static_cast<void>(title);
        static_cast<void>(prompt);
        static_cast<void>(preset);
        return std::nullopt;
    }

    // The error dialog dlgError.
    virtual ErrorAnswer showError(const Error& error) = 0;

    // The file dialog for a new name; nothing when cancelled. The suggestion may be a folder or a whole path.
    virtual std::optional<std::filesystem::path> askSaveName(const std::string& title, const std::string& filter,
                                                             const std::filesystem::path& suggestion) = 0;
};

} // namespace tallybook::platform
