#pragma once

#include "support/desktop/KeyInjector.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/WindowWatcher.h"

#include <cstddef>
#include <memory>

namespace orvantile::test {

/// A private desktop on which the program runs with its preferences open, and is launched again. Its window
/// manager is told whatever it can be told against windows that take the focus by themselves.
class RunningCopy {
public:
    explicit RunningCopy(SessionOptions options = {});

    [[nodiscard]] PrivateSession& session() { return desktop; }

    [[nodiscard]] WindowWatcher& windows() { return watcher; }

    [[nodiscard]] ChildProcess& process() { return *running; }

    [[nodiscard]] const Window& preferences() const { return window; }

    /// Launches the program once more.
    [[nodiscard]] std::unique_ptr<ChildProcess> launch() const;

    /// Launches it in place of the running copy, which has ended.
    void startAnew();

    /// Starts an editor in which the user is typing. Its window has the focus then.
    void typeElsewhere();

    /// Minimises the preferences.
    void minimise() const;

    /// Waits until the preferences have the focus, in front of all other windows.
    void awaitPreferencesInFront() const;

    /// How many windows of preferences there are, of whichever copy.
    [[nodiscard]] std::ptrdiff_t preferencesWindows() const;

private:
    PrivateSession desktop;
    WindowWatcher watcher;
    std::unique_ptr<ChildProcess> running;
    std::unique_ptr<ChildProcess> editor;
    Window window;
};

} // namespace orvantile::test
