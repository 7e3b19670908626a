#include "platform/linux/desktop/accessibilitysettings/Launch.h"

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

} // namespace

QProcessEnvironment Launch::childEnvironment() const {
    auto result = environment;
    result.remove(u"QT_QPA_PLATFORM"_s); // chosen for this program alone
    for (const auto& name : {u"DESKTOP_STARTUP_ID"_s, u"XDG_ACTIVATION_TOKEN"_s}) {
        if (token.isEmpty()) {
            result.remove(name);
        } else {
            result.insert(name, token);
        }
    }
    return result;
}

} // namespace orvantile::platform::desktop
