#pragma once

#include <QFileSystemWatcher>
#include <QString>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace orvantile::platform::desktop {

/// What the theme settings of GTK (`gtk-4.0/settings.ini`, `gtk-3.0/settings.ini`) and KDE (`kdeglobals`) in
/// the user's configuration folder say about the desktop's colours. Main thread only.
class ThemeFiles {
public:
    /// `kdeFirst` on KDE's desktop, where GTK's files are but copies.
    ThemeFiles(std::filesystem::path configuration, bool kdeFirst);

    /// Absent when the files do not say.
    [[nodiscard]] std::optional<bool> isDark() const { return dark; }

    /// Called when that has changed.
    std::function<void()> onChanged;

private:
    void read();
    void watch();
    bool watchMore(); ///< whether there was more to watch
    [[nodiscard]] std::optional<bool> gtk() const;
    [[nodiscard]] std::optional<bool> kde() const;

    std::filesystem::path configuration;
    bool kdeFirst;
    std::optional<bool> dark;
    QFileSystemWatcher watcher;
};

} // namespace orvantile::platform::desktop
