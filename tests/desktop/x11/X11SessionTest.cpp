#include "platform/linux/x11/X11Session.h"

#include "support/desktop/CurrentSession.h"
#include "support/desktop/KeyInjector.h"
#include "support/desktop/MainLoop.h"
#include "support/desktop/WindowWatcher.h"

#include <QElapsedTimer>
#include <QMenu>
#include <QWidget>
#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <vector>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::platform::x11 {
namespace {

using test::awaitThat;
using test::CurrentSession;
using test::turnFor;
using Qt::StringLiterals::operator""_s;

/// Presses or releases Control and K, without the wait for the server that hands need.
void strike(const test::XConnection& x, std::uint8_t type) {
    constexpr std::array<std::uint8_t, 2> keys{37, 45};
    for (const auto key : keys) {
        xcb_test_fake_input(x.get(), type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    }
}

class X11SessionTest : public ::testing::Test {
protected:
    X11SessionTest() {
        session.onActiveWindowChanged = [this](const auto& window) {
            log.append(u"active "_s + QString::number(window ? window->processIdentifier : 0));
        };
        session.onKeyPressed = [this](const auto& candidates) {
            keys.push_back(candidates.front());
            log.append(u"key "_s + QChar(static_cast<char16_t>(candidates.front().symbol)));
        };
        session.onMenuOpened = [this](auto process) { log.append(u"opened "_s + QString::number(process)); };
        session.onMenuClosed = [this](auto process) { log.append(u"closed "_s + QString::number(process)); };
        session.start();
    }

    bool awaitLog(const QString& line) {
        return awaitThat([&] { return log.contains(line); });
    }

    bool awaitActive(const std::function<bool(const session::ActiveWindow&)>& fits) {
        return awaitThat([&] {
            const auto window = session.activeWindow();
            return window && fits(*window);
        });
    }

    /// An editor with the focus, known to the session.
    std::unique_ptr<test::ChildProcess> startMousepad() {
        auto editor = desktop.start(u"mousepad"_s, {desktop.writeFile(u"text.txt"_s, "some text\n")});
        static_cast<void>(windows.awaitActive(test::ofProcess(editor->processIdentifier())));
        EXPECT_TRUE(awaitActive(
            [&](const auto& window) { return window.processIdentifier == editor->processIdentifier(); }));
        return editor;
    }

    test::PrivateSession& desktop = CurrentSession::get();
    test::KeyInjector hands{desktop.display()};
    test::WindowWatcher windows{desktop.display()};
    std::unique_ptr<XConnection> connection = XConnection::open();
    X11Session session{*connection};
    QStringList log;
    std::vector<keys::Accelerator> keys;
};

TEST_F(X11SessionTest, namesTheActiveWindowWithProcessAndTitle) {
    const auto editor = startMousepad();
    EXPECT_TRUE(awaitActive([](const auto& window) { return window.title.contains(u"text.txt"_s); }));
    EXPECT_FALSE(session.activeWindow()->dialog);
    ASSERT_TRUE(awaitThat([&] { return session.activeFrame().has_value(); }));
    EXPECT_GT(session.activeFrame()->width, 100);
}

TEST_F(X11SessionTest, followsATitleThatChanges) {
    QWidget window;
    window.setWindowTitle(u"before"_s);
    window.show();
    ASSERT_TRUE(awaitActive([](const auto& active) { return active.title == u"before"_s; }));
    window.setWindowTitle(u"after"_s);
    EXPECT_TRUE(awaitActive([](const auto& active) { return active.title == u"after"_s; }));
}

TEST_F(X11SessionTest, tellsDialogsFromOtherWindows) {
    QWidget window;
    window.setWindowTitle(u"main"_s);
    window.show();
    ASSERT_TRUE(awaitActive([](const auto& active) { return active.title == u"main"_s; }));
    EXPECT_FALSE(session.activeWindow()->dialog);
    QWidget dialog(&window, Qt::Dialog);
    dialog.setWindowTitle(u"dialog"_s);
    dialog.show();
    ASSERT_TRUE(awaitActive([](const auto& active) { return active.title == u"dialog"_s; }));
    EXPECT_TRUE(session.activeWindow()->dialog);
}

TEST_F(X11SessionTest, knowsThatNobodyHasTheFocus) {
    auto editor = startMousepad();
    editor.reset();
    EXPECT_TRUE(awaitThat([&] { return !session.activeWindow(); }));
    EXPECT_FALSE(session.activeFrame());
}

TEST_F(X11SessionTest, hearsShortcutsInOrderAndNoTyping) {
    ASSERT_TRUE(session.hearsKeys());
    const auto editor = startMousepad();
    hands.type(u"secret words"_s);
    hands.press(u"Ctrl+f"_s);
    hands.press(u"Escape"_s);
    hands.press(u"Ctrl+Shift+s"_s);
    ASSERT_TRUE(awaitThat([&] { return keys.size() >= 3; }));
    turnFor(50);
    ASSERT_EQ(keys.size(), 3U);
    EXPECT_EQ(keys[0], (keys::Accelerator{{.control = true}, XKB_KEY_f}));
    EXPECT_EQ(keys[1], (keys::Accelerator{{}, XKB_KEY_Escape}));
    EXPECT_EQ(keys[2], (keys::Accelerator{{.control = true, .shift = true}, XKB_KEY_s}));
}

TEST_F(X11SessionTest, followsTheKeymapAndTheLayout) {
    desktop.setKeyboardLayout(u"us,ru"_s);
    test::KeyInjector fresh(desktop.display());
    fresh.lockLayout(1);
    // The place of Z, whatever is written on it now.
    fresh.press(u"Ctrl+Cyrillic_ya"_s);
    ASSERT_TRUE(awaitThat([&] { return !keys.empty(); }));
    EXPECT_EQ(keys[0], (keys::Accelerator{{.control = true}, XKB_KEY_Cyrillic_ya}));
    fresh.lockLayout(0);
    desktop.setKeyboardLayout(u"de"_s);
    test::KeyInjector german(desktop.display());
    german.press(u"Ctrl+odiaeresis"_s);
    ASSERT_TRUE(awaitThat([&] { return keys.size() == 2; }));
    EXPECT_EQ(keys[1], (keys::Accelerator{{.control = true}, XKB_KEY_odiaeresis}));
    desktop.setKeyboardLayout(u"us"_s);
}

TEST_F(X11SessionTest, countsTheMenusOfAGtkProgramAndHearsKeysMeanwhile) {
    const auto editor = startMousepad();
    const auto process = editor->processIdentifier();
    hands.press(u"Alt+f"_s);
    ASSERT_TRUE(awaitLog(u"opened "_s + QString::number(process)));
    EXPECT_EQ(session.openMenus(process), 1);
    EXPECT_EQ(session.openMenus(process + 1), 0);
    hands.press(u"Ctrl+z"_s);
    EXPECT_TRUE(awaitLog(u"key z"_s));
    hands.press(u"Escape"_s);
    ASSERT_TRUE(awaitLog(u"closed "_s + QString::number(process)));
    EXPECT_EQ(session.openMenus(process), 0);
}

TEST_F(X11SessionTest, countsTheContextMenuOfAQtProgram) {
    QWidget window;
    window.setWindowTitle(u"owner"_s);
    window.show();
    ASSERT_TRUE(awaitActive([](const auto& active) { return active.title == u"owner"_s; }));
    QMenu menu;
    menu.addAction(u"First"_s);
    menu.popup({100, 100});
    ASSERT_TRUE(awaitThat([&] { return session.openMenus(::getpid()) == 1; }));
    menu.close();
    EXPECT_TRUE(awaitThat([&] { return session.openMenus(::getpid()) == 0; }));
}

TEST_F(X11SessionTest, findsMenusThatAreOpenAlready) {
    QMenu menu;
    menu.addAction(u"First"_s);
    menu.popup({100, 100});
    ASSERT_TRUE(awaitThat([&] { return session.openMenus(::getpid()) == 1; }));
    const auto other = XConnection::open();
    X11Session later(*other);
    later.start();
    EXPECT_TRUE(awaitThat([&] { return later.openMenus(::getpid()) == 1; }));
}

TEST_F(X11SessionTest, judgesAKeyByTheMenuThatCameUpBeforeIt) {
    const test::XConnection x(desktop.display());
    const auto window = xcb_generate_id(x.get());
    const std::uint32_t keepOut = 1;
    xcb_create_window(x.get(), XCB_COPY_FROM_PARENT, window, x.root(), 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      &keepOut);
    const auto type = x.atom("_NET_WM_WINDOW_TYPE_POPUP_MENU");
    xcb_change_property(x.get(), XCB_PROP_MODE_REPLACE, window, x.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM,
                        32, 1, &type);
    const QString opened = u"opened "_s + QString::number(::getpid());
    const QString closed = u"closed "_s + QString::number(::getpid());
    for (int round = 0; round < 50; ++round) {
        log.clear();
        // All of it reaches the session in one batch.
        xcb_map_window(x.get(), window);
        strike(x, XCB_KEY_PRESS);
        xcb_unmap_window(x.get(), window);
        xcb_map_window(x.get(), window);
        strike(x, XCB_KEY_RELEASE);
        xcb_unmap_window(x.get(), window);
        x.synchronize();
        ASSERT_TRUE(awaitLog(u"key k"_s));
        turnFor(1);
        EXPECT_EQ(session.openMenus(::getpid()), 0);
        EXPECT_EQ(log.count(opened), log.count(closed));

        log.clear();
        xcb_map_window(x.get(), window);
        strike(x, XCB_KEY_PRESS);
        strike(x, XCB_KEY_RELEASE);
        x.synchronize();
        ASSERT_TRUE(awaitLog(u"key k"_s));
        EXPECT_EQ(log, (QStringList{opened, u"key k"_s}));
        xcb_unmap_window(x.get(), window);
        x.synchronize();
        ASSERT_TRUE(awaitLog(closed));
    }
}

TEST_F(X11SessionTest, hearsEachOfManyKeysOnce) {
    const auto editor = startMousepad();
    const test::XConnection x(desktop.display());
    keys.clear();
    constexpr std::size_t presses = 100;
    for (std::size_t round = 0; round < presses; ++round) {
        strike(x, XCB_KEY_PRESS);
        strike(x, XCB_KEY_RELEASE);
    }
    x.synchronize();
    ASSERT_TRUE(awaitThat([&] { return keys.size() >= presses; }));
    turnFor(50);
    EXPECT_EQ(keys.size(), presses);
}

TEST(X11Connection, tellsWhenTheServerHasGone) {
    test::PrivateSession other({.windowManager = test::WindowManager::none, .sessionBus = false});
    const auto display = qgetenv("DISPLAY");
    qputenv("DISPLAY", other.display().toLocal8Bit());
    const auto connection = XConnection::open();
    qputenv("DISPLAY", display);
    ASSERT_NE(connection, nullptr);
    int closed = 0;
    connection->onClosed = [&] { ++closed; };
    other.stopServer();
    EXPECT_TRUE(awaitThat([&] { return closed == 1; }));
    EXPECT_FALSE(connection->isOpen());
    turnFor(50);
    EXPECT_EQ(closed, 1);
}

TEST(X11Connection, isRefusedWithoutAServer) {
    const auto display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4711");
    EXPECT_EQ(XConnection::open(), nullptr);
    EXPECT_FALSE(isServerReachable());
    qputenv("DISPLAY", display);
    EXPECT_TRUE(isServerReachable());
}

} // namespace
} // namespace orvantile::platform::x11
