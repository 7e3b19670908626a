#pragma once

#include "platform/linux/desktop/bus/SessionBus.h"

#include <QStringList>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace orvantile::test {

/// A message bus that answers each call as the test says. It lives on the main loop.
class ScriptedBus {
public:
    using Answer = std::function<void(sd_bus_message& call)>;

    ScriptedBus();
    ScriptedBus(const ScriptedBus&) = delete;
    ScriptedBus& operator=(const ScriptedBus&) = delete;
    ~ScriptedBus();

    /// The program's connection to the bus, once.
    [[nodiscard]] std::unique_ptr<platform::desktop::SessionBus> takeClient();

    /// The next calls of `method` are answered in this way, one after the other. Calls for which there is no
    /// answer stay without one.
    void answer(const std::string& method, Answer how);

    /// Ends the connection.
    void hangUp();

    /// The bus's own side, to call what the program offers.
    [[nodiscard]] platform::desktop::SessionBus& side() { return *server; }

    /// The names of the methods called so far.
    [[nodiscard]] const QStringList& calls() const { return called; }

    [[nodiscard]] static Answer withNumber(std::uint32_t number);
    [[nodiscard]] static Answer withError(const char* name);

private:
    static int receive(sd_bus_message* message, void* self, sd_bus_error* error);

    std::unique_ptr<platform::desktop::SessionBus> client;
    std::unique_ptr<platform::desktop::SessionBus> server;
    platform::desktop::SlotHandle filter;
    std::map<std::string, std::deque<Answer>> answers;
    QStringList called;
};

} // namespace orvantile::test
