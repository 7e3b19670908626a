#include "platform/linux/desktop/ThemeName.h"

#include <QRegularExpression>

namespace orvantile::platform::desktop {

bool isDarkThemeName(const QString& name) {
    // A word of its own, whether set off by punctuation or, as in "BreezeDark", by its capital.
    static const QRegularExpression dark(
        QStringLiteral("(?:(?<![A-Za-z])[dD]ark|(?<=[a-z])Dark|DARK)(?![a-z])"));
    return dark.match(name).hasMatch();
}

} // namespace orvantile::platform::desktop
