#pragma once

#include "hud/HUDView.h"
#include "preferences/PreviewBackdrop.h"

#include <QWidget>

namespace orvantile {

/// The strip that draws a HUD over a sample desktop. Takes no clicks.
class HUDPreview final : public QWidget {
public:
    HUDPreview();

    void setHUD(const HUDView& view);

    [[nodiscard]] const HUDView& hud() const { return view; }

    /// How high the strip is for a HUD of that font size, in points: never below 90.
    [[nodiscard]] static int stripHeight(double fontSize);

    /// How high the strip may be for stored font sizes beyond those that can be chosen, which would push the
    /// controls below it off the screen. The others always get their height.
    void setRoom(int height);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void fit();

    HUDView view;
    int room = QWIDGETSIZE_MAX;
    PreviewBackdrop background;
};

} // namespace orvantile
