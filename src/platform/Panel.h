#pragma once

#include "platform/Geometry.h"

#include <QImage>
#include <QPainterPath>
#include <QPoint>
#include <QString>
#include <functional>
#include <memory>

namespace orvantile::platform {

/// How the content looks at one instant: its picture, scaled about its centre and faded.
struct PanelFrame {
    QImage image;        ///< premultiplied ARGB32, device pixel ratio set
    double scale = 1;    ///< about the centre of the panel
    double opacity = 1;  ///< 0 to 1
    bool settled = true; ///< false while later instants look different
    QPoint origin;       ///< where in the panel the picture begins, in device pixels
};

/// What a panel shows. The panel asks it for pictures; it never draws by itself.
class PanelContent {
public:
    PanelContent() = default;
    PanelContent(const PanelContent&) = delete;
    PanelContent& operator=(const PanelContent&) = delete;
    virtual ~PanelContent() = default;

    /// The size the content wants, in points.
    [[nodiscard]] virtual Size fittingSize() const = 0;

    /// The words on it, for assistive technology and screen recorders.
    [[nodiscard]] virtual QString title() const = 0;

    /// Draws the picture for a panel at `frame` on a screen of `scale` device pixels per point.
    virtual void prepare(const Rect& frame, double scale) = 0;

    /// The part behind which a blurring compositor shall blur, in points from the top left corner.
    [[nodiscard]] virtual QPainterPath blurRegion() const { return {}; }

    /// Whether a blurring compositor shall tint what it blurs dark rather than light.
    [[nodiscard]] virtual bool isDark() const { return true; }

    /// The look `elapsed` seconds after the content has appeared.
    [[nodiscard]] virtual PanelFrame frameAt(double elapsed) const = 0;
};

/// The attributes of a heads-up panel, fixed at creation.
struct PanelAttributes {
    Size size;                         ///< placeholder until the first `setFrame`
    bool floatsAboveEverything = true; ///< also above full-screen windows
    bool joinsAllWorkspaces = true;
    bool ignoresMouseEvents = true;
    bool activates = false;
    bool hasShadow = false;
};

/// A borderless, transparent, click-through window that never takes the focus. Main thread only.
class Panel {
public:
    Panel() = default;
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;
    virtual ~Panel() = default;

    /// Replaces what the panel shows; the content starts afresh.
    virtual void setContent(std::shared_ptr<PanelContent> content) = 0;

    /// Places the panel, in screen points, and draws its content when `display` is true.
    virtual void setFrame(const Rect& frame, bool display) = 0;

    /// 0 (invisible) to 1.
    virtual void setAlpha(double alpha) = 0;

    /// Shows the panel above everything without activating anything.
    virtual void orderFrontRegardless() = 0;

    /// Moves the alpha to `alpha` in `duration` seconds from where it is, then calls `completion`, if any. A
    /// later animation takes over the alpha; the completion of the earlier one is still called at its time.
    virtual void animateAlpha(double alpha, double duration, std::function<void()> completion) = 0;

    /// Takes the panel off the screen; it stays alive.
    virtual void orderOut() = 0;
};

/// Makes panels.
class Panels {
public:
    Panels() = default;
    Panels(const Panels&) = delete;
    Panels& operator=(const Panels&) = delete;
    virtual ~Panels() = default;

    [[nodiscard]] virtual std::shared_ptr<Panel> create(const PanelAttributes& attributes) = 0;
};

} // namespace orvantile::platform
