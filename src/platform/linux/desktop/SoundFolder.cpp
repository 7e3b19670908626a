#include "platform/linux/desktop/SoundFolder.h"

#include <QCoreApplication>
#include <QFile>
#include <algorithm>

namespace orvantile::platform::desktop {

namespace fs = std::filesystem;

SoundFolder SoundFolder::ofProgram() {
    const fs::path executables = QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString();
    std::error_code error;
    const auto beside = executables / "sounds";
    return SoundFolder(fs::is_directory(beside, error) ? beside : executables / "../share/orvantile/sounds");
}

std::optional<fs::path> SoundFolder::find(const QString& name) const {
    if (name.isEmpty() ||
        !std::ranges::all_of(name, [](QChar character) { return character.isLetterOrNumber(); })) {
        return std::nullopt;
    }
    auto file = folder / (QFile::encodeName(name).toStdString() + ".wav");
    std::error_code error;
    return fs::is_regular_file(file, error) ? std::optional(std::move(file)) : std::nullopt;
}

} // namespace orvantile::platform::desktop
