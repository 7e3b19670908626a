// The whole program, for a long time, with everything around it changing: what it holds of the system must
// stay the same.

#include "desktop/applications/Stage.h"
#include "desktop/preferences/PreferencesControls.h"

#include "support/QtPrinting.h"
#include "support/desktop/ResourceUse.h"
#include "support/sound/SoundServer.h"

#include <QDeadlineTimer>
#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <iostream>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

#ifdef __SANITIZE_ADDRESS__
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif

/// Three hours unless the environment says otherwise.
std::chrono::seconds duration() {
    bool isNumber = false;
    const int seconds = qEnvironmentVariableIntValue("ORVANTILE_SOAK_SECONDS", &isNumber);
    return isNumber ? std::chrono::seconds(seconds) : std::chrono::hours(3);
}

/// The preferences of the program in the session, operated as a screen reader does.
class Controls final : public PreferencesControls {
public:
    explicit Controls(const QString& busAddress) : client(busAddress) {}

    [[nodiscard]] const AccessibleClient& reader() const override { return client; }

private:
    AccessibleClient client;
};

class Soak : public ::testing::Test {
protected:
    Soak() {
        server.start();
        server.serve(stage.session());
        stage.session().writeFile(u".config/orvantile/orvantile.ini"_s,
                                  "[General]\ndisplaySeconds=0.3\nsoundEnabled=true\n");
        editors = {stage.start(geany).handle, stage.start(mousepad).handle};
        stage.startOrvantile();
        stage.awaitCommandsOf(mousepad);
    }

    void arrangeMonitors(bool second) {
        const auto change = [&](const QStringList& arguments) {
            const auto randr = stage.session().start(u"xrandr"_s, arguments);
            EXPECT_EQ(randr->awaitExit(), 0) << randr->standardError().constData();
        };
        if (second) {
            change({u"--addmode"_s, u"DUMMY1"_s, u"800x1280"_s});
            change({u"--output"_s, u"DUMMY1"_s, u"--mode"_s, u"800x1280"_s, u"--right-of"_s, u"DUMMY0"_s});
        } else {
            change({u"--output"_s, u"DUMMY1"_s, u"--off"_s});
        }
    }

    /// Windows of programs that live for a moment.
    void passersBy() {
        const XConnection passer(stage.session().display());
        for (int number = 0; number < 20; ++number) {
            const auto window = xcb_generate_id(passer.get());
            const std::uint32_t unmanaged = number % 2 == 0 ? 1 : 0;
            xcb_create_window(passer.get(), XCB_COPY_FROM_PARENT, window, passer.root(), 5, 5, 9, 9, 0,
                              XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                              &unmanaged);
            xcb_map_window(passer.get(), window);
            xcb_destroy_window(passer.get(), window);
        }
        passer.synchronize();
    }

    /// Another look and another size of the HUDs to come.
    void changeSettings() {
        const Controls controls(stage.session().accessibilityBusAddress());
        controls.showTab(u"HUD"_s);
        const QStringList looks{u"Dark"_s, u"Light"_s, u"Auto"_s};
        ++changes;
        EXPECT_TRUE(controls.reader().perform(controls.segment(looks[changes % looks.size()]), u"Toggle"_s));
        EXPECT_TRUE(controls.reader().perform(controls.switchNamed(u"Pop animation"_s), u"Toggle"_s));
        controls.reader().setValue(controls.slider(u"Font size"_s), changes % 2 == 0 ? 24 : 40);
    }

    /// A second launch opens the preferences of the first.
    void openAndClosePreferences() {
        const auto second = stage.session().start(QStringLiteral(ORVANTILE_EXECUTABLE));
        EXPECT_EQ(second->awaitExit(), 0);
        const auto window = stage.windows().awaitWindow(titled(u"Orvantile Preferences"_s));
        changeSettings();
        stage.windows().close(window.handle);
        stage.windows().awaitGone(window.handle);
    }

