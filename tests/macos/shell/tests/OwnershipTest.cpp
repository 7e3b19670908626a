#include "macos/axfake/AxFake.h"
#include "macos/shell/tests/FakeContent.h"
#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/application/MacApplication.h"
#include "platform/macos/desktop/MacAppearance.h"
#include "platform/macos/desktop/MacDefaults.h"
#include "platform/macos/desktop/MacScheduler.h"
#include "platform/macos/desktop/MacScreens.h"
#include "platform/macos/desktop/MacSounds.h"
#include "platform/macos/desktop/MacWorkspace.h"
#include "platform/macos/panel/MacPanels.h"
#include "platform/macos/statusitem/MacStatusBar.h"
#include "platform/macos/updates/MacUpdater.h"

#include <functional>

namespace orvantile::test {
namespace {

using namespace platform::macos;
using Qt::StringLiterals::operator""_s;

/// Nothing that is made again and again may pile up. Each case runs in a turn of its own, as on the main
/// loop.
class OwnershipTest : public ShellTest {
protected:
    void expectNoGrowth(const std::function<void()>& work) {
        const auto once = [&] {
            const desktop::Pool turn;
            work();
        };
        once(); // what is made on first use stays
        const auto before = desktop::liveObjects();
        const auto names = desktop::liveObjectNames();
        for (int round = 0; round < 20; ++round) {
            once();
        }
        EXPECT_EQ(desktop::liveObjects(), before) << "before:\n"
                                                  << names << "after:\n"
                                                  << desktop::liveObjectNames();
    }
};

TEST_F(OwnershipTest, ofPanelsAndWhatTheyShow) {
    expectNoGrowth([] {
        MacScheduler scheduler;
        MacScreens screens;
        MacPanels panels(scheduler, screens);
        const auto panel = panels.create({.size = {200, 60}});
        for (int label = 0; label < 3; ++label) {
            const auto content = std::make_shared<FakeContent>();
            content->blurred.addRoundedRect(QRectF(10, 10, 100, 40), 20, 20);
            panel->setContent(content);
            panel->setFrame({0, 0, 200, 100}, true);
            panel->setAlpha(0);
            panel->orderFrontRegardless();
            panel->animateAlpha(1, 0.12, {});
            desktop::advance(0.05);
            panel->animateAlpha(0, 0.22, [panel] { panel->orderOut(); });
            desktop::advance(0.2);
            desktop::finishAnimations();
        }
    });
}

TEST_F(OwnershipTest, ofStatusItemsAndMenus) {
    MacApplication::prepare();
    MacStatusBar bar;
    expectNoGrowth([&] {
        const auto item = bar.createItem();
        item->setImage(bar.symbolImage(u"keyboard"_s, u"Orvantile"_s));
        const auto menu = std::make_shared<platform::Menu>(
            std::vector<platform::MenuItem>{{.title = u"Enabled"_s,
                                             .action = platform::MenuAction::call,
                                             .command = u"toggleEnabled"_s,
                                             .tag = 1},
                                            platform::MenuItem::separator()});
        item->setMenu(menu);
        desktop::openMenu();
        menu->setState(1, true);
        desktop::chooseItem("Enabled");
        item->setImage(bar.symbolImage(u"keyboard.fill"_s, u"Orvantile"_s));
    });
}

TEST_F(OwnershipTest, ofObservers) {
    MacApplication::prepare();
    expectNoGrowth([] {
        MacWorkspace workspace;
        const auto activations = workspace.observeActivations([](auto) {});
        desktop::setFrontmost(3);
        (void)workspace.frontmostApplication();
        desktop::postActivation({.processIdentifier = 4});
        workspace.openAccessibilitySettings();
        MacAppearance appearance;
        const auto changes = appearance.observeChanges([] {});
        desktop::setDark(true);
        desktop::setDark(false);
    });
}

TEST_F(OwnershipTest, ofTimersAndWorkThatIsPutOff) {
    AxFake ax; // plays the main queue
    const auto captured = std::make_shared<int>();
    expectNoGrowth([&] {
        MacScheduler scheduler;
        scheduler.runLater([captured] {});
        const auto fired = scheduler.runAfter(0.1, [captured] {});
        const auto cancelled = scheduler.runAfter(100, [captured] {});
        const auto frames = scheduler.runEveryFrame([captured] {});
        desktop::advance(0.2);
        ax.turnMainQueue();
    });
    EXPECT_EQ(captured.use_count(), 1);
    EXPECT_EQ(desktop::pendingTimers(), 0U);
}

TEST_F(OwnershipTest, ofEverythingElse) {
    expectNoGrowth([] {
        MacDefaults defaults;
        defaults.registerDefaults({{u"enabled"_s, true}, {u"fontSize"_s, 22.0}, {u"sound"_s, u"Pop"_s}});
        defaults.set(u"sound"_s, u"Tink"_s);
        (void)defaults.stringForKey(u"sound"_s);
        MacSounds().play(u"Tink"_s);
        MacScreens screens;
        (void)screens.mainScreen();
        (void)screens.screens();
        MacUpdater().createController(true)->checkForUpdates();
    });
}

} // namespace
} // namespace orvantile::test
