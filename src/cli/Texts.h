// What the command says in words of its own. The system's fixed messages are never among these.
#pragma once

#include <string>
#include <string_view>

namespace tallybook::cli {

inline constexpr std::string_view kRefusedInSilence = "Refused.";
inline constexpr std::string_view kPasswordNeeded =
    "A password is needed: run the command at a terminal or use --password-file.";
inline constexpr std::string_view kQuestionUnanswered =
    "Nobody is there to answer: run the command at a terminal or use --yes.";
inline constexpr std::string_view kChangesNotSaved = "Changes were not saved.";
inline constexpr std::string_view kNoTemporaryFolder = "A temporary folder could not be made.";

// The names are Windows-1252.
inline std::string noSuchView(std::string_view name) {
    return "There is no view \"" + std::string(name) + "\".";
}
inline std::string noSuchFilter(std::string_view name) {
    return "There is no filter \"" + std::string(name) + "\".";
}

inline std::string noSuchUser(std::string_view name) {
    return "There is no user \"" + std::string(name) + "\".";
}
inline constexpr std::string_view kWhichUser = "There are several users: say --user NAME or --all.";

} // namespace tallybook::cli
