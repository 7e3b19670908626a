#pragma once

#include "trace/Trace.h"

#include <QObject>
#include <optional>

namespace orvantile::trace {

/// Records each turn of the main loop, from waking up to sleeping again: how long anything else had to wait.
/// Made once the application object exists. Main thread only.
class [[maybe_unused]] Turns {
public:
    Turns();

private:
    std::optional<Span> turn;
    QObject context; ///< ends the connections first
};

} // namespace orvantile::trace
