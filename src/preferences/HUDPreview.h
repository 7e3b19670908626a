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

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    HUDView view;
    PreviewBackdrop background;
};

} // namespace orvantile
