#include "platform/linux/menus/GtkMenuModel.h"

#include "platform/linux/a11y/ReplyDecoder.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace orvantile::platform::menus {
namespace {

constexpr auto menusInterface = "org.gtk.Menus";
constexpr std::chrono::milliseconds settlingTime{50};

bool exportsMenu(const session::WindowObjects& objects) {
    return sd_bus_service_name_is_valid(objects.gtkBusName.c_str()) > 0 &&
           sd_bus_object_path_is_valid(objects.gtkMenuBar.c_str()) > 0;
}

} // namespace

GtkMenuModel::GtkMenuModel(SessionMenuBus& bus_) : bus(bus_) {
    bus.onLost([this] {
        joined = {};
        leave();
    });
    settling.setSingleShot(true);
    settling.setInterval(settlingTime);
    QObject::connect(&settling, &QTimer::timeout, &settling, [this] { conclude(); });
}

GtkMenuModel::~GtkMenuModel() {
    leave();
}

void GtkMenuModel::follow(std::int32_t processIdentifier) {
    if (std::exchange(followed, processIdentifier) != processIdentifier) {
        leave();
    }
}

void GtkMenuModel::windowActivated(const session::ActiveWindow& window) {
    if (window.processIdentifier != followed || window.objects == joined) {
        return;
    }
    leave();
    if (exportsMenu(window.objects)) {
        join(window.objects);
    }
}

void GtkMenuModel::join(const session::WindowObjects& objects) {
    auto* connection = bus.open();
    if (connection == nullptr) {
        return;
    }
    joined = objects;
    self = std::make_shared<int>();
    changes = connection->subscribe("type='signal',sender='" + objects.gtkBusName + "',path='" +
                                        objects.gtkMenuBar + "',interface='org.gtk.Menus',member='Changed'",
                                    [this](sd_bus_message& message) {
                                        menu.changed(message);
                                        askForGroups();
                                        changed();
                                    });
    actions = ActionGroups(*connection, objects);
    menuActions = actionsAt(*connection, objects.gtkBusName, objects.gtkMenuBar);
    askForGroups();
}

void GtkMenuModel::leave() {
    settling.stop();
    if (!joined.gtkMenuBar.empty() && !menu.groups().empty()) {
        if (auto* connection = bus.open()) {
            auto order = connection->method(joined.gtkBusName, joined.gtkMenuBar, menusInterface, "End");
            const std::vector<std::uint32_t> groups(menu.groups().begin(), menu.groups().end());
            if (order && sd_bus_message_append_array(order.get(), SD_BUS_TYPE_UINT32, groups.data(),
                                                     groups.size() * sizeof groups.front()) >= 0) {
                connection->call(std::move(order), self, [](sd_bus_message&) {});
            }
        }
    }
    self.reset();
    joined = {};
    changes.reset();
    actions = {};
    menuActions.reset();
    menu = {};
    accelerated.clear();
    items = 0;
}

void GtkMenuModel::askForGroups() {
    const auto groups = menu.takeUnknownGroups();
    auto* connection = bus.open();
    if (groups.empty() || connection == nullptr) {
        return;
    }
    auto question = connection->method(joined.gtkBusName, joined.gtkMenuBar, menusInterface, "Start");
    if (!question || sd_bus_message_append_array(question.get(), SD_BUS_TYPE_UINT32, groups.data(),
                                                 groups.size() * sizeof groups.front()) < 0) {
        return;
    }
    connection->call(std::move(question), self, [this](sd_bus_message& answer) {
        if (a11y::isAnswer(answer)) {
            menu.started(answer);
            askForGroups();
            conclude();
        }
    });
}

void GtkMenuModel::changed() {
    if (!settling.isActive()) {
        settling.start();
    }
}

void GtkMenuModel::conclude() {
    accelerated = menu.items();
    items = accelerated.size();
    std::erase_if(accelerated, [](const auto& item) { return !item.accelerator; });
}

bool GtkMenuModel::isEnabled(const std::string& action) const {
    if (const auto known = actions.isEnabled(action)) {
        return *known;
    }
    const auto dot = action.find('.');
    return dot != std::string::npos && menuActions && menuActions->isEnabled(action.substr(dot + 1));
}

a11y::MenuAnswer GtkMenuModel::commandFor(const session::ActiveWindow& window,
                                          const keys::Candidates& candidates) {
    if (joined.gtkMenuBar.empty() || window.objects != joined) {
        return {};
    }
    Commands meant;
    for (const auto& item : accelerated) {
        if (std::ranges::find(candidates, *item.accelerator) != candidates.end()) {
            meant.push_back({item.title, *item.accelerator, isEnabled(item.action)});
        }
    }
    return answer(meant, candidates);
}

a11y::MenuReach GtkMenuModel::reach(std::int32_t processIdentifier) const {
    return processIdentifier == followed ? a11y::MenuReach{.items = items, .accelerators = accelerated.size()}
                                         : a11y::MenuReach();
}

} // namespace orvantile::platform::menus
