#include "platform/linux/a11y/MenuReader.h"

#include "platform/linux/keys/KeyBinding.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvantile::platform::a11y {
namespace {

constexpr auto accessible = "org.a11y.atspi.Accessible";
constexpr auto action = "org.a11y.atspi.Action";
constexpr auto collection = "org.a11y.atspi.Collection";
constexpr auto properties = "org.freedesktop.DBus.Properties";

/// How far a window is looked through for its menu bar.
constexpr int deepestContainer = 8;
constexpr std::size_t mostContainers = 400;
constexpr std::size_t mostChildren = 64;

constexpr int deepestMenu = 16;
constexpr std::size_t slice = 64;

bool isContainer(std::uint32_t role) {
    using enum AccessibleRole;
    constexpr std::array containers{filler,   panel,       rootPane, scrollPane,
                                    viewport, layeredPane, frame,    internalFrame};
    return std::ranges::find(containers, AccessibleRole{role}) != containers.end();
}

bool isItem(std::uint32_t role) {
    const AccessibleRole known{role};
    return known == AccessibleRole::menuItem || known == AccessibleRole::checkMenuItem ||
           known == AccessibleRole::radioMenuItem;
}

bool isMenu(std::uint32_t role) {
    const AccessibleRole known{role};
    return known == AccessibleRole::menu || known == AccessibleRole::menuBar;
}

/// Arguments of Collection.GetMatches: everything of one of the item roles, in the tree's order.
bool askForItems(sd_bus_message& question) {
    std::array<std::uint32_t, 4> roles{};
    for (const auto role :
         {AccessibleRole::menuItem, AccessibleRole::checkMenuItem, AccessibleRole::radioMenuItem}) {
        const auto number = static_cast<std::uint32_t>(role);
        roles.at(number / 32) |= 1U << number % 32;
    }
    constexpr int all = 1;
    constexpr int any = 2;
    constexpr unsigned canonicalOrder = 1;
    return sd_bus_message_append(&question, "(aiia{ss}iaiiasib)uib", 2, 0, 0, all, 0, all, 4,
                                 static_cast<int>(roles[0]), static_cast<int>(roles[1]),
                                 static_cast<int>(roles[2]), static_cast<int>(roles[3]), any, 0, all, 0,
                                 canonicalOrder, static_cast<int>(MenuTable::capacity), 1) >= 0;
}

} // namespace

MenuReader::MenuReader(std::string name_, RequestQueue& requests_, MenuTable& table_)
    : name(std::move(name_)),
      requests(requests_),
      table(table_) {}

void MenuReader::readWindow(const std::string& toplevel) {
    auto scan = std::make_shared<Scan>();
    scan->toplevel = toplevel;
    scan->number = ++latestScan;
    explore(scan, toplevel, 0);
}

void MenuReader::explore(const ScanHandle& scan, const std::string& path, int depth) {
    if (containers.size() >= 4 * mostContainers) {
        containers.clear();
    }
    containers.insert(path);
    ++scan->steps;
    requests.ask({path, accessible, "GetChildren", {}, [this, scan, depth](sd_bus_message& answer) {
                      if (isAnswer(answer)) {
                          ReferenceList children(answer);
                          for (const auto& child : children.next(mostChildren)) {
                              if (scan->explored >= mostContainers || !visit(*scan, child)) {
                                  continue;
                              }
                              ++scan->explored;
                              ++scan->steps;
                              requests.ask({child.path,
                                            accessible,
                                            "GetRole",
                                            {},
                                            [this, scan, path = child.path, depth](sd_bus_message& role) {
                                                exploreRole(scan, path, depth + 1,
                                                            isAnswer(role) ? readNumber(role).value_or(0)
                                                                           : 0);
                                                step(scan);
                                            }});
                          }
                      } else {
                          scan->failed = true;
                      }
                      step(scan);
                  }});
}

void MenuReader::exploreRole(const ScanHandle& scan, const std::string& path, int depth, std::uint32_t role) {
    if (AccessibleRole{role} == AccessibleRole::menuBar) {
        scan->foundMenuBar = true;
        match(scan, path);
    } else if (AccessibleRole{role} == AccessibleRole::toolBar) {
        scan->toolBars.push_back(path);
    } else if (isContainer(role) && depth < deepestContainer) {
        explore(scan, path, depth);
    }
}

void MenuReader::match(const ScanHandle& scan, const std::string& menuBar) {
    ++scan->steps;
    requests.ask(
        {menuBar, collection, "GetMatches", askForItems, [this, scan, menuBar](sd_bus_message& answer) {
             if (isAnswer(answer)) {
                 lists.push_back({scan, ReferenceList(answer), 0, true}); // its step ends with the list
                 return;
             }
             walk(scan, menuBar, 0);
             step(scan);
         }});
}

