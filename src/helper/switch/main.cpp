// Turns the helper for Qt programs on and off for the user.

#include "platform/linux/helper/switch/HelperFiles.h"
#include "platform/linux/helper/switch/SessionVariables.h"

#include <QCoreApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

using namespace orvantile::platform;
using namespace std::chrono_literals;

constexpr int wrongUse = 2;

int printUsage() {
    std::fputs("usage: orvantile-qt-helper on|off|status\n", stderr);
    return wrongUse;
}

int change(const helper::HelperFiles& files, bool on) {
    if (on && !files.isInstalled()) {
        std::fputs("orvantile-qt-helper: this installation has no helper\n", stderr);
        return EXIT_FAILURE;
    }
    if (!(on ? files.turnOn() : files.turnOff())) {
        std::fputs("orvantile-qt-helper: a file in your home directory cannot be changed\n", stderr);
        return EXIT_FAILURE;
    }
    const auto present = helper::HelperVariables::ofProcess();
    const auto folders = files.pluginFolders();
    if (const auto bus = desktop::SessionBus::open(); bus && bus->awaitReady(1500ms)) {
        helper::sendToSession(*bus, on ? present.with(folders) : present.without(folders));
    }
    std::puts(on ? "Qt programs will load the helper from your next login on."
                 : "Qt programs will not load the helper from your next login on.");
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication app(argc, argv);
    const std::string_view order = argc == 2 ? argv[1] : "";
    const helper::HelperFiles files(helper::HelperFiles::Places::ofUser());
    if (order == "status") {
        std::puts(files.isOn() ? "on" : "off");
        return EXIT_SUCCESS;
    }
    return order == "on" || order == "off" ? change(files, order == "on") : printUsage();
}
