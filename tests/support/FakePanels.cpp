#include "support/FakePanels.h"

#include <functional>
#include <utility>
#include <vector>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

class FakePanel final : public platform::Panel {
public:
    FakePanel(CallLog log_, VirtualScheduler& scheduler_, std::shared_ptr<FakePanels::State> state_)
        : log(std::move(log_)),
          scheduler(scheduler_),
          state(std::move(state_)) {}

    void setContent(std::shared_ptr<platform::PanelContent> content) override {
        log->append(u"panel.setContent "_s + content->title());
        state->content = std::move(content);
    }

    void setFrame(const platform::Rect& frame, bool display) override {
        log->append(u"panel.setFrame display "_s + (display ? u"yes"_s : u"no"_s));
        state->frame = frame;
    }

    void setAlpha(double alpha) override {
        log->append(u"panel.setAlpha "_s + loggedNumber(alpha));
        state->alpha = alpha;
    }

    void orderFrontRegardless() override {
        log->append(u"panel.orderFrontRegardless"_s);
        state->visible = true;
    }

    void animateAlpha(double alpha, double duration, std::function<void()> completion) override {
        log->append(u"panel.animateAlpha "_s + loggedNumber(alpha) + u" in "_s + loggedNumber(duration) +
                    (completion ? u" then"_s : u""_s));
        animations.push_back(scheduler.runAfter(duration, [this, alpha, completion = std::move(completion)] {
            state->alpha = alpha;
            if (completion) {
                completion();
            }
        }));
    }

    void orderOut() override {
        log->append(u"panel.orderOut"_s);
        state->visible = false;
    }

private:
    CallLog log;
    VirtualScheduler& scheduler;
    std::shared_ptr<FakePanels::State> state;
    std::vector<std::unique_ptr<platform::Scheduled>> animations;
};

} // namespace

std::shared_ptr<platform::Panel> FakePanels::create(const platform::PanelAttributes& newAttributes) {
    log->append(u"panels.create"_s);
    attributes = newAttributes;
    state = std::make_shared<State>();
    return std::make_shared<FakePanel>(log, scheduler, state);
}

} // namespace orvantile::test
