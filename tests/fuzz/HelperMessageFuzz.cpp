// Datagrams as anybody may send them, up to what a menu would show for the command.
#include "platform/linux/helper/CommandNode.h"
#include "platform/linux/helper/MessageDecoder.h"

#include <QByteArrayView>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvantile::platform;
    const auto report = helper::decodeMessage({data, static_cast<qsizetype>(size)});
    if (!report || !report->command) {
        return 0;
    }
    const auto& command = *report->command;
    if (command.keys.size() > 4 || command.title.contains(u'\n') || command.title.contains(u'\t') ||
        command.title.size() > 768) {
        std::abort();
    }
    const helper::CommandNode node(command);
    if (node.copyAttribute(u"AXTitle") != AttributeValue(command.title)) {
        std::abort();
    }
    for (const auto* name : {u"AXMenuItemCmdChar", u"AXMenuItemCmdGlyph", u"AXMenuItemCmdModifiers"}) {
        static_cast<void>(node.copyAttribute(name));
    }
    return 0;
}
