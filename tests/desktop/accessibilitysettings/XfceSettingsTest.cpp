#include "platform/linux/X11Platform.h"
#include "preferences/PreferencesWindow.h"
#include "support/QtPrinting.h"
#include "support/desktop/CurrentSession.h"
#include "support/desktop/KeyInjector.h"
#include "support/desktop/MainLoop.h"
#include "support/desktop/Screenshot.h"
#include "support/desktop/WindowWatcher.h"

#include <QAbstractButton>
#include <QApplication>
#include <algorithm>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::MatchesRegex;

/// The preferences on an Xfce desktop where accessibility is switched off.
class XfceSettingsTest : public ::testing::Test {
protected:
    XfceSettingsTest() {
        qputenv("XDG_CURRENT_DESKTOP", "XFCE");
        session.setAccessibilityEnabled(false);
    }

    ~XfceSettingsTest() override { session.setAccessibilityEnabled(true); }

    [[nodiscard]] static QAbstractButton* openButton(const QWidget& window) {
        for (auto* button : window.findChildren<QAbstractButton*>()) {
            if (button->text() == u"Open System Settings…"_s && button->isVisible()) {
                return button;
            }
        }
        return nullptr;
    }

    PrivateSession& session = CurrentSession::get();
    WindowWatcher watcher{session.display()};
    KeyInjector hands{session.display()};
    XConnection x{session.display()};
};

TEST_F(XfceSettingsTest, buttonOfThePreferencesOpensTheAccessibilitySettings) {
    const auto platform = platform::makeX11Platform();
    Settings settings(*platform->defaults);
    PreferencesWindow preferences(settings, *platform);
    preferences.present();
    ASSERT_TRUE(awaitThat([&] { return preferences.isActiveWindow(); }));
    ASSERT_TRUE(awaitThat([&] { return openButton(preferences) != nullptr; }));
    // The first prompt waits until the program has been up for a while; the next one comes at once, and the
    // settings after it.
    platform->accessibility->promptForTrust();
    const auto isPrompt = [&](const Window& window) { return window.title == u"Orvantile"_s; };
    ASSERT_TRUE(awaitThat([&] { return isPrompt(watcher.activeWindow()); }));
    hands.press(u"Escape"_s);
    ASSERT_TRUE(awaitThat(
        [&] { return std::ranges::none_of(watcher.windows(), isPrompt) && preferences.isActiveWindow(); }));
    const auto* button = openButton(preferences);
    for (int i = 0; i < 20 && !button->hasFocus(); ++i) {
        const auto* before = QApplication::focusWidget();
        hands.press(u"Tab"_s);
        ASSERT_TRUE(awaitThat([&] { return QApplication::focusWidget() != before; }));
    }
    hands.hold(u"space"_s);
    ASSERT_TRUE(awaitThat([&] { return button->isDown(); }));
    hands.release(u"space"_s);

    std::optional<Window> opened;
    ASSERT_TRUE(awaitThat([&] {
        for (const auto& window : watcher.windows()) {
            if (window.className.compare(u"xfce4-accessibility-settings"_s, Qt::CaseInsensitive) == 0 &&
                window.mapped) {
                opened = window;
            }
        }
        return opened.has_value();
    }));
    EXPECT_TRUE(awaitThat([&] { return watcher.activeWindow().handle == opened->handle; }))
        << "it comes to the front, before the prompt";
    const auto leader = x.numbers(opened->handle, "WM_CLIENT_LEADER");
    ASSERT_FALSE(leader.empty());
    EXPECT_THAT(x.bytes(leader.front(), "_NET_STARTUP_ID").toStdString(),
                MatchesRegex("orvantile-[0-9]+-.+_TIME[1-9][0-9]*"));
    if (const auto path = qEnvironmentVariable("ORVANTILE_TEST_SCREENSHOT"); !path.isEmpty()) {
        turnFor(500);
        takeScreenshot(session.display()).save(path);
    }
    watcher.close(opened->handle);
    watcher.awaitGone(opened->handle);
}

} // namespace
} // namespace orvantile::test
