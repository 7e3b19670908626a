#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace orvantile {

/// A directory of files that belong to the program.
class ResourceBundle {
public:
    /// The program's own bundle, located on first use and kept for the rest of the run. Stops the program
    /// when it is at none of its places.
    [[nodiscard]] static const ResourceBundle& module();

    /// Where the program's own bundle may be, best first:
    ///
    /// 1. in the resources directory of the installation that the running executable belongs to,
    /// 2. in the resources directory of the installation that this code belongs to, which is another one when
    /// the
    ///    code has been loaded as a library,
    /// 3. beside the running executable, or beside the application that it is a part of.
    [[nodiscard]] static QStringList candidates();

    /// The first of the directories that opens, or the end of the program.
    [[nodiscard]] static ResourceBundle require(const QStringList& directories);

    /// Absent when there is no such readable directory.
    [[nodiscard]] static std::optional<ResourceBundle> open(const QString& directory);

    /// The file called `name` with that extension, if the bundle has it.
    [[nodiscard]] std::optional<QString> path(const QString& name, const QString& extension) const;

private:
    explicit ResourceBundle(QString directory);

    QString directory;
};

} // namespace orvantile
