// Check boxes and option buttons that can be seen in a dark theme too.
#pragma once

class QWidget;

namespace tallybook::desktop {

// Gives the boxes among the children of a window an edge that stands out from their ground.
void makeBoxesVisible(const QWidget& window);

} // namespace tallybook::desktop
