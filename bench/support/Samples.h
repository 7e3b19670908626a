#pragma once

#include <QString>
#include <vector>

namespace orvantile::bench {

/// Measured values of one kind, in milliseconds unless the title says otherwise.
class Samples {
public:
    void add(double value) { values.push_back(value); }

    [[nodiscard]] std::size_t count() const { return values.size(); }

    /// The value that `fraction` (0 to 1) of the samples do not exceed; 0 without samples.
    [[nodiscard]] double quantile(double fraction) const;

    [[nodiscard]] double median() const { return quantile(0.5); }

    /// One line: title, count, median, 95th percentile, maximum.
    void print(const QString& title) const;

    static void printHeader();

private:
    std::vector<double> values;
};

} // namespace orvantile::bench
