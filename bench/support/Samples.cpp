#include "support/Samples.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace orvantile::bench {

double Samples::quantile(double fraction) const {
    if (values.empty()) {
        return 0;
    }
    auto sorted = values;
    std::ranges::sort(sorted);
    const auto rank = std::ceil(fraction * static_cast<double>(sorted.size()));
    return sorted.at(static_cast<std::size_t>(std::max(rank, 1.0)) - 1);
}

void Samples::printHeader() {
    std::printf("%-52s %6s %9s %9s %9s\n", "", "shots", "median", "p95", "max");
}

void Samples::print(const QString& title) const {
    std::printf("%-52s %6zu %9.3f %9.3f %9.3f\n", qUtf8Printable(title), count(), median(), quantile(0.95),
                quantile(1));
    std::fflush(stdout);
}

} // namespace orvantile::bench
