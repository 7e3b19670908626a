#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace orvantile::test {

/// A shortcut as a menu shows it.
struct Chord {
    QStringList strokes; ///< one after the other, as the injector takes them: "Ctrl+Shift+s"
    QString label;       ///< as the HUD is to show it: "⌃⇧S"
};

/// Reads what a menu says of its keys: "<Primary><Shift>s", "Ctrl+Shift+S", "Ctrl+K, Ctrl+C". Absent when it
/// names no keys that can be pressed.
[[nodiscard]] std::optional<Chord> chordOf(const QString& keys);

} // namespace orvantile::test
