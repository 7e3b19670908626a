#include "preferences/NumberFormats.h"

#include <cmath>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

QString number(double value, int decimals, const QString& unit) {
    if (!std::isfinite(value)) {
        return u"–"_s;
    }
    return QString::number(value, 'f', decimals) + unit;
}

/// Toward zero, without a sign on zero.
double truncated(double value) {
    return std::trunc(value) + 0.0;
}

} // namespace

QString secondsText(double seconds) {
    return number(seconds, 1, u"s"_s);
}

QString pointsText(double points) {
    return number(truncated(points), 0, u"pt"_s);
}

QString percentText(double fraction) {
    return number(truncated(fraction * 100), 0, u"%"_s);
}

} // namespace orvantile
