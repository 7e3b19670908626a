// Parts of the desktop that are stopped, or killed and started again, while the whole program runs.

#include "desktop/faults/FullFunction.h"

#include "support/QtPrinting.h"
#include "support/desktop/BusTraffic.h"
#include "support/desktop/PanelHost.h"
#include "support/desktop/SessionBusCalls.h"

#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <thread>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;

constexpr std::chrono::milliseconds soon{500}; // generous on a busy machine

class Neighbours : public ::testing::Test {
protected:
    void SetUp() override {
        editor = stage.start(mousepad);
        stage.startOrvantile();
        stage.awaitCommandsOf(mousepad);
    }

    [[nodiscard]] static pid_t ownerOn(const QString& address, const QString& name) {
        return SessionBusCalls(address).ownerOf(name);
    }

    /// Stops a process for as long as everything is tried.
    void expectFullFunctionWithout(pid_t process) {
        ASSERT_GT(process, 0);
        ASSERT_EQ(kill(process, SIGSTOP), 0);
        expectFullFunction(stage);
        ASSERT_EQ(kill(process, SIGCONT), 0);
        expectFullFunction(stage);
    }

    Stage stage;
    Window editor;
};

TEST_F(Neighbours, windowManagerIsReplaced) {
    stage.session().stopWindowManager();
    stage.keys().press(u"Ctrl+I"_s); // whatever is shown now, nothing hangs
    stage.session().startWindowManager(WindowManager::xfwm4);
    stage.windows().activate(editor.handle);
    expectFullFunction(stage);
}

TEST_F(Neighbours, windowManagerHangs) {
    expectFullFunctionWithout(stage.session().windowManagerProcess());
}

TEST_F(Neighbours, compositorHangs) {
    stage.session().startCompositor();
    expectFullFunction(stage);
    expectFullFunctionWithout(stage.session().compositorProcess());
}

TEST_F(Neighbours, compositorIsKilled) {
    stage.session().startCompositor();
    ASSERT_EQ(kill(stage.session().compositorProcess(), SIGKILL), 0);
    expectFullFunction(stage);
    stage.session().startCompositor();
    expectFullFunction(stage);
}

/// Without its server nothing can be pressed and nothing be seen; whoever asks the program over the bus is
/// answered all the same.
TEST_F(Neighbours, serverHangs) {
    const SessionBusCalls bus(stage.session().sessionBusAddress());
    const auto name = u"org.orvantile.Orvantile"_s;
    ASSERT_EQ(bus.ownerOf(name), stage.orvantile().processIdentifier());
    const auto server = stage.session().serverProcess();
    ASSERT_EQ(kill(server, SIGSTOP), 0);
    for (int time = 0; time < 20; ++time) {
        EXPECT_TRUE(bus.answers(name, soon));
    }
    ASSERT_EQ(kill(server, SIGCONT), 0);
    expectFullFunction(stage);
}

TEST_F(Neighbours, panelWithTheItemHangsIsKilledAndComesBack) {
    const auto watcher = u"org.kde.StatusNotifierWatcher"_s;
    const BusTraffic traffic(stage.session().sessionBusAddress());
    auto panel = startPanel(stage.session(), PanelHost::xfce);
    ASSERT_TRUE(
        traffic.await(u"StatusNotifierItemRegistered"_s, {}, QDeadlineTimer(std::chrono::minutes(1))));
    expectFullFunctionWithout(ownerOn(stage.session().sessionBusAddress(), watcher));

    panel->signal(SIGKILL);
    ASSERT_EQ(panel->awaitExit(), -SIGKILL);
    expectFullFunction(stage);
    panel = startPanel(stage.session(), PanelHost::xfce);
    EXPECT_TRUE(
        traffic.await(u"StatusNotifierItemRegistered"_s, {}, QDeadlineTimer(std::chrono::minutes(1))));
    expectFullFunction(stage);
}

TEST_F(Neighbours, compositorComesAndGoes) {
    for (int time = 0; time < 2; ++time) {
        stage.session().startCompositor();
        expectFullFunction(stage);
        stage.session().stopCompositor();
        expectFullFunction(stage);
    }
}

TEST_F(Neighbours, registryOfApplicationsIsKilled) {
    const auto address = stage.session().accessibilityBusAddress();
    const auto registry = ownerOn(address, u"org.a11y.atspi.Registry"_s);
    ASSERT_GT(registry, 0);
    ASSERT_EQ(kill(registry, SIGKILL), 0);
    expectFullFunction(stage);
    stage.start(geany); // which starts it again
    EXPECT_THAT(stage.awaitCommandsOf(geany), ElementsAre());
    stage.windows().activate(editor.handle);
    expectFullFunction(stage);
}

TEST_F(Neighbours, registryOfApplicationsHangs) {
    expectFullFunctionWithout(
        ownerOn(stage.session().accessibilityBusAddress(), u"org.a11y.atspi.Registry"_s));
}

TEST_F(Neighbours, launcherOfTheAccessibilityBusHangs) {
    expectFullFunctionWithout(ownerOn(stage.session().sessionBusAddress(), u"org.a11y.Bus"_s));
}

TEST_F(Neighbours, accessibilityBusIsKilledWithItsLauncher) {
    const auto launcher = ownerOn(stage.session().sessionBusAddress(), u"org.a11y.Bus"_s);
    const auto bus = SessionBusCalls(stage.session().accessibilityBusAddress()).daemon();
    ASSERT_GT(launcher, 0);
    ASSERT_GT(bus, 0);
    ASSERT_EQ(kill(launcher, SIGKILL), 0);
    static_cast<void>(kill(bus, SIGKILL)); // it may have ended with its launcher
    stage.process(mousepad).end();         // programs of this toolkit do not look for the next bus
    stage.session().startAccessibility();
    editor = stage.start(mousepad);
    expectFullFunction(stage);
}

TEST_F(Neighbours, accessibilityBusHangs) {
    expectFullFunctionWithout(SessionBusCalls(stage.session().accessibilityBusAddress()).daemon());
}

TEST_F(Neighbours, sessionBusHangs) {
    expectFullFunctionWithout(SessionBusCalls(stage.session().sessionBusAddress()).daemon());
}

TEST_F(Neighbours, sessionBusIsKilledAndStartedAgain) {
    // A program that has just been started would ask whether accessibility shall be switched on.
    const QDeadlineTimer started(std::chrono::seconds(3));
    while (!started.hasExpired()) {
        expectFullFunction(stage);
    }
    stage.session().stopSessionBus();
    stage.process(mousepad).end(); // programs of this toolkit end without their bus
    stage.session().startSessionBus();
    stage.session().startAccessibility();
    editor = stage.start(mousepad);
    expectFullFunction(stage);
}

TEST_F(Neighbours, programItselfIsStoppedForAWhileAsInASuspendedMachine) {
    stage.keys().press(u"Ctrl+I"_s);
    ASSERT_TRUE(stage.huds().awaitNext());
    stage.orvantile().signal(SIGSTOP);
    // What is pressed meanwhile was meant for another time; it may be shown, but holds nothing up.
    stage.keys().press(u"Ctrl+I"_s);
    std::this_thread::sleep_for(std::chrono::seconds(2)); // longer than a HUD stays
    stage.orvantile().signal(SIGCONT);
    EXPECT_TRUE(stage.huds().awaitHidden());
    stage.huds().takeAll();
    expectFullFunction(stage);
}

} // namespace
} // namespace orvantile::test
