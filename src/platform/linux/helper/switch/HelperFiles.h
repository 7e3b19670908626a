#pragma once

#include <QByteArray>
#include <QList>
#include <filesystem>

namespace orvantile::platform::helper {

/// The user's files that have each session of theirs load the helper into Qt programs: a link in the
/// configuration of the session's service manager, and a line in what X sessions read. Both refer to files of
/// the installation, so that nothing remains in force once that is removed. Never throws.
class HelperFiles {
public:
    struct Places {
        std::filesystem::path home;
        std::filesystem::path configuration; ///< usually .config in there
        std::filesystem::path installed;     ///< folder of qt-helper.conf and qt-helper.sh

        /// Those of the user, and of the installation that this program is part of.
        [[nodiscard]] static Places ofUser();
    };

    explicit HelperFiles(const Places& places);

    /// Whether the installation brings a helper along.
    [[nodiscard]] bool isInstalled() const;

    /// Folders in which Qt looks for the installed helpers.
    [[nodiscard]] QList<QByteArray> pluginFolders() const;

    [[nodiscard]] bool isOn() const;

    /// Both leave everything else in these files as it is, and may be repeated. False when a file cannot be
    /// changed.
    bool turnOn() const;
    bool turnOff() const;

private:
    [[nodiscard]] QByteArray sessionLine() const;
    [[nodiscard]] bool isOurLink() const;
    bool writeSessionFile(bool on) const;
    bool writeLink() const;
    bool removeLink() const;

    std::filesystem::path variablesFile;
    std::filesystem::path scriptFile;
    std::filesystem::path link;
    std::filesystem::path sessionFile;
};

} // namespace orvantile::platform::helper
