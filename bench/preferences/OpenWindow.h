#pragma once

#include "platform/Platform.h"
#include "preferences/PreferencesWindow.h"
#include "settings/Settings.h"

#include <QTemporaryDir>
#include <memory>

namespace orvantile::bench {

/// The preferences as the program has them, on the X server of the environment. The toolkit's application
/// object must exist.
class OpenWindow {
public:
    OpenWindow();

    /// Makes the window unless there is one, shows it and returns when its first picture is on the screen.
    void open();

    void close();

    /// Forgets the window: the next one is made anew.
    void discard();

    [[nodiscard]] PreferencesWindow& window() { return *made; }

    [[nodiscard]] Settings& settings() { return store; }

    /// Selects a tab and waits until it is on the screen.
    void select(PreferencesTab tab);

private:
    void awaitPicture();

    QTemporaryDir directory;
    std::unique_ptr<platform::Platform> platform;
    Settings store;
    std::unique_ptr<PreferencesWindow> made;
};

} // namespace orvantile::bench
