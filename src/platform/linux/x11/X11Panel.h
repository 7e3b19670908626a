#pragma once

#include "platform/Panel.h"
#include "platform/linux/desktop/PanelAccessible.h"
#include "platform/linux/desktop/PanelFrames.h"
#include "platform/linux/x11/Compositor.h"
#include "platform/linux/x11/PanelSurface.h"
#include "platform/linux/x11/PanelWindow.h"
#include "platform/linux/x11/ScreenGrab.h"
#include "platform/linux/x11/X11Screens.h"

namespace orvantile::platform::x11 {

/// The heads-up panel as a window of its own on the program's own connection, not a widget: its pixels reach
/// the server in shared memory before it is mapped, nothing of the toolkit stands between `show` and the
/// screen, and no code path exists that could give it the focus.
class X11Panel final : public Panel {
public:
    X11Panel(XConnection& connection, Scheduler& scheduler, const X11Screens& screens,
             const Compositor& compositor, ScreenGrab& grab);

    void setContent(std::shared_ptr<PanelContent> content) override;
    void setFrame(const Rect& frame, bool display) override;
    void setAlpha(double alpha) override;
    void orderFrontRegardless() override;
    void animateAlpha(double alpha, double duration, std::function<void()> completion) override;
    void orderOut() override;

    /// Somebody begins or ceases to blend translucent windows.
    void compositorChanged();

private:
    void prepare();
    [[nodiscard]] bool mustWait() const;
    void present(const PanelFrame& frame);
    [[nodiscard]] QImage beneath();
    [[nodiscard]] bool isBlended();
    [[nodiscard]] QRegion blurFor(const PanelFrame& frame) const;

    XConnection& connection;
    Scheduler& scheduler;
    const X11Screens& screens;
    const Compositor& compositor;
    ScreenGrab& grab;
    PanelWindow window;
    PanelSurface surface;
    desktop::PanelAccessible accessible;
    std::shared_ptr<PanelContent> content;
    Rect frame;                      ///< points
    ScreenLayout::Placement place{}; ///< of `frame`
    PixelRect visiblePart;           ///< of `place`, on the screen
    bool prepared = false;           ///< the content has drawn its picture for `place`
    bool named = false;              ///< the content's title has been told to assistive technology
    bool covering = false;           ///< what it hides has been put by
    bool onScreen = false;
    std::optional<QImage> underlay;      ///< what lies under `visiblePart`, where nobody blends
    std::unique_ptr<Scheduled> comeBack; ///< until the windows below have drawn themselves again
    std::unique_ptr<Scheduled> blending; ///< until the compositor certainly blends the panel
    desktop::PanelFrames frames;
};

} // namespace orvantile::platform::x11
