#pragma once

#include "platform/Panel.h"
#include "platform/Scheduler.h"

#include <functional>
#include <memory>

namespace orvantile::platform::macos {

/// Runs the entrance of a content: one picture per screen refresh until it has settled. Main thread only.
class Entrance {
public:
    using Show = std::function<void(const PanelFrame&)>;

    Entrance(Scheduler& scheduler, Show show);
    Entrance(const Entrance&) = delete;
    Entrance& operator=(const Entrance&) = delete;
    ~Entrance() = default;

    /// Shows the first picture at once.
    void begin(std::shared_ptr<const PanelContent> content);

    /// No more pictures.
    void stop();

private:
    void step();

    Scheduler& scheduler;
    Show show;
    std::shared_ptr<const PanelContent> content;
    double start = 0;
    std::unique_ptr<Scheduled> ticker;
};

} // namespace orvantile::platform::macos
