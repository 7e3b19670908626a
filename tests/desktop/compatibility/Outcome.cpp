#include "desktop/compatibility/Outcome.h"

#include <algorithm>

namespace orvantile::test {

using Qt::StringLiterals::operator""_s;

int Report::count(Verdict verdict) const {
    return static_cast<int>(std::ranges::count(outcomes, verdict, &Outcome::verdict));
}

QString nameOf(Verdict verdict) {
    switch (verdict) {
    case Verdict::right:
        return u"right"_s;
    case Verdict::wrong:
        return u"wrong"_s;
    case Verdict::missed:
        return u"missed"_s;
    case Verdict::falseAlarm:
        return u"false"_s;
    case Verdict::quiet:
        return u"quiet"_s;
    case Verdict::skipped:
        return u"skipped"_s;
    }
    return {};
}

} // namespace orvantile::test
