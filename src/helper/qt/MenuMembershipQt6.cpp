#include "helper/qt/MenuMembership.h"

#include <QtGui/QAction>

namespace orvantile::helper {

bool livesInMenu(const QObject& action) {
    const auto owners = static_cast<const QAction&>(action).associatedObjects();
    for (const QObject* owner : owners) {
        if (owner->inherits("QMenu")) {
            return true;
        }
    }
    return false;
}

} // namespace orvantile::helper
