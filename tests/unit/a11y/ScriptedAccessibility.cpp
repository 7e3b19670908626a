#include "unit/a11y/ScriptedAccessibility.h"

#include "platform/linux/a11y/ReplyDecoder.h"

#include <cstring>
#include <stdexcept>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace orvantile::test {

using platform::desktop::BusHandle;
using platform::desktop::MessageHandle;
using platform::desktop::SessionBus;

ScriptedAccessibility::ScriptedAccessibility() {
    const auto path = folder.filePath(QStringLiteral("bus")).toStdString();
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    if (path.size() >= sizeof address.sun_path) {
        throw std::runtime_error("too long a path for a bus");
    }
    std::memcpy(address.sun_path, path.c_str(), path.size());
    listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (::bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listening, 1) != 0 || !client.open("unix:path=" + path)) {
        throw std::runtime_error("no bus");
    }
    arrivals = std::make_unique<QSocketNotifier>(listening, QSocketNotifier::Read);
    QObject::connect(arrivals.get(), &QSocketNotifier::activated, arrivals.get(), [this] { accept(); });
}

ScriptedAccessibility::~ScriptedAccessibility() {
    client.close();
    unanswered.clear();
    filter.reset();
    server.reset();
    arrivals.reset();
    ::close(listening);
}

void ScriptedAccessibility::accept() {
    arrivals->setEnabled(false);
    const int descriptor = ::accept4(listening, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    sd_bus* created = nullptr;
    sd_bus_slot* slot = nullptr;
    sd_bus_new(&created);
    BusHandle bus(created);
    if (sd_bus_set_fd(created, descriptor, descriptor) < 0 ||
        sd_bus_set_server(
            created, 1, SD_ID128_MAKE(01, 02, 03, 04, 05, 06, 07, 08, 09, 0a, 0b, 0c, 0d, 0e, 0f, 10)) < 0 ||
        sd_bus_start(created) < 0 || sd_bus_add_filter(created, &slot, receive, this) < 0) {
        throw std::runtime_error("the bus does not start");
    }
    filter.reset(slot);
    server = std::make_unique<SessionBus>(std::move(bus));
    server->attach();
}

int ScriptedAccessibility::receive(sd_bus_message* message, void* self, sd_bus_error*) {
    if (sd_bus_message_is_method_call(message, nullptr, nullptr) <= 0) {
        return 0;
    }
    auto& bus = *static_cast<ScriptedAccessibility*>(self);
    if (sd_bus_message_is_method_call(message, "org.freedesktop.DBus", "Hello") > 0) {
        return sd_bus_reply_method_return(message, "s", ":1.1");
    }
    bus.questions.append(QString::fromUtf8(sd_bus_message_get_member(message)) + u' ' +
                         QString::fromUtf8(sd_bus_message_get_path(message)));
    if (bus.silent) {
        bus.unanswered.emplace_back(sd_bus_message_ref(message));
    } else {
        bus.reply(*message);
    }
    return 1;
}

void ScriptedAccessibility::answerAll() {
    silent = false;
    for (const auto& call : std::exchange(unanswered, {})) {
        reply(*call);
    }
}

void ScriptedAccessibility::reply(sd_bus_message& call) {
    const std::string path = sd_bus_message_get_path(&call);
    const std::string_view method = sd_bus_message_get_member(&call);
    const auto role = roles.find(path);
    if (role == roles.end()) {
        sd_bus_reply_method_errorf(&call, "org.freedesktop.DBus.Error.UnknownObject", "no such object");
    } else if (method == "GetRole") {
        sd_bus_reply_method_return(&call, "u", role->second);
    } else if (method == "GetState") {
        constexpr auto bit = static_cast<std::uint32_t>(platform::a11y::AccessibleState::showing);
        static_assert(bit < 32);
        sd_bus_reply_method_return(&call, "au", 2, showing.contains(path) ? 1U << bit : 0U, 0U);
    }
}

} // namespace orvantile::test