void MenuReader::walk(const ScanHandle& scan, const std::string& path, int depth) {
    ++scan->steps;
    requests.ask({path, accessible, "GetChildren", {}, [this, scan, depth](sd_bus_message& answer) {
                      if (isAnswer(answer)) {
                          lists.push_back({scan, ReferenceList(answer), depth + 1, false});
                          return;
                      }
                      scan->failed = true;
                      step(scan);
                  }});
}

void MenuReader::walkNode(const ScanHandle& scan, const std::string& path, int depth) {
    ++scan->steps;
    requests.ask({path, accessible, "GetRole", {}, [this, scan, path, depth](sd_bus_message& answer) {
                      const auto role = isAnswer(answer) ? readNumber(answer).value_or(0) : 0;
                      if (isItem(role)) {
                          found(scan, path);
                      }
                      if ((isItem(role) || isMenu(role)) && depth < deepestMenu) {
                          walk(scan, path, depth);
                      }
                      step(scan);
                  }});
}

bool MenuReader::readOn() {
    if (!lists.empty()) {
        readOn(lists.front());
        return true;
    }
    for (std::size_t count = 0; count < slice && !stale.empty(); ++count) {
        const auto path = std::move(stale.back());
        stale.pop_back();
        readDetails(path);
    }
    return !stale.empty();
}

void MenuReader::readOn(PendingList& pending) {
    const auto scan = pending.scan;
    const int depth = pending.depth;
    const bool itemsOnly = pending.itemsOnly;
    const auto references = pending.list.next(slice);
    const bool ended = pending.list.atEnd() || scan->visited.size() >= MenuTable::capacity;
    if (ended) {
        lists.pop_front();
    }
    for (const auto& object : references) {
        if (visit(*scan, object)) {
            itemsOnly ? found(scan, object.path) : walkNode(scan, object.path, depth);
        }
    }
    if (ended) {
        step(scan);
    }
}

bool MenuReader::visit(Scan& scan, const ObjectReference& object) const {
    return object.name == name && scan.visited.insert(object.path).second;
}

void MenuReader::found(const ScanHandle& scan, const std::string& path) {
    const bool known = table.find(path) != nullptr;
    auto* item = table.insert(path, scan->toplevel);
    if (item == nullptr) {
        return;
    }
    item->seen = scan->number;
    if (!known) {
        readItem(path);
    }
}

void MenuReader::readItem(const std::string& path) {
    requests.ask({path, action, "GetKeyBinding",
                  [](sd_bus_message& question) { return sd_bus_message_append(&question, "i", 0) >= 0; },
                  [this, path](sd_bus_message& answer) {
                      const auto binding = isAnswer(answer) ? readText(answer) : std::nullopt;
                      auto* item = table.find(path);
                      // Some toolkits tell no binding while an item is disabled; the last one holds then.
                      if (item != nullptr && binding && !binding->isEmpty()) {
                          table.setAccelerator(*item, keys::parseKeyBinding(*binding));
                          item->copy = keys::hidesAccelerator(*binding);
                      }
                      if (item != nullptr && (item->accelerator || item->copy)) {
                          readDetails(path);
                      }
                  }});
}

void MenuReader::readDetails(const std::string& path) {
    requests.ask({path, properties, "Get",
                  [](sd_bus_message& question) {
                      return sd_bus_message_append(&question, "ss", accessible, "Name") >= 0;
                  },
                  [this, path](sd_bus_message& answer) {
                      auto* item = table.find(path);
                      if (const auto title = isAnswer(answer) ? readVariantText(answer) : std::nullopt;
                          title && item != nullptr) {
                          item->title = title->trimmed();
                      }
                  }});
    requests.ask({path, accessible, "GetState", {}, [this, path](sd_bus_message& answer) {
                      auto* item = table.find(path);
                      if (const auto states = isAnswer(answer) ? readStates(answer) : std::nullopt;
                          states && item != nullptr) {
                          item->enabled = states->has(AccessibleState::sensitive) ||
                                          states->has(AccessibleState::enabled);
                      }
                  }});
}

void MenuReader::refreshAccelerated() {
    stale = table.accelerated();
    requests.pump();
}

void MenuReader::step(const ScanHandle& scan) {
    if (--scan->steps > 0) {
        return;
    }
    if (!scan->foundMenuBar && !scan->toolBars.empty()) {
        for (const auto& toolBar : std::exchange(scan->toolBars, {})) {
            explore(scan, toolBar, 1);
        }
        return;
    }
    if (!scan->failed) {
        table.removeUnseen(scan->toplevel, scan->number);
    }
}

void MenuReader::abandon() {
    lists.clear();
    stale.clear();
}

} // namespace orvantile::platform::a11y
