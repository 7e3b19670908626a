#pragma once

#include "platform/macos/support/CfHandle.h"

#include <QString>

namespace orvantile::platform::macos {

/// A string object with the same UTF-16 code units. Holds nothing only when memory has run out.
[[nodiscard]] CfHandle<CFStringRef> toCfString(QStringView text);

/// The same UTF-16 code units; a null string when `text` is null.
[[nodiscard]] QString toQString(CFStringRef text);

} // namespace orvantile::platform::macos
