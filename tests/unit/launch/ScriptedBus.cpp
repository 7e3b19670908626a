#include "unit/launch/ScriptedBus.h"

#include <array>
#include <stdexcept>
#include <sys/socket.h>
#include <utility>

namespace orvantile::test {
namespace {

using platform::desktop::BusHandle;
using platform::desktop::SessionBus;

BusHandle makeEnd(int descriptor) {
    sd_bus* created = nullptr;
    if (sd_bus_new(&created) < 0 || sd_bus_set_fd(created, descriptor, descriptor) < 0) {
        throw std::runtime_error("no end of a bus");
    }
    return BusHandle(created);
}

} // namespace

ScriptedBus::ScriptedBus() {
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) < 0) {
        throw std::runtime_error("no socket for a bus");
    }
    auto program = makeEnd(ends[0]);
    auto bus = makeEnd(ends[1]);
    sd_bus_set_server(bus.get(), 1,
                      SD_ID128_MAKE(01, 02, 03, 04, 05, 06, 07, 08, 09, 0a, 0b, 0c, 0d, 0e, 0f, 10));
    sd_bus_set_trusted(program.get(), 1);
    sd_bus_slot* slot = nullptr;
    if (sd_bus_start(program.get()) < 0 || sd_bus_start(bus.get()) < 0 ||
        sd_bus_add_filter(bus.get(), &slot, receive, this) < 0) {
        throw std::runtime_error("the bus does not start");
    }
    filter.reset(slot);
    client = std::make_unique<SessionBus>(std::move(program));
    server = std::make_unique<SessionBus>(std::move(bus));
    server->attach();
}

ScriptedBus::~ScriptedBus() {
    filter.reset();
}

std::unique_ptr<SessionBus> ScriptedBus::takeClient() {
    return std::move(client);
}

void ScriptedBus::answer(const std::string& method, Answer how) {
    answers[method].push_back(std::move(how));
}

void ScriptedBus::hangUp() {
    ::shutdown(sd_bus_get_fd(server->handle()), SHUT_RDWR);
}

ScriptedBus::Answer ScriptedBus::withNumber(std::uint32_t number) {
    return [number](sd_bus_message& call) { sd_bus_reply_method_return(&call, "u", number); };
}

ScriptedBus::Answer ScriptedBus::withError(const char* name) {
    return [name](sd_bus_message& call) { sd_bus_reply_method_errorf(&call, name, "as the test says"); };
}

int ScriptedBus::receive(sd_bus_message* message, void* self, sd_bus_error*) {
    if (sd_bus_message_is_method_call(message, nullptr, nullptr) <= 0) {
        return 0;
    }
    auto& bus = *static_cast<ScriptedBus*>(self);
    const std::string method = sd_bus_message_get_member(message);
    bus.called.append(QString::fromStdString(method));
    if (auto& script = bus.answers[method]; !script.empty()) {
        const auto how = std::move(script.front());
        script.pop_front();
        how(*message);
    }
    return 1;
}

} // namespace orvantile::test
