#pragma once

#include "platform/Scheduler.h"
#include "platform/linux/a11y/BusConnection.h"
#include "platform/linux/a11y/ObjectReference.h"

#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>

namespace orvantile::platform::a11y {

/// Whether menus of one application are open, concluded from the menu items that show. Toolkits forget to
/// tell that some of them have gone: while a menu is open they are asked now and then, and no menu is
/// believed to be open for ever. Main thread only.
class ShownMenus {
public:
    /// How long a menu may stay open without any sign of life.
    static constexpr std::chrono::seconds interval{4};
    static constexpr std::chrono::seconds longest{60};

    /// `onChanged` is called when the first menu opens and when the last one closes. Lives as long as the
    /// connection is up.
    ShownMenus(BusConnection& bus, Scheduler& scheduler, std::function<void()> onChanged);

    [[nodiscard]] bool isOpen() const { return !shown.empty(); }

    /// Something of the application has come to show, or does not show any more.
    void showing(const ObjectReference& object, bool shows);

    /// A window that has no title came up over one of the same application.
    void popupAppeared(const ObjectReference& popup);

    /// A key reached the application without a menu being told of: nothing is open any more.
    void reset();

private:
    void learn(const ObjectReference& object);
    void insert(const std::string& path);
    void erase(const std::string& path);
    void erasePopups();
    void watch();
    void verify();
    void ask(const std::string& path, const char* member, BusConnection::Handler handler);

    BusConnection& bus;
    Scheduler& scheduler;
    std::function<void()> onChanged;
    std::string name;                            ///< of the application
    std::set<std::string> shown;                 ///< paths of menu items and popups
    std::set<std::string> popups;                ///< those of `shown` that are popups
    std::unordered_map<std::string, bool> items; ///< whether each known object is a menu item
    std::unordered_map<std::string, bool>
        learning; ///< objects whose role is being asked, and whether they show
    std::unique_ptr<Scheduled> watching;
    double openSince = 0;
    std::shared_ptr<const int> self = std::make_shared<int>();
};

} // namespace orvantile::platform::a11y
