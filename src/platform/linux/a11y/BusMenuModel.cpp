#include "platform/linux/a11y/BusMenuModel.h"

#include <utility>

namespace orvantile::platform::a11y {
namespace {

constexpr std::chrono::seconds relaxationTime{1};
constexpr std::size_t mostAsked = 256;

} // namespace

BusMenuModel::BusMenuModel(std::function<void()> drainFirst) : bus(std::move(drainFirst)) {
    bus.onConnected = [this] { connected(); };
    bus.onLost = [this] { lost(); };
    bus.onSwitchRead = [this] { announceAvailable(); };
    relaxation.setSingleShot(true);
    relaxation.setInterval(relaxationTime);
    QObject::connect(&relaxation, &QTimer::timeout, &relaxation, [this] { registration.reset(); });
    bus.start();
}

bool BusMenuModel::isAvailable() const {
    return bus.isConnected() && bus.isEnabled();
}

void BusMenuModel::announceAvailable() {
    if (std::exchange(announced, isAvailable()) != isAvailable() && announced && onAvailable) {
        onAvailable();
    }
}

MenuReach BusMenuModel::reach(std::int32_t processIdentifier) const {
    MenuReach total{.asked = asked.contains(processIdentifier)};
    for (const auto& [name, application] : applications) {
        if (application.process == processIdentifier && application.menus) {
            total.items += application.menus->items().size();
            total.accelerators += application.menus->items().acceleratedCount();
        }
    }
    return total;
}

void BusMenuModel::follow(std::int32_t processIdentifier) {
    bus.retry();
    if (std::exchange(followed, processIdentifier) != processIdentifier) {
        latestWindow.reset();
    }
    bool known = false;
    for (auto& [name, application] : applications) {
        if (application.process == followed && followed >= 0) {
            followApplication(name, application);
            known = true;
        } else if (application.menus) {
            application.menus->unfollow();
        }
    }
    if (followed < 0) {
        relaxation.start();
        return;
    }
    relaxation.stop();
    noteAsked();
    if (directory && !registration) {
        registration = std::make_unique<EventRegistration>(bus.connection(), EventRegistration::ofMenus);
    }
    if (directory && !known) {
        directory->refresh();
    }
}

void BusMenuModel::noteAsked() {
    if (asked.size() >= mostAsked) {
        asked.clear();
    }
    if (directory && followed >= 0) {
        asked.insert(followed);
    }
}

void BusMenuModel::followApplication(const std::string& name, Application& application) {
    if (!application.menus) {
        application.menus = std::make_unique<ApplicationMenus>(bus.connection(), name);
        application.menus->onComplete = [this, process = application.process] {
            if (onTableComplete) {
                onTableComplete(process);
            }
        };
    }
    application.menus->follow();
    if (latestWindow) {
        application.menus->windowActivated(*latestWindow);
    }
}

void BusMenuModel::windowActivated(const session::ActiveWindow& window) {
    bus.retry();
    if (window.processIdentifier != followed) {
        return;
    }
    latestWindow = window;
    for (auto& [name, application] : applications) {
        if (application.process == followed && application.menus) {
            application.menus->windowActivated(window);
        }
    }
}

void BusMenuModel::menuClosed() {
    for (auto& [name, application] : applications) {
        if (application.process == followed && application.menus) {
            application.menus->menuClosed();
        }
    }
}

MenuAnswer BusMenuModel::commandFor(const session::ActiveWindow& window, const keys::Candidates& candidates) {
    bus.retry();
    MenuAnswer answer;
    for (auto& [name, application] : applications) {
        if (application.process == window.processIdentifier && application.menus && !answer.command) {
            const auto each = application.menus->commandFor(window, candidates);
            answer = {.command = each.command, .decided = answer.decided || each.decided};
        }
    }
    return answer;
}

void BusMenuModel::connected() {
    directory = std::make_unique<ApplicationDirectory>(bus.connection());
    directory->onAppeared = [this](std::int32_t process, const std::string& name) {
        auto& application = applications[name];
        application.process = process;
        if (process == followed) {
            followApplication(name, application);
        }
    };
    directory->onGone = [this](const std::string& name) { applications.erase(name); };
    directory->onRegistryRestarted = [this] {
        if (registration) {
            registration->renew();
        }
    };
    directory->start();
    noteAsked();
    if (followed >= 0) {
        registration = std::make_unique<EventRegistration>(bus.connection(), EventRegistration::ofMenus);
    }
    announceAvailable();
}

void BusMenuModel::lost() {
    announced = false;
    registration.reset();
    applications.clear();
    asked.clear();
    directory.reset();
}

std::unique_ptr<BusMenuModel> makeBusMenuModel(std::function<void()> drainFirst) {
    return std::make_unique<BusMenuModel>(std::move(drainFirst));
}

} // namespace orvantile::platform::a11y
