#include "desktop/launch/SessionManager.h"

#include <array>
#include <cstdlib>
#include <functional>
#include <poll.h>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

// Last: these define words such as Bool and Status.
#include <X11/ICE/ICElib.h>
#include <X11/ICE/ICEutil.h>
#include <X11/SM/SMlib.h>

namespace orvantile::test {

struct SessionManager::State {
    [[nodiscard]] bool turnUntil(const std::function<bool()>& done, const QDeadlineTimer& deadline);
    void turn(int milliseconds);

    int listenerCount = 0;
    IceListenObj* listeners = nullptr;
    std::vector<IceConn> connections;
    SmsConn client = nullptr;
    int saved = 0; ///< how often the program has said that everything is saved
    bool asksTheUser = false;
    bool gone = false;
};

namespace {

/// What the library calls.
template <typename State>
struct Calls {
    static State& self(SmPointer data) { return *static_cast<State*>(data); }

    static Status join(SmsConn connection, SmPointer data, unsigned long* wanted, SmsCallbacks* calls,
                       char**) {
        self(data).client = connection;
        *wanted = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
                  SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask |
                  SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask | SmsSetPropertiesProcMask |
                  SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask;
        calls->register_client = {[](SmsConn joined, SmPointer, char* previous) -> Status {
                                      std::free(previous);
                                      std::string identifier = "orvantile-test";
                                      SmsRegisterClientReply(joined, identifier.data());
                                      SmsSaveYourself(joined, SmSaveLocal, False, SmInteractStyleNone,
                                                      False); // as the protocol demands
                                      return 1;
                                  },
                                  data};
        calls->interact_request = {[](SmsConn, SmPointer own, int) { self(own).asksTheUser = true; }, data};
        calls->interact_done = {[](SmsConn, SmPointer, int) {}, data};
        calls->save_yourself_request = {[](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}, data};
        calls->save_yourself_phase2_request = {
            [](SmsConn asking, SmPointer) { SmsSaveYourselfPhase2(asking); }, data};
        calls->save_yourself_done = {[](SmsConn done, SmPointer own, Bool) {
                                         ++self(own).saved;
                                         if (self(own).saved == 1) {
                                             SmsSaveComplete(done);
                                         }
                                     },
                                     data};
        calls->close_connection = {[](SmsConn closing, SmPointer own, int count, char** reasons) {
                                       SmFreeReasons(count, reasons);
                                       const auto transport = SmsGetIceConnection(closing);
                                       SmsCleanUp(closing);
                                       std::erase(self(own).connections, transport);
                                       IceCloseConnection(transport);
                                       self(own).gone = true;
                                   },
                                   data};
        calls->set_properties = {[](SmsConn, SmPointer, int count, SmProp** properties) {
                                     for (SmProp* property :
                                          std::span(properties, static_cast<std::size_t>(count))) {
                                         SmFreeProperty(property);
                                     }
                                     std::free(properties);
                                 },
                                 data};
        calls->delete_properties = {[](SmsConn, SmPointer, int count, char** names) {
                                        for (char* name : std::span(names, static_cast<std::size_t>(count))) {
                                            std::free(name);
                                        }
                                        std::free(names);
                                    },
                                    data};
        calls->get_properties = {[](SmsConn asking, SmPointer) { SmsReturnProperties(asking, 0, nullptr); },
                                 data};
        return 1;
    }

    /// Whoever reaches the socket is of this test.
    static Bool admit(char*) { return True; }
};

} // namespace

SessionManager::SessionManager() : state(std::make_unique<State>()) {
    std::array<char, 256> error{};
    std::string vendor = "orvantile";
    std::string release = "1";
    IceSetIOErrorHandler([](IceConn) {}); // the default one ends the process
    if (SmsInitialize(vendor.data(), release.data(), Calls<State>::join, state.get(), Calls<State>::admit,
                      error.size(), error.data()) == 0 ||
        IceListenForConnections(&state->listenerCount, &state->listeners, error.size(), error.data()) == 0) {
        throw std::runtime_error(std::string("no session manager: ") + error.data());
    }
    for (const IceListenObj listener :
         std::span(state->listeners, static_cast<std::size_t>(state->listenerCount))) {
        IceSetHostBasedAuthProc(listener, Calls<State>::admit);
    }
}

SessionManager::~SessionManager() {
    for (const IceConn connection : state->connections) {
        IceSetShutdownNegotiation(connection, False);
        IceCloseConnection(connection);
    }
    IceFreeListenObjs(state->listenerCount, state->listeners);
}

QString SessionManager::address() const {
    const std::unique_ptr<char, decltype(&std::free)> list(
        IceComposeNetworkIdList(state->listenerCount, state->listeners), std::free);
    return QString::fromLatin1(list.get());
}

bool SessionManager::awaitClient(const QDeadlineTimer& deadline) {
    return state->turnUntil([this] { return state->saved > 0; }, deadline);
}

bool SessionManager::logOut(const QDeadlineTimer& deadline) {
    const int before = state->saved;
    SmsSaveYourself(state->client, SmSaveBoth, True, SmInteractStyleAny, False);
    if (!state->turnUntil([&] { return state->saved > before || state->asksTheUser; }, deadline) ||
        state->asksTheUser) {
        return false;
    }
    SmsDie(state->client);
    return state->turnUntil([this] { return state->gone; }, deadline);
}

bool SessionManager::State::turnUntil(const std::function<bool()>& done, const QDeadlineTimer& deadline) {
    while (!done()) {
        if (deadline.hasExpired()) {
            return false;
        }
        turn(static_cast<int>(deadline.remainingTime()));
    }
    return true;
}

void SessionManager::State::turn(int milliseconds) {
    const std::span all(listeners, static_cast<std::size_t>(listenerCount));
    const auto open = connections;
    std::vector<pollfd> entries;
    for (const IceListenObj listener : all) {
        entries.push_back({IceGetListenConnectionNumber(listener), POLLIN, 0});
    }
    for (const IceConn connection : open) {
        entries.push_back({IceConnectionNumber(connection), POLLIN, 0});
    }
    ::poll(entries.data(), entries.size(), milliseconds);
    for (std::size_t i = 0; i < all.size(); ++i) {
        IceAcceptStatus status{};
        if (entries[i].revents != 0) {
            if (const IceConn accepted = IceAcceptConnection(all[i], &status); status == IceAcceptSuccess) {
                connections.push_back(accepted);
            }
        }
    }
    for (std::size_t i = 0; i < open.size(); ++i) {
        if (entries[all.size() + i].revents != 0 &&
            IceProcessMessages(open[i], nullptr, nullptr) == IceProcessMessagesIOError) {
            std::erase(connections, open[i]);
            IceCloseConnection(open[i]);
            gone = true;
        }
    }
}

} // namespace orvantile::test
