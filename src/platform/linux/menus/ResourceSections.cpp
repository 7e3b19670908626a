#include "platform/linux/menus/ResourceBundle.h"

#include <QFile>
#include <algorithm>
#include <cstring>
#include <elf.h>
#include <span>

namespace orvantile::platform::menus {
namespace {

constexpr qint64 largestBundle = 32LL << 20U;
constexpr std::size_t mostSections = 512;
constexpr qint64 largestNames = 1LL << 20U;

/// A structure as it is in the file; absent at its end.
template <typename Structure>
std::optional<Structure> readAt(QFile& file, qint64 offset) {
    Structure read{};
    QByteArray raw(static_cast<qsizetype>(sizeof read), Qt::Uninitialized);
    if (!file.seek(offset) || file.read(raw.data(), raw.size()) != raw.size()) {
        return std::nullopt;
    }
    std::memcpy(&read, raw.constData(), sizeof read);
    return read;
}

QByteArray bytesAt(QFile& file, const Elf64_Shdr& section, qint64 most) {
    const bool inside = section.sh_offset <= static_cast<std::uint64_t>(file.size()) &&
                        section.sh_size <= static_cast<std::uint64_t>(most);
    return inside && file.seek(static_cast<qint64>(section.sh_offset))
               ? file.read(static_cast<qint64>(section.sh_size))
               : QByteArray();
}

bool isProgram(const Elf64_Ehdr& header) {
    return std::equal(std::begin(header.e_ident), std::begin(header.e_ident) + SELFMAG, ELFMAG) &&
           header.e_ident[EI_CLASS] == ELFCLASS64 && header.e_ident[EI_DATA] == ELFDATA2LSB &&
           header.e_shentsize == sizeof(Elf64_Shdr);
}

} // namespace

std::vector<ResourceBundle> bundlesOf(const std::string& path) {
    std::vector<ResourceBundle> bundles;
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly) || file.isSequential()) {
        return bundles;
    }
    if (file.peek(8) == "GVariant" && file.size() <= largestBundle) {
        bundles.emplace_back(file.readAll());
        return bundles;
    }
    const auto header = readAt<Elf64_Ehdr>(file, 0);
    if (!header || !isProgram(*header)) {
        return bundles;
    }
    const auto section = [&](std::size_t index) {
        const auto offset = header->e_shoff + index * sizeof(Elf64_Shdr);
        return readAt<Elf64_Shdr>(file, static_cast<qint64>(offset));
    };
    const auto names = section(header->e_shstrndx);
    const auto text = names ? bytesAt(file, *names, largestNames) : QByteArray();
    for (std::size_t index = 0; index < std::min<std::size_t>(header->e_shnum, mostSections); ++index) {
        const auto each = section(index);
        if (!each) {
            break;
        }
        const auto name = each->sh_name < static_cast<std::size_t>(text.size())
                              ? QByteArray(text.constData() + each->sh_name)
                              : QByteArray();
        if (name.startsWith(".gresource.")) {
            bundles.emplace_back(bytesAt(file, *each, largestBundle));
        }
    }
    return bundles;
}

} // namespace orvantile::platform::menus
