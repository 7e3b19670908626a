#pragma once

#include "platform/linux/desktop/FileDescriptor.h"

#include <QByteArray>
#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <utility>

namespace orvantile::platform::desktop {

/// Tells one state of a file from any other.
struct FileIdentity {
    std::array<std::int64_t, 7> facts{}; ///< device, inode, size, times of modification and of change

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// What was found where a file should be.
struct FileContents {
    enum class State {
        missing,
        whole,
        tooLong,   ///< `bytes` is its beginning, up to the last whole line
        unreadable ///< something is there that cannot be read: no permission, a folder, a device …
    };

    State state = State::missing;
    QByteArray bytes{};
    FileIdentity identity{};
};

/// A small file that is only ever replaced as a whole: whoever reads it finds what it was or what it became,
/// whenever the writer is killed. Blocking; never throws.
class AtomicFile {
public:
    explicit AtomicFile(std::filesystem::path path_) : path(std::move(path_)) {}

    /// Reads at most `limit` bytes; never waits for a pipe or device.
    [[nodiscard]] FileContents read(qsizetype limit) const;

    /// The present state, or absent when there is no file.
    [[nodiscard]] std::optional<FileIdentity> identity() const;

    /// Puts `bytes` in the file's place and returns the new file, for `sync`; absent when that fails, which
    /// leaves the old file as it was. Missing folders are created (0700), a new file is private (0600), an
    /// old one keeps its mode, and a symbolic link keeps pointing to its file, which is then replaced. With
    /// `asideSuffix` the old file stays under its name with that suffix, and a number if that is taken.
    [[nodiscard]] std::optional<FileDescriptor> replace(const QByteArray& bytes,
                                                        const char* asideSuffix = nullptr) const;

    /// Waits until a replacement and its name would survive a power cut.
    void sync(const FileDescriptor& replacement) const;

    [[nodiscard]] static std::optional<FileIdentity> identityOf(const FileDescriptor& file);

private:
    /// The file at the end of symbolic links, empty when there is none.
    [[nodiscard]] std::filesystem::path target() const;

    std::filesystem::path path;
};

} // namespace orvantile::platform::desktop
