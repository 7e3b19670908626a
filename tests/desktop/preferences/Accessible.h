#pragma once

#include <QByteArray>
#include <QRect>
#include <QString>

namespace orvantile::test {

/// Where an object is on the accessibility bus.
struct Accessible {
    QByteArray bus;
    QByteArray path;

    friend bool operator==(const Accessible&, const Accessible&) = default;
};

/// States as AT-SPI numbers them.
enum class AccessibleState : unsigned {
    active = 1,
    checked = 4,
    enabled = 8,
    focusable = 11,
    focused = 12,
    modal = 16,
    resizable = 21,
    selected = 23,
    sensitive = 24,
    showing = 25,
};

/// What is adjusted and within which limits.
struct AccessibleValue {
    double minimum = 0;
    double maximum = 0;
    double step = 0;
    double current = 0;
};

} // namespace orvantile::test
