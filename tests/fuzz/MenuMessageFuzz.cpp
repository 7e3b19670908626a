// Menus as programs may describe them on the session bus. The first byte is the length of the type signature,
// which follows; the rest is the body of the message.
#include "platform/linux/menus/ExportedMenu.h"
#include "platform/linux/menus/MenuLayout.h"
#include "support/BusMessages.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

namespace {

using namespace orvantile::platform::menus;

constexpr std::size_t longestBody = 8192; // what fits into the socket at once

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span input(data, size);
    if (input.empty() || input.size() - 1 < input[0] || input.size() > longestBody) {
        return 0;
    }
    const auto signature = input.subspan(1, input[0]);
    orvantile::test::BusMessages messages;
    const auto message =
        messages.answer(std::string(signature.begin(), signature.end()), input.subspan(1U + input[0]));
    if (!message) {
        return 0;
    }
    if (auto layout = MenuLayout::read(*message)) {
        sd_bus_message_rewind(message.get(), 1);
        layout->update(*message);
        if (layout->commands().size() > mostItems) {
            std::abort();
        }
    }
    sd_bus_message_rewind(message.get(), 1);
    ExportedMenu menu;
    menu.started(*message);
    sd_bus_message_rewind(message.get(), 1);
    menu.changed(*message);
    static_cast<void>(menu.takeUnknownGroups());
    if (menu.items().size() > 2 * mostItems) {
        std::abort();
    }
    return 0;
}
