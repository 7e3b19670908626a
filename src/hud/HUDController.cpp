#include "hud/HUDController.h"

#include "hud/HUDHostingView.h"
#include "hud/HUDView.h"
#include "hud/LabelFont.h"
#include "trace/Trace.h"

#include <utility>

namespace orvantile {
namespace {

constexpr double edgeMargin = 24; // points
constexpr double fadeInSeconds = 0.12;
constexpr double fadeOutSeconds = 0.22;
constexpr platform::Size placeholderSize{200, 60};

} // namespace

const std::shared_ptr<HUDController>& HUDController::shared() {
    static const auto& instance =
        *std::make_unique<const std::shared_ptr<HUDController>>(
             std::make_shared<HUDController>(platform::Platform::current(), Settings::shared()))
             .release();
    return instance;
}

HUDController::HUDController(platform::Platform& platform_, Settings& settings_)
    : platform(platform_),
      settings(settings_) {
    prewarmLabelFont(); // the first HUD is to be as quick as the next
}

void HUDController::createPanel() {
    platform::PanelAttributes attributes;
    attributes.size = placeholderSize;
    panel = platform.panels->create(attributes);
}

void HUDController::show(const QString& text) {
    const trace::Span span(trace::Step::show);
    if (!panel) {
        createPanel();
    }
    HUDView view;
    view.text = text;
    view.fontSize = settings.fontSize();
    view.translucent = settings.translucent();
    view.popAnimation = settings.popAnimation();
    const auto appearance = settings.appearance();
    view.darkMode = appearance.darkMode(appearance == HUDAppearance::auto_ && HUDAppearance::systemIsDark());
    view.flatOpacity = settings.flatOpacity();
    view.blendingMode = BlendingMode::behindWindow;

    auto content = std::make_shared<HUDHostingView>(std::move(view), *platform.backdrop, *platform.screens);
    panel->setContent(content);
    panel->setFrame(panelFrame(content->fittingSize()), true);
    panel->setAlpha(0);
    panel->orderFrontRegardless();
    panel->animateAlpha(1, fadeInSeconds, {});
    if (settings.soundEnabled()) {
        const trace::Span sounding(trace::Step::sound);
        platform.sounds->play(settings.sound().rawValue());
    }

    if (hideTimer) {
        hideTimer->invalidate(); // what is still up gets its full time again
    }
    hideTimer = platform.scheduler->runAfter(settings.displaySeconds(), [controller = weak_from_this()] {
        if (const auto self = controller.lock()) {
            self->hide();
        }
    });
}

void HUDController::hide() {
    if (!panel) {
        return;
    }
    // A newer show does not cancel this completion: it takes the panel off the screen all the same.
    panel->animateAlpha(0, fadeOutSeconds, [fading = std::weak_ptr(panel)] {
        if (const auto existing = fading.lock()) {
            existing->orderOut();
        }
    });
}

platform::Rect HUDController::panelFrame(const platform::Size& size) const {
    auto screen = platform.screens->mainScreen();
    if (!screen) {
        const auto screens = platform.screens->screens();
        if (screens.empty()) {
            qFatal("there is no screen to show the HUD on");
        }
        screen = screens.front();
    }
    const auto& area = screen->visibleFrame;
    const double left = area.minX() + edgeMargin;
    const double middle = area.midX() - 0.5 * size.width;
    const double right = area.maxX() - size.width - edgeMargin;
    const double top = area.maxY() - size.height - edgeMargin;
    const double bottom = area.minY() + edgeMargin;
    const auto at = [&](double x, double y) { return platform::Rect{x, y, size.width, size.height}; };
    switch (settings.position()) {
    case HUDPosition::center:
        return at(middle, area.midY() - 0.5 * size.height);
    case HUDPosition::topCenter:
        return at(middle, top);
    case HUDPosition::bottomCenter:
        return at(middle, bottom);
    case HUDPosition::topLeft:
        return at(left, top);
    case HUDPosition::topRight:
        return at(right, top);
    case HUDPosition::bottomLeft:
        return at(left, bottom);
    case HUDPosition::bottomRight:
        return at(right, bottom);
    }
    return at(middle, bottom);
}

} // namespace orvantile
