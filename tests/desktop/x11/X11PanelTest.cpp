#include "platform/linux/desktop/QtScheduler.h"
#include "platform/linux/x11/X11Backdrop.h"
#include "platform/linux/x11/X11Panels.h"

#include "support/desktop/CurrentSession.h"
#include "support/desktop/HudWatcher.h"
#include "support/desktop/KeyInjector.h"
#include "support/desktop/MainLoop.h"
#include "support/desktop/Screenshot.h"
#include "support/desktop/WindowWatcher.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMouseEvent>
#include <QWidget>
#include <algorithm>
#include <gmock/gmock.h>

namespace orvantile::platform::x11 {
namespace {

using test::awaitThat;
using test::CurrentSession;
using test::turnFor;
using Qt::StringLiterals::operator""_s;

constexpr QRgb red = qRgb(255, 0, 0);
constexpr QRgb green = qRgb(0, 160, 0);

/// A red bar in the middle of a transparent margin.
class BarContent final : public PanelContent {
public:
    explicit BarContent(QString label_ = u"⌃S  Save"_s, Size size_ = {200, 60})
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
        setWindowTitle(u"ground"_s);
        setStyleSheet(u"background: rgb(0, 160, 0)"_s);
        setAttribute(Qt::WA_StyledBackground);
    }

    int clicks = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++clicks; }
};

class X11PanelTest : public ::testing::Test {
protected:
    X11PanelTest() {
        session.start();
        connection->synchronize();
        panel = panels.create({.size = {200, 60}});
    }

    ~X11PanelTest() override { desktop.stopCompositor(); }

    void showGround() {
        ground.showFullScreen();
        static_cast<void>(windows.awaitActive(test::titled(u"ground"_s)));
        ASSERT_TRUE(awaitThat([&] {
            const auto active = session.activeWindow();
            return active && active->title == u"ground"_s;
        }));
        ASSERT_TRUE(awaitPixel({10, 10}, green));
    }

    void show(const std::shared_ptr<PanelContent>& content = std::make_shared<BarContent>()) {
        const auto size = content->fittingSize();
        panel->setContent(content);
        panel->setFrame({100, 500, size.width, size.height}, true);
        panel->setAlpha(0);
        panel->orderFrontRegardless();
        panel->animateAlpha(1, 0.05, {});
    }

    [[nodiscard]] QRgb pixelAt(QPoint point) const {
        return test::takeScreenshot(desktop.display(), QRect(point, QSize(1, 1))).pixel(0, 0);
    }

    bool awaitPixel(QPoint point, QRgb colour) {
        return awaitThat([&] { return pixelAt(point) == colour; });
    }

    // The panel of 200 × 60 at (100, 500) from below on a screen of 800 lines.
    static constexpr QRect place{100, 240, 200, 60};
    static constexpr QPoint middle{200, 270};
    static constexpr QPoint margin{110, 245};

    test::PrivateSession& desktop = CurrentSession::get();
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

TEST_F(X11PanelTest, comesUpAtItsPlaceWithItsLabelAndGoes) {
    show();
    const auto shown = huds.awaitNext();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->label, u"⌃S  Save"_s);
    EXPECT_EQ(shown->frame, place);
    panel->orderOut();
    EXPECT_TRUE(huds.awaitHidden());
}

TEST_F(X11PanelTest, showsALabelInPlaceOfAnother) {
    show();
    ASSERT_TRUE(huds.awaitNext());
    show(std::make_shared<BarContent>(u"⌃Z  Undo"_s, Size{240, 60}));
    const auto second = huds.awaitNext();
    ASSERT_TRUE(second);
    EXPECT_EQ(second->label, u"⌃Z  Undo"_s);
    EXPECT_TRUE(awaitPixel({220, 270}, red));
}

TEST_F(X11PanelTest, liesOnWhatIsBeneathWithoutACompositor) {
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, red));
    EXPECT_EQ(pixelAt(margin), green);
    EXPECT_EQ(pixelAt({99, 270}), green);
    panel->orderOut();
    EXPECT_TRUE(awaitPixel(middle, green));
}

TEST_F(X11PanelTest, doesNotTakeItselfForWhatIsBeneath) {
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, red));
    // Wider, so that the old bar lies in the new margin.
    show(std::make_shared<BarContent>(u"wider"_s, Size{800, 60}));
    ASSERT_TRUE(awaitPixel({500, 270}, red));
    EXPECT_EQ(pixelAt({160, 270}), green);
    const auto picture = std::get<QImage>(backdrop.behind({100, 500, 800, 60}));
    EXPECT_EQ(picture.pixel(400, 30), green);
}

