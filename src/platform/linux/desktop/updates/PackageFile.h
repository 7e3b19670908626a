#pragma once

#include "platform/linux/desktop/updates/PackageSignature.h"
#include "platform/linux/desktop/updates/UpdateFailure.h"

#include <QString>
#include <QTemporaryFile>
#include <QUrl>
#include <optional>
#include <variant>

namespace orvantile::platform::desktop {

/// A package on its way into the folder for downloads: without a name of its own until it has been verified,
/// so that a refused, cancelled or interrupted download leaves nothing behind. One thread.
class PackageFile {
public:
    explicit PackageFile(QString folder_);

    /// Makes the folder if it is missing. `length`: bytes to come.
    [[nodiscard]] std::optional<UpdateFailure> open(qint64 length);

    [[nodiscard]] std::optional<UpdateFailure> append(const QByteArray& piece);

    /// Checks length and signature of what was appended and gives it the name that `url` ends in, or that
    /// name with a number when it is taken. Returns the file's path.
    [[nodiscard]] std::variant<QString, UpdateFailure> keep(qint64 length, const QByteArray& signature,
                                                            const PublicKey& key, const QUrl& url);

    /// A name for the package at `url`: its last part, letters, digits and ".+-_~" only, at most 120
    /// characters.
    [[nodiscard]] static QString nameFor(const QUrl& url);

private:
    QString folder;
    QTemporaryFile file;
};

} // namespace orvantile::platform::desktop
