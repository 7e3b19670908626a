#include "platform/linux/helper/switch/HelperFiles.h"

#include "platform/linux/desktop/AtomicFile.h"
#include "platform/linux/helper/switch/HelperVariables.h"

#include <QCoreApplication>
#include <optional>
#include <system_error>
#include <utility>

namespace orvantile::platform::helper {
namespace {

namespace fs = std::filesystem;
using desktop::AtomicFile;
using desktop::FileContents;

/// Ends each line of ours.
constexpr QByteArrayView mark = "# Orvantile: commands of Qt programs";

/// More than anybody writes by hand.
constexpr qsizetype longestFile = 1'000'000;

fs::path environmentFolder(const char* name) {
    return qgetenv(name).toStdString();
}

QByteArray quoted(const fs::path& path) {
    return '\'' + QByteArray::fromStdString(path.native()).replace("'", "'\\''") + '\'';
}

/// What the file holds; empty when there is none, absent when it cannot be read whole.
std::optional<QByteArray> contentsOf(const fs::path& file) {
    auto contents = AtomicFile(file).read(longestFile);
    switch (contents.state) {
    case FileContents::State::whole:
        return std::move(contents.bytes);
    case FileContents::State::missing:
        return QByteArray();
    default:
        return std::nullopt;
    }
}

QByteArray withoutMarkedLines(const QByteArray& text) {
    auto lines = text.split('\n');
    lines.removeIf([](const QByteArray& line) { return line.trimmed().endsWith(mark); });
    return lines.join('\n');
}

} // namespace

HelperFiles::Places HelperFiles::Places::ofUser() {
    const auto home = environmentFolder("HOME");
    const auto configuration = environmentFolder("XDG_CONFIG_HOME");
    const fs::path program = QCoreApplication::applicationDirPath().toStdString();
    return {.home = home,
            .configuration = configuration.is_absolute() ? configuration : home / ".config",
            .installed = (program / "../share/orvantile/session").lexically_normal()};
}

HelperFiles::HelperFiles(const Places& places)
    : variablesFile(places.installed / "qt-helper.conf"),
      scriptFile(places.installed / "qt-helper.sh"),
      link(places.configuration / "environment.d" / "60-orvantile-qt-helper.conf"),
      sessionFile(places.home / ".xsessionrc") {}

bool HelperFiles::isInstalled() const {
    std::error_code error;
    return fs::is_regular_file(variablesFile, error) && fs::is_regular_file(scriptFile, error);
}

QList<QByteArray> HelperFiles::pluginFolders() const {
    const auto text = contentsOf(variablesFile).value_or(QByteArray());
    for (const auto& line : text.split('\n')) {
        // QT_PLUGIN_PATH=${what was there before}folder:folder
        if (line.startsWith(HelperVariables::pluginPathName)) {
            return line.sliced(line.lastIndexOf('}') + 1).split(':');
        }
    }
    return {};
}

bool HelperFiles::isOn() const {
    const auto text = contentsOf(sessionFile);
    return isOurLink() && text && text->split('\n').contains(sessionLine());
}

bool HelperFiles::turnOn() const {
    return isInstalled() && writeLink() && writeSessionFile(true);
}

bool HelperFiles::turnOff() const {
    const bool unlinked = removeLink();
    return writeSessionFile(false) && unlinked;
}

QByteArray HelperFiles::sessionLine() const {
    const auto script = quoted(scriptFile);
    return "[ ! -r " + script + " ] || . " + script + ' ' + mark.toByteArray();
}

/// Whether the link is one to the variables, of this installation or one that has gone.
bool HelperFiles::isOurLink() const {
    std::error_code error;
    return fs::read_symlink(link, error).filename() == variablesFile.filename() && !error;
}

bool HelperFiles::writeSessionFile(bool on) const {
    const auto text = contentsOf(sessionFile);
    if (!text) {
        return false;
    }
    auto changed = withoutMarkedLines(*text);
    if (on) {
        if (!changed.isEmpty() && !changed.endsWith('\n')) {
            changed += '\n';
        }
        changed += sessionLine() + '\n';
    }
    if (changed == *text) {
        return true;
    }
    std::error_code error;
    if (changed.isEmpty() && !fs::is_symlink(sessionFile, error)) {
        return fs::remove(sessionFile, error);
    }
    return AtomicFile(sessionFile).replace(changed).has_value();
}

bool HelperFiles::writeLink() const {
    std::error_code error;
    if (fs::exists(fs::symlink_status(link, error)) && !removeLink()) {
        return false;
    }
    fs::create_directories(link.parent_path(), error);
    fs::create_symlink(variablesFile, link, error);
    return !error;
}

/// Leaves anything else of that name alone.
bool HelperFiles::removeLink() const {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(link, error))) {
        return true;
    }
    return isOurLink() && fs::remove(link, error);
}

} // namespace orvantile::platform::helper
