#include "platform/linux/menus/DBusMenuModel.h"

#include "platform/linux/a11y/ReplyDecoder.h"

#include <chrono>
#include <limits>
#include <utility>

namespace orvantile::platform::menus {
namespace {

constexpr auto menuInterface = "com.canonical.dbusmenu";
const std::string registrar = "com.canonical.AppMenu.Registrar";
const std::string registrarPath = "/com/canonical/AppMenu/Registrar";

constexpr std::size_t mostWindows = 256;
constexpr std::size_t mostMenus = 32;
constexpr std::chrono::milliseconds settlingTime{120};

std::string rule(const std::string& service, const std::string& path, const std::string& member) {
    return "type='signal',sender='" + service + "',path='" + path +
           "',interface='com.canonical.dbusmenu',member='" + member + "'";
}

/// Whether these can be put into a rule and a call.
bool isPlace(const std::string& service, const std::string& path) {
    return sd_bus_service_name_is_valid(service.c_str()) > 0 && sd_bus_object_path_is_valid(path.c_str()) > 0;
}

} // namespace

DBusMenuModel::DBusMenuModel(SessionMenuBus& bus_) : bus(bus_) {
    bus.onLost([this] { forgetAll(); });
    settling.setSingleShot(true);
    settling.setInterval(settlingTime);
    QObject::connect(&settling, &QTimer::timeout, &settling, [this] {
        if (active) {
            read(*active);
        }
    });
}

void DBusMenuModel::follow(std::int32_t processIdentifier) {
    if (std::exchange(followed, processIdentifier) != processIdentifier) {
        leave();
        activeWindow = 0;
    }
}

void DBusMenuModel::windowActivated(const session::ActiveWindow& window) {
    if (window.processIdentifier != followed) {
        return;
    }
    const bool same = std::exchange(activeWindow, window.handle) == window.handle;
    if (isPlace(window.objects.menuService, window.objects.menuPath)) {
        found(window.handle, {window.objects.menuService, window.objects.menuPath});
    } else if (const auto known = placeOfWindow.find(window.handle); known != placeOfWindow.end()) {
        found(window.handle, known->second);
    } else if (!same) {
        leave();
        askRegistrar(window);
    }
}

/// X's windows have numbers of 32 bits; others cannot be registered.
void DBusMenuModel::askRegistrar(const session::ActiveWindow& window) {
    auto* connection = window.handle <= std::numeric_limits<std::uint32_t>::max() ? bus.open() : nullptr;
    if (connection == nullptr) {
        return;
    }
    watchRegistrar(*connection);
    auto question = connection->method(registrar, registrarPath, registrar.c_str(), "GetMenuForWindow");
    if (!question || sd_bus_message_set_auto_start(question.get(), 0) < 0 ||
        sd_bus_message_append(question.get(), "u", static_cast<std::uint32_t>(window.handle)) < 0) {
        return;
    }
    connection->call(std::move(question), self, [this, handle = window.handle](sd_bus_message& answer) {
        const auto service = a11y::isAnswer(answer) ? a11y::readBytes(answer) : std::nullopt;
        const auto path = service ? a11y::readPath(answer) : std::nullopt;
        if (path && handle == activeWindow && isPlace(*service, *path)) {
            found(handle, {*service, *path});
        }
    });
}

/// Programs register a window some time after it has come up.
void DBusMenuModel::watchRegistrar(a11y::BusConnection& connection) {
    if (registrations) {
        return;
    }
    registrations = connection.subscribe(
        "type='signal',interface='" + registrar + "',path='" + registrarPath + "',member='WindowRegistered'",
        [this](sd_bus_message& message) {
            const auto window = a11y::readNumber(message);
            const auto service = a11y::readBytes(message);
            const auto path = service ? a11y::readPath(message) : std::nullopt;
            if (window && path && *window == activeWindow && isPlace(*service, *path)) {
                found(*window, {*service, *path});
            }
        });
}

void DBusMenuModel::found(std::uint64_t window, Place place) {
    if (placeOfWindow.size() >= mostWindows) {
        placeOfWindow.clear();
    }
    placeOfWindow[window] = place;
    if (active == place) {
        return;
    }
    leave();
    if (menus.size() >= mostMenus) {
        menus.clear();
    }
    auto* connection = bus.open();
    if (connection == nullptr) {
        return;
    }
    auto& menu = menus[place];
    menu.subscriptions.push_back(connection->subscribe(
        rule(place.first, place.second, "ItemsPropertiesUpdated"), [this, place](sd_bus_message& message) {
            if (auto& changed = menus[place]; changed.layout) {
                changed.layout->update(message);
                changed.commands = changed.layout->commands();
                changed.outdated = changed.reading;
            }
        }));
    menu.subscriptions.push_back(
        connection->subscribe(rule(place.first, place.second, "LayoutUpdated"), [this](sd_bus_message&) {
            if (!settling.isActive()) {
                settling.start();
            }
        }));
    active = std::move(place);
    read(*active);
}

void DBusMenuModel::leave() {
    if (const auto former = active ? menus.find(*active) : menus.end(); former != menus.end()) {
        former->second.subscriptions.clear();
    }
    active.reset();
    settling.stop();
}

void DBusMenuModel::read(const Place& place) {
    auto* connection = bus.open();
    auto& menu = menus[place];
    if (connection == nullptr) {
        return;
    }
    if (menu.reading) {
        menu.outdated = true;
        return;
    }
    auto question = connection->method(place.first, place.second, menuInterface, "GetLayout");
    // Everything below the root, and of each item what a command needs.
    if (!question || sd_bus_message_set_auto_start(question.get(), 0) < 0 ||
        sd_bus_message_append(question.get(), "iias", 0, -1, 4, "label", "enabled", "visible", "shortcut") <
            0) {
        return;
    }
    menu.reading = true;
    menu.outdated = false;
    connection->call(std::move(question), self, [this, place](sd_bus_message& answer) {
        auto& told = menus[place];
        told.reading = false;
        told.layout = MenuLayout::read(answer);
        told.commands = told.layout ? told.layout->commands() : Commands();
        if (std::exchange(told.outdated, false)) {
            settling.start();
        }
    });
}

a11y::MenuAnswer DBusMenuModel::commandFor(const session::ActiveWindow& window,
                                           const keys::Candidates& candidates) {
    const auto place = placeOfWindow.find(window.handle);
    const auto menu = place == placeOfWindow.end() ? menus.end() : menus.find(place->second);
    if (menu == menus.end()) {
        return {};
    }
    auto told = answer(menu->second.commands, candidates);
    told.decided = !menu->second.commands.empty();
    return told;
}

a11y::MenuReach DBusMenuModel::reach(std::int32_t processIdentifier) const {
    const auto menu = active && processIdentifier == followed ? menus.find(*active) : menus.end();
    if (menu == menus.end() || !menu->second.layout) {
        return {};
    }
    return {.items = menu->second.layout->size(), .accelerators = menu->second.commands.size()};
}

void DBusMenuModel::forgetAll() {
    settling.stop();
    registrations.reset();
    active.reset();
    menus.clear();
    placeOfWindow.clear();
    activeWindow = 0;
}

} // namespace orvantile::platform::menus
