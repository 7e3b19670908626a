#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <optional>

namespace orvantile::platform::desktop {

/// The monochrome symbols that the program knows, as icons of the theme and as drawings of its own.
struct KeyboardSymbol {
    QString iconName; ///< in the icon theme
    bool filled = false;

    /// Absent when there is no symbol of that name.
    [[nodiscard]] static std::optional<KeyboardSymbol> named(QStringView name);

    /// The symbol in one colour on nothing, `size` pixels square.
    [[nodiscard]] QImage draw(int size, const QColor& color) const;
};

/// Dark or light ink, whichever is seen better on `background`.
[[nodiscard]] QColor inkOn(const QColor& background);

} // namespace orvantile::platform::desktop
