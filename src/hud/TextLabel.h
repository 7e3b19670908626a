#pragma once

#include <QPainter>
#include <QSizeF>
#include <QString>
#include <QTextLayout>

namespace orvantile {

/// A text laid out in the HUD's face, never wrapped; it breaks only where the text does. All lengths are in
/// points. Main thread only.
class TextLabel {
public:
    /// `fontSize` may have fractions; what is no size at all is drawn very small.
    TextLabel(const QString& text, double fontSize);

    /// The advance of the widest line, and as many equal lines as there are. An empty text has one line.
    [[nodiscard]] QSizeF size() const { return laidOut; }

    /// Draws in the painter's pen with the top left corner at `position`.
    void draw(QPainter& painter, QPointF position) const;

private:
    QTextLayout layout;
    double magnification; ///< from the whole pixel size of the font to the size asked for
    QSizeF laidOut;
};

} // namespace orvantile
