#pragma once

#include <QString>
#include <filesystem>
#include <optional>

namespace orvantile::platform::desktop {

/// The folder with the program's own sounds, one WAV file each, named after the sound.
class SoundFolder {
public:
    explicit SoundFolder(std::filesystem::path folder_) : folder(std::move(folder_)) {}

    /// The folder that belongs to the running program, wherever that has been moved to: `sounds` beside the
    /// executable, or else `../share/orvantile/sounds`.
    [[nodiscard]] static SoundFolder ofProgram();

    /// The file of the sound called exactly `name`, or absent.
    [[nodiscard]] std::optional<std::filesystem::path> find(const QString& name) const;

private:
    std::filesystem::path folder;
};

} // namespace orvantile::platform::desktop
