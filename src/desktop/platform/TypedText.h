// What a user has typed into a window, before the core gets it.
#pragma once

#include "core/platform/Services.h"

#include <QString>

#include <string>

class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace tallybook::desktop {

// The text of a line, with blanks for the line ends that a paste can bring.
QString typedText(const QLineEdit& line);

// The first character that no byte stands for, as "U+4E2D"; empty when there is none.
std::string foreignIn(const QString& text);

// Takes what the user has made of a text that a line shows. One that nobody touched stays as it is: a line may show
// less of it than there is. Line ends stay in a text that has some.
void takeTyped(const QLineEdit& line, std::string& text);

// The text of a box, its no-break spaces and all; each kind of line end is "\n".
QString typedText(const QPlainTextEdit& box);

// True, with a message, when no byte stands for one of the characters: what is typed is refused, not replaced.
bool refusesForeign(platform::Services& services, const QString& text);

// The same for every line and text box that is shown in a window: the first one refused takes the focus.
bool refusesForeignIn(platform::Services& services, const QWidget& window);

} // namespace tallybook::desktop
