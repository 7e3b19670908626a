#include "platform/linux/a11y/KeystrokeListener.h"

#include "platform/linux/a11y/BusHandles.h"
#include "platform/linux/a11y/ReplyDecoder.h"
#include "platform/linux/desktop/FileDescriptor.h"
#include "platform/linux/keys/ShortcutKeys.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <ctime>
#include <limits>
#include <mutex>
#include <poll.h>
#include <string_view>
#include <sys/eventfd.h>
#include <thread>
#include <utility>

namespace orvantile::platform::a11y {
namespace {

constexpr auto registry = "org.a11y.atspi.Registry";
constexpr auto controllerPath = "/org/a11y/atspi/registry/deviceeventcontroller";
constexpr auto controller = "org.a11y.atspi.DeviceEventController";
constexpr auto listenerPath = "/org/orvantile/keys";
constexpr auto listenerInterface = "org.a11y.atspi.DeviceEventListener";

/// The eight modifiers of every keymap.
enum Modifier : std::uint32_t { control = 4, alt = 8, third = 32, super = 64, all = 255 };

constexpr std::uint32_t commanding = control | alt | super;
constexpr std::uint32_t pressed = 1; ///< the set of kinds of events that has this one alone
constexpr std::size_t mostStrokes = 64;

bool mayBeShortcut(const Keystroke& stroke) {
    return !keys::isModifierKey(stroke.symbol) &&
           ((stroke.modifiers & commanding) != 0 || keys::isFunctionOrNavigationKey(stroke.symbol));
}

} // namespace

/// What runs in the thread.
class KeystrokeListener::Ear {
public:
    Ear(std::string address_, std::function<void()> onHeard_)
        : address(std::move(address_)),
          onHeard(std::move(onHeard_)),
          stop(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
          thread([this] { run(); }) {}

    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;

    ~Ear() {
        eventfd_write(stop.get(), 1);
        thread.join();
    }

    std::atomic<bool> accepted = false;

    std::vector<Keystroke> take() {
        const std::scoped_lock lock(mutex);
        return std::exchange(strokes, {});
    }

private:
    void run() {
        sd_bus* created = nullptr;
        if (sd_bus_new(&created) < 0) {
            return;
        }
        bus.reset(created);
        if (sd_bus_set_address(bus.get(), address.c_str()) >= 0 && sd_bus_set_bus_client(bus.get(), 1) >= 0 &&
            sd_bus_start(bus.get()) >= 0 && listen()) {
            while (turn()) {
            }
            takeBack();
        }
        accepted = false;
        bus.reset();
    }

    bool listen() {
        constexpr auto restarted =
            "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
            "member='NameOwnerChanged',arg0='org.a11y.atspi.Registry'";
        return sd_bus_add_object(bus.get(), nullptr, listenerPath, notified, this) >= 0 &&
               sd_bus_add_match_async(bus.get(), nullptr, restarted, ownerChanged, nullptr, this) >= 0 &&
               ask();
    }

    /// The registry wants to be told each set of modifiers by itself.
    bool ask() {
        for (std::uint32_t modifiers = 0; modifiers <= all; ++modifiers) {
            if ((modifiers & third) == 0 && !ask(modifiers)) {
                return false;
            }
        }
        return true;
    }

    bool ask(std::uint32_t modifiers) {
        const auto order = begin("RegisterKeystrokeListener");
        if (!order || sd_bus_message_open_container(order.get(), SD_BUS_TYPE_ARRAY, "(iisi)") < 0) {
            return false;
        }
        if ((modifiers & commanding) == 0) { // an empty list means all keys
            for (const auto symbol : keys::functionAndNavigationKeys()) {
                sd_bus_message_append(order.get(), "(iisi)", 0, static_cast<int>(symbol), "", 0);
            }
        }
        // Neither before others nor able to consume, and from applications rather than from the X server.
        return sd_bus_message_close_container(order.get()) >= 0 &&
               sd_bus_message_append(order.get(), "uu(bbb)", modifiers, pressed, 0, 0, 0) >= 0 &&
               sd_bus_call_async(bus.get(), nullptr, order.get(), answered, this, 0) >= 0;
    }

    /// The registry would go on calling a listener that has gone, which costs applications time. All sets of
    /// modifiers are given up at once.
    void takeBack() {
        const auto order = begin("DeregisterKeystrokeListener");
        if (order && sd_bus_message_append(order.get(), "a(iisi)uu", 0, 0, pressed) >= 0 &&
            sd_bus_send(bus.get(), order.get(), nullptr) >= 0) {
            sd_bus_flush(bus.get());
        }
    }

    [[nodiscard]] MessageHandle begin(const char* method) const {
        sd_bus_message* created = nullptr;
        sd_bus_message_new_method_call(bus.get(), &created, registry, controllerPath, controller, method);
        MessageHandle order(created);
        return order && sd_bus_message_append(order.get(), "o", listenerPath) >= 0 ? std::move(order)
                                                                                   : nullptr;
    }

    bool turn() {
        int result = 1;
        while ((result = sd_bus_process(bus.get(), nullptr)) > 0) {
        }
        std::uint64_t deadline = 0;
        const int events = sd_bus_get_events(bus.get());
        if (result < 0 || events < 0 || sd_bus_get_timeout(bus.get(), &deadline) < 0) {
            return false;
        }
        std::array<pollfd, 2> sources{pollfd{sd_bus_get_fd(bus.get()), static_cast<short>(events), 0},
                                      pollfd{stop.get(), POLLIN, 0}};
        const auto wait = waitUntil(deadline);
        const int ready =
            ppoll(sources.data(), sources.size(),
                  deadline == std::numeric_limits<std::uint64_t>::max() ? nullptr : &wait, nullptr);
        return (ready >= 0 || errno == EINTR) && sources[1].revents == 0;
    }

    static timespec waitUntil(std::uint64_t microseconds) {
        constexpr std::uint64_t million = 1'000'000;
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        const auto passed = static_cast<std::uint64_t>(now.tv_sec) * million +
                            static_cast<std::uint64_t>(now.tv_nsec) / 1'000;
        const auto left = microseconds > passed ? microseconds - passed : 0;
        return {static_cast<time_t>(left / million), static_cast<long>(left % million * 1'000)};
    }

    static int answered(sd_bus_message* answer, void* self, sd_bus_error*) {
        static_cast<Ear*>(self)->accepted = isAnswer(*answer);
        return 0;
    }

    static int ownerChanged(sd_bus_message* message, void* self, sd_bus_error*) {
        const auto name = readBytes(*message);
        const auto former = readBytes(*message);
        const auto owner = readBytes(*message);
        auto& ear = *static_cast<Ear*>(self);
        if (owner && owner->empty()) {
            ear.accepted = false;
            ear.forgotten = true;
        } else if (owner && std::exchange(ear.forgotten, false)) {
            ear.ask();
        }
        return 0;
    }

    static int notified(sd_bus_message* message, void* self, sd_bus_error*) {
        if (sd_bus_message_is_method_call(message, listenerInterface, "NotifyEvent") <= 0) {
            return 0;
        }
        static_cast<Ear*>(self)->hear(*message);
        return sd_bus_reply_method_return(message, "b", 0);
    }

    void hear(sd_bus_message& message) {
        std::uint32_t kind = 0;
        Keystroke stroke;
        if (sd_bus_message_has_signature(&message, "(uinnisb)") > 0) { // of older registries
            std::int16_t code = 0;
            std::int16_t modifiers = 0;
            if (sd_bus_message_enter_container(&message, SD_BUS_TYPE_STRUCT, "uinnisb") <= 0 ||
                sd_bus_message_read(&message, "uinn", &kind, &stroke.symbol, &code, &modifiers) <= 0) {
                return;
            }
            stroke.code = static_cast<std::uint16_t>(code);
            stroke.modifiers = static_cast<std::uint16_t>(modifiers);
        } else if (sd_bus_message_enter_container(&message, SD_BUS_TYPE_STRUCT, "uiuuisb") <= 0 ||
                   sd_bus_message_read(&message, "uiuu", &kind, &stroke.symbol, &stroke.code,
                                       &stroke.modifiers) <= 0) {
            return;
        }
        constexpr std::uint32_t press = 0;
        stroke.modifiers &= all;
        if (kind != press || !mayBeShortcut(stroke)) {
            return;
        }
        {
            const std::scoped_lock lock(mutex);
            if (strokes.size() >= mostStrokes) {
                return;
            }
            strokes.push_back(stroke);
        }
        onHeard();
    }

    std::string address;
    std::function<void()> onHeard;
    desktop::FileDescriptor stop;
    BusHandle bus;
    bool forgotten = false; ///< the registry has gone, and with it what it was asked
    std::mutex mutex;
    std::vector<Keystroke> strokes;
    std::thread thread; ///< last, so that all else stands when it starts
};

KeystrokeListener::KeystrokeListener(std::string address, std::function<void()> onHeard)
    : ear(std::make_unique<Ear>(std::move(address), std::move(onHeard))) {}

KeystrokeListener::~KeystrokeListener() = default;

bool KeystrokeListener::hears() const {
    return ear->accepted;
}

std::vector<Keystroke> KeystrokeListener::take() {
    return ear->take();
}

} // namespace orvantile::platform::a11y
