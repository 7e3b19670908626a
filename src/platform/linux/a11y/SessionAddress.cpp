#include "platform/linux/a11y/SessionAddress.h"

#include <QByteArray>

namespace orvantile::platform::a11y {

std::string sessionAddress() {
    if (const auto address = qgetenv("DBUS_SESSION_BUS_ADDRESS"); !address.isEmpty()) {
        return address.toStdString();
    }
    const auto directory = qgetenv("XDG_RUNTIME_DIR");
    return directory.isEmpty() ? std::string() : "unix:path=" + directory.toStdString() + "/bus";
}

} // namespace orvantile::platform::a11y
