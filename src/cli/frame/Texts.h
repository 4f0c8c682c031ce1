// What the command says in words of its own. The system's fixed messages are never among these.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::cli {

inline constexpr std::string_view kRefusedInSilence = "Refused.";
inline constexpr std::string_view kPasswordNeeded =
    "A password is needed: run the command at a terminal or use --password-file.";
inline constexpr std::string_view kQuestionUnanswered =
    "Nobody is there to answer: run the command at a terminal or use --yes.";
// `place` counts the characters of a text from 1; `codePoint` as "U+65E5".
inline std::string cannotBeStored(std::size_t place, std::string_view codePoint) {
    return "Character " + std::to_string(place) + ", " + std::string(codePoint) +
           ", cannot be stored in a Tallybook.";
}
// `questionMarks` of the replaced characters are like no other.
inline std::string replacedCharacters(std::size_t replaced, std::size_t lines, std::size_t questionMarks) {
    std::string text = std::to_string(replaced) + (replaced == 1 ? " character in " : " characters in ") +
                       std::to_string(lines) + (lines == 1 ? " line was" : " lines were") +
                       " replaced by the nearest that a Tallybook can hold";
    if (questionMarks > 0)
        text += ", " + std::to_string(questionMarks) + " of them by a question mark";
    return text + '.';
}
inline std::string passwordFault(std::string_view fault) {
    return "The password: " + std::string(fault);
}
inline constexpr std::string_view kScriptNotRead = "The script could not be read.";
inline constexpr std::string_view kMemoTooLong = "A memo field may not have more than 4096 characters";
inline constexpr std::string_view kChangesNotSaved = "Changes were not saved.";
inline constexpr std::string_view kNotEnoughMemory = "There is not enough memory.";
inline std::string notEnoughMemory(std::string_view file) {
    return file.empty() ? std::string(kNotEnoughMemory)
                        : "There is not enough memory for \"" + std::string(file) + "\".";
}
inline constexpr std::string_view kNoTemporaryFolder = "A temporary folder could not be made.";

// Making a database from a description, and describing one. UTF-8.
inline constexpr std::string_view kNoDescription = "The description could not be read.";
inline constexpr std::string_view kTooManyOperands = "An expression has at most 8 operands.";
inline constexpr std::string_view kTooManyOperators = "An expression has at most 7 operators.";
inline constexpr std::string_view kWrongOptionCount = "A radio button has 2 to 8 options.";
inline constexpr std::string_view kEmptyItem = "An item cannot be empty.";
inline constexpr std::string_view kDoubledId = "Two items have the same id.";
inline constexpr std::string_view kCategoriesAreList = "The categories are always a list.";
inline constexpr std::string_view kCategoriesNotSearched = "The categories are not among the searched fields.";
inline std::string noSuchType(std::string_view name) {
    return "There is no field type \"" + std::string(name) + "\".";
}
inline constexpr std::string_view kDoubledSlot = "Two of them have the same slot.";
inline constexpr std::string_view kTooManyFilters = "There are 12 filters at most.";
inline constexpr std::string_view kTooManyViews = "There are 12 views at most.";
inline constexpr std::string_view kTooManySortKeys = "A view has at most 3 sort keys.";
inline constexpr std::string_view kCarriedDiffers =
    "What \"carried\" holds does not go with what stands beside it: change neither, or take \"carried\" out.";
inline constexpr std::string_view kNotDescribedPasswords = "Passwords are not described.";
inline constexpr std::string_view kNotDescribedSpareFilters = "The two spare filters are not described.";
inline std::string noSuchOperator(std::string_view sign) {
    return "The operator \"" + std::string(sign) + "\" is not offered here.";
}
inline std::string nothingWritten(std::string_view place) {
    return "Nothing was written: " + std::string(place) + " was refused.";
}

// The names are Windows-1252.
// Names as a list: "a", "b" and 3 more.
inline std::string listed(const std::vector<std::string>& names) {
    constexpr std::size_t kMost = 20;
    std::string all;
    for (std::size_t i = 0; i < names.size() && i < kMost; ++i)
        all += (all.empty() ? "\"" : ", \"") + names[i] + '"';
    return names.size() > kMost ? all + " and " + std::to_string(names.size() - kMost) + " more" : all;
}
// `what` as "view"; the names that there are instead.
inline std::string noSuchName(std::string_view what, std::string_view name, const std::vector<std::string>& names) {
    return "There is no " + std::string(what) + " \"" + std::string(name) + "\"; there " +
           (names.empty()       ? "is none"
            : names.size() == 1 ? "is " + listed(names)
                                : "are " + listed(names)) +
           '.';
}
inline std::string ambiguousName(std::string_view what, std::string_view name) {
    return "More than one " + std::string(what) + " is called \"" + std::string(name) + "\" but for its case.";
}
inline std::string noSuchFilter(std::string_view name) {
    return "There is no filter \"" + std::string(name) + "\".";
}
inline std::string noFilterAmongOthers(std::string_view name) {
    return "\"" + std::string(name) + "\" stands for no filter and cannot be among others.";
}
inline std::string noSuchVerb(std::string_view verb, std::string_view nearest) {
    return "There is no verb \"" + std::string(verb) + "\"" +
           (nearest.empty() ? "; tallybook --help lists them."
                            : "; \"" + std::string(nearest) + "\" is the nearest.");
}
inline std::string helpTells(std::string_view verb) {
    return " (tallybook " + std::string(verb) + (verb.empty() ? "" : " ") + "--help tells more)";
}
inline std::string cannotBeOpened(std::string_view reason) {
    return "It cannot be opened: " + std::string(reason) + '.';
}
inline constexpr std::string_view kOutputNotWritten = "The output could not be written.";
inline constexpr std::string_view kNoPrefix =
    "The name of a Tallybook begins with MS2_, this one does not: rename the file.";

inline std::string noSuchUser(std::string_view name) {
    return "There is no user \"" + std::string(name) + "\".";
}
inline constexpr std::string_view kWhichUser = "There are several users: say --user NAME or --all.";

} // namespace tallybook::cli
