#include "platform/linux/applications/ProgramFacts.h"

#include <QFile>

namespace orvantile::platform::applications {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr qint64 longestName = 256;
constexpr qint64 largestMap = 4LL << 20U;

} // namespace

ProgramFacts factsFrom(const QString& name, std::string_view map) {
    const auto has = [map](std::string_view file) { return map.find(file) != std::string_view::npos; };
    return {.name = name,
            .usesQt = has("/libQt5Gui.so") || has("/libQt6Gui.so"),
            .hasHelper = has("/generic/orvantile.so")};
}

std::optional<ProgramFacts> factsOf(std::int32_t processIdentifier) {
    const QString process = u"/proc/"_s + QString::number(processIdentifier);
    QFile name(process + u"/comm"_s);
    QFile map(process + u"/maps"_s);
    if (!name.open(QIODevice::ReadOnly) || !map.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const auto text = map.read(largestMap);
    return factsFrom(QString::fromUtf8(name.read(longestName)).trimmed(),
                     {text.constData(), static_cast<std::size_t>(text.size())});
}

} // namespace orvantile::platform::applications
