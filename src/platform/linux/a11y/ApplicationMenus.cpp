#include "platform/linux/a11y/ApplicationMenus.h"

#include "platform/linux/a11y/MenuItemNode.h"

#include <algorithm>
#include <utility>

namespace orvantile::platform::a11y {
namespace {

constexpr auto accessible = "org.a11y.atspi.Accessible";
constexpr auto properties = "org.freedesktop.DBus.Properties";
const std::string root = "/org/a11y/atspi/accessible/root";

constexpr std::size_t mostToplevels = 64;
constexpr std::size_t mostWindows = 256;
constexpr std::size_t mostContainers = 2'000;

/// An office suite has a few hundred items with keys.
constexpr std::size_t mostReadAgain = 600;

/// Menus that are being filled change many times in a row.
constexpr std::chrono::milliseconds settling{120};

/// An application has usually followed a command by then.
constexpr std::chrono::milliseconds followUp{150};

/// How often a window of which nothing is known is read again at the most.
constexpr std::chrono::milliseconds doubtInterval{2000};

bool isDialog(std::uint32_t role) {
    const AccessibleRole known{role};
    return known == AccessibleRole::dialog || known == AccessibleRole::alert ||
           known == AccessibleRole::fileChooser || known == AccessibleRole::fontChooser;
}

bool isMenuPart(std::uint32_t role) {
    const AccessibleRole known{role};
    return known == AccessibleRole::menu || known == AccessibleRole::menuBar ||
           known == AccessibleRole::menuItem || known == AccessibleRole::checkMenuItem ||
           known == AccessibleRole::radioMenuItem;
}

std::string pathOf(sd_bus_message& message) {
    const char* path = sd_bus_message_get_path(&message);
    return path == nullptr ? std::string() : path;
}

} // namespace

/// One reading of the application's windows.
struct ApplicationMenus::Listing {
    std::vector<Toplevel> toplevels;
    std::size_t unanswered = 0;
    bool outdated = false; ///< something has changed since it began
};

ApplicationMenus::ApplicationMenus(BusConnection& bus_, std::string name_)
    : bus(bus_),
      name(std::move(name_)),
      requests(bus, name),
      reader(name, requests, table) {
    requests.onRoom = [this] { return reader.readOn(); };
    requests.onDone = [this] {
        if (everRead && !currentListing && onComplete) {
            onComplete();
        }
    };
    requests.onSilent = [this] {
        reader.abandon();
        currentListing.reset();
    };
    requests.onAwake = [this] { readEverything(); };
    for (auto* timer : {&rereadWindows, &rereadFired}) {
        timer->setSingleShot(true);
    }
    rereadWindows.setInterval(settling);
    rereadFired.setInterval(followUp);
    QObject::connect(&rereadWindows, &QTimer::timeout, &rereadWindows, [this] {
        for (const auto& toplevel : toplevels) {
            reader.readWindow(toplevel.path);
        }
    });
    QObject::connect(&rereadFired, &QTimer::timeout, &rereadFired, [this] {
        reader.readItem(fired);
        readTitlesAgain();
    });
}

void ApplicationMenus::follow() {
    if (!subscriptions.empty()) {
        return;
    }
    subscribe();
    readEverything();
}

void ApplicationMenus::unfollow() {
    subscriptions.clear();
    rereadWindows.stop();
    rereadFired.stop();
}

void ApplicationMenus::subscribe() {
    const auto rule = [this](const std::string& rest) {
        return "type='signal',sender='" + name + "',interface='org.a11y.atspi.Event.Object'," + rest;
    };
    subscriptions.push_back(bus.subscribe(rule("member='StateChanged',arg0='sensitive'"),
                                          [this](sd_bus_message& message) { stateChanged(message); }));
    subscriptions.push_back(bus.subscribe(rule("member='PropertyChange',arg0='accessible-name'"),
                                          [this](sd_bus_message& message) { nameChanged(message); }));
    subscriptions.push_back(bus.subscribe(rule("member='ChildrenChanged'"),
                                          [this](sd_bus_message& message) { childrenChanged(message); }));
}

void ApplicationMenus::readEverything() {
    readToplevels();
    if (std::exchange(everRead, true)) {
        reader.refreshAccelerated();
        readWindowsLater();
    }
}

/// Commands and dialogs change titles ("Undo Paste"), and not every toolkit tells.
void ApplicationMenus::readTitlesAgain() {
    if (table.acceleratedCount() <= mostReadAgain) {
        reader.refreshAccelerated();
    }
}

void ApplicationMenus::readWindowsLater() {
    if (!rereadWindows.isActive()) {
        rereadWindows.start();
    }
}

void ApplicationMenus::readToplevels() {
    if (requests.isSilent()) {
        return; // everything is read when it answers again
    }
    if (currentListing) {
        currentListing->outdated = true;
        return;
    }
    const auto listing = std::make_shared<Listing>();
    currentListing = listing;
    ++listing->unanswered;
    requests.ask({root, accessible, "GetChildren", {}, [this, listing](sd_bus_message& answer) {
                      if (!isAnswer(answer)) {
                          currentListing.reset();
                          return;
                      }
                      ReferenceList children(answer);
                      for (auto& child : children.next(mostToplevels)) {
                          if (child.name == name) {
                              listing->toplevels.push_back({.path = std::move(child.path)});
                          }
                      }
                      for (std::size_t index = 0; index < listing->toplevels.size(); ++index) {
                          readToplevel(listing, index);
                      }
                      listed(listing);
                  }});
}

void ApplicationMenus::readToplevel(const std::shared_ptr<Listing>& listing, std::size_t index) {
    const std::string path = listing->toplevels[index].path;
    listing->unanswered += 3;
    requests.ask({path, accessible, "GetRole", {}, [this, listing, index](sd_bus_message& answer) {
                      const auto role = isAnswer(answer) ? readNumber(answer).value_or(0) : 0;
                      auto& toplevel = listing->toplevels[index];
                      toplevel.main = AccessibleRole{role} == AccessibleRole::frame;
                      toplevel.dialog = toplevel.dialog || isDialog(role);
                      listed(listing);
                  }});
    requests.ask({path, accessible, "GetState", {}, [this, listing, index](sd_bus_message& answer) {
                      const auto states = isAnswer(answer) ? readStates(answer) : std::nullopt;
                      auto& toplevel = listing->toplevels[index];
                      toplevel.active = states && states->has(AccessibleState::active);
                      toplevel.dialog = toplevel.dialog || (states && states->has(AccessibleState::modal));
                      listed(listing);
                  }});
    requests.ask({path, properties, "Get",
                  [](sd_bus_message& question) {
                      return sd_bus_message_append(&question, "ss", accessible, "Name") >= 0;
                  },
                  [this, listing, index](sd_bus_message& answer) {
                      const auto title = isAnswer(answer) ? readVariantText(answer) : std::nullopt;
                      listing->toplevels[index].title = title.value_or(QString()).trimmed();
                      listed(listing);
                  }});
    // The menus need not wait for the window's own attributes.
    if (std::ranges::find(toplevels, path, &Toplevel::path) == toplevels.end()) {
        reader.readWindow(path);
    }
}

void ApplicationMenus::listed(const std::shared_ptr<Listing>& listing) {
    if (--listing->unanswered > 0) {
        return;
    }
    for (const auto& former : toplevels) {
        if (std::ranges::find(listing->toplevels, former.path, &Toplevel::path) == listing->toplevels.end()) {
            table.removeToplevel(former.path);
            std::erase_if(toplevelOfWindow, [&](const auto& entry) { return entry.second == former.path; });
        }
    }
    toplevels = std::move(listing->toplevels);
    currentListing.reset();
    if (latestWindow) {
        static_cast<void>(toplevelOf(*latestWindow));
    }
    if (listing->outdated) {
        readToplevels();
    }
}

void ApplicationMenus::windowActivated(const session::ActiveWindow& window) {
    const bool same = latestWindow == window;
    const bool another = latestWindow && latestWindow->handle != window.handle;
    latestWindow = window;
    if (another && !window.dialog) {
        readTitlesAgain();
    }
    if (toplevelOf(window) == nullptr || !same) {
        readToplevels();
    }
}

void ApplicationMenus::menuClosed() {
    readWindowsLater();
}

const std::string* ApplicationMenus::toplevelOf(const session::ActiveWindow& window) {
    if (!window.accessible.path.empty()) {
        const auto same = std::ranges::find(toplevels, window.accessible.path, &Toplevel::path);
        return same == toplevels.end() || window.accessible.name != name ? nullptr : &same->path;
    }
    if (const auto known = toplevelOfWindow.find(window.handle); known != toplevelOfWindow.end()) {
        return &known->second;
    }
    const auto choice = chooseToplevel(toplevels, window);
    if (choice.toplevel != nullptr && choice.certain && window.handle != 0) {
        if (toplevelOfWindow.size() >= mostWindows) {
            toplevelOfWindow.clear();
        }
        return &(toplevelOfWindow[window.handle] = choice.toplevel->path);
    }
    return choice.toplevel == nullptr ? nullptr : &choice.toplevel->path;
}

MenuAnswer ApplicationMenus::commandFor(const session::ActiveWindow& window,
                                        const keys::Candidates& candidates) {
    if (requests.isSilent()) {
        return {};
    }
    const auto* toplevel = toplevelOf(window);
    if (toplevel == nullptr) {
        doubt(nullptr);
        return {};
    }
    for (const auto& candidate : candidates) {
        if (const auto* item = table.command(*toplevel, candidate)) {
            fired = item->path;
            rereadFired.start();
            return {.command = std::make_shared<MenuItemNode>(item->title, *item->accelerator),
                    .decided = true};
        }
    }
    doubt(toplevel);
    return {.decided = seemsComplete(*toplevel)};
}

/// LibreOffice has two trees of its menus, and the one with the keys comes later.
bool ApplicationMenus::seemsComplete(const std::string& toplevel) const {
    constexpr std::size_t mostItemsPerKey = 12;
    return table.hasAccelerators(toplevel) && table.acceleratedCount() * mostItemsPerKey >= table.size();
}

void ApplicationMenus::doubt(const std::string* toplevel) {
    const bool recently = doubted.isValid() && !doubted.hasExpired(doubtInterval.count());
    if (recently || requests.isBusy() || (toplevel != nullptr && seemsComplete(*toplevel))) {
        return;
    }
    doubted.start();
    readToplevels();
    readWindowsLater();
}

void ApplicationMenus::stateChanged(sd_bus_message& message) {
    auto* item = table.find(pathOf(message));
    const auto detail = readBytes(message);
    const auto value = detail ? readInteger(message) : std::nullopt;
    if (item == nullptr || !value) {
        return;
    }
    item->enabled = *value != 0;
    if (item->enabled && !item->accelerator) {
        reader.readItem(item->path);
    }
}

void ApplicationMenus::nameChanged(sd_bus_message& message) {
    const auto path = pathOf(message);
    auto* item = table.find(path);
    const auto toplevel = std::ranges::find(toplevels, path, &Toplevel::path);
    if (item == nullptr && toplevel == toplevels.end()) {
        return;
    }
    const auto detail = readBytes(message);
    if (!detail || !readInteger(message) || !readInteger(message)) {
        return;
    }
    const auto title = readVariantText(message);
    if (item != nullptr && item->accelerator && !title) {
        reader.readItem(path);
    } else if (item != nullptr && title) {
        item->title = title->trimmed();
    } else if (title && toplevel != toplevels.end()) {
        toplevel->title = title->trimmed();
    }
}

void ApplicationMenus::childrenChanged(sd_bus_message& message) {
    const auto path = pathOf(message);
    if (path == root) {
        readToplevels();
        return;
    }
    if (const auto known = menuContainers.find(path); known == menuContainers.end()) {
        judgeContainer(path);
    } else if (known->second) {
        readWindowsLater();
        return;
    }
    // A menu bar may have been put where none was.
    const auto detail = readBytes(message);
    if (!reader.hasLookedInto(path) || !detail || !detail->starts_with("add") || !readInteger(message) ||
        !readInteger(message)) {
        return;
    }
    if (const auto child = readVariantReference(message); child && child->name == name) {
        judgeContainer(child->path);
    }
}

void ApplicationMenus::judgeContainer(const std::string& path) {
    if (menuContainers.size() >= mostContainers) {
        menuContainers.clear();
    }
    if (!menuContainers.emplace(path, false).second) {
        return;
    }
    requests.ask({path, accessible, "GetRole", {}, [this, path](sd_bus_message& answer) {
                      const bool menu = isAnswer(answer) && isMenuPart(readNumber(answer).value_or(0));
                      menuContainers[path] = menu;
                      if (menu) {
                          readWindowsLater();
                      }
                  }});
}

} // namespace orvantile::platform::a11y
