#include "desktop/preferences/AccessibleClient.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace orvantile::test {
namespace {

constexpr auto accessibleInterface = "org.a11y.atspi.Accessible";
constexpr auto actionInterface = "org.a11y.atspi.Action";
constexpr auto componentInterface = "org.a11y.atspi.Component";
constexpr auto selectionInterface = "org.a11y.atspi.Selection";
constexpr auto valueInterface = "org.a11y.atspi.Value";
constexpr auto registryName = "org.a11y.atspi.Registry";
constexpr std::uint32_t screenCoordinates = 0;
constexpr std::uint32_t labelledBy = 2; // among relations
constexpr int deepest = 20;

std::vector<Accessible> readObjects(sd_bus_message& message) {
    std::vector<Accessible> all;
    if (sd_bus_message_enter_container(&message, 'a', "(so)") <= 0) {
        return all;
    }
    const char* name = nullptr;
    const char* path = nullptr;
    while (sd_bus_message_read(&message, "(so)", &name, &path) > 0) {
        all.push_back({name, path});
    }
    sd_bus_message_exit_container(&message);
    return all;
}

} // namespace

AccessibleClient::AccessibleClient(const QString& busAddress) {
    sd_bus* opened = nullptr;
    sd_bus_new(&opened);
    bus.reset(opened);
    if (sd_bus_set_address(opened, busAddress.toLatin1().constData()) < 0 ||
        sd_bus_set_bus_client(opened, 1) < 0 || sd_bus_start(opened) < 0) {
        throw std::runtime_error("no accessibility bus at " + busAddress.toStdString());
    }
    // Programs announce what somebody has asked for.
    for (const char* event : {"object:state-changed", "object:property-change", "object:children-changed",
                              "object:selection-changed", "window"}) {
        sd_bus_call_method(opened, registryName, "/org/a11y/atspi/registry", registryName, "RegisterEvent",
                           nullptr, nullptr, "s", event);
    }
    sd_bus_add_match(opened, nullptr, "type='signal'", nullptr, nullptr);
}

AccessibleClient::~AccessibleClient() = default;

Accessible AccessibleClient::desktop() {
    return {registryName, "/org/a11y/atspi/accessible/root"};
}

template <typename... Arguments>
AccessibleClient::Reply AccessibleClient::call(const Accessible& object, const char* interface,
                                               const char* method, const char* types,
                                               Arguments... arguments) const {
    sd_bus_message* reply = nullptr;
    const int result = sd_bus_call_method(bus.get(), object.bus.constData(), object.path.constData(),
                                          interface, method, nullptr, &reply, types, arguments...);
    return Reply(result < 0 ? nullptr : reply);
}

bool AccessibleClient::agreed(const Reply& reply) {
    int yes = 0;
    return reply && sd_bus_message_read(reply.get(), "b", &yes) > 0 && yes != 0;
}

QString AccessibleClient::textProperty(const Accessible& object, const char* property) const {
    char* text = nullptr;
    sd_bus_get_property_string(bus.get(), object.bus.constData(), object.path.constData(),
                               accessibleInterface, property, nullptr, &text);
    const std::unique_ptr<char, decltype(&std::free)> owned(text, &std::free);
    return QString::fromUtf8(text);
}

std::vector<Accessible> AccessibleClient::children(const Accessible& object) const {
    const auto reply = call(object, accessibleInterface, "GetChildren");
    return reply ? readObjects(*reply) : std::vector<Accessible>();
}

QString AccessibleClient::name(const Accessible& object) const {
    return textProperty(object, "Name");
}

QString AccessibleClient::description(const Accessible& object) const {
    return textProperty(object, "Description");
}

QString AccessibleClient::role(const Accessible& object) const {
    const auto reply = call(object, accessibleInterface, "GetRoleName");
    const char* role = nullptr;
    return reply && sd_bus_message_read(reply.get(), "s", &role) > 0 ? QString::fromUtf8(role) : QString();
}

bool AccessibleClient::has(const Accessible& object, AccessibleState state) const {
    const auto reply = call(object, accessibleInterface, "GetState");
    const void* bytes = nullptr;
    std::size_t size = 0;
    std::array<std::uint32_t, 2> words{};
    if (!reply || sd_bus_message_read_array(reply.get(), 'u', &bytes, &size) <= 0 || size != sizeof words) {
        return false;
    }
    std::memcpy(words.data(), bytes, size);
    const auto bit = static_cast<unsigned>(state);
    return ((words.at(bit / 32) >> (bit % 32)) & 1U) != 0;
}

