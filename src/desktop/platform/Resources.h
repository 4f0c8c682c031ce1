// The icons that the library carries.
#pragma once

#include <QIcon>
#include <QString>

namespace tallybook::desktop {

// The drawing of a name, as "new" or "checkon".
QIcon icon(const QString& name);

} // namespace tallybook::desktop
