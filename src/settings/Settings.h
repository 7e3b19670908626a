#pragma once

#include "platform/UserDefaults.h"
#include "settings/HUDAppearance.h"
#include "settings/HUDPosition.h"
#include "settings/HUDSound.h"
#include "settings/Published.h"

namespace orvantile {

/// Every preference of the user. Reading a property gives its value; assigning it announces the change and
/// then writes it to the user's defaults at once, under the property's name. Nothing is clamped. Main thread
/// only.
class Settings {
private:
    platform::UserDefaults& defaults;

public:
    /// The one instance, made on first use from the platform's defaults and never destroyed.
    [[nodiscard]] static Settings& shared();

    /// Registers the default values and loads every property. The program itself only uses `shared`.
    explicit Settings(platform::UserDefaults& defaults);

    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;
    ~Settings() = default;

    /// Announces that some property is about to change.
    Publisher<> objectWillChange;

    Published<bool> enabled;
    Published<bool> showInMenuBar;
    Published<double> displaySeconds; ///< how long the HUD stays up
    Published<HUDPosition> position;
    Published<double> fontSize; ///< points
    Published<bool> soundEnabled;
    Published<HUDSound> sound;
    Published<bool> popAnimation;
    Published<bool> translucent;
    Published<bool> showShortcut;
    Published<HUDAppearance> appearance;
    Published<double> flatOpacity; ///< 0 to 1, of the background that is not glass

    /// Assigns its default to every property, in the order above.
    void resetToDefaults();

private:
    template <auto member>
    auto property();
};

} // namespace orvantile
