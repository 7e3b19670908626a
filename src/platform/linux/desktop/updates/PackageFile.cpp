#include "platform/linux/desktop/updates/PackageFile.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <unistd.h>

namespace orvantile::platform::desktop {

using Qt::StringLiterals::operator""_s;

namespace {

constexpr qsizetype longestName = 120;
constexpr int mostNames = 100;
constexpr QStringView nameCharacters = u".+-_~";

/// "name.deb", "name (1).deb" …
QString numbered(const QString& name, int number) {
    if (number == 0) {
        return name;
    }
    const auto dot = name.lastIndexOf(u'.');
    const auto end = dot <= 0 ? name.size() : dot;
    return name.first(end) % u" (" % QString::number(number) % u')' % name.sliced(end);
}

} // namespace

PackageFile::PackageFile(QString folder_) : folder(std::move(folder_)) {
    file.setFileTemplate(QDir(folder).filePath(u".orvantile-XXXXXX.part"_s));
}

std::optional<UpdateFailure> PackageFile::open(qint64 length) {
    if (folder.isEmpty() || !QDir().mkpath(folder) || !file.open()) {
        return UpdateFailure::storageUnwritable;
    }
    const QStorageInfo storage(folder);
    if (storage.isValid() && storage.bytesAvailable() < length) {
        return UpdateFailure::storageFull;
    }
    return std::nullopt;
}

std::optional<UpdateFailure> PackageFile::append(const QByteArray& piece) {
    if (file.write(piece) == piece.size() && file.flush()) {
        return std::nullopt;
    }
    return file.error() == QFileDevice::ResourceError ? UpdateFailure::storageFull
                                                      : UpdateFailure::storageUnwritable;
}

std::variant<QString, UpdateFailure> PackageFile::keep(qint64 length, const QByteArray& signature,
                                                       const PublicKey& key, const QUrl& url) {
    if (file.size() != length) {
        return UpdateFailure::wrongLength;
    }
    // Nobody else can reach a file without a name, so it cannot shrink under the mapping.
    auto* const bytes = file.map(0, length);
    if (bytes == nullptr) {
        return UpdateFailure::storageUnwritable;
    }
    const auto isGenuine = key.verifies(QByteArrayView(bytes, length), signature);
    file.unmap(bytes);
    if (!isGenuine) {
        return UpdateFailure::wrongSignature;
    }
    if (::fsync(file.handle()) != 0) {
        return UpdateFailure::storageUnwritable;
    }
    constexpr auto readable =
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;
    // Installers of the system run as another user.
    file.setPermissions(readable);
    for (int number = 0; number < mostNames; ++number) {
        const auto path = QDir(folder).filePath(numbered(nameFor(url), number));
        if (!QFileInfo::exists(path) && file.rename(path)) {
            file.setAutoRemove(false);
            return path;
        }
    }
    return UpdateFailure::storageUnwritable;
}

QString PackageFile::nameFor(const QUrl& url) {
    QString name;
    const auto last = url.fileName(QUrl::FullyDecoded);
    for (const auto character : last) {
        const auto isPlain = character.unicode() < 0x80 &&
                             (character.isLetterOrNumber() || nameCharacters.contains(character));
        name += isPlain ? character : u'_';
    }
    name = name.right(longestName);
    while (name.startsWith(u'.') || name.startsWith(u'-')) {
        name.remove(0, 1);
    }
    return name.isEmpty() ? u"orvantile-update"_s : name;
}

} // namespace orvantile::platform::desktop
