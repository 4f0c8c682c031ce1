// What the designers share: their message boxes, and texts as a file can hold them.
#pragma once

#include "core/platform/Services.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tallybook::design {

// A message with the button Ok. An empty title is the program's name.
void say(platform::Services& services, std::string_view text, std::string_view title = {},
         platform::Icon icon = platform::Icon::Information);

// A question with Yes and No; true for Yes.
bool asks(platform::Services& services, std::string_view text, std::string_view title = {},
          platform::Icon icon = platform::Icon::Question);

// The same before something is lost for good: No is the default.
bool asksToDestroy(platform::Services& services, std::string_view text, std::string_view title = {},
                   platform::Icon icon = platform::Icon::Question);

// What becomes of changes that were not stored when a dialog shows something else or closes.
enum class Leaving {
    Leave,     // nothing was changed, or the user gives it up
    SaveFirst, // and leave when that was accepted
    Stay,
};
// Asks with Yes, No and Cancel.
Leaving asksToKeep(platform::Services& services, std::string_view text);

// Without the blanks at both ends.
std::string trimmed(std::string_view text);

// True with a message when a file cannot hold the text: it has more than `most` characters, or a NUL, which ends
// every text of a file. `what` begins the message, as "The name".
bool refusesText(platform::Services& services, std::string_view what, std::string_view text, std::size_t most);

// The longest texts that the designers take. Files give some of them a fixed width; the others end with a NUL, and
// take what a cell of the same text takes.
inline constexpr std::size_t kMostInName = 20;       // views, filters
inline constexpr std::size_t kMostInConstant = 19;   // of a condition
inline constexpr std::size_t kMostInResult = 20;     // texts of a conditional expression
inline constexpr std::size_t kMostInLabel = 20;      // of a one-to-many field
inline constexpr std::size_t kMostInSource = 32;     // of a one-to-many field
inline constexpr std::size_t kMostInStartup = 65000; // a record of the handheld has at most 64 K

} // namespace tallybook::design
