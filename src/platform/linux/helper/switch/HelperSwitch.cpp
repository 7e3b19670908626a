#include "platform/linux/helper/switch/HelperSwitch.h"

#include "platform/linux/helper/switch/SessionVariables.h"

namespace orvantile::platform::helper {

using Qt::StringLiterals::operator""_s;

void HelperSwitch::turnOn() {
    if (!files.turnOn()) {
        return;
    }
    bus = desktop::SessionBus::open();
    if (bus) {
        bus->onClosed = [this] { bus.reset(); };
        bus->attach();
        sendToSession(*bus, HelperVariables::ofProcess().with(files.pluginFolders()));
    }
}

QString HelperSwitch::description() const {
    if (!files.isInstalled()) {
        return {};
    }
    const auto about = u"Qt programs tell their commands through a small helper that is loaded into them. "_s;
    if (!files.isOn()) {
        return about + u"It is off. The command “orvantile-qt-helper on” turns it on."_s;
    }
    const auto state =
        HelperVariables::ofProcess().haveHelper() ? u"It is on. "_s : u"It is on from your next login. "_s;
    return about + state + u"The command “orvantile-qt-helper off” turns it off."_s;
}

} // namespace orvantile::platform::helper
