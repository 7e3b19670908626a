#pragma once

#include <QImage>
#include <QString>
#include <optional>

namespace orvantile {

/// The sample desktop behind the preview.
struct DesktopBackground {
    bool darkCapsule = true; ///< which of the two pictures

    /// The name of the picture.
    [[nodiscard]] QString name() const;

    /// The picture: the application's own of that name if it has one (in the toolkit's search path "images"),
    /// or the bundled one; absent when there is neither.
    [[nodiscard]] std::optional<QImage> picture() const;

    /// The picture called `name`, of extension "png", from the program's resource bundle; absent when the
    /// bundle has none that can be read. A missing bundle stops the program.
    [[nodiscard]] static std::optional<QImage> bundledImage(const QString& name);
};

} // namespace orvantile
