#pragma once

#include "platform/Geometry.h"

#include <QImage>
#include <variant>

namespace orvantile::platform {

/// The compositor blurs what lies behind the panel by itself.
struct CompositorBlurs {};

/// Nothing can be had of what lies behind.
struct NoBackdrop {};

/// The picture of what lies behind, in device pixels, not yet blurred.
using BackdropPicture = std::variant<NoBackdrop, CompositorBlurs, QImage>;

/// What lies on the screen behind a rectangle. Main thread only.
class Backdrop {
public:
    Backdrop() = default;
    Backdrop(const Backdrop&) = delete;
    Backdrop& operator=(const Backdrop&) = delete;
    virtual ~Backdrop() = default;

    /// Says that `behind` is about to be asked for `rect`, so that an answer that takes time is on its way.
    virtual void prepare(const Rect&) {}

    /// What lies behind `rect` (screen points).
    [[nodiscard]] virtual BackdropPicture behind(const Rect& rect) = 0;
};

} // namespace orvantile::platform
