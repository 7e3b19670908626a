#pragma once

#include "platform/linux/a11y/BusConnection.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orvantile::platform::desktop {

/// What the desktop's settings portal says about its colours. Nothing waits for it: until it answers, and
/// when there is none, it says nothing. It is asked again whenever it starts anew. Main thread only.
class SettingsPortal {
public:
    /// `sessionBus` is the address of the session bus.
    explicit SettingsPortal(const std::string& sessionBus);

    /// The address of this session's bus; empty when there is none.
    [[nodiscard]] static std::string sessionBusAddress();

    /// Absent when the portal does not say.
    [[nodiscard]] std::optional<bool> isDark() const;

    /// Called when that has changed.
    std::function<void()> onChanged;

private:
    void read(const char* method, const char* space, const char* key);
    void readAll();
    void take(const std::string& space, const std::string& key, sd_bus_message& value);

    std::shared_ptr<const void> answersWanted = std::make_shared<int>();
    std::optional<bool> scheme;      ///< `org.freedesktop.appearance color-scheme`
    std::optional<bool> gnomeScheme; ///< `org.gnome.desktop.interface color-scheme`
    std::optional<bool> gnomeTheme;  ///< `org.gnome.desktop.interface gtk-theme`
    a11y::BusConnection connection;
    a11y::SlotHandle changes;
    a11y::SlotHandle owners;
};

} // namespace orvantile::platform::desktop
