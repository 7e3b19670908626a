#pragma once

#include "platform/linux/helper/HelperSocket.h"
#include "platform/linux/session/DesktopSession.h"
#include "platform/linux/session/ShortcutSource.h"

namespace orvantile::platform::helper {

/// Hands what programs with the helper tell to the source of shortcuts. Main thread only.
class ReportFeed {
public:
    /// Listens in the user's runtime directory. Both must outlive the feed.
    ReportFeed(session::DesktopSession& session, session::ShortcutSource& source);

private:
    void handle(std::int32_t processIdentifier, const HelperReport& report);

    session::DesktopSession& session;
    session::ShortcutSource& source;
    HelperSocket socket;
};

} // namespace orvantile::platform::helper
