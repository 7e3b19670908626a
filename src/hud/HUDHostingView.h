#pragma once

#include "hud/HUDView.h"
#include "hud/TextLabel.h"
#include "platform/Backdrop.h"
#include "platform/Panel.h"
#include "platform/Screens.h"

namespace orvantile {

/// A `HUDView` as the content of a panel: draws it once per display and leaves the entrance to scaling and
/// fading that picture. Main thread only.
class HUDHostingView final : public platform::PanelContent {
public:
    /// `backdrop` and `screens` outlive this.
    HUDHostingView(HUDView view, platform::Backdrop& backdrop, const platform::Screens& screens);

    [[nodiscard]] platform::Size fittingSize() const override;
    [[nodiscard]] QString title() const override;
    void prepare(const platform::Rect& frame, double scale) override;
    [[nodiscard]] QPainterPath blurRegion() const override;

    [[nodiscard]] bool isDark() const override { return view.darkMode; }

    [[nodiscard]] platform::PanelFrame frameAt(double elapsed) const override;

private:
    [[nodiscard]] platform::Rect onScreens(const platform::Rect& frame) const;
    [[nodiscard]] platform::BackdropPicture behind(const platform::Rect& visible, const QSize& pixels,
                                                   double scale);

    [[nodiscard]] platform::BackdropPicture pictureBehind(const platform::Rect& visible);

    HUDView view;
    TextLabel label;
    platform::Backdrop& backdrop;
    const platform::Screens& screens;
    platform::Size size;
    QImage picture;
    QPoint pictureOrigin; ///< within the panel, in device pixels
    QPainterPath blurred; ///< by a compositor
};

} // namespace orvantile
