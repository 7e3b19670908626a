#pragma once

#include "platform/linux/a11y/MenuModel.h"
#include "platform/linux/a11y/MenuReader.h"
#include "platform/linux/a11y/MenuTable.h"
#include "platform/linux/a11y/RequestQueue.h"
#include "platform/linux/a11y/Toplevel.h"

#include <QElapsedTimer>
#include <QTimer>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvantile::platform::a11y {

/// The menus of one application: read when it is followed for the first time, kept fresh by its events while
/// it is followed, and remembered as long as this lives. Main thread only.
class ApplicationMenus {
public:
    ApplicationMenus(BusConnection& bus, std::string name);

    /// Called whenever everything there is to read has been read.
    std::function<void()> onComplete;

    void follow();
    void unfollow();

    void windowActivated(const session::ActiveWindow& window);
    void menuClosed();

    [[nodiscard]] MenuAnswer commandFor(const session::ActiveWindow& window,
                                        const keys::Candidates& candidates);

    [[nodiscard]] const MenuTable& items() const { return table; }

    [[nodiscard]] bool isSilent() const { return requests.isSilent(); }

private:
    struct Listing;

    void subscribe();
    void readToplevels();
    void readToplevel(const std::shared_ptr<Listing>& listing, std::size_t index);
    void listed(const std::shared_ptr<Listing>& listing);
    void readEverything();
    void readTitlesAgain();
    void readWindowsLater();

    /// A shortcut came while nothing is known of the window it went to: perhaps it was read too early, when
    /// the application was still starting. Reads it again, now and then.
    void doubt(const std::string* toplevel);

    /// Whether so many of the window's items have keys that those are likely to be all.
    [[nodiscard]] bool seemsComplete(const std::string& toplevel) const;

    void stateChanged(sd_bus_message& message);
    void nameChanged(sd_bus_message& message);
    void childrenChanged(sd_bus_message& message);
    void judgeContainer(const std::string& path);

    [[nodiscard]] const std::string* toplevelOf(const session::ActiveWindow& window);

    BusConnection& bus;
    std::string name;
    MenuTable table;
    RequestQueue requests;
    MenuReader reader;
    std::vector<Toplevel> toplevels;
    std::map<std::uint64_t, std::string> toplevelOfWindow; ///< by window handle
    std::optional<session::ActiveWindow> latestWindow;
    std::unordered_map<std::string, bool> menuContainers; ///< objects and whether items may appear in them
    std::vector<SlotHandle> subscriptions;
    std::shared_ptr<Listing> currentListing;
    QTimer rereadWindows;
    QTimer rereadFired;
    std::string fired;
    bool everRead = false;
    QElapsedTimer doubted; ///< runs from the latest doubt
};

} // namespace orvantile::platform::a11y
