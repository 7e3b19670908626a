#pragma once

#include <functional>

namespace orvantile::platform::macos {

/// The process as the system's application object sees it. Main thread only.
class MacApplication {
public:
    /// Makes the shared application object with our delegate, as an accessory: without a place in the Dock
    /// and a menu bar. Before the toolkit's application object, which passes on what the system tells to the
    /// delegate that it finds.
    static void prepare();

    /// Whether launching has finished.
    [[nodiscard]] static bool hasLaunched();

    /// Calls `handler` when launching has finished.
    static void onLaunched(std::function<void()> handler);

    /// Calls `handler` when the user launches the program once more while it runs.
    static void onReopened(std::function<void(bool hasVisibleWindows)> handler);
};

} // namespace orvantile::platform::macos
