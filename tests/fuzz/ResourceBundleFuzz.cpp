// Resources as a program may carry them, and the description of its shortcuts inside.
#include "platform/linux/menus/ResourceBundle.h"
#include "platform/linux/menus/ShortcutsDescription.h"

#include <cstddef>
#include <cstdint>

namespace {

using namespace orvantile::platform::menus;

void describe(const QByteArray& description) {
    static_cast<void>(
        describedShortcuts(description, [](const QByteArray&, const QByteArray&, const QByteArray& text) {
            return QString::fromUtf8(text);
        }));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    for (const auto& file : ResourceBundle(bytes).files([](std::string_view) { return true; })) {
        describe(file);
    }
    describe(bytes);
    return 0;
}
