#include "app/ActionLabel.h"

namespace orvantile {

std::optional<QString> actionLabel(const Settings& settings, const std::optional<QString>& shortcut,
                                   const QString& title) {
    if (!settings.enabled()) {
        return std::nullopt;
    }
    if (shortcut && settings.showShortcut()) {
        return *shortcut + QStringLiteral("  ") + title;
    }
    return title;
}

} // namespace orvantile
