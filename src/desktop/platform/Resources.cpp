#include "desktop/platform/Resources.h"

#include "desktop/platform/EdgedIcon.h"

#include <QtGlobal>

// A library that is linked statically brings its resources only when asked. The macro wants to stand outside of
// namespaces.
static void bringResources() {
    Q_INIT_RESOURCE(icons);
}

namespace tallybook::desktop {

QIcon icon(const QString& name) {
    [[maybe_unused]] static const bool brought = [] {
        bringResources();
        return true;
    }();
    return QIcon(new EdgedIcon(QIcon(QStringLiteral(":/icons/%1.svg").arg(name)))); // the icon owns its engine
}

} // namespace tallybook::desktop
