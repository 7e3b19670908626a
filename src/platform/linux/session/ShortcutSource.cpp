#include "platform/linux/session/ShortcutSource.h"

#include "platform/linux/session/ApplicationNode.h"
#include "platform/linux/session/LinuxObserver.h"
#include "trace/Trace.h"

#include <algorithm>
#include <utility>

namespace orvantile::platform::session {
namespace {

constexpr std::int32_t nobody = -1;

const auto itemSelected = QStringLiteral("AXMenuItemSelected");
constexpr QStringView title = u"AXTitle";

} // namespace

ShortcutSource::ShortcutSource(DesktopSession& session_, a11y::MenuModel& menus_, std::int32_t ownProcess_)
    : session(session_),
      menus(menus_),
      ownProcess(ownProcess_) {
    session.onActiveWindowChanged = [this](const auto& window) { activeWindowChanged(window); };
    session.onKeyPressed = [this](const auto& candidates) { keyPressed(candidates); };
    session.onMenuOpened = [this](std::int32_t process) { menuChanged(process, true); };
    session.onMenuClosed = [this](std::int32_t process) { menuChanged(process, false); };
}

ShortcutSource::~ShortcutSource() {
    if (attached != nullptr) {
        attached->wasDetached();
    }
    session.onActiveWindowChanged = nullptr;
    session.onKeyPressed = nullptr;
    session.onMenuOpened = nullptr;
    session.onMenuClosed = nullptr;
}

std::optional<RunningApplication> ShortcutSource::frontmostApplication() const {
    const auto window = session.activeWindow();
    if (!window || window->processIdentifier <= 0) {
        return std::nullopt;
    }
    return RunningApplication{window->processIdentifier};
}

void ShortcutSource::observeActivations(Workspace::ActivationHandler handler) {
    activationHandlers.push_back(std::move(handler));
}

std::unique_ptr<AccessibilityObserver>
ShortcutSource::createObserver(std::int32_t processIdentifier, AccessibilityObserver::Callback callback) {
    if (processIdentifier <= 0 || processIdentifier == ownProcess) {
        return nullptr;
    }
    return std::make_unique<LinuxObserver>(*this, processIdentifier, callback);
}

void ShortcutSource::activeWindowChanged(const std::optional<ActiveWindow>& window) {
    // No focus at all is a moment between two windows, or the bare desktop: nobody is activated.
    if (!window || window->processIdentifier <= 0) {
        return;
    }
    if (window->processIdentifier != ownProcess) {
        latestOther = window->processIdentifier;
    }
    if (std::exchange(announcedProcess, window->processIdentifier) != window->processIdentifier) {
        const auto handlers = activationHandlers;
        for (const auto& handler : handlers) {
            handler(RunningApplication{window->processIdentifier});
        }
    }
    if (attached != nullptr && attached->processIdentifier() == window->processIdentifier) {
        menus.windowActivated(*window);
    }
}

void ShortcutSource::keyPressed(const keys::Candidates& candidates) {
    const auto window = session.activeWindow();
    if (attached == nullptr || !window || window->processIdentifier != attached->processIdentifier()) {
        return;
    }
    latestTitle = {};
    if (believed) {
        return;
    }
    const trace::Span span(trace::Step::lookup);
    if (auto node = menus.commandFor(*window, candidates).command) {
        latestTitle = node->copyAttribute(title);
        attached->post(itemSelected, AccessibilityElement(std::move(node)));
    }
}

void ShortcutSource::menusTold(std::int32_t processIdentifier, int openMenus) {
    believe(processIdentifier, openMenus);
}

void ShortcutSource::commandTold(std::int32_t processIdentifier, int openMenus,
                                 std::shared_ptr<const AccessibilityNode> command) {
    const bool first = !believed;
    if (!believe(processIdentifier, openMenus)) {
        return;
    }
    // The key press came before, and the table may have named its command already.
    if (first && latestTitle != AttributeValue() && latestTitle == command->copyAttribute(title)) {
        return;
    }
    attached->post(itemSelected, AccessibilityElement(std::move(command)));
}

/// False when the process is not the one in front.
bool ShortcutSource::believe(std::int32_t processIdentifier, int openMenus) {
    if (attached == nullptr || attached->processIdentifier() != processIdentifier) {
        return false;
    }
    believed = true;
    const bool closed = postedMenus > openMenus;
    while (postedMenus != openMenus) {
        postMenu(postedMenus < openMenus);
    }
    if (closed) {
        menus.menuClosed();
    }
    return true;
}

void ShortcutSource::postMenu(bool opened) {
    postedMenus = std::max(postedMenus + (opened ? 1 : -1), 0);
    const AccessibilityElement application(std::make_shared<ApplicationNode>(attached->processIdentifier()));
    attached->post(opened ? QStringLiteral("AXMenuOpened") : QStringLiteral("AXMenuClosed"), application);
}

void ShortcutSource::menuChanged(std::int32_t processIdentifier, bool opened) {
    if (attached == nullptr || believed) {
        return;
    }
    // A menu window that does not say whose it is belongs to the application in front.
    if (processIdentifier > 0 && processIdentifier != attached->processIdentifier()) {
        return;
    }
    postMenu(opened);
    if (!opened) {
        menus.menuClosed();
    }
}

void ShortcutSource::attach(LinuxObserver& observer) {
    if (attached != nullptr) {
        attached->wasDetached();
    }
    attached = &observer;
    postedMenus = 0;
    believed = false;
    latestTitle = {};
    menus.follow(observer.processIdentifier());
    if (const auto window = session.activeWindow();
        window && window->processIdentifier == observer.processIdentifier()) {
        menus.windowActivated(*window);
    }
    for (int open = session.openMenus(observer.processIdentifier()); open > 0; --open) {
        postMenu(true);
    }
}

void ShortcutSource::detach(LinuxObserver& observer) {
    if (attached == &observer) {
        attached = nullptr;
        menus.follow(nobody);
    }
}

} // namespace orvantile::platform::session
