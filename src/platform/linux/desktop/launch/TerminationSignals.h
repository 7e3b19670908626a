#pragma once

#include "platform/linux/desktop/FileDescriptor.h"

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace orvantile::platform::desktop {

/// Turns the signals that ask a process to end (SIGTERM, SIGINT and SIGHUP) into a call on the main loop. One
/// that whoever started the process has told it to ignore stays ignored. Each signal counts once: sent a
/// second time it ends the process at once, should ending take too long. At most one exists at a time.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> terminate);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

private:
    FileDescriptor event;
    std::unique_ptr<QSocketNotifier> notifier;
};

} // namespace orvantile::platform::desktop
