#pragma once

#include <QImage>
#include <QRect>
#include <QString>

namespace orvantile::test {

/// A HUD's picture on the screen, over a desktop that is grey all over.
class ShownCapsule {
public:
    /// The desktop's grey.
    static constexpr int desktopGrey = 128;

    /// Looks at the HUD whose panel covers `frame`.
    ShownCapsule(const QString& display, const QRect& frame);

    /// The grey that most pixels around its centre have.
    [[nodiscard]] int prevailingGrey() const;

    /// How many different greys there are in a column through the capsule beside the label.
    [[nodiscard]] int greysFromTopToBottom() const;

    /// How wide the capsule is in pixels; 0 while it can hardly be told from the desktop.
    [[nodiscard]] int width() const;

private:
    [[nodiscard]] int grey(int x, int y) const { return qGray(picture.pixel(x, y)); }

    QImage picture;
};

} // namespace orvantile::test
