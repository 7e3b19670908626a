#pragma once

#include <QPoint>
#include <QSize>
#include <memory>

namespace orvantile::test {

/// A mouse that a test makes on the compositor that the environment names. Throws std::runtime_error when
/// that cannot be had.
class VirtualPointer {
public:
    VirtualPointer();
    VirtualPointer(const VirtualPointer&) = delete;
    VirtualPointer& operator=(const VirtualPointer&) = delete;
    ~VirtualPointer();

    /// Clicks at a point of a desktop of that size, in points.
    void click(QPoint point, QSize desktop);

private:
    struct Protocol;
    std::unique_ptr<Protocol> protocol;
};

} // namespace orvantile::test
