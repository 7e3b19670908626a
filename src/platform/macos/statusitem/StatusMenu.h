#pragma once

#import <AppKit/AppKit.h>
#include <QString>
#include <memory>

#include "platform/Menu.h"

@class AppDelegate;

// For Objective-C++ files only.
namespace orvantile::platform::macos {

/// A menu as the system shows it. Its items carry out the commands of the delegate that bear their names.
/// Main thread only.
class StatusMenu {
public:
    StatusMenu(std::shared_ptr<Menu> menu, AppDelegate* delegate);
    StatusMenu(const StatusMenu&) = delete;
    StatusMenu& operator=(const StatusMenu&) = delete;
    ~StatusMenu();

    [[nodiscard]] NSMenu* shown() const { return native; }

    [[nodiscard]] bool isShownBy(NSMenu* other) const { return native == other; }

    void willOpen();

    /// Does what the first item with that command does; nothing when there is none.
    void choose(const QString& command);

private:
    void updateStates();

    std::shared_ptr<Menu> menu;
    NSMenu* native;
};

} // namespace orvantile::platform::macos