QStringList AccessibleClient::labels(const Accessible& object) const {
    std::vector<Accessible> targets;
    const auto reply = call(object, accessibleInterface, "GetRelationSet");
    if (!reply || sd_bus_message_enter_container(reply.get(), 'a', "(ua(so))") <= 0) {
        return {};
    }
    while (sd_bus_message_enter_container(reply.get(), 'r', "ua(so)") > 0) {
        std::uint32_t kind = 0;
        sd_bus_message_read(reply.get(), "u", &kind);
        const auto related = readObjects(*reply);
        if (kind == labelledBy) {
            targets.insert(targets.end(), related.begin(), related.end());
        }
        sd_bus_message_exit_container(reply.get());
    }
    QStringList texts;
    for (const auto& target : targets) {
        texts.append(name(target));
    }
    return texts;
}

QRect AccessibleClient::extents(const Accessible& object) const {
    const auto reply = call(object, componentInterface, "GetExtents", "u", screenCoordinates);
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    if (!reply || sd_bus_message_read(reply.get(), "(iiii)", &x, &y, &width, &height) <= 0) {
        return {};
    }
    return {x, y, width, height};
}

QStringList AccessibleClient::actions(const Accessible& object) const {
    QStringList names;
    const auto reply = call(object, actionInterface, "GetActions");
    if (!reply || sd_bus_message_enter_container(reply.get(), 'a', "(sss)") <= 0) {
        return names;
    }
    const char* name = nullptr;
    const char* description = nullptr;
    const char* keys = nullptr;
    while (sd_bus_message_read(reply.get(), "(sss)", &name, &description, &keys) > 0) {
        names.append(QString::fromUtf8(name));
    }
    return names;
}

bool AccessibleClient::perform(const Accessible& object, const QString& action) const {
    const auto index = actions(object).indexOf(action);
    return index >= 0 && agreed(call(object, actionInterface, "DoAction", "i", static_cast<int>(index)));
}

bool AccessibleClient::focus(const Accessible& object) const {
    return agreed(call(object, componentInterface, "GrabFocus"));
}

bool AccessibleClient::select(const Accessible& object, int child) const {
    return agreed(call(object, selectionInterface, "SelectChild", "i", child));
}

std::optional<AccessibleValue> AccessibleClient::value(const Accessible& object) const {
    AccessibleValue value;
    const auto read = [&](const char* property, double& into) {
        return sd_bus_get_property_trivial(bus.get(), object.bus.constData(), object.path.constData(),
                                           valueInterface, property, nullptr, 'd', &into) >= 0;
    };
    if (read("MinimumValue", value.minimum) && read("MaximumValue", value.maximum) &&
        read("MinimumIncrement", value.step) && read("CurrentValue", value.current)) {
        return value;
    }
    return std::nullopt;
}

void AccessibleClient::setValue(const Accessible& object, double value) const {
    sd_bus_set_property(bus.get(), object.bus.constData(), object.path.constData(), valueInterface,
                        "CurrentValue", nullptr, "d", value);
}

std::vector<Accessible> AccessibleClient::shownBelow(const Accessible& object) const {
    std::vector<Accessible> all;
    const std::function<void(const Accessible&, int)> collect = [&](const Accessible& parent, int depth) {
        for (const auto& child : children(parent)) {
            if (depth < deepest && has(child, AccessibleState::showing)) {
                all.push_back(child);
                collect(child, depth + 1);
            }
        }
    };
    collect(object, 0);
    return all;
}

std::optional<Accessible> AccessibleClient::find(const Accessible& below, const QString& wantedRole,
                                                 const QString& wantedName) const {
    for (const auto& object : shownBelow(below)) {
        if (name(object) == wantedName && role(object) == wantedRole) {
            return object;
        }
    }
    return std::nullopt;
}

bool AccessibleClient::await(const std::function<bool()>& condition, const QDeadlineTimer& deadline) const {
    constexpr std::uint64_t interval = 50'000; // microseconds; not everything is announced
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        sd_bus_wait(bus.get(), interval);
        while (sd_bus_process(bus.get(), nullptr) > 0) {
        }
    }
    return true;
}

} // namespace orvantile::test
