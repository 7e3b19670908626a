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
    ++asked;
    return {picture, 1, 1, elapsed >= entrance};
}

WaylandFixture::WaylandFixture() {
    resetOutputs();
}

WaylandFixture::~WaylandFixture() {
    ground.hide();
}

void WaylandFixture::resetOutputs() {
    desktop.sway().run(
        u"output HEADLESS-1 resolution 1280x800 position 0 0 scale 1 transform normal enable"_s);
    if (!awaitOutputs(1)) {
        // A compositor without hardware cannot be rid of an output.
        throw std::runtime_error("an earlier test has added an output; run each in a process of its own");
    }
}

QString WaylandFixture::plugOutput() {
    desktop.sway().run(u"create_output"_s);
    return desktop.sway().outputs().array().last().toObject()[u"name"_s].toString();
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
    return awaitThat([&] {
        connection->flush(); // what the docks of a test have drawn
        return pixelAt(point, output) == colour;
    });
}

} // namespace orvantile::platform::wayland
