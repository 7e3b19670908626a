#pragma once

#include "platform/linux/helper/HelperReport.h"

#include <QByteArrayView>
#include <optional>

namespace orvantile::platform::helper {

/// Decodes one datagram of the helper. Absent when it is anything but a message that the helper could have
/// sent.
[[nodiscard]] std::optional<HelperReport> decodeMessage(QByteArrayView bytes);

} // namespace orvantile::platform::helper
