#pragma once

#include "hud/VisualEffectBackground.h"
#include "platform/Backdrop.h"
#include "platform/Geometry.h"

#include <QImage>
#include <QPainter>
#include <QString>
#include <limits>

namespace orvantile {

/// One HUD: a label in a capsule of glass or of flat colour, as a value. All lengths are in points, y grows
/// downwards. Main thread only.
struct HUDView {
    QString text; ///< drawn exactly as passed; one line unless it contains line breaks
    double fontSize = 22;
    bool translucent = true; ///< glass rather than flat
    bool popAnimation = true;
    BlendingMode blendingMode = BlendingMode::behindWindow;
    bool darkMode = true;      ///< dark-backed with light text
    double flatOpacity = 0.75; ///< of the flat background

    /// How the view looks at an instant of its entrance.
    struct Entrance {
        double scale = 1; ///< about the centre
        double opacity = 1;
        bool settled = true;
    };

    /// Long after the entrance.
    static constexpr double settled = std::numeric_limits<double>::infinity();

    /// The size the view takes, with the transparent margin that its shadow needs.
    [[nodiscard]] platform::Size fittingSize() const;

    /// The capsule inside a view of the fitting size.
    [[nodiscard]] QRectF capsule() const;

    /// The same, for callers that have laid the label out and know its size.
    [[nodiscard]] platform::Size fittingSize(const QSizeF& label) const;
    [[nodiscard]] QRectF capsule(const QSizeF& label) const;

    /// `part` of the view in a picture of `scale` device pixels per point, as it looks when it has entered.
    /// `blurred`: what lies behind `part`, as `VisualEffectBackground::blurred` gives it.
    [[nodiscard]] QImage picture(double scale, const platform::BackdropPicture& blurred,
                                 const QRectF& part) const;

    /// Paints the view with its top left corner at the origin, `elapsed` seconds after it has appeared.
    /// `blurred`: the blurred picture of what lies behind the whole view, or null.
    void paint(QPainter& painter, const QImage& blurred = QImage(), double elapsed = settled) const;

    [[nodiscard]] Entrance entranceAt(double elapsed) const;

    /// Around the label, on each side.
    [[nodiscard]] double horizontalPadding() const;
    [[nodiscard]] double verticalPadding() const;
};

} // namespace orvantile
