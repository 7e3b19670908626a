#pragma once

#include <QString>
#include <QStringView>

namespace orvantile::platform::helper {

/// The title that a menu shows for an action's text: one line, without the marks of mnemonics ("&File",
/// "Datei(&F)") and without what follows a tab.
[[nodiscard]] QString titleOf(QStringView actionText);

} // namespace orvantile::platform::helper
