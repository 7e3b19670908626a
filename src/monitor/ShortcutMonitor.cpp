#include "monitor/ShortcutMonitor.h"

#include "trace/Trace.h"

#include <limits>
#include <utility>

namespace orvantile {
namespace {

const QString menuItemSelected = QStringLiteral("AXMenuItemSelected");
const QString menuOpened = QStringLiteral("AXMenuOpened");
const QString menuClosed = QStringLiteral("AXMenuClosed");

} // namespace

ShortcutMonitor::ShortcutMonitor(platform::Platform& platform_) : platform(platform_) {}

void ShortcutMonitor::start() {
    if (const auto application = platform.workspace->frontmostApplication()) {
        attach(application->processIdentifier);
    }
    workspaceObserver = platform.workspace->observeActivations(
        [monitor = weak_from_this()](std::optional<platform::RunningApplication> application) {
            const auto self = monitor.lock();
            if (self && application) {
                self->attach(application->processIdentifier);
            }
        });
}

void ShortcutMonitor::attach(std::int32_t processIdentifier) {
    if (processIdentifier == observedPID) {
        return;
    }
    detach();
    observedPID = processIdentifier;
    auto newObserver = platform.accessibility->createObserver(processIdentifier, &ShortcutMonitor::callback);
    if (!newObserver) {
        observedPID = none;
        return;
    }
    const auto application = platform.accessibility->applicationElement(processIdentifier);
    // Without permission these fail, and the monitor then simply hears nothing.
    for (const auto& notification : {menuItemSelected, menuOpened, menuClosed}) {
        static_cast<void>(newObserver->addNotification(application, notification, this));
    }
    newObserver->addToMainLoop();
    observer = std::move(newObserver);
    observedAppElement = application;
    openMenus = 0;
}

void ShortcutMonitor::detach() {
    if (observer) {
        observer->removeFromMainLoop();
    }
    observer.reset();
    observedAppElement.reset();
    observedPID = none;
    openMenus = 0;
}

void ShortcutMonitor::callback(platform::AccessibilityObserver&,
                               const platform::AccessibilityElement& element, const QString& notification,
                               void* reference) {
    if (reference == nullptr) {
        return;
    }
    const auto self = static_cast<ShortcutMonitor*>(reference)->shared_from_this();
    self->platform.scheduler->runLater(
        [self, notification, element] { self->handleNotification(notification, element); });
}

void ShortcutMonitor::handleNotification(const QString& name, const platform::AccessibilityElement& element) {
    if (name == menuOpened) {
        if (openMenus == std::numeric_limits<decltype(openMenus)>::max()) {
            qFatal("the number of open menus has overflowed");
        }
        ++openMenus;
    } else if (name == menuClosed) {
        // An application that was left while its menu was open may still report the closing.
        openMenus = std::max<std::int64_t>(openMenus - 1, 0);
    } else if (name == menuItemSelected) {
        if (openMenus != 0) {
            return;
        }
        const trace::Span span(trace::Step::report);
        auto itemTitle = title(element);
        if (!itemTitle || itemTitle->isEmpty() || !onAction) {
            return;
        }
        onAction(shortcutString(element), *std::move(itemTitle));
    }
}

} // namespace orvantile
