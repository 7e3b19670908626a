#include "platform/linux/desktop/accessibilitysettings/OpenPage.h"

#include "platform/linux/desktop/accessibilitysettings/BusPanel.h"
#include "platform/linux/desktop/accessibilitysettings/DesktopEntries.h"
#include "platform/linux/desktop/accessibilitysettings/Programs.h"

#include <algorithm>

namespace orvantile::platform::desktop {
namespace {

bool open(const BusPage& page, const Launch& launch) {
    return activatePanel(page, launch);
}

bool open(const EntryPage& page, const Launch& launch) {
    const auto found = findEntry(page.entry, launch.environment);
    if (!found) {
        return false;
    }
    const auto command = found->entry.command(found->path);
    return !command.isEmpty() && startProgram(command + page.arguments, found->entry.directory, launch);
}

bool open(const ProgramPage& page, const Launch& launch) {
    return startProgram(QStringList{page.program} + page.arguments, {}, launch);
}

} // namespace

bool openFirst(const std::vector<SettingsPage>& pages, const Launch& launch) {
    return std::ranges::any_of(pages, [&](const SettingsPage& page) {
        return std::visit([&](const auto& kind) { return open(kind, launch); }, page);
    });
}

} // namespace orvantile::platform::desktop
