// Answers as a program may send them. The first byte is the length of the type signature, which follows; the
// rest is the body of the message.
#include "platform/linux/a11y/ReplyDecoder.h"
#include "support/BusMessages.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

namespace {

using namespace orvantile::platform::a11y;

constexpr std::size_t longestBody = 8192; // what fits into the socket at once

void readEverything(sd_bus_message& message) {
    constexpr std::array<void (*)(sd_bus_message&), 10> readers{
        [](sd_bus_message& one) {
            if (const auto text = readText(one); text && text->size() > static_cast<qsizetype>(longestText)) {
                std::abort();
            }
        },
        [](sd_bus_message& one) { static_cast<void>(readBytes(one)); },
        [](sd_bus_message& one) { static_cast<void>(readInteger(one)); },
        [](sd_bus_message& one) { static_cast<void>(readNumber(one)); },
        [](sd_bus_message& one) { static_cast<void>(readVariantText(one)); },
        [](sd_bus_message& one) { static_cast<void>(readVariantBoolean(one)); },
        [](sd_bus_message& one) { static_cast<void>(readVariantReference(one)); },
        [](sd_bus_message& one) { static_cast<void>(readReference(one)); },
        [](sd_bus_message& one) { static_cast<void>(readStates(one)); },
        [](sd_bus_message& one) {
            ReferenceList list(one);
            while (!list.atEnd()) {
                if (list.next(3).size() > 3) {
                    std::abort();
                }
            }
        },
    };
    for (const auto reader : readers) {
        sd_bus_message_rewind(&message, 1);
        reader(message);
    }
}

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
    if (message) {
        readEverything(*message);
    }
    return 0;
}
