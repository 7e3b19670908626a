#pragma once

#include "platform/linux/desktop/bus/SessionBus.h"
#include "platform/linux/desktop/launch/ApplicationObject.h"
#include "platform/linux/desktop/launch/LaunchToken.h"

#include <chrono>
#include <memory>
#include <string>

namespace orvantile::platform::desktop {

/// Makes a program run once per session bus: whoever owns the program's name on the bus is the running copy.
/// The copy owns the name until its process ends, however it ends. Main thread only.
class SingleInstance {
public:
    /// How long the bus, and then the running copy, have to answer.
    static constexpr std::chrono::milliseconds patience{1000};

    /// Without a bus nobody else is found.
    SingleInstance(std::unique_ptr<SessionBus> bus, std::string name, ApplicationObject::Handler launched);

    /// Claims the name or, when another copy owns it, tells that one to come to the front. True in the latter
    /// case, also when the copy is too busy to answer: the bus keeps the message for it. A copy that ends at
    /// this very moment is succeeded. The main loop turns meanwhile.
    [[nodiscard]] bool handOver(const LaunchToken& token);

private:
    enum class Outcome { done, refused, unanswered };

    [[nodiscard]] Outcome claimName();
    [[nodiscard]] Outcome activateOwner(const LaunchToken& token);

    using Judgement = std::function<Outcome(sd_bus_message& reply)>;
    [[nodiscard]] Outcome await(MessageHandle call, const Judgement& judge);

    std::string name;
    std::unique_ptr<SessionBus> bus;
    std::unique_ptr<ApplicationObject> object;
};

} // namespace orvantile::platform::desktop
