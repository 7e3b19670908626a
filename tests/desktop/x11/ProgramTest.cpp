#include "support/desktop/HudWatcher.h"
#include "support/desktop/KeyInjector.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/Screenshot.h"
#include "support/desktop/WindowWatcher.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

const QString program = QStringLiteral(ORVANTILE_PROGRAM);

TEST(Program, saysWhatIsMissingWithoutADisplay) {
    PrivateSession session({.windowManager = WindowManager::none, .sessionBus = false});
    session.setVariable(u"DISPLAY"_s, {});
    const auto without = session.start(program);
    EXPECT_EQ(without->awaitExit(), 1);
    EXPECT_EQ(without->standardError(),
              "orvantile: there is no X server to connect to: the variable DISPLAY is not set\n");
    session.setVariable(u"DISPLAY"_s, u":4711"_s);
    const auto wrong = session.start(program);
    EXPECT_EQ(wrong->awaitExit(), 1);
    EXPECT_EQ(wrong->standardError(),
              "orvantile: cannot connect to the X server “:4711” that DISPLAY names\n");
}

/// Waits until the program is up: it has made its panel or hears keys, which a first HUD shows.
class RunningProgram : public ::testing::Test {
protected:
    PrivateSession session;
    WindowWatcher windows{session.display()};
    HudWatcher huds{session.display()};
    KeyInjector hands{session.display()};

    /// Fires the shortcut until its HUD appears; an application joins the bus when it likes.
    std::optional<ShownHud> awaitFirst(const QString& combination) {
        for (int attempt = 0; attempt < 40; ++attempt) {
            hands.press(combination);
            if (auto shown = huds.awaitNext(QDeadlineTimer(250))) {
                return shown;
            }
        }
        return std::nullopt;
    }
};

TEST_F(RunningProgram, namesTheCommandOfAShortcutAndEndsCleanlyWithTheServer) {
    const auto editor = session.start(u"mousepad"_s, {session.writeFile(u"text.txt"_s, "text\n")});
    static_cast<void>(windows.awaitActive(ofProcess(editor->processIdentifier())));
    const auto orvantile = session.start(program);
    const auto preferences = windows.awaitWindow(titled(u"Orvantile Preferences"_s)).handle;
    windows.close(preferences);
    windows.awaitGone(preferences);
    windows.activate(windows.awaitWindow(ofProcess(editor->processIdentifier())).handle);
    const auto shown = awaitFirst(u"Ctrl+a"_s);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->label, u"⌃A  Select All"_s);
    if (const auto path = qEnvironmentVariable("ORVANTILE_TEST_SCREENSHOT"); !path.isEmpty()) {
        static_cast<void>(huds.awaitNext(QDeadlineTimer(300)));
        takeScreenshot(session.display()).save(path);
    }
    session.stopServer();
    EXPECT_EQ(orvantile->awaitExit(), 0);
}

} // namespace
} // namespace orvantile::test
