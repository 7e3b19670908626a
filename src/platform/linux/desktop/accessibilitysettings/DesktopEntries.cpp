#include "platform/linux/desktop/accessibilitysettings/DesktopEntries.h"

#include "platform/linux/desktop/accessibilitysettings/Programs.h"

#include <QFile>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr qint64 largestEntry = 1 << 20; // bytes; real ones have a few thousand

QString valueOr(const QString& value, const QString& fallback) {
    return value.isEmpty() ? fallback : value;
}

QStringList dataFolders(const QProcessEnvironment& environment) {
    const auto own =
        valueOr(environment.value(u"XDG_DATA_HOME"_s), environment.value(u"HOME"_s) + u"/.local/share"_s);
    const auto system = valueOr(environment.value(u"XDG_DATA_DIRS"_s), u"/usr/local/share:/usr/share"_s);
    return QStringList{own} + system.split(u':', Qt::SkipEmptyParts);
}

bool isUsable(const DesktopEntry& entry, const QProcessEnvironment& environment) {
    return !entry.hidden && !entry.terminal &&
           (entry.tryExec.isEmpty() || findProgram(entry.tryExec, environment));
}

} // namespace

std::optional<FoundEntry> findEntry(const QString& fileName, const QProcessEnvironment& environment) {
    for (const auto& folder : dataFolders(environment)) {
        QFile file(folder + u"/applications/"_s + fileName);
        if (!folder.startsWith(u'/') || !file.open(QIODevice::ReadOnly)) {
            continue;
        }
        auto entry = DesktopEntry::parse(file.read(largestEntry));
        if (!entry || !isUsable(*entry, environment)) {
            return std::nullopt;
        }
        return FoundEntry{file.fileName(), *std::move(entry)};
    }
    return std::nullopt;
}

} // namespace orvantile::platform::desktop
