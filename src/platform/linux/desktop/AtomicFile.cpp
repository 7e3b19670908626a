#include "platform/linux/desktop/AtomicFile.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>

namespace orvantile::platform::desktop {
namespace {

namespace fs = std::filesystem;

FileIdentity identityFrom(const struct stat& status) {
    return {{static_cast<std::int64_t>(status.st_dev), static_cast<std::int64_t>(status.st_ino),
             status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec,
             status.st_ctim.tv_nsec}};
}

bool writeAll(const FileDescriptor& file, const QByteArray& bytes) {
    for (qsizetype done = 0; done < bytes.size();) {
        const auto count =
            ::write(file.get(), bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        done += count;
    }
    return true;
}

/// Reads until `limit` bytes or the end; absent on failure.
std::optional<QByteArray> readUpTo(const FileDescriptor& file, qsizetype limit) {
    QByteArray bytes;
    while (bytes.size() < limit) {
        std::array<char, 16384> chunk{};
        const auto wanted = std::min<qsizetype>(limit - bytes.size(), chunk.size());
        const auto count = ::read(file.get(), chunk.data(), static_cast<std::size_t>(wanted));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        bytes.append(chunk.data(), count);
    }
    return bytes;
}

bool createFolders(const fs::path& folder) {
    if (folder.empty() || ::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) {
        return true;
    }
    return errno == ENOENT && folder.has_relative_path() && createFolders(folder.parent_path()) &&
           (::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST);
}

/// The name under which a process prepares the replacement of `file`.
std::string preparationPrefix(const fs::path& file) {
    return '.' + file.filename().string() + '.';
}

/// Removes what processes that were killed while they prepared a replacement have left behind.
void removeAbandoned(const fs::path& file) {
    const auto prefix = preparationPrefix(file);
    std::error_code error;
    for (fs::directory_iterator entry(file.parent_path(), error), end; !error && entry != end;
         entry.increment(error)) {
        const auto name = entry->path().filename().string();
        if (!name.starts_with(prefix)) {
            continue;
        }
        int process = 0;
        const auto* last = name.data() + name.size();
        const auto [stop, failure] = std::from_chars(name.data() + prefix.size(), last, process);
        if (failure == std::errc() && stop == last && process > 0 && ::kill(process, 0) != 0 &&
            errno == ESRCH) {
            ::unlink(entry->path().c_str());
        }
    }
}

/// Gives `file` a second name under which it stays when it is replaced.
bool keepAside(const fs::path& file, const char* suffix) {
    constexpr int mostCopies = 9;
    for (int copy = 1; copy <= mostCopies; ++copy) {
        auto aside = file;
        aside += suffix;
        if (copy > 1) {
            aside += '.' + std::to_string(copy);
        }
        if (::link(file.c_str(), aside.c_str()) == 0) {
            return true;
        }

        struct stat status {};

        if (::lstat(aside.c_str(), &status) != 0) {
            // A file system without second names: moving leaves a moment without the file.
            return ::rename(file.c_str(), aside.c_str()) == 0;
        }
    }
    return false;
}

std::optional<FileDescriptor> prepare(const fs::path& preparation, const QByteArray& bytes, mode_t mode) {
    const auto create = [&] {
        return FileDescriptor(
            ::open(preparation.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    };
    auto file = create();
    if (!file.isOpen() && errno == EEXIST) { // left by an earlier process with the same number
        ::unlink(preparation.c_str());
        file = create();
    }
    if (!file.isOpen()) {
        return std::nullopt;
    }
    if ((mode != 0600 && ::fchmod(file.get(), mode) != 0) || !writeAll(file, bytes)) {
        ::unlink(preparation.c_str());
        return std::nullopt;
    }
    return file;
}

} // namespace

FileContents AtomicFile::read(qsizetype limit) const {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.isOpen()) {
        return {.state = errno == ENOENT ? FileContents::State::missing : FileContents::State::unreadable};
    }

    struct stat status {};

    if (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return {.state = FileContents::State::unreadable};
    }
    auto bytes = readUpTo(file, limit + 1);
    if (!bytes) {
        return {.state = FileContents::State::unreadable};
    }
    FileContents contents{FileContents::State::whole, std::move(*bytes), identityFrom(status)};
    if (contents.bytes.size() > limit) {
        contents.state = FileContents::State::tooLong;
        contents.bytes.truncate(contents.bytes.lastIndexOf('\n', limit - 1) + 1);
    }
    return contents;
}

std::optional<FileIdentity> AtomicFile::identity() const {
    struct stat status {};

    return ::stat(path.c_str(), &status) == 0 ? std::optional(identityFrom(status)) : std::nullopt;
}

std::optional<FileIdentity> AtomicFile::identityOf(const FileDescriptor& file) {
    struct stat status {};

    return ::fstat(file.get(), &status) == 0 ? std::optional(identityFrom(status)) : std::nullopt;
}

fs::path AtomicFile::target() const {
    constexpr int mostLinks = 40; // as the kernel
    auto end = path;
    for (int links = 0; links < mostLinks; ++links) {
        std::error_code error;
        const auto next = fs::read_symlink(end, error);
        if (error) {
            return end;
        }
        end = next.is_absolute() ? next : end.parent_path() / next;
    }
    return {}; // a circle
}

std::optional<FileDescriptor> AtomicFile::replace(const QByteArray& bytes, const char* asideSuffix) const {
    const auto file = target();

    struct stat status {};

    const bool exists = ::stat(file.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    if (!exists && !createFolders(file.parent_path())) {
        return std::nullopt;
    }
    const mode_t mode = exists ? status.st_mode & 0777 : 0600;
    const auto preparation = file.parent_path() / (preparationPrefix(file) + std::to_string(::getpid()));
    auto prepared = prepare(preparation, bytes, mode);
    if (!prepared) {
        return std::nullopt;
    }
    if ((exists && asideSuffix != nullptr && !keepAside(file, asideSuffix)) ||
        ::rename(preparation.c_str(), file.c_str()) != 0) {
        ::unlink(preparation.c_str());
        return std::nullopt;
    }
    return prepared;
}

void AtomicFile::sync(const FileDescriptor& replacement) const {
    const auto file = target();
    ::fsync(replacement.get());
    const FileDescriptor folder(::open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) {
        ::fsync(folder.get());
    }
    removeAbandoned(file);
}

} // namespace orvantile::platform::desktop
