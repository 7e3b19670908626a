// Key bindings as a program may write them, up to what a menu would show for them.
#include "platform/linux/keys/KeyBinding.h"
#include "platform/linux/keys/KeyEquivalent.h"

#include <QByteArrayView>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvantile::platform;
    const auto text = QString::fromUtf8(QByteArrayView(data, static_cast<qsizetype>(size)));
    for (const auto& parsed : {keys::parseKeyBinding(text), keys::parseAccelerator(text)}) {
        if (!parsed) {
            continue;
        }
        const auto equivalent = keys::keyEquivalent(*parsed);
        // What counts as an accelerator has a key to show, one way and not two.
        if (equivalent.character.has_value() == equivalent.glyph.has_value()) {
            std::abort();
        }
    }
    return 0;
}
