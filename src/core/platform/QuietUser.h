// The user of whoever works with nobody there: batches, samples, benchmarks.
#pragma once

#include "core/platform/UserInterface.h"

#include <stdexcept>

namespace tallybook::platform {

// Says nothing and turns every question down.
class QuietUser : public UserInterface {
public:
    // What becomes of a message or an error: nothing, or a std::runtime_error with its text (where whatever is said
    // means that the work has failed).
    enum class Said : std::uint8_t { Ignored, Thrown };
    explicit QuietUser(Said said = Said::Ignored) : m_said(said) {}

    Answer message(const Message& message) override {
        if (m_said == Said::Thrown)
            throw std::runtime_error(message.text);
        return closingOf(message.buttons);
    }
    std::optional<std::string> askPassword(const std::string&, const std::string&) override { return std::nullopt; }
    ErrorAnswer showError(const Error& error) override {
        if (m_said == Said::Thrown)
            throw std::runtime_error(error.tag + ": " + error.description());
        return ErrorAnswer::Leave;
    }
    std::optional<std::filesystem::path> askSaveName(const std::string&, const std::string&,
                                                     const std::filesystem::path&) override {
        return std::nullopt;
    }

private:
    Said m_said;
};

} // namespace tallybook::platform
