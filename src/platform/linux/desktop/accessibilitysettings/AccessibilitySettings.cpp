#include "platform/linux/desktop/accessibilitysettings/AccessibilitySettings.h"

#include "platform/linux/desktop/accessibilitysettings/OpenPage.h"
#include "platform/linux/desktop/accessibilitysettings/SettingsPages.h"

#include <utility>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

} // namespace

AccessibilitySettings::AccessibilitySettings(TokenSource tokens_)
    : tokens(std::move(tokens_)),
      self(std::make_shared<AccessibilitySettings*>(this)) {}

void AccessibilitySettings::open() {
    if (!tokens) {
        openWith({});
        return;
    }
    tokens([weak = std::weak_ptr(self)](const QString& token) {
        if (const auto alive = weak.lock()) {
            (*alive)->openWith(token);
        }
    });
}

void AccessibilitySettings::openWith(const QString& token) {
    worker.schedule([launch = Launch{QProcessEnvironment::systemEnvironment(), token}] {
        static_cast<void>(
            openFirst(accessibilityPages(launch.environment.value(u"XDG_CURRENT_DESKTOP"_s)), launch));
    });
}

} // namespace orvantile::platform::desktop
