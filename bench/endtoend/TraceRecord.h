#pragma once

#include <QString>
#include <vector>

namespace orvantile::bench {

/// A step that the program has recorded.
struct TraceEvent {
    QString name;
    double begin = 0; ///< milliseconds of the steady clock
    double duration = 0;
};

/// What a program that was built to measure has written when it ended, in the order of time. Throws
/// std::runtime_error when there is nothing.
[[nodiscard]] std::vector<TraceEvent> readTrace(const QString& path);

} // namespace orvantile::bench
