#pragma once

#include "platform/linux/desktop/bus/SessionBus.h"
#include "platform/linux/desktop/launch/LaunchToken.h"

#include <functional>
#include <string>

namespace orvantile::platform::desktop {

/// The program as the desktop's launchers call it over the bus: org.freedesktop.Application at the path that
/// belongs to the program's name. Files and actions are not offered: whatever is launched is the program
/// itself. Main thread only.
class ApplicationObject {
public:
    using Handler = std::function<void(const LaunchToken& token)>;

    /// `launched` is called while a message is being handled, before its answer goes out.
    ApplicationObject(SessionBus& bus, const std::string& name, Handler launched);
    ApplicationObject(const ApplicationObject&) = delete;
    ApplicationObject& operator=(const ApplicationObject&) = delete;
    ~ApplicationObject() = default;

    /// "org.example.Program" is at "/org/example/Program".
    [[nodiscard]] static std::string pathOf(const std::string& name);

    static constexpr auto interface = "org.freedesktop.Application";

private:
    friend struct ApplicationMethods;

    Handler launched;
    SlotHandle object;
};

} // namespace orvantile::platform::desktop
