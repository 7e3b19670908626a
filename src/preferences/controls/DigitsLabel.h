#pragma once

#include <QLabel>

namespace orvantile {

/// A number whose digits all take the same room, at the trailing edge. What is too long is elided, with the
/// whole in its tooltip.
class DigitsLabel final : public QLabel {
public:
    /// Takes `width` points, or more where the user's font is so large that `longest` needs it.
    DigitsLabel(int width, const QString& longest);

    void setNumber(const QString& number);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] double advance(QChar character) const;
    [[nodiscard]] double advance(const QString& number) const;
};

} // namespace orvantile
