#include "platform/linux/wayland/WaylandSession.h"

#include "support/VirtualScheduler.h"
#include "support/desktop/MainLoop.h"
#include "support/wayland/FakeCompositor.h"

#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace orvantile::platform::wayland {
namespace {

using test::awaitThat;
using Qt::StringLiterals::operator""_s;

/// The session on a compositor without windows and keyboards, and without a message bus.
class WaylandSessionTest : public ::testing::Test {
protected:
    WaylandSessionTest() {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        qputenv("WAYLAND_DISPLAY", compositor.display().toLocal8Bit());
        connection = WaylandConnection::open();
        qunsetenv("WAYLAND_DISPLAY");
        globals.emplace(*connection);
        session.emplace(scheduler, &*globals,
                        KeyboardDevices::Access{.folder = devices.path(),
                                                .isKeyboard = [](int) { return true; },
                                                .isSessionActive = [] { return true; }});
    }

    ~WaylandSessionTest() override { qunsetenv("DBUS_SESSION_BUS_ADDRESS"); }

    /// A keyboard that can be read; it is there until it is closed.
    [[nodiscard]] desktop::FileDescriptor plugIn() const {
        const auto path = QFile::encodeName(devices.filePath(u"event0"_s));
        EXPECT_EQ(mkfifo(path.constData(), 0600), 0);
        return desktop::FileDescriptor(::open(path.constData(), O_RDWR | O_CLOEXEC));
    }

    QTemporaryDir devices;
    test::FakeCompositor compositor;
    std::unique_ptr<WaylandConnection> connection;
    std::optional<Globals> globals;
    test::VirtualScheduler scheduler;
    std::optional<WaylandSession> session;
};

TEST_F(WaylandSessionTest, saysThatKeysComeFromProgramsOnceAccessibilityIsOn) {
    session->start();
    EXPECT_FALSE(session->hearsKeys());
    EXPECT_TRUE(session->keySources().startsWith(
        u"Key presses come from the programs themselves once accessibility is on. "_s));
    EXPECT_TRUE(session->keySources().contains(u"programs made with GTK 4 and Chromium are not heard"_s));
}

TEST_F(WaylandSessionTest, saysThatKeysAreReadFromTheKeyboardsWhereTheyAre) {
    const auto keyboard = plugIn();
    session->start();
    EXPECT_TRUE(session->hearsKeys());
    EXPECT_EQ(
        session->keySources(),
        u"Key presses are read from the keyboards themselves, which your user may do on this machine. "_s);
}

TEST_F(WaylandSessionTest, noticesAKeyboardThatComesLater) {
    session->start();
    ASSERT_FALSE(session->hearsKeys());
    const auto keyboard = plugIn();
    EXPECT_TRUE(awaitThat([this] { return session->hearsKeys(); }));
    EXPECT_TRUE(session->keySources().contains(u"read from the keyboards"_s));
}

} // namespace
} // namespace orvantile::platform::wayland
