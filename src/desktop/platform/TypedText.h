// What a user has typed into a window, before the core gets it.
#pragma once

#include "core/platform/Services.h"

#include <QString>

#include <string>

class QLineEdit;
class QWidget;

namespace tallybook::desktop {

// The text of a line, with blanks for the line ends that a paste can bring.
QString typedText(const QLineEdit& line);

// The first character that no byte stands for, as "U+4E2D"; empty when there is none.
std::string foreignIn(const QString& text);

// True, with a message, when no byte stands for one of the characters: what is typed is refused, not replaced.
bool refusesForeign(platform::Services& services, const QString& text);

// The same for every line and text box that is shown in a window: the first one refused takes the focus.
bool refusesForeignIn(platform::Services& services, const QWidget& window);

} // namespace tallybook::desktop
