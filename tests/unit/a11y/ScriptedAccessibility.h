#pragma once

#include "platform/linux/a11y/BusConnection.h"
#include "platform/linux/desktop/bus/SessionBus.h"

#include <QSocketNotifier>
#include <QStringList>
#include <QTemporaryDir>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace orvantile::test {

/// An accessibility bus with one application on it, whose objects are as the test says. It lives on the main
/// loop.
class ScriptedAccessibility {
public:
    ScriptedAccessibility();
    ScriptedAccessibility(const ScriptedAccessibility&) = delete;
    ScriptedAccessibility& operator=(const ScriptedAccessibility&) = delete;
    ~ScriptedAccessibility();

    /// Connected to that bus.
    [[nodiscard]] platform::a11y::BusConnection& connection() { return client; }

    std::map<std::string, std::uint32_t> roles; ///< by path; other objects have none and answer with an error
    std::set<std::string> showing;              ///< paths of what shows

    /// While set, calls pile up without an answer; `answerAll` answers them.
    bool silent = false;
    void answerAll();

    /// What was asked so far: method and path.
    [[nodiscard]] const QStringList& asked() const { return questions; }

private:
    void accept();
    void reply(sd_bus_message& call);
    static int receive(sd_bus_message* message, void* self, sd_bus_error* error);

    QTemporaryDir folder;
    int listening = -1;
    std::unique_ptr<QSocketNotifier> arrivals;
    std::unique_ptr<platform::desktop::SessionBus> server;
    platform::desktop::SlotHandle filter;
    std::vector<platform::desktop::MessageHandle> unanswered;
    QStringList questions;
    platform::a11y::BusConnection client{{}};
};

} // namespace orvantile::test
