#pragma once

#include "platform/linux/a11y/AccessibilityBus.h"
#include "platform/linux/a11y/ApplicationDirectory.h"
#include "platform/linux/a11y/ApplicationMenus.h"
#include "platform/linux/a11y/EventRegistration.h"
#include "platform/linux/a11y/MenuModel.h"

#include <QTimer>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace orvantile::platform::a11y {

/// The menu commands that applications tell on the accessibility bus.
class BusMenuModel final : public MenuModel {
public:
    /// `drainFirst` is called before each message of the bus is handled.
    explicit BusMenuModel(std::function<void()> drainFirst);

    /// Called when all commands of the followed process have been read, and again after each later reading.
    std::function<void(std::int32_t processIdentifier)> onTableComplete;

    /// The desktop's switch that makes applications join the bus, and the bus itself, for the permission
    /// prompt.
    [[nodiscard]] AccessibilityBus& accessibilityBus() { return bus; }

    [[nodiscard]] bool isAvailable() const override;
    void follow(std::int32_t processIdentifier) override;
    void windowActivated(const session::ActiveWindow& window) override;
    void menuClosed() override;
    [[nodiscard]] MenuAnswer commandFor(const session::ActiveWindow& window,
                                        const keys::Candidates& candidates) override;
    [[nodiscard]] MenuReach reach(std::int32_t processIdentifier) const override;

private:
    struct Application {
        std::int32_t process = -1;
        std::unique_ptr<ApplicationMenus> menus; ///< absent until it is followed for the first time
    };

    void connected();
    void announceAvailable();
    void lost();
    void noteAsked();
    void followApplication(const std::string& name, Application& application);

    AccessibilityBus bus;
    std::unique_ptr<ApplicationDirectory> directory;
    std::unique_ptr<EventRegistration> registration;
    std::map<std::string, Application> applications; ///< by bus name
    std::set<std::int32_t> asked; ///< processes that have been followed while there was a bus
    bool announced = false;       ///< that it is available
    std::int32_t followed = -1;
    std::optional<session::ActiveWindow> latestWindow;
    QTimer relaxation; ///< events are not given up for the moment between two applications
};

/// The model, already looking for the bus.
[[nodiscard]] std::unique_ptr<BusMenuModel> makeBusMenuModel(std::function<void()> drainFirst);

} // namespace orvantile::platform::a11y