TEST_F(X11PanelTest, isBlendedByACompositor) {
    desktop.startCompositor();
    ASSERT_TRUE(awaitThat([&] { return compositor.isRunning(); }));
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, red));
    EXPECT_EQ(pixelAt(margin), green);
}

TEST_F(X11PanelTest, staysWithoutABlackBoxWhenACompositorStartsAndStops) {
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, red));
    desktop.startCompositor();
    ASSERT_TRUE(awaitThat([&] { return compositor.isRunning(); }));
    EXPECT_TRUE(awaitThat([&] { return pixelAt(middle) == red && pixelAt(margin) == green; }));
    desktop.stopCompositor();
    ASSERT_TRUE(awaitThat([&] { return !compositor.isRunning(); }));
    EXPECT_TRUE(awaitThat([&] { return pixelAt(middle) == red && pixelAt(margin) == green; }));
    turnFor(200);
    EXPECT_EQ(pixelAt(middle), red);
    EXPECT_EQ(pixelAt(margin), green);
}

TEST_F(X11PanelTest, drawsItsContentAnewWhereTheBlurIsAnothersFromNowOn) {
    const auto& atoms = connection->atoms();
    const auto offerBlur = [&](bool offered) {
        constexpr std::uint32_t any = 1;
        if (offered) {
            xcb_change_property(connection->get(), XCB_PROP_MODE_REPLACE, connection->root(),
                                atoms.blurBehind, XCB_ATOM_CARDINAL, 32, 1, &any);
        } else {
            xcb_delete_property(connection->get(), connection->root(), atoms.blurBehind);
        }
        connection->synchronize();
    };
    const auto content = std::make_shared<BarContent>();
    showGround();
    show(content);
    ASSERT_TRUE(awaitPixel(middle, red));
    EXPECT_EQ(content->preparations, 1);
    offerBlur(true);
    ASSERT_FALSE(compositor.blurs());
    desktop.startCompositor();
    EXPECT_TRUE(awaitThat([&] { return compositor.blurs() && content->preparations == 2; }));
    EXPECT_TRUE(std::holds_alternative<CompositorBlurs>(backdrop.behind({100, 500, 200, 60})));
    desktop.stopCompositor();
    EXPECT_TRUE(awaitThat([&] { return !compositor.isRunning() && content->preparations == 3; }));
    EXPECT_TRUE(awaitThat([&] { return pixelAt(middle) == red && pixelAt(margin) == green; }));
    offerBlur(false);
}

TEST_F(X11PanelTest, neverTakesTheFocus) {
    showGround();
    const auto before = windows.activeWindow().handle;
    for (int round = 0; round < 5; ++round) {
        show();
        ASSERT_TRUE(huds.awaitNext());
        turnFor(30);
        EXPECT_EQ(windows.activeWindow().handle, before);
        panel->orderOut();
        ASSERT_TRUE(huds.awaitHidden());
        EXPECT_EQ(windows.activeWindow().handle, before);
    }
    EXPECT_TRUE(ground.isActiveWindow());
}

TEST_F(X11PanelTest, letsClicksThrough) {
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, red));
    test::KeyInjector hands(desktop.display());
    hands.click(middle);
    EXPECT_TRUE(awaitThat([&] { return ground.clicks == 1; }));
}

TEST_F(X11PanelTest, staysAboveWindowsThatAreRaisedOverIt) {
    show();
    ASSERT_TRUE(huds.awaitNext());
    showGround();
    EXPECT_TRUE(awaitPixel(middle, red));
    QWidget other(nullptr, Qt::X11BypassWindowManagerHint);
    other.setStyleSheet(u"background: blue"_s);
    other.setGeometry(0, 0, 600, 600);
    other.show();
    ASSERT_TRUE(awaitPixel({20, 20}, qRgb(0, 0, 255)));
    EXPECT_TRUE(awaitPixel(middle, red));
    other.raise();
    turnFor(50);
    EXPECT_TRUE(awaitPixel(middle, red));
}

TEST_F(X11PanelTest, isNoWindowOfTheTaskListAndNoMenu) {
    int menus = 0;
    // Menus of others, such as the window manager's, are none of the panel's.
    session.onMenuOpened = [&](std::int32_t process) {
        menus += process <= 0 || process == ::getpid() ? 1 : 0;
    };
    show();
    ASSERT_TRUE(huds.awaitNext());
    turnFor(50);
    for (const auto& window : windows.windows()) {
        EXPECT_NE(window.className, u"orvantile"_s);
    }
    EXPECT_EQ(menus, 0);
    EXPECT_EQ(session.openMenus(::getpid()), 0);
}

