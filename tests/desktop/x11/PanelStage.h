#pragma once

#include "platform/linux/desktop/QtScheduler.h"
#include "platform/linux/x11/X11Backdrop.h"
#include "platform/linux/x11/X11Panels.h"

#include "support/desktop/CurrentSession.h"
#include "support/desktop/HudWatcher.h"
#include "support/desktop/WindowWatcher.h"

#include <QImage>
#include <QWidget>
#include <gmock/gmock.h>
#include <memory>

namespace orvantile::platform::x11 {

constexpr QRgb red = qRgb(255, 0, 0);
constexpr QRgb green = qRgb(0, 160, 0);

/// A red bar in the middle of a transparent margin.
class BarContent final : public PanelContent {
public:
    explicit BarContent(QString label_ = QStringLiteral("⌃S  Save"), Size size_ = {200, 60})
        : label(std::move(label_)),
          size(size_) {}

    [[nodiscard]] Size fittingSize() const override { return size; }

    [[nodiscard]] QString title() const override { return label; }

    void prepare(const Rect& frame, double scale) override {
        preparedScale = scale;
        ++preparations;
        picture = QImage(static_cast<int>(frame.width * scale), static_cast<int>(frame.height * scale),
                         QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        for (int y = picture.height() / 4; y < picture.height() * 3 / 4; ++y) {
            for (int x = picture.width() / 4; x < picture.width() * 3 / 4; ++x) {
                picture.setPixel(x, y, red);
            }
        }
    }

    [[nodiscard]] PanelFrame frameAt(double elapsed) const override {
        return {picture, 1, 1, elapsed >= entrance};
    }

    double entrance = 0;
    double preparedScale = 0;
    int preparations = 0;

private:
    QString label;
    Size size;
    QImage picture;
};

/// A window of one colour that counts clicks.
class Ground final : public QWidget {
public:
    Ground() {
        setWindowTitle(QStringLiteral("ground"));
        setStyleSheet(QStringLiteral("background: rgb(0, 160, 0)"));
        setAttribute(Qt::WA_StyledBackground);
    }

    int clicks = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++clicks; }
};

/// A panel on the desktop that the tests run in, and eyes on it.
class PanelStage : public ::testing::Test {
public:
    PanelStage(const PanelStage&) = delete;
    PanelStage& operator=(const PanelStage&) = delete;

protected:
    PanelStage();
    ~PanelStage() override;

    /// A green window over the whole screen, in front.
    void showGround();

    void show(const std::shared_ptr<PanelContent>& content = std::make_shared<BarContent>());

    [[nodiscard]] QRgb pixelAt(QPoint point) const;
    bool awaitPixel(QPoint point, QRgb colour);

    // The panel of 200 × 60 at (100, 500) from below on a screen of 800 lines.
    static constexpr QRect place{100, 240, 200, 60};
    static constexpr QPoint middle{200, 270};
    static constexpr QPoint margin{110, 245};

    test::PrivateSession& desktop = test::CurrentSession::get();
    test::WindowWatcher windows{desktop.display()};
    test::HudWatcher huds{desktop.display()};
    desktop::QtScheduler scheduler;
    std::unique_ptr<XConnection> connection = XConnection::open();
    X11Session session{*connection};
    X11Screens screens{*connection, session};
    Compositor compositor{*connection};
    ScreenGrab grab{*connection, screens};
    X11Backdrop backdrop{screens, compositor, grab};
    X11Panels panels{*connection, scheduler, screens, compositor, grab};
    std::shared_ptr<Panel> panel;
    Ground ground;
};

} // namespace orvantile::platform::x11
