#include "desktop/wayland/WaylandFixture.h"

#include <QJsonArray>

namespace orvantile::platform::wayland {
namespace {

using test::awaitThat;
using Qt::StringLiterals::operator""_s;

/// On a compositor whose screens are windows of another one, so that they can be closed like a plug is
/// pulled.
class UnplugTest : public ::testing::Test {
protected:
    UnplugTest() {
        // The test executable's own compositor is not the one that is looked at here.
        qputenv("WAYLAND_DISPLAY", inner.display().toUtf8());
        qputenv("XDG_RUNTIME_DIR", inner.runtimeDirectory().toUtf8());
        connection = WaylandConnection::open();
    }

    ~UnplugTest() override { test::CurrentWaylandSession::get().enter(); }

    test::PrivateWaylandSession outer;
    test::PrivateWaylandSession inner{{.outputs = 2, .host = &outer}};
    desktop::QtScheduler scheduler;
    std::unique_ptr<WaylandConnection> connection;
};

TEST_F(UnplugTest, panelMovesToAnotherOutputWhenItsOwnIsUnplugged) {
    Globals globals(*connection);
    Outputs outputs(*connection, globals);
    const FocusedOutput focused(globals, outputs);
    const WaylandScreens screens(outputs, focused);
    WaylandPanels panels(*connection, globals, outputs, scheduler, screens);
    const auto panel = panels.create({.size = {200, 60}});
    const auto show = [&] {
        const auto area = screens.mainScreen()->visibleFrame;
        panel->setContent(std::make_shared<BarContent>());
        panel->setFrame({area.minX() + 24, area.maxY() - 84, 200, 60}, true);
        panel->setAlpha(1);
        panel->orderFrontRegardless();
    };
    constexpr QPoint middle{124, 54};
    const auto isOn = [&](const QString& output) {
        return awaitThat([&] { return inner.screenshot(output).pixel(middle) == BarContent::colour; });
    };

    ASSERT_TRUE(awaitThat([&] { return outputs.names().size() == 2; }));
    inner.sway().run(u"focus output WL-2"_s);
    show();
    ASSERT_TRUE(isOn(u"WL-2"_s));
    outer.sway().run(u"[title=\"WL-2\"] kill"_s);
    ASSERT_TRUE(awaitThat([&] { return outputs.names().size() == 1; }));
    EXPECT_TRUE(isOn(u"WL-1"_s)) << "the panel that was up";

    // All screens are off for a while.
    outer.sway().run(u"[title=\"WL-1\"] kill"_s);
    ASSERT_TRUE(awaitThat([&] { return outputs.names().empty(); }));
    EXPECT_EQ(screens.screens().size(), 1U) << "the screen there was";
    show();
    test::turnFor(100);
    EXPECT_TRUE(connection->isOpen());
    inner.sway().run(u"create_output"_s);
    ASSERT_TRUE(awaitThat([&] { return outputs.names().size() == 1; }));
    show();
    EXPECT_TRUE(isOn(u"WL-3"_s));
}

} // namespace
} // namespace orvantile::platform::wayland
