#include "platform/linux/helper/ReportFeed.h"

#include "platform/linux/helper/CommandNode.h"

#include <QByteArray>
#include <memory>
#include <string>

namespace orvantile::platform::helper {

ReportFeed::ReportFeed(session::DesktopSession& session_, session::ShortcutSource& source_)
    : session(session_),
      source(source_),
      socket(qgetenv("XDG_RUNTIME_DIR").toStdString(),
             [this](std::int32_t process, const HelperReport& report) { handle(process, report); }) {}

void ReportFeed::handle(std::int32_t processIdentifier, const HelperReport& report) {
    session.drain(); // the change of windows that came before
    if (report.command && report.command->enabled) {
        source.commandTold(processIdentifier, report.openMenus,
                           std::make_shared<CommandNode>(*report.command));
    } else {
        source.menusTold(processIdentifier, report.openMenus);
    }
}

} // namespace orvantile::platform::helper
