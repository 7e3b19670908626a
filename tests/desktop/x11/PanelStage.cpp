#include "desktop/x11/PanelStage.h"

#include "support/desktop/MainLoop.h"
#include "support/desktop/Screenshot.h"

namespace orvantile::platform::x11 {

using test::awaitThat;
using Qt::StringLiterals::operator""_s;

PanelStage::PanelStage() {
    session.start();
    connection->synchronize();
    panel = panels.create({.size = {200, 60}});
}

PanelStage::~PanelStage() {
    desktop.stopCompositor();
}

void PanelStage::showGround() {
    ground.showFullScreen();
    static_cast<void>(windows.awaitActive(test::titled(u"ground"_s)));
    ASSERT_TRUE(awaitThat([&] {
        const auto active = session.activeWindow();
        return active && active->title == u"ground"_s;
    }));
    ASSERT_TRUE(awaitPixel({10, 10}, green));
}

void PanelStage::show(const std::shared_ptr<PanelContent>& content) {
    const auto size = content->fittingSize();
    panel->setContent(content);
    panel->setFrame({100, 500, size.width, size.height}, true);
    panel->setAlpha(0);
    panel->orderFrontRegardless();
    panel->animateAlpha(1, 0.05, {});
}

QRgb PanelStage::pixelAt(QPoint point) const {
    return test::takeScreenshot(desktop.display(), QRect(point, QSize(1, 1))).pixel(0, 0);
}

bool PanelStage::awaitPixel(QPoint point, QRgb colour) {
    return awaitThat([&] { return pixelAt(point) == colour; });
}

} // namespace orvantile::platform::x11
