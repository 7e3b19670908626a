#include "hud/TextLabel.h"

#include "hud/LabelFont.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

constexpr double largestSize = 4096;
constexpr double unbounded = 1 << 24; // what the toolkit's fixed-point numbers still hold

QString withLineSeparators(QString text) {
    text.replace(QStringLiteral("\r\n"), QString(QChar::LineSeparator));
    for (const auto end : {QChar::LineFeed, QChar::CarriageReturn, QChar::ParagraphSeparator}) {
        text.replace(QChar(end), QChar(QChar::LineSeparator));
    }
    return text;
}

/// Whether a character would not be seen itself but change how its neighbours are read.
bool isDeceptive(QChar character) {
    const char16_t code = character.unicode();
    const bool embedsOrOverrides = code >= 0x202A && code <= 0x202E;
    const bool isolates = code >= 0x2066 && code <= 0x2069;
    const bool controls =
        character.category() == QChar::Other_Control && code != u'\t' && code != u'\n' && code != u'\r';
    return embedsOrOverrides || isolates || controls;
}

/// What is drawn of a text from an application that may mean no good.
QString withoutDeception(const QString& text) {
    constexpr qsizetype longest = 16384; // far beyond any screen
    auto shown = text.left(longest);
    if (shown.size() < text.size() && shown.back().isHighSurrogate()) {
        shown.chop(1);
    }
    shown.removeIf(isDeceptive);
    return shown;
}

double drawable(double fontSize) {
    return std::isnan(fontSize) ? 1 : std::clamp(fontSize, 1.0, largestSize);
}

} // namespace

TextLabel::TextLabel(const QString& text, double fontSize) {
    const double wanted = drawable(fontSize);
    const int pixelSize = static_cast<int>(std::lround(wanted));
    magnification = wanted / pixelSize;

    const auto font = labelFont(pixelSize);
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft
                                                 : Qt::LeftToRight); // whatever the program's is
    // Faces position whole letters better than letters and marks.
    layout.setText(withLineSeparators(withoutDeception(text).normalized(QString::NormalizationForm_C)));
    layout.setFont(font);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);

    // Equal lines, whatever faces the characters come from.
    const QFontMetricsF metrics(font);
    double width = 0;
    layout.beginLayout();
    for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(unbounded); // a line is only measured once it has a width
        width = std::max(width, line.naturalTextWidth());
    }
    layout.endLayout();
    for (int i = 0; i < layout.lineCount(); ++i) {
        auto line = layout.lineAt(i);
        const double indent = layout.text().isRightToLeft() ? width - line.naturalTextWidth() : 0;
        line.setPosition({indent, i * metrics.height() + metrics.ascent() - line.ascent()});
    }
    laidOut = QSizeF(width, std::max(layout.lineCount(), 1) * metrics.height()) * magnification;
}

void TextLabel::draw(QPainter& painter, QPointF position) const {
    painter.save();
    painter.translate(position);
    painter.scale(magnification, magnification);
    layout.draw(&painter, {});
    painter.restore();
}

} // namespace orvantile