TEST_F(X11PanelTest, overhangsTheScreenWithoutHarm) {
    show(std::make_shared<BarContent>(u"very long"_s, Size{20000, 60}));
    ASSERT_TRUE(huds.awaitNext());
    panel->orderOut();
    ASSERT_TRUE(huds.awaitHidden());
    panel->setFrame({-5000, -5000, 100, 50}, true);
    panel->orderFrontRegardless();
    turnFor(50);
    EXPECT_FALSE(huds.isVisible());
    show();
    EXPECT_TRUE(huds.awaitNext());
}

TEST_F(X11PanelTest, drawsNothingWhileNothingMoves) {
    show();
    ASSERT_TRUE(huds.awaitNext());
    turnFor(150);
    const auto before = xcb_total_written(connection->get());
    turnFor(300);
    EXPECT_EQ(xcb_total_written(connection->get()), before);
}

TEST_F(X11PanelTest, comesUpEveryTimeWithoutATurnOfTheMainLoop) {
    for (int round = 0; round < 100; ++round) {
        show();
        ASSERT_TRUE(huds.awaitNext()); // its own connection; nothing of the panel's runs meanwhile
        panel->orderOut();
        ASSERT_TRUE(huds.awaitHidden());
    }
}

TEST_F(X11PanelTest, drawsOnlyTheLatestOfContentsThatComeFasterThanTheServerReads) {
    show();
    ASSERT_TRUE(huds.awaitNext());
    // Without a turn of the main loop nobody knows that the first picture has been read.
    std::vector<std::shared_ptr<BarContent>> hurried;
    for (int i = 0; i < 50; ++i) {
        hurried.push_back(std::make_shared<BarContent>(QString::number(i)));
        show(hurried.back());
    }
    const auto drawn = [&] {
        return std::ranges::count_if(hurried, [](const auto& each) { return each->preparations > 0; });
    };
    EXPECT_EQ(drawn(), 0);
    EXPECT_TRUE(awaitThat([&] { return hurried.back()->preparations > 0; }));
    EXPECT_TRUE(awaitPixel(middle, red));
    EXPECT_EQ(drawn(), 1);
    EXPECT_EQ(hurried.back()->preparations, 1);
    EXPECT_EQ(huds.takeAll().back().label, u"49"_s);
}

/// Resident memory of this process, in KiB.
long residentMemory() {
    QFile file(u"/proc/self/statm"_s);
    static_cast<void>(file.open(QIODevice::ReadOnly));
    return file.readAll().split(' ').at(1).toLong() * 4;
}

TEST_F(X11PanelTest, keepsItsSizeOverThousandsOfShows) {
    const auto descriptors = [] { return QDir(u"/proc/self/fd"_s).count(); };
    const auto showSome = [&](int count) {
        for (int round = 0; round < count; ++round) {
            show(std::make_shared<BarContent>(QString::number(round), Size{100.0 + round % 300, 60}));
            QCoreApplication::processEvents();
            panel->orderOut();
            if (round % 100 == 0) {
                static_cast<void>(huds.takeAll());
            }
        }
        connection->synchronize();
        static_cast<void>(huds.takeAll());
    };
    showSome(1000);
    const auto memory = residentMemory();
    const auto open = descriptors();
    showSome(10000);
    EXPECT_EQ(descriptors(), open);
    const auto grown = residentMemory() - memory;
    std::printf("grown by %ld KiB over 10000 shows\n", grown);
#ifdef __SANITIZE_ADDRESS__
    // The sanitizer keeps freed memory back to find uses of it.
    std::printf("the limit on memory is not checked under AddressSanitizer\n");
#else
    EXPECT_LT(grown, 2048);
#endif
}

TEST_F(X11PanelTest, showsNoBlackBoxWhereTheCompositorRestsUnderAFullScreenWindow) {
    desktop.startCompositor();
    ASSERT_TRUE(awaitThat([&] { return compositor.isRunning(); }));
    showGround();
    turnFor(300); // the compositor sees that there is nothing to blend
    for (int round = 0; round < 5; ++round) {
        show();
        ASSERT_TRUE(huds.awaitNext());
        for (int look = 0; look < 20; ++look) {
            EXPECT_EQ(pixelAt(margin), green) << "look " << look << " of round " << round;
            turnFor(5);
        }
        panel->orderOut();
        ASSERT_TRUE(huds.awaitHidden());
        turnFor(150);
    }
}

} // namespace
} // namespace orvantile::platform::x11
