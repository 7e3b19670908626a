#include "platform/linux/desktop/IniFile.h"

namespace orvantile::platform::desktop {
namespace {

constexpr auto section = "General";

} // namespace

IniFile::IniFile(const std::filesystem::path& path) : file(path), document(QByteArray(), section) {}

std::map<QByteArray, QByteArray> IniFile::load() {
    return refresh() ? document.values() : std::map<QByteArray, QByteArray>();
}

/// Makes `document` what is in the file now. False when something is there that cannot be read.
bool IniFile::refresh() {
    const auto present = file.identity();
    if (!present) {
        known.reset();
        asideSuffix = nullptr;
        return true;
    }
    if (present == known) {
        return true;
    }
    const auto contents = file.read(limit);
    switch (contents.state) {
    case FileContents::State::missing:
        return true;
    case FileContents::State::unreadable:
        return false;
    case FileContents::State::whole:
    case FileContents::State::tooLong:
        break;
    }
    known = contents.identity;
    document = IniDocument(contents.bytes, section);
    asideSuffix = contents.state == FileContents::State::tooLong ? ".too-long"
                  : document.isDamaged()                         ? ".damaged"
                                                                 : nullptr;
    return true;
}

std::optional<FileDescriptor> IniFile::store(const Changes& changes) {
    for (const auto& [key, text] : changes) {
        unsaved.set(key, text);
    }
    if (!refresh()) {
        return std::nullopt;
    }
    auto edited = document;
    for (const auto& [key, text] : unsaved) {
        edited.set(key, text);
    }
    auto replacement = file.replace(edited.bytes(), asideSuffix);
    if (replacement) {
        known = AtomicFile::identityOf(*replacement);
        document = std::move(edited);
        asideSuffix = nullptr;
        unsaved.clear();
    }
    return replacement;
}

} // namespace orvantile::platform::desktop
