#include "platform/linux/a11y/SessionAddress.h"

#include <QByteArray>

namespace orvantile::platform::a11y {

std::string sessionAddress() {
    if (const auto address = qgetenv("DBUS_SESSION_BUS_ADDRESS"); !address.isEmpty()) {
        // The bus may be started again at its place, and is another one then.
        const auto identity = address.indexOf(",guid=");
        return address.first(identity < 0 ? address.size() : identity).toStdString();
    }
    const auto directory = qgetenv("XDG_RUNTIME_DIR");
    return directory.isEmpty() ? std::string() : "unix:path=" + directory.toStdString() + "/bus";
}

} // namespace orvantile::platform::a11y
