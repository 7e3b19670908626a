#pragma once

#include <QString>
#include <QStringList>
#include <memory>

namespace orvantile::test {

/// What happened behind the seams, in order, as short lines such as "panel.setAlpha 0".
using CallLog = std::shared_ptr<QStringList>;

/// A number as it is written there.
[[nodiscard]] inline QString loggedNumber(double value) {
    return QString::number(value, 'g', 12);
}

} // namespace orvantile::test
