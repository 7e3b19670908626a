#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace orvantile::platform::desktop {

/// What a desktop entry file says about starting its program.
struct DesktopEntry {
    QString name;
    QString icon;
    QString exec;
    QString tryExec; ///< must be there for the entry to count; may be empty
    QString directory;
    bool hidden = false;   ///< deleted by the user
    bool terminal = false; ///< runs in a terminal

    /// Absent when this is no entry of an application.
    [[nodiscard]] static std::optional<DesktopEntry> parse(const QByteArray& text);

    /// The program and its arguments, without placeholders for files. `path`: where the entry comes from.
    /// Empty when the command is malformed.
    [[nodiscard]] QStringList command(const QString& path) const;
};

} // namespace orvantile::platform::desktop
