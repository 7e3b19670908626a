#include "support/desktop/HudListener.h"

#include <stdexcept>
#include <string_view>

namespace orvantile::test {
namespace {

constexpr auto accessible = "org.a11y.atspi.Accessible";
constexpr std::uint32_t notification = 101; ///< the role, as AT-SPI numbers it

} // namespace

HudListener::HudListener(const QString& busAddress) {
    sd_bus* opened = nullptr;
    sd_bus_new(&opened);
    bus.reset(opened);
    if (sd_bus_set_address(opened, busAddress.toLatin1().constData()) < 0 ||
        sd_bus_set_bus_client(opened, 1) < 0 || sd_bus_start(opened) < 0) {
        throw std::runtime_error("no accessibility bus to listen on");
    }
    for (const auto* event : {"object:state-changed:showing", "object:property-change:accessible-name"}) {
        sd_bus_call_method(opened, "org.a11y.atspi.Registry", "/org/a11y/atspi/registry",
                           "org.a11y.atspi.Registry", "RegisterEvent", nullptr, nullptr, "sass", event, 0,
                           "");
    }
    sd_bus_add_match(
        opened, nullptr,
        "type='signal',interface='org.a11y.atspi.Event.Object',member='StateChanged',arg0='showing'", nullptr,
        nullptr);
    sd_bus_add_match(opened, nullptr,
                     "type='signal',interface='org.a11y.atspi.Event.Object',member='PropertyChange',"
                     "arg0='accessible-name'",
                     nullptr, nullptr);
}

HudListener::~HudListener() = default;

void HudListener::attendTo(pid_t process) {
    attended = process;
    heard.clear();
    shown = false;
}

std::optional<QString> HudListener::awaitNext(QDeadlineTimer deadline) {
    while (heard.empty()) {
        if (!turn(deadline)) {
            return std::nullopt;
        }
    }
    auto label = heard.front();
    heard.pop_front();
    return label;
}

bool HudListener::awaitHidden(QDeadlineTimer deadline) {
    while (shown) {
        if (!turn(deadline)) {
            return false;
        }
    }
    return true;
}

bool HudListener::turn(const QDeadlineTimer& deadline) {
    sd_bus_message* message = nullptr;
    const int result = sd_bus_process(bus.get(), &message);
    if (message != nullptr) {
        handle(*message);
        sd_bus_message_unref(message);
        return true;
    }
    if (result != 0) {
        return result > 0;
    }
    if (deadline.hasExpired()) {
        return false;
    }
    using std::chrono::duration_cast;
    using std::chrono::microseconds;
    const auto left = duration_cast<microseconds>(deadline.remainingTimeAsDuration());
    sd_bus_wait(bus.get(), static_cast<std::uint64_t>(left.count()));
    return true;
}

void HudListener::handle(sd_bus_message& message) {
    const char* sender = sd_bus_message_get_sender(&message);
    const char* path = sd_bus_message_get_path(&message);
    const char* member = sd_bus_message_get_member(&message);
    const char* detail = nullptr;
    int value = 0;
    if (sender == nullptr || path == nullptr || member == nullptr ||
        sd_bus_message_read(&message, "si", &detail, &value) <= 0 || processOf(sender) != attended ||
        !isNotification(sender, path)) {
        return;
    }
    const bool renamed = std::string_view(member) == "PropertyChange";
    if (renamed || value != 0) {
        heard.push_back(nameOf(sender, path));
    }
    if (!renamed) {
        shown = value != 0;
    }
}

pid_t HudListener::processOf(const std::string& sender) const {
    sd_bus_message* answer = nullptr;
    std::uint32_t process = 0;
    if (sd_bus_call_method(bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "GetConnectionUnixProcessID", nullptr, &answer, "s", sender.c_str()) >= 0) {
        sd_bus_message_read(answer, "u", &process);
    }
    sd_bus_message_unref(answer);
    return static_cast<pid_t>(process);
}

bool HudListener::isNotification(const std::string& sender, const std::string& path) const {
    sd_bus_message* answer = nullptr;
    std::uint32_t role = 0;
    if (sd_bus_call_method(bus.get(), sender.c_str(), path.c_str(), accessible, "GetRole", nullptr, &answer,
                           "") >= 0) {
        sd_bus_message_read(answer, "u", &role);
    }
    sd_bus_message_unref(answer);
    return role == notification;
}

QString HudListener::nameOf(const std::string& sender, const std::string& path) const {
    char* name = nullptr;
    sd_bus_get_property_string(bus.get(), sender.c_str(), path.c_str(), accessible, "Name", nullptr, &name);
    const auto text = QString::fromUtf8(name);
    std::free(name);
    return text;
}

} // namespace orvantile::test
