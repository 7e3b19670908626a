#pragma once

#include "platform/linux/desktop/QtScheduler.h"
#include "platform/linux/wayland/WaylandBackdrop.h"
#include "platform/linux/wayland/WaylandPanels.h"

#include "support/desktop/MainLoop.h"
#include "support/wayland/PrivateWaylandSession.h"

#include <QWidget>
#include <gmock/gmock.h>

namespace orvantile::platform::wayland {

/// A full-screen window of one colour that counts clicks and keys.
class Ground final : public QWidget {
public:
    static constexpr QRgb colour = qRgb(0, 160, 0);

    Ground();

    int clicks = 0;
    int keys = 0;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

/// A bar of one colour in the middle of a transparent margin.
class BarContent final : public PanelContent {
public:
    static constexpr QRgb colour = qRgb(255, 0, 0);

    explicit BarContent(Size size_ = {200, 60}) : size(size_) {}

    [[nodiscard]] Size fittingSize() const override { return size; }

    [[nodiscard]] QString title() const override { return QStringLiteral("bar"); }

    void prepare(const Rect& frame, double scale) override;

    [[nodiscard]] PanelFrame frameAt(double elapsed) const override;

    double entrance = 0; ///< seconds until it settles
    double preparedScale = 0;
    mutable int asked = 0; ///< how often for a frame

private:
    Size size;
    QImage picture;
};

/// The peers of the platform on the compositor of this test executable, as the program puts them together.
class WaylandFixture : public ::testing::Test {
protected:
    WaylandFixture();
    ~WaylandFixture() override;

    /// Brings the desktop to one output of 1280 × 800 pixels at scale 1.
    void resetOutputs();

    /// Waits until the peers know so many outputs, the first of that scale.
    [[nodiscard]] bool awaitOutputs(std::size_t count, double scale = 1);

    /// Adds an output and returns its name.
    [[nodiscard]] QString plugOutput();

    /// Shows the ground on the focused output and waits for it.
    void showGround();

    [[nodiscard]] QRgb pixelAt(QPoint point, const QString& output = {}) const;
    [[nodiscard]] bool awaitPixel(QPoint point, QRgb colour, const QString& output = {}) const;

    test::PrivateWaylandSession& desktop = test::CurrentWaylandSession::get();
    desktop::QtScheduler scheduler;
    std::unique_ptr<WaylandConnection> connection = WaylandConnection::open();
    Globals globals{*connection};
    Outputs outputs{*connection, globals};
    FocusedOutput focused{globals, outputs};
    WaylandScreens screens{outputs, focused};
    WaylandBackdrop backdrop{globals};
    WaylandPanels panels{*connection, globals, outputs, scheduler, screens};
    Ground ground;
};

} // namespace orvantile::platform::wayland
