#pragma once

#include "platform/Geometry.h"

#include <QImage>
#include <QPainter>
#include <QString>

namespace orvantile {

/// How glass blends with what lies behind it.
enum class BlendingMode {
    behindWindow = 0, ///< blurs the desktop behind the panel
    withinWindow = 1, ///< blurs what the same window shows behind the view
};

/// One HUD: a label in a capsule, as a value. All lengths are in points.
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

    /// The size the view takes, with the transparent margin that its shadow needs.
    [[nodiscard]] platform::Size fittingSize() const;

    /// The capsule inside a view of the fitting size; y grows downwards.
    [[nodiscard]] QRectF capsule() const;

    /// Paints the view with its top left corner at the origin, as it looks when it has entered. `backdrop` is
    /// the blurred picture of what lies behind the whole view, or null.
    void paint(QPainter& painter, const QImage& backdrop = QImage()) const;

    [[nodiscard]] Entrance entranceAt(double elapsed) const;
};

} // namespace orvantile
