#pragma once

#include "platform/linux/desktop/AtomicFile.h"
#include "platform/linux/desktop/Changes.h"
#include "platform/linux/desktop/IniDocument.h"

#include <QByteArray>
#include <filesystem>
#include <map>
#include <optional>

namespace orvantile::platform::desktop {

/// Our section of an INI file on disk. What others change in the file meanwhile is kept. Not thread-safe.
class IniFile {
public:
    /// A settings file is a few hundred bytes; of a longer one than this only the beginning is read.
    static constexpr qsizetype limit = 256 * 1024;

    explicit IniFile(const std::filesystem::path& path);

    /// Reads the file: keys and the texts after `key=`. Empty when there is none or it cannot be read.
    [[nodiscard]] std::map<QByteArray, QByteArray> load();

    /// Writes these changes, together with those that could not be written before. Returns the new file, for
    /// `AtomicFile::sync`, or absent when it failed.
    ///
    /// A file that cannot be read is never replaced. One that is too long, or holds zero bytes, is replaced
    /// by what was readable of it and stays aside, with the suffix `.too-long` or `.damaged`. When the file
    /// has vanished, everything that was in it is written again.
    [[nodiscard]] std::optional<FileDescriptor> store(const Changes& changes);

private:
    [[nodiscard]] bool refresh();

    AtomicFile file;
    IniDocument document;
    std::optional<FileIdentity> known; ///< the state of the file that `document` is
    const char* asideSuffix = nullptr; ///< set when the file is to be kept aside
    Changes unsaved;
};

} // namespace orvantile::platform::desktop
