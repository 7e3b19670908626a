#include "platform/macos/panel/MacPanel.h"

#include "platform/macos/panel/HostView.h"
#include "platform/macos/panel/ScaleAt.h"

#include <utility>

namespace orvantile::platform::macos {
namespace {

NSPanel* makePanel(const PanelAttributes& attributes) {
    NSPanel* panel =
        [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, attributes.size.width, attributes.size.height)
                                   styleMask:attributes.activates ? NSWindowStyleMaskBorderless
                                                                  : NSWindowStyleMaskNonactivatingPanel
                                     backing:NSBackingStoreBuffered
                                       defer:NO];
    panel.floatingPanel = attributes.floatsAboveEverything;
    panel.level = attributes.floatsAboveEverything ? NSStatusWindowLevel : NSNormalWindowLevel;
    NSWindowCollectionBehavior behavior =
        NSWindowCollectionBehaviorStationary | NSWindowCollectionBehaviorIgnoresCycle;
    if (attributes.joinsAllWorkspaces) {
        behavior |= NSWindowCollectionBehaviorCanJoinAllSpaces;
    }
    if (attributes.floatsAboveEverything) {
        behavior |= NSWindowCollectionBehaviorFullScreenAuxiliary;
    }
    panel.collectionBehavior = behavior;
    panel.backgroundColor = NSColor.clearColor;
    panel.opaque = NO;
    panel.hasShadow = attributes.hasShadow;
    panel.ignoresMouseEvents = attributes.ignoresMouseEvents;
    panel.hidesOnDeactivate = NO;
    panel.releasedWhenClosed = NO;
    return panel;
}

} // namespace

MacPanel::MacPanel(const PanelAttributes& attributes, Scheduler& scheduler, const Screens& screens_)
    : screens(screens_),
      panel(makePanel(attributes)),
      frame{.width = attributes.size.width, .height = attributes.size.height},
      entrance(scheduler, [this](const PanelFrame& next) { [host showFrame:next]; }) {}

MacPanel::~MacPanel() {
    [panel close];
}

void MacPanel::setContent(std::shared_ptr<PanelContent> content_) {
    entrance.stop();
    content = std::move(content_);
    prepared = false;
    host = content ? [[OrvantileHostView alloc] initWithContent:*content] : nil;
    host.translatesAutoresizingMaskIntoConstraints = NO;
    panel.contentView = host;
}

void MacPanel::setFrame(const Rect& frame_, bool display) {
    frame = frame_;
    prepared = false;
    if (display) {
        prepare();
    }
    [panel setFrame:NSMakeRect(frame.x, frame.y, frame.width, frame.height) display:display];
}

void MacPanel::prepare() {
    if (!content || std::exchange(prepared, true)) {
        return;
    }
    const double scale = scaleAt(frame, screens);
    content->prepare(frame, scale);
    [host showBlurBehind:content->blurRegion()
                    dark:content->isDark()
               panelSize:NSMakeSize(frame.width, frame.height)
                   scale:scale];
    [host showFrame:content->frameAt(0)];
}

void MacPanel::setAlpha(double alpha) {
    panel.alphaValue = alpha;
}

void MacPanel::orderFrontRegardless() {
    prepare();
    [panel orderFrontRegardless];
    if (content) {
        entrance.begin(content);
    }
}

void MacPanel::animateAlpha(double alpha, double duration, std::function<void()> completion) {
    NSPanel* const animated = panel;
    const auto changes = ^(NSAnimationContext* context) {
      context.duration = duration;
      [animated animator].alphaValue = alpha;
    };
    if (!completion) {
        [NSAnimationContext runAnimationGroup:changes];
        return;
    }
    const auto shared = std::make_shared<const std::function<void()>>(std::move(completion));
    [NSAnimationContext runAnimationGroup:changes
                        completionHandler:^{
                          (*shared)();
                        }];
}

void MacPanel::orderOut() {
    entrance.stop();
    [panel orderOut:nil];
}

} // namespace orvantile::platform::macos
