#include "platform/linux/a11y/KeystrokeListener.h"

#include "support/desktop/BusTraffic.h"
#include "support/desktop/SessionBusCalls.h"
#include "support/wayland/PrivateWaylandSession.h"

#include <atomic>
#include <csignal>
#include <gmock/gmock.h>
#include <thread>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::test {
namespace {

using platform::a11y::Keystroke;
using platform::a11y::KeystrokeListener;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

constexpr auto registry = "org.a11y.atspi.Registry";
constexpr auto controllerPath = "/org/a11y/atspi/registry/deviceeventcontroller";
constexpr auto controller = "org.a11y.atspi.DeviceEventController";

constexpr int shift = 1;
constexpr int control = 4;
constexpr int level3 = 128;

/// The real registry, asked as applications ask it.
class KeystrokeListenerTest : public ::testing::Test {
protected:
    KeystrokeListenerTest() {
        sd_bus* opened = nullptr;
        sd_bus_new(&opened);
        bus.reset(opened);
        sd_bus_set_address(opened, address().c_str());
        sd_bus_set_bus_client(opened, 1);
        if (sd_bus_start(opened) < 0) {
            throw std::runtime_error("no accessibility bus");
        }
    }

    [[nodiscard]] std::string address() const {
        return session.accessibilityBusAddress().section(u',', 0, 0).toStdString();
    }

    void listen() {
        listener = std::make_unique<KeystrokeListener>(address(), [this] { ++heard; });
    }

    [[nodiscard]] bool awaitHearing() const {
        const QDeadlineTimer deadline(patience);
        while (!listener->hears() && !deadline.hasExpired()) {
            std::this_thread::sleep_for(5ms);
        }
        return listener->hears();
    }

    /// Whether somebody keeps the key from the application; absent without an answer.
    std::optional<bool> press(int symbol, int code, int modifiers, const char* text, unsigned kind = 0) {
        sd_bus_message* answer = nullptr;
        int consumed = -1;
        if (sd_bus_call_method(bus.get(), registry, controllerPath, controller, "NotifyListenersSync",
                               nullptr, &answer, "(uinnisb)", kind, symbol, code, modifiers, 1, text,
                               1) >= 0) {
            sd_bus_message_read(answer, "b", &consumed);
        }
        sd_bus_message_unref(answer);
        return consumed < 0 ? std::nullopt : std::optional(consumed != 0);
    }

    /// How many listeners the registry knows.
    [[nodiscard]] int listeners() const {
        sd_bus_message* answer = nullptr;
        int count = 0;
        if (sd_bus_call_method(bus.get(), registry, controllerPath, controller, "GetKeystrokeListeners",
                               nullptr, &answer, "") >= 0 &&
            sd_bus_message_enter_container(answer, SD_BUS_TYPE_ARRAY, nullptr) > 0) {
            while (sd_bus_message_skip(answer, "(souua(iisi)u(bbb))") > 0) {
                ++count;
            }
        }
        sd_bus_message_unref(answer);
        return count;
    }

    struct CloseBus {
        void operator()(sd_bus* open) const { sd_bus_flush_close_unref(open); }
    };

    PrivateWaylandSession session;
    std::unique_ptr<sd_bus, CloseBus> bus;
    std::atomic<int> heard = 0;
    std::unique_ptr<KeystrokeListener> listener;
};

TEST_F(KeystrokeListenerTest, hearsShortcutsAndLeavesThemToTheApplication) {
    listen();
    ASSERT_TRUE(awaitHearing());
    EXPECT_EQ(press('n', 57, control, "n"), false);
    EXPECT_EQ(press('N', 57, control | shift, "N"), false);
    EXPECT_EQ(press(XKB_KEY_F5, 71, 0, "F5"), false);
    EXPECT_EQ(press(XKB_KEY_Delete, 119, shift, "Delete"), false);
    EXPECT_EQ(heard, 4) << "before the application goes on";
    EXPECT_THAT(listener->take(),
                ElementsAre(Keystroke{XKB_KEY_n, 57, control}, Keystroke{XKB_KEY_N, 57, control | shift},
                            Keystroke{XKB_KEY_F5, 71, 0}, Keystroke{XKB_KEY_Delete, 119, shift}));
    EXPECT_THAT(listener->take(), IsEmpty());
}

TEST_F(KeystrokeListenerTest, isNotEvenToldWhatIsTyped) {
    listen();
    ASSERT_TRUE(awaitHearing());
    const BusTraffic traffic(session.accessibilityBusAddress());
    (void)traffic.during(50ms);
    press('a', 38, 0, "a");
    press('A', 38, shift, "A");
    press('@', 24, level3, "@");
    press(XKB_KEY_space, 65, 0, " ");
    press(XKB_KEY_Control_L, 37, 0, "Control_L");
    press('n', 57, control, "n", 1); // let go
    int calls = 0;
    for (const auto& message : traffic.during(200ms)) {
        calls += message.member == QStringLiteral("NotifyEvent") ? 1 : 0;
    }
    EXPECT_EQ(calls, 0);
    EXPECT_THAT(listener->take(), IsEmpty());
}

TEST_F(KeystrokeListenerTest, givesUpItsPlaceWhenItGoes) {
    listen();
    ASSERT_TRUE(awaitHearing());
    EXPECT_GT(listeners(), 0);
    listener.reset();
    EXPECT_EQ(listeners(), 0);
}

TEST_F(KeystrokeListenerTest, asksAgainWhenTheRegistryIsRestarted) {
    listen();
    ASSERT_TRUE(awaitHearing());
    const auto process =
        SessionBusCalls(session.accessibilityBusAddress()).ownerOf(QString::fromLatin1(registry));
    ASSERT_GT(process, 0);
    ASSERT_EQ(kill(process, SIGKILL), 0);
    const QDeadlineTimer deadline(patience);
    while (listener->take().empty() && !deadline.hasExpired()) {
        press('n', 57, control, "n"); // starts another
        std::this_thread::sleep_for(20ms);
    }
    EXPECT_TRUE(listener->hears());
    (void)listener->take();
    press('n', 57, control, "n");
    EXPECT_EQ(listener->take().size(), 1U) << "asked once";
}

TEST_F(KeystrokeListenerTest, endsWithTheBus) {
    listen();
    ASSERT_TRUE(awaitHearing());
    session.stopAccessibility();
    const QDeadlineTimer deadline(patience);
    while (listener->hears() && !deadline.hasExpired()) {
        std::this_thread::sleep_for(5ms);
    }
    EXPECT_FALSE(listener->hears());
}

TEST(KeystrokeListenerWithoutBus, hearsNothing) {
    KeystrokeListener listener("unix:path=/nonexistent/bus", [] {});
    EXPECT_FALSE(listener.hears());
    EXPECT_THAT(listener.take(), IsEmpty());
}

} // namespace
} // namespace orvantile::test
