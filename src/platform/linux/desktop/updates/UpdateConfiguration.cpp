#include "platform/linux/desktop/updates/UpdateConfiguration.h"

#include "platform/linux/desktop/updates/UpdatePolicy.h"

#include <QFileInfo>
#include <QSettings>

namespace orvantile::platform::desktop {

using Qt::StringLiterals::operator""_s;

namespace {

constexpr qint64 largestFile = 64 * 1024;

/// The format gives a value with commas as a list.
QString text(const QSettings& file, const QString& key) {
    return file.value(key).toStringList().join(u',').trimmed();
}

} // namespace

UpdateConfiguration::Result UpdateConfiguration::read(const QString& path, const UpdatePolicy& policy) {
    const QFileInfo information(path);
    if (!information.exists()) {
        return Absent{};
    }
    if (!information.isFile() || !information.isReadable() || information.size() > largestFile) {
        return Broken{};
    }
    const QSettings file(path, QSettings::IniFormat);
    const QUrl feed(text(file, u"Updates/Feed"_s), QUrl::StrictMode);
    auto key = PublicKey::parse(text(file, u"Updates/PublicKey"_s).toLatin1());
    if (file.status() != QSettings::NoError || !key || !policy.permits(feed)) {
        return Broken{};
    }
    return UpdateConfiguration{feed, *std::move(key)};
}

} // namespace orvantile::platform::desktop
