#pragma once

#include "platform/Panel.h"
#include "support/CallLog.h"
#include "support/VirtualScheduler.h"

#include <memory>

namespace orvantile::test {

class FakePanels final : public platform::Panels {
public:
    FakePanels(CallLog log_, VirtualScheduler& scheduler_) : log(std::move(log_)), scheduler(scheduler_) {}

    [[nodiscard]] std::shared_ptr<platform::Panel>
    create(const platform::PanelAttributes& attributes) override;

    struct State {
        std::shared_ptr<platform::PanelContent> content;
        platform::Rect frame;
        double alpha = 1;
        bool visible = false;
    };

    platform::PanelAttributes attributes; ///< of the latest panel
    std::shared_ptr<State> state;         ///< of the latest panel

private:
    CallLog log;
    VirtualScheduler& scheduler;
};

} // namespace orvantile::test
