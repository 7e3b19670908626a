#pragma once

#include "platform/Panel.h"
#include "platform/linux/desktop/PanelAccessible.h"
#include "platform/linux/desktop/PanelFrames.h"
#include "platform/linux/wayland/LayerSurface.h"
#include "platform/linux/wayland/WaylandScreens.h"

#include <array>
#include <memory>

namespace orvantile::platform::wayland {

/// The heads-up panel as a layer surface on the program's own connection. The compositor places it, so it
/// stays off panels and docks; it is made each time it comes up, because a layer surface cannot change its
/// output.
class WaylandPanel final : public Panel {
public:
    WaylandPanel(WaylandConnection& connection, Globals& globals, Outputs& outputs, Scheduler& scheduler,
                 const WaylandScreens& screens);

    void setContent(std::shared_ptr<PanelContent> content) override;
    void setFrame(const Rect& frame, bool display) override;
    void setAlpha(double alpha) override;
    void orderFrontRegardless() override;
    void animateAlpha(double alpha, double duration, std::function<void()> completion) override;
    void orderOut() override;

private:
    void prepare();
    void openSurface();
    void closeSurface();
    void surfaceClosed();
    void continueDrawing();
    void present(const PanelFrame& frame);
    [[nodiscard]] PixelBuffer* freeBuffer();
    [[nodiscard]] QRegion blurFor(const PanelFrame& frame) const;

    WaylandConnection& connection;
    const Globals& globals;
    Outputs& outputs;
    const WaylandScreens& screens;
    desktop::PanelAccessible accessible;
    std::shared_ptr<PanelContent> content;
    Rect frame; ///< points
    WaylandScreens::Placement place;
    double preparedScale = 0; ///< of the content's picture; 0 while it has none for `frame`
    bool onScreen = false;
    bool behindhand = false; ///< a picture is due that could not be drawn yet
    /// One that is shown, one that is about to be, one to draw into.
    std::array<PixelBuffer, 3> buffers;
    std::unique_ptr<LayerSurface> surface;
    desktop::PanelFrames frames;
    Listeners::Token blurToken;
};

} // namespace orvantile::platform::wayland
