#pragma once

#include "platform/UserDefaults.h"

#include <QByteArray>

namespace orvantile::platform::desktop {

/// A value as the text after `key=`: `true` and `false`, the shortest decimal number that reads back as the
/// same double, or a string. Strings are bare where that is unambiguous and else quoted, with `\"`, `\\`,
/// `\n`, `\r`, `\t` and `\0` for what a line cannot hold. Independent of the locale.
[[nodiscard]] QByteArray textOf(const DefaultsValue& value);

/// The value that a text stands for. Whatever is no boolean and no number is a string; bytes that are not
/// UTF-8 become U+FFFD.
[[nodiscard]] DefaultsValue valueOf(QByteArrayView text);

} // namespace orvantile::platform::desktop