    void restoreSounds() {
        if (std::exchange(silent, false)) {
            server.start();
        }
    }

    /// One action, and now and then a change around it.
    void act() {
        ++actions;
        if (actions % 25 == 0) {
            ++front;
            stage.windows().activate(editors[front % editors.size()]);
        }
        if (actions % 90 == 0) {
            passersBy();
        }
        if (actions % 400 == 0) {
            compositing = !compositing;
            compositing ? stage.session().startCompositor() : stage.session().stopCompositor();
        }
        if (actions % 500 == 0) {
            secondMonitor = !secondMonitor;
            arrangeMonitors(secondMonitor);
        }
        if (actions % 700 == 0) {
            openAndClosePreferences();
        }
        if (actions % 1'000 == 0) {
            server.kill();
            silent = true;
        } else if (actions % 1'000 == 100) {
            restoreSounds();
        }
        stage.keys().press(actions % 3 == 0 ? u"Ctrl+C"_s : u"Ctrl+A"_s);
        if (stage.huds().awaitNext(QDeadlineTimer(actions % 10 == 0 ? 1000ms : 40ms))) {
            ++shown;
        }
    }

    /// Everything is as it was in the beginning, and the HUD has gone.
    ResourceUse atRest() {
        if (std::exchange(compositing, false)) {
            stage.session().stopCompositor();
        }
        if (std::exchange(secondMonitor, false)) {
            arrangeMonitors(false);
        }
        restoreSounds();
        for (const auto* application : {&geany, &mousepad}) {
            stage.windows().activate(editors[application == &mousepad ? 1 : 0]);
            stage.awaitCommandsOf(*application);
        }
        EXPECT_TRUE(stage.huds().awaitHidden());
        return resourceUse(stage.orvantile().processIdentifier(), x,
                           {stage.session().sessionBusAddress(), stage.session().accessibilityBusAddress()});
    }

    void print(const char* when, const ResourceUse& use) const {
        std::cout << when << ": " << actions << " actions, " << shown << " shown, " << use.residentMiB
                  << " MiB, " << use.descriptors << " descriptors, " << use.threads << " threads, "
                  << use.serverObjects << " server objects, " << use.matchRules << " match rules"
                  << std::endl;
    }

    SoundServer server;
    Stage stage{{.outputs = true}};
    XConnection x{stage.session().display()};
    std::vector<xcb_window_t> editors;
    int actions = 0;
    int shown = 0;
    int changes = 0;
    std::size_t front = 1;
    bool compositing = false;
    bool silent = false; ///< no sound server runs
    bool secondMonitor = false;
};

TEST_F(Soak, holdsNoMoreAfterAllThanAfterTheBeginning) {
    const auto time = duration();
    // Whatever is made once has been made after every kind of change has come twice.
    const QDeadlineTimer warm(time / 5);
    while (actions < 1'450 || !warm.hasExpired()) {
        act();
    }
    const auto before = atRest();
    print("warm", before);
    const QDeadlineTimer end(time - time / 5);
    while (!end.hasExpired()) {
        act();
    }
    const auto after = atRest();
    print("end", after);
    EXPECT_GT(shown, actions / 4);
    EXPECT_LE(after.descriptors, before.descriptors);
    EXPECT_LE(after.threads, before.threads);
    EXPECT_LE(after.serverObjects, before.serverObjects);
    EXPECT_LE(after.matchRules, before.matchRules);
    if (sanitized) {
        std::cout << "memory is not compared: the sanitizer keeps what has been freed" << std::endl;
    } else {
        EXPECT_LE(after.residentMiB, before.residentMiB * 1.01);
    }
    stage.orvantile().signal(SIGTERM);
    EXPECT_EQ(stage.orvantile().awaitExit(), 0)
        << "with a leak the sanitizer says so here: " << stage.orvantile().standardError().constData();
}

} // namespace
} // namespace orvantile::test
