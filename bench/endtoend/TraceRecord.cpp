#include "endtoend/TraceRecord.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <stdexcept>

namespace orvantile::bench {

using Qt::StringLiterals::operator""_s;

std::vector<TraceEvent> readTrace(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("the program has written no trace; is it built with ORVANTILE_TRACE?");
    }
    constexpr double microseconds = 1000;
    std::vector<TraceEvent> events;
    for (const auto& each : QJsonDocument::fromJson(file.readAll()).object()[u"traceEvents"_s].toArray()) {
        const auto event = each.toObject();
        events.push_back({event[u"name"_s].toString(), event[u"ts"_s].toDouble() / microseconds,
                          event[u"dur"_s].toDouble() / microseconds});
    }
    std::ranges::sort(events, {}, &TraceEvent::begin);
    return events;
}

} // namespace orvantile::bench
