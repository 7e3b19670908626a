#pragma once

#include "platform/Backdrop.h"

#include <QImage>
#include <QPainter>

namespace orvantile {

/// How glass blends with what lies behind it.
enum class BlendingMode {
    behindWindow = 0, ///< blurs the desktop behind the panel
    withinWindow = 1, ///< blurs what the same window shows behind the view
};

/// The look of the blurred layer.
enum class Material {
    hudWindow = 13,
};

/// Which of its two tones a material has.
enum class MaterialAppearance {
    aqua,
    darkAqua,
};

/// The lowest layer of glass: what lies behind, blurred and a little more colourful.
struct VisualEffectBackground {
    Material material = Material::hudWindow;
    BlendingMode blendingMode = BlendingMode::behindWindow;
    MaterialAppearance appearance = MaterialAppearance::darkAqua;

    /// What of the material is drawn here over `behind`: a picture is blurred, the rest stays as it is. The
    /// result is a smaller picture that covers the same area; see `gaussianBlurred`.
    /// `scale`: device pixels per point of a picture.
    [[nodiscard]] static platform::BackdropPicture blurred(const platform::BackdropPicture& behind,
                                                           double scale);

    /// Fills the whole clip. `behind`: what `blurred` gave; a picture begins at the painter's origin. Nothing
    /// is drawn where a compositor blurs, and a plain tone where nothing is known of what lies behind.
    void paint(QPainter& painter, const QRectF& area, const platform::BackdropPicture& behind) const;
};

} // namespace orvantile
