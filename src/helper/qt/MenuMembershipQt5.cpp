#include "helper/qt/MenuMembership.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QWidget>
#include <dlfcn.h>

namespace orvantile::helper {
namespace {

using AssociatedWidgets = QList<QWidget*> (*)(const QAction*);

/// In Qt 5 actions belong to the widgets' library. It is there, since there is an action, but only the
/// program may decide to load it, so it is found instead of linked.
AssociatedWidgets findAssociatedWidgets() {
    void* library = dlopen("libQt5Widgets.so.5", RTLD_LAZY | RTLD_NOLOAD);
    if (library == nullptr) {
        return nullptr;
    }
    void* const function = dlsym(library, "_ZNK7QAction17associatedWidgetsEv");
    dlclose(library); // the program's own hold on it remains
    return reinterpret_cast<AssociatedWidgets>(function);
}

} // namespace

bool livesInMenu(const QObject& action) {
    static const auto associatedWidgets = findAssociatedWidgets();
    if (associatedWidgets == nullptr) {
        return false;
    }
    const auto owners = associatedWidgets(static_cast<const QAction*>(&action));
    for (const QObject* owner : owners) {
        if (owner->inherits("QMenu")) {
            return true;
        }
    }
    return false;
}

} // namespace orvantile::helper
