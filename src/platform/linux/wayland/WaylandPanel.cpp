#include "platform/linux/wayland/WaylandPanel.h"

#include "platform/linux/desktop/PanelComposer.h"

#include <QPainterPath>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <utility>

namespace orvantile::platform::wayland {

WaylandPanel::WaylandPanel(WaylandConnection& connection_, Globals& globals_, Outputs& outputs_,
                           Scheduler& scheduler, const WaylandScreens& screens_)
    : connection(connection_),
      globals(globals_),
      outputs(outputs_),
      screens(screens_),
      buffers{PixelBuffer(*globals.memory), PixelBuffer(*globals.memory), PixelBuffer(*globals.memory)},
      frames(scheduler, [this](const PanelFrame& next) { present(next); }) {
    for (auto& buffer : buffers) {
        buffer.onReleased = [this] { continueDrawing(); };
    }
    // The content looks different where the compositor blurs behind it.
    blurToken = globals_.blur.listen([this] {
        preparedScale = 0;
        frames.invalidate();
    });
}

void WaylandPanel::setContent(std::shared_ptr<PanelContent> content_) {
    content = std::move(content_);
    preparedScale = 0;
    accessible.setName(content ? content->title() : QString());
    frames.setContent(content);
}

void WaylandPanel::setFrame(const Rect& frame_, bool display) {
    frame = frame_;
    place = screens.place(frame);
    preparedScale = 0;
    if (surface && !place.edges.size.isEmpty() && surface->wantedOutput() == place.output) {
        surface->place(place.edges);
    } else {
        closeSurface();
    }
    if (display) {
        prepare();
    }
    frames.invalidate();
}

void WaylandPanel::prepare() {
    const double scale = surface ? surface->scale() : place.scale;
    if (content && preparedScale != scale) {
        preparedScale = scale;
        content->prepare(frame, scale);
    }
}

void WaylandPanel::setAlpha(double alpha) {
    frames.setAlpha(alpha);
}

void WaylandPanel::orderFrontRegardless() {
    onScreen = true;
    frames.setVisible(true);
}

void WaylandPanel::animateAlpha(double alpha, double duration, std::function<void()> completion) {
    frames.animateAlpha(alpha, duration, std::move(completion));
}

void WaylandPanel::orderOut() {
    onScreen = false;
    frames.setVisible(false);
    closeSurface();
    connection.flush();
}

void WaylandPanel::openSurface() {
    surface = std::make_unique<LayerSurface>(globals, outputs, place.output, place.edges, place.scale);
    surface->onReady = [this] { continueDrawing(); };
    surface->onScaleChanged = [this] { frames.invalidate(); };
    surface->onClosed = [this] { surfaceClosed(); };
}

void WaylandPanel::closeSurface() {
    surface.reset();
    behindhand = false;
    accessible.setShowing(false);
}

void WaylandPanel::surfaceClosed() {
    // Its output has gone. One that was refused from the start is not asked for again.
    const bool again = surface->hasPicture();
    closeSurface();
    if (again && onScreen) {
        setFrame(frame, false);
    }
}

void WaylandPanel::continueDrawing() {
    if (std::exchange(behindhand, false)) {
        frames.invalidate();
    }
}

PixelBuffer* WaylandPanel::freeBuffer() {
    const auto free = std::ranges::find(buffers, false, &PixelBuffer::isBusy);
    return free == buffers.end() ? nullptr : &*free;
}

void WaylandPanel::present(const PanelFrame& next) {
    if (place.edges.size.isEmpty() || !globals.offersPanels() || !connection.isOpen()) {
        closeSurface();
        connection.flush();
        return;
    }
    if (!surface) {
        openSurface();
        connection.flush();
    }
    if (preparedScale != surface->scale()) {
        prepare();
        frames.invalidate(); // `next` is older
        return;
    }
    auto* buffer = freeBuffer();
    behindhand = !surface->isReady() || buffer == nullptr;
    if (behindhand || !buffer->fit(surface->pixelSize())) {
        return;
    }
    const double scale = surface->scale();
    const auto pixels = [&](double points) { return static_cast<int>(std::lround(points * scale)); };
    auto picture = buffer->image();
    desktop::composePanel(
        picture, next,
        {static_cast<int>(std::ceil(frame.width * scale)), static_cast<int>(std::ceil(frame.height * scale))},
        {pixels(place.edges.origin.x()), pixels(place.edges.origin.y())}, {});
    surface->setBlur(blurFor(next));
    surface->show(*buffer);
    accessible.setShowing(true);
    connection.flush();
}

QRegion WaylandPanel::blurFor(const PanelFrame& next) const {
    const auto path = content->blurRegion();
    if (path.isEmpty() || next.opacity <= 0) {
        return {};
    }
    const QPointF centre(frame.width / 2, frame.height / 2);
    QTransform transform;
    transform.translate(centre.x() - place.edges.origin.x(), centre.y() - place.edges.origin.y());
    transform.scale(next.scale, next.scale);
    transform.translate(-centre.x(), -centre.y());
    return path.toFillPolygon(transform).toPolygon();
}

} // namespace orvantile::platform::wayland
