#pragma once

#include "hud/HUDView.h"
#include "platform/Backdrop.h"
#include "platform/Panel.h"

namespace orvantile {

/// A `HUDView` as the content of a panel: draws it once per display and leaves the entrance to scaling and
/// fading that picture. Main thread only.
class HUDHostingView final : public platform::PanelContent {
public:
    /// `backdrop` outlives this.
    HUDHostingView(HUDView view, platform::Backdrop& backdrop);

    [[nodiscard]] platform::Size fittingSize() const override;
    [[nodiscard]] QString title() const override;
    void prepare(const platform::Rect& frame, double scale) override;
    [[nodiscard]] QPainterPath blurRegion() const override;
    [[nodiscard]] platform::PanelFrame frameAt(double elapsed) const override;

private:
    HUDView view;
    platform::Backdrop& backdrop;
    platform::Size size;
    QImage picture;
    QPainterPath blurred; ///< by a compositor
};

} // namespace orvantile
