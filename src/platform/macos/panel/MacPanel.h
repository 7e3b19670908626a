#pragma once

#import <AppKit/AppKit.h>

#include "platform/Panel.h"
#include "platform/Scheduler.h"
#include "platform/Screens.h"
#include "platform/macos/panel/Entrance.h"

@class OrvantileHostView;

// For Objective-C++ files only.
namespace orvantile::platform::macos {

/// A panel of the system's own kind, not a window of the toolkit: it never activates the program.
class MacPanel final : public Panel {
public:
    MacPanel(const PanelAttributes& attributes, Scheduler& scheduler, const Screens& screens);
    MacPanel(const MacPanel&) = delete;
    MacPanel& operator=(const MacPanel&) = delete;
    ~MacPanel() override;

    void setContent(std::shared_ptr<PanelContent> content) override;
    void setFrame(const Rect& frame, bool display) override;
    void setAlpha(double alpha) override;
    void orderFrontRegardless() override;
    void animateAlpha(double alpha, double duration, std::function<void()> completion) override;
    void orderOut() override;

private:
    void prepare();

    const Screens& screens;
    NSPanel* panel;
    OrvantileHostView* host = nil;
    std::shared_ptr<PanelContent> content;
    Rect frame;
    bool prepared = false; ///< the content has drawn its picture for `frame`
    Entrance entrance;
};

} // namespace orvantile::platform::macos
