#include "platform/linux/x11/X11Panel.h"

#include "platform/linux/desktop/PanelComposer.h"
#include "trace/Trace.h"

#include <QPainterPath>
#include <QPolygon>
#include <QTransform>
#include <utility>

namespace orvantile::platform::x11 {

X11Panel::X11Panel(XConnection& connection_, Scheduler& scheduler_, const X11Screens& screens_,
                   const Compositor& compositor_, ScreenGrab& grab_)
    : connection(connection_),
      scheduler(scheduler_),
      screens(screens_),
      compositor(compositor_),
      grab(grab_),
      window(connection),
      surface(connection, window.handle(), window.depth()),
      frames(scheduler, [this](const PanelFrame& next) { present(next); }) {
    surface.onReady = [this] { frames.invalidate(); };
}

void X11Panel::setContent(std::shared_ptr<PanelContent> content_) {
    content = std::move(content_);
    prepared = false;
    named = false;
    window.setTitle(content ? content->title() : QString());
    frames.setContent(content);
}

void X11Panel::setFrame(const Rect& frame_, bool display) {
    frame = frame_;
    place = screens.place(frame);
    visiblePart = place.pixels.intersected(screens.bounds());
    prepared = false;
    covering = false;
    underlay.reset();
    grab.forget();
    if (display && !mustWait()) {
        prepare();
    }
    frames.invalidate();
}

/// Drawing asks the server what lies behind. While it has not even taken the last picture, contents that
/// follow each other faster than it works are not drawn one by one, so that the latest is never behind the
/// others in a queue.
bool X11Panel::mustWait() const {
    return window.isShown() && surface.isBehind();
}

void X11Panel::prepare() {
    if (content && !std::exchange(prepared, true)) {
        content->prepare(frame, place.scale);
    }
}

void X11Panel::setAlpha(double alpha) {
    frames.setAlpha(alpha);
}

void X11Panel::orderFrontRegardless() {
    onScreen = true;
    if (!comeBack) {
        frames.setVisible(true);
    }
}

void X11Panel::animateAlpha(double alpha, double duration, std::function<void()> completion) {
    frames.animateAlpha(alpha, duration, std::move(completion));
}

void X11Panel::orderOut() {
    onScreen = false;
    comeBack.reset();
    blending.reset();
    frames.setVisible(false);
    if (window.isShown()) {
        window.hide();
        grab.panelGone();
    }
    underlay.reset();
    covering = false;
    accessible.setShowing(false);
    connection.flush();
}

void X11Panel::present(const PanelFrame& next) {
    if (visiblePart.isEmpty()) {
        window.hide();
        connection.flush();
        return;
    }
    if (!prepared && mustWait()) {
        surface.tellWhenReady();
        return;
    }
    if (!prepared) {
        prepare();
        frames.invalidate(); // `next` is older
        return;
    }
    std::optional<trace::Span> step(std::in_place, trace::Step::compose);
    auto pixels = surface.begin({visiblePart.width, visiblePart.height});
    if (!pixels) {
        return; // the server has not read the last two; it tells when it has
    }
    desktop::composePanel(*pixels, next, {place.pixels.width, place.pixels.height},
                          {visiblePart.x - place.pixels.x, visiblePart.y - place.pixels.y}, beneath());
    step.emplace(trace::Step::put);
    surface.commit(*pixels);
    window.setBlur(compositor.blurs() ? blurFor(next) : QRegion());
    window.place(visiblePart);
    if (!window.isShown()) {
        step.emplace(trace::Step::map);
        window.show();
    }
    connection.flush(); // what follows need not be waited for
    step.reset();
    if (!std::exchange(named, true)) {
        accessible.setName(content->title());
    }
    accessible.setShowing(true);
    if (!std::exchange(covering, true)) {
        grab.panelCovers(visiblePart);
    }
}

bool X11Panel::isBlended() {
    if (!compositor.isRunning()) {
        return false;
    }
    // Compositors rest while a window fills the screen, and take a moment to notice that another came up.
    constexpr double noticeSeconds = 0.25;
    if (!window.isShown() && screens.isFullScreen()) {
        blending = scheduler.runAfter(noticeSeconds, [this] {
            blending.reset();
            frames.invalidate();
        });
    }
    return blending == nullptr;
}

QImage X11Panel::beneath() {
    if (isBlended()) {
        return {};
    }
    if (!underlay) {
        underlay = grab.take(visiblePart);
    }
    return underlay.value_or(QImage());
}

QRegion X11Panel::blurFor(const PanelFrame& next) const {
    const auto path = content->blurRegion();
    if (path.isEmpty() || next.opacity <= 0) {
        return {};
    }
    const QPointF centre(place.pixels.width / 2.0, place.pixels.height / 2.0);
    QTransform transform;
    transform.translate(place.pixels.x - visiblePart.x + centre.x(),
                        place.pixels.y - visiblePart.y + centre.y());
    transform.scale(next.scale, next.scale);
    transform.translate(-centre.x(), -centre.y());
    transform.scale(place.scale, place.scale);
    return path.toFillPolygon(transform).toPolygon();
}

void X11Panel::compositorChanged() {
    underlay.reset();
    covering = false;
    grab.forget();
    if (!window.isShown()) {
        prepared = false;
        frames.invalidate();
        return;
    }
    if (compositor.isRunning()) {
        prepared = prepared && !compositor.blurs(); // a picture with a blur of its own serves as well
        frames.invalidate();
        return;
    }
    prepared = false;
    // What lies beneath can only be seen once the panel is off and the windows there have drawn themselves.
    constexpr double repaintSeconds = 0.05;
    frames.setVisible(false);
    window.hide();
    connection.flush();
    comeBack = scheduler.runAfter(repaintSeconds, [this] {
        comeBack.reset();
        frames.setVisible(onScreen);
    });
}

} // namespace orvantile::platform::x11
