#include "platform/linux/desktop/updates/UpdatePolicy.h"

#include <QHostAddress>

namespace orvantile::platform::desktop {

bool UpdatePolicy::permits(const QUrl& url) const {
    if (!url.isValid() || url.host().isEmpty() || !url.userInfo().isEmpty()) {
        return false;
    }
    if (url.scheme() == u"https") {
        return true;
    }
    return allowsPlainLoopback && url.scheme() == u"http" && QHostAddress(url.host()).isLoopback();
}

} // namespace orvantile::platform::desktop
