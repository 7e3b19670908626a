#include "platform/linux/wayland/KeyboardDevices.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <linux/input.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::platform::wayland {
namespace {

using keys::Accelerator;
using keys::Candidates;
using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string keymapOf(const char* layouts) {
    auto* context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    const xkb_rule_names names{"evdev", "pc105", layouts, "", ""};
    auto* keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    auto* text = xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1);
    std::string result(text);
    std::free(text);
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return result;
}

/// Pipes in the place of devices.
class KeyboardDevicesTest : public ::testing::Test {
protected:
    KeyboardDevicesTest() {
        keymap.load(keymapOf("us"));
        devices.onPressed = [this](const Candidates& candidates) { pressed.push_back(candidates.front()); };
        devices.onChanged = [this] { ++changes; };
    }

    /// The end to write to.
    desktop::FileDescriptor plugIn(const QString& name) const {
        const auto path = QFile::encodeName(folder.filePath(name));
        EXPECT_EQ(mkfifo(path.constData(), 0600), 0);
        return desktop::FileDescriptor(::open(path.constData(), O_RDWR | O_CLOEXEC));
    }

    static void send(const desktop::FileDescriptor& device, std::uint16_t type, std::uint16_t code,
                     int value) {
        input_event event{};
        event.type = type;
        event.code = code;
        event.value = value;
        ASSERT_EQ(::write(device.get(), &event, sizeof event), ssize_t{sizeof event});
    }

    /// Presses the keys one after the other, and lets go of them in the other order.
    static void press(const desktop::FileDescriptor& device, const std::vector<std::uint16_t>& keys) {
        for (const auto key : keys) {
            send(device, EV_KEY, key, 1);
        }
        for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
            send(device, EV_KEY, *key, 0);
        }
    }

    static bool await(const std::function<bool()>& condition) {
        const QDeadlineTimer deadline(10'000);
        while (!condition() && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        }
        return condition();
    }

    QTemporaryDir folder;
    bool active = true;
    SeatKeymap keymap;
    KeyboardDevices devices{{.folder = folder.path(),
                             .isKeyboard = [](int) { return true; },
                             .isSessionActive = [this] { return active; }},
                            keymap};
    std::vector<Accelerator> pressed;
    int changes = 0;
};

TEST_F(KeyboardDevicesTest, readShortcutsAndDropText) {
    const auto keyboard = plugIn(u"event0"_s);
    devices.start();
    EXPECT_TRUE(devices.hears());
    press(keyboard, {KEY_H});
    press(keyboard, {KEY_LEFTSHIFT, KEY_I});
    press(keyboard, {KEY_LEFTCTRL, KEY_LEFTSHIFT, KEY_S});
    press(keyboard, {KEY_F5});
    ASSERT_TRUE(await([this] { return pressed.size() >= 2; }));
    EXPECT_THAT(pressed, ElementsAre(Accelerator{{.control = true, .shift = true}, XKB_KEY_s},
                                     Accelerator{{}, XKB_KEY_F5}));
}

TEST_F(KeyboardDevicesTest, countAKeyThatIsHeldOnce) {
    const auto keyboard = plugIn(u"event0"_s);
    devices.start();
    send(keyboard, EV_KEY, KEY_LEFTCTRL, 1);
    send(keyboard, EV_KEY, KEY_Z, 1);
    send(keyboard, EV_KEY, KEY_Z, 2);
    send(keyboard, EV_KEY, KEY_Z, 2);
    send(keyboard, EV_KEY, KEY_Z, 0);
    send(keyboard, EV_KEY, KEY_LEFTCTRL, 0);
    send(keyboard, EV_KEY, KEY_F1, 1);
    ASSERT_TRUE(await([this] { return pressed.size() >= 2; }));
    EXPECT_THAT(pressed, ElementsAre(Accelerator{{.control = true}, XKB_KEY_z}, Accelerator{{}, XKB_KEY_F1}));
}

TEST_F(KeyboardDevicesTest, areNotHeardWhileAnotherSessionIsInFront) {
    const auto keyboard = plugIn(u"event0"_s);
    devices.start();
    active = false;
    press(keyboard, {KEY_LEFTCTRL, KEY_S});
    ASSERT_TRUE(await([&] {
        int waiting = 0;
        return ioctl(keyboard.get(), FIONREAD, &waiting) == 0 && waiting == 0;
    }));
    EXPECT_THAT(pressed, IsEmpty());
    active = true;
    press(keyboard, {KEY_LEFTCTRL, KEY_S});
    EXPECT_TRUE(await([this] { return pressed.size() == 1; }));
}

TEST_F(KeyboardDevicesTest, comeAndGo) {
    devices.start();
    EXPECT_FALSE(devices.hears());
    auto keyboard = plugIn(u"event3"_s);
    ASSERT_TRUE(await([this] { return devices.hears(); }));
    EXPECT_EQ(changes, 1);
    press(keyboard, {KEY_LEFTALT, KEY_F4});
    ASSERT_TRUE(await([this] { return pressed.size() == 1; }));
    keyboard = desktop::FileDescriptor();
    ASSERT_TRUE(await([this] { return !devices.hears(); }));
    EXPECT_EQ(changes, 2);
}

TEST_F(KeyboardDevicesTest, tellAtOnceWhatHasArrived) {
    const auto keyboard = plugIn(u"event0"_s);
    devices.start();
    press(keyboard, {KEY_LEFTCTRL, KEY_S});
    devices.drain();
    EXPECT_EQ(pressed.size(), 1U);
    devices.drain();
    EXPECT_EQ(pressed.size(), 1U);
}

TEST_F(KeyboardDevicesTest, followTheKeymap) {
    const auto keyboard = plugIn(u"event0"_s);
    devices.start();
    press(keyboard, {KEY_LEFTCTRL, KEY_Y});
    ASSERT_TRUE(await([this] { return pressed.size() == 1; }));
    keymap.load(keymapOf("de"));
    press(keyboard, {KEY_LEFTCTRL, KEY_Y});
    ASSERT_TRUE(await([this] { return pressed.size() == 2; }));
    EXPECT_EQ(pressed[0].symbol, keys::KeySymbol{XKB_KEY_y});
    EXPECT_EQ(pressed[1].symbol, keys::KeySymbol{XKB_KEY_z});
}

TEST(KeyboardDevicesWithout, aLoginSessionAreNotLookedFor) {
    qunsetenv("XDG_SESSION_ID");
    EXPECT_EQ(KeyboardDevices::ofSystem().folder, QString());
}

TEST(KeyboardDevicesWithout, areNoKeyboards) {
    const SeatKeymap keymap;
    KeyboardDevices none({.folder = u"/nonexistent"_s, .isKeyboard = {}, .isSessionActive = {}}, keymap);
    none.start();
    EXPECT_FALSE(none.hears());

    const QTemporaryDir folder;
    QFile file(folder.filePath(u"event0"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    KeyboardDevices other({.folder = folder.path(),
                           .isKeyboard = KeyboardDevices::ofSystem().isKeyboard,
                           .isSessionActive = {}},
                          keymap);
    other.start();
    EXPECT_FALSE(other.hears()) << "a file is no keyboard";
}

} // namespace
} // namespace orvantile::platform::wayland
