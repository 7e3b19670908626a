#include "platform/linux/desktop/ThemeFiles.h"

#include "platform/linux/desktop/AtomicFile.h"
#include "platform/linux/desktop/IniDocument.h"
#include "platform/linux/desktop/ThemeName.h"

#include <QColor>
#include <QFile>
#include <array>
#include <map>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

namespace fs = std::filesystem;

constexpr std::array files{"gtk-4.0/settings.ini", "gtk-3.0/settings.ini", "kdeglobals"};

/// More than such files ever have; what lies behind does not count.
constexpr qsizetype limit = 256 * 1024;

using Values = std::map<QByteArray, QByteArray>;

std::optional<QByteArray> find(const Values& values, const char* key) {
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

std::optional<bool> gtkSays(const Values& settings) {
    const auto prefersDark = find(settings, "gtk-application-prefer-dark-theme");
    if (prefersDark && (prefersDark->toLower() == "true" || *prefersDark == "1")) {
        return true;
    }
    if (const auto theme = find(settings, "gtk-theme-name")) {
        return isDarkThemeName(QString::fromUtf8(*theme).remove(u'"'));
    }
    return prefersDark ? std::optional(false) : std::nullopt;
}

/// A colour as "red,green,blue".
std::optional<QColor> color(const QByteArray& text) {
    const auto parts = text.split(',');
    std::array<int, 3> components{};
    for (std::size_t index = 0; index < components.size(); ++index) {
        bool valid = parts.size() >= 3;
        components.at(index) = valid ? parts[static_cast<qsizetype>(index)].trimmed().toInt(&valid) : 0;
        if (!valid || components.at(index) < 0 || components.at(index) > 255) {
            return std::nullopt;
        }
    }
    return QColor(components[0], components[1], components[2]);
}

QString text(const fs::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

} // namespace

ThemeFiles::ThemeFiles(fs::path configuration_, bool kdeFirst_)
    : configuration(std::move(configuration_)),
      kdeFirst(kdeFirst_) {
    watch();
    read();
    const auto reread = [this] {
        const auto before = dark;
        watch(); // first, so that nothing written meanwhile goes unnoticed
        read();
        if (dark != before && onChanged) {
            onChanged();
        }
    };
    QObject::connect(&watcher, &QFileSystemWatcher::fileChanged, &watcher, reread);
    QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, &watcher, reread);
}

void ThemeFiles::read() {
    dark = kdeFirst ? kde() : gtk();
    if (!dark) {
        dark = kdeFirst ? gtk() : kde();
    }
}

std::optional<bool> ThemeFiles::gtk() const {
    for (const auto* name : {files[0], files[1]}) {
        const auto contents = AtomicFile(configuration / name).read(limit);
        if (const auto says = gtkSays(IniDocument(contents.bytes, "Settings").values())) {
            return says;
        }
    }
    return std::nullopt;
}

std::optional<bool> ThemeFiles::kde() const {
    const auto contents = AtomicFile(configuration / files[2]).read(limit);
    const auto background = find(IniDocument(contents.bytes, "Colors:Window").values(), "BackgroundNormal");
    if (const auto window = color(background.value_or(QByteArray()))) {
        return qGray(window->rgb()) < 128;
    }
    if (const auto scheme = find(IniDocument(contents.bytes, "General").values(), "ColorScheme")) {
        return isDarkThemeName(QString::fromUtf8(*scheme));
    }
    return std::nullopt;
}

/// Watches each file, and its folder for the file's coming; what has been replaced must be watched anew.
void ThemeFiles::watch() {
    // A file may come between the look at its folder and the watch on that.
    while (watchMore()) {
    }
}

bool ThemeFiles::watchMore() {
    QStringList paths{text(configuration)};
    for (const auto* name : files) {
        const auto file = configuration / name;
        paths << text(file.parent_path()) << text(file);
    }
    const auto watched = watcher.files() + watcher.directories();
    QStringList missing;
    for (const auto& path : paths) {
        if (!watched.contains(path) && !missing.contains(path) && QFile::exists(path)) {
            missing << path;
        }
    }
    const auto refused = missing.isEmpty() ? QStringList() : watcher.addPaths(missing);
    return refused.size() < missing.size();
}

} // namespace orvantile::platform::desktop
