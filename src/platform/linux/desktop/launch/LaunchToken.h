#pragma once

#include <QByteArray>
#include <systemd/sd-bus.h>

namespace orvantile::platform::desktop {

/// What a desktop gives to a program that it launches, so that the program's window may come to the front.
struct LaunchToken {
    QByteArray startupId;       ///< of X11, in DESKTOP_STARTUP_ID
    QByteArray activationToken; ///< of Wayland, in XDG_ACTIVATION_TOKEN

    /// What this process has been given.
    [[nodiscard]] static LaunchToken fromEnvironment();

    /// Reads the platform data that comes next in a message. What is not understood is passed over; a message
    /// that is not in order gives an empty token.
    [[nodiscard]] static LaunchToken read(sd_bus_message* message);

    /// What a bar gives for the window that the user's next choice opens, on Wayland.
    [[nodiscard]] static LaunchToken ofBar(const char* activationToken);

    /// Appends platform data to a message.
    void append(sd_bus_message* message) const;

    /// Puts it where the toolkit and the window layer look when they show a window next.
    void putIntoEnvironment() const;

    /// Drops what no window has used: a compositor refuses a window that comes with an old token.
    static void clearEnvironment();

    friend bool operator==(const LaunchToken&, const LaunchToken&) = default;
};

} // namespace orvantile::platform::desktop
