// Feeds as a server may send them, up to what the user would be offered.
#include "platform/linux/desktop/updates/AvailableUpdate.h"

#include <QGuiApplication>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvantile::platform::desktop;
    // Reading notes takes an application object; there is no display here.
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(count, arguments);

    const QByteArray feed(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const UpdatePolicy policy;
    const InstalledCopy copy{*Version::parse(u"1.5"), Version::parse(u"12")};
    const auto result = chooseUpdate(feed, copy, policy);
    // What is offered can be fetched, bounded and verified.
    if (const auto* const update = std::get_if<AvailableUpdate>(&result)) {
        if (!policy.permits(update->package) || update->length <= 0 || update->signature.size() != 64) {
            std::abort();
        }
    }
    return 0;
}
