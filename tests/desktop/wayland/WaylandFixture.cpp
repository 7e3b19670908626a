#include "desktop/wayland/WaylandFixture.h"

#include <QJsonArray>
#include <QJsonObject>

namespace orvantile::platform::wayland {

using test::awaitThat;
using Qt::StringLiterals::operator""_s;

Ground::Ground() {
    setWindowTitle(u"ground"_s);
    setStyleSheet(u"background: rgb(0, 160, 0)"_s);
    setAttribute(Qt::WA_StyledBackground);
}

void Ground::mousePressEvent(QMouseEvent*) {
    ++clicks;
}

void Ground::keyPressEvent(QKeyEvent*) {
    ++keys;
}

void BarContent::prepare(const Rect& frame, double scale) {
    preparedScale = scale;
    const auto pixels = [&](double points) { return static_cast<int>(std::lround(points * scale)); };
    picture = QImage(pixels(frame.width), pixels(frame.height), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    for (int y = picture.height() / 4; y < picture.height() * 3 / 4; ++y) {
        for (int x = picture.width() / 4; x < picture.width() * 3 / 4; ++x) {
            picture.setPixel(x, y, colour);
        }
    }
}

PanelFrame BarContent::frameAt(double elapsed) const {
    return {picture, 1, 1, elapsed >= entrance};
}

WaylandFixture::WaylandFixture() {
    outputs.onChanged = [this] { focused.outputsChanged(); };
    resetOutputs();
}

WaylandFixture::~WaylandFixture() {
    ground.hide();
    outputs.onChanged = nullptr;
}

void WaylandFixture::resetOutputs() {
    const auto all = desktop.sway().outputs().array();
    for (qsizetype index = all.size() - 1; index > 0; --index) {
        desktop.sway().run(u"output "_s % all[index].toObject()[u"name"_s].toString() % u" unplug"_s);
    }
    desktop.sway().run(u"output HEADLESS-1 resolution 1280x800 scale 1 transform normal"_s);
    if (!awaitOutputs(1)) {
        throw std::runtime_error("the outputs do not become what they were");
    }
}

bool WaylandFixture::awaitOutputs(std::size_t count, double scale) {
    return awaitThat(
        [&] { return outputs.names().size() == count && screens.screens().front().scale == scale; });
}

void WaylandFixture::showGround() {
    ground.showFullScreen();
    ASSERT_TRUE(awaitThat([&] { return desktop.sway().focusedTitle() == u"ground"_s; }));
    ASSERT_TRUE(awaitPixel({5, 5}, Ground::colour));
}

QRgb WaylandFixture::pixelAt(QPoint point, const QString& output) const {
    return desktop.screenshot(output).pixel(point);
}

bool WaylandFixture::awaitPixel(QPoint point, QRgb colour, const QString& output) const {
    return awaitThat([&] { return pixelAt(point, output) == colour; });
}

} // namespace orvantile::platform::wayland
