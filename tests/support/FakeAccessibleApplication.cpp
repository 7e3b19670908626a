#include "support/FakeAccessibleApplication.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstring>
#include <poll.h>
#include <stdexcept>
#include <unistd.h>

namespace orvantile::test {
namespace {

constexpr auto registry = "org.a11y.atspi.Registry";

struct ReleaseMessage {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

using MessageHandle = std::unique_ptr<sd_bus_message, ReleaseMessage>;

void check(int result, const char* what) {
    if (result < 0) {
        throw std::runtime_error(std::string(what) + ": " + std::strerror(-result));
    }
}

MessageHandle replyTo(sd_bus_message& message) {
    sd_bus_message* reply = nullptr;
    check(sd_bus_message_new_method_return(&message, &reply), "no answer");
    return MessageHandle(reply);
}

/// How many matches the question wants: its arguments are a rule, an order, that number and a flag.
std::size_t mostWanted(sd_bus_message& question) {
    unsigned order = 0;
    int count = 0;
    check(sd_bus_message_skip(&question, "(aiia{ss}iaiiasib)"), "rule");
    check(sd_bus_message_read(&question, "ui", &order, &count), "number");
    return static_cast<std::size_t>(count);
}

/// A string argument that is not UTF-8: the library would not write it, so it is put over another.
int sendInvalidText(sd_bus* bus, MessageHandle reply) {
    std::string text = "broken";
    char* space = nullptr;
    check(sd_bus_message_open_container(reply.get(), 'v', "s"), "variant");
    check(sd_bus_message_append_string_space(reply.get(), text.size(), &space), "space");
    text[1] = '\xC3';
    text[2] = '\x28';
    std::memcpy(space, text.data(), text.size());
    sd_bus_message_close_container(reply.get());
    return sd_bus_send(bus, reply.get(), nullptr);
}

} // namespace

FakeAccessibleApplication::FakeAccessibleApplication(const Manners& manners_)
    : manners(manners_),
      tree(manners_) {
    sd_bus* opened = nullptr;
    check(sd_bus_open_user(&opened), "no session bus");
    const std::unique_ptr<sd_bus, Close> session(opened);
    sd_bus_message* reply = nullptr;
    check(sd_bus_call_method(session.get(), "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                             nullptr, &reply, ""),
          "no accessibility bus");
    const MessageHandle address(reply);
    const char* text = nullptr;
    check(sd_bus_message_read(reply, "s", &text), "address");

    sd_bus* created = nullptr;
    check(sd_bus_new(&created), "bus");
    bus.reset(created);
    check(sd_bus_set_address(created, text), "address");
    check(sd_bus_set_bus_client(created, 1), "client");
    check(sd_bus_start(created), "start");
    check(sd_bus_add_filter(created, nullptr, question, this), "filter");
    const char* name = nullptr;
    check(sd_bus_get_unique_name(created, &name), "name");
    uniqueName = name;
    check(sd_bus_call_method_async(created, nullptr, registry, FakeAccessibleTree::root,
                                   "org.a11y.atspi.Socket", "Embed", nullptr, nullptr, "(so)", name,
                                   FakeAccessibleTree::root),
          "embed");
}

void FakeAccessibleApplication::run(int orders) {
    std::string pending;
    for (bool running = true; running;) {
        int result = 1;
        while (result > 0) {
            result = sd_bus_process(bus.get(), nullptr);
        }
        if (result < 0) {
            return; // the bus has gone, and the program with it
        }
        std::uint64_t timeout = 0;
        sd_bus_get_timeout(bus.get(), &timeout);
        std::array<pollfd, 2> entries{
            pollfd{sd_bus_get_fd(bus.get()), static_cast<short>(sd_bus_get_events(bus.get())), 0},
            pollfd{orders, POLLIN, 0}};
        poll(entries.data(), entries.size(), timeout == 0 ? 0 : -1);
        if ((entries[1].revents & POLLIN) != 0) {
            std::array<char, 4096> buffer{};
            const auto count = read(orders, buffer.data(), buffer.size());
            pending.append(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0U);
            for (auto end = pending.find('\n'); running && end != std::string::npos;
                 end = pending.find('\n')) {
                running = obey(pending.substr(0, end));
                pending.erase(0, end + 1);
            }
        }
    }
}

int FakeAccessibleApplication::question(sd_bus_message* message, void* self, sd_bus_error*) {
    if (sd_bus_message_is_method_call(message, nullptr, nullptr) <= 0) {
        return 0;
    }
    return static_cast<FakeAccessibleApplication*>(self)->answer(*message) ? 1 : 0;
}

bool FakeAccessibleApplication::answer(sd_bus_message& message) {
    if (manners.stopAfter > 0 && ++questions == manners.stopAfter) {
        raise(SIGSTOP);
    }
    if (manners.silent) {
        return true;
    }
    const std::string interface = sd_bus_message_get_interface(&message);
    const std::string member = sd_bus_message_get_member(&message);
    const std::string path = sd_bus_message_get_path(&message);
    if (interface == "org.a11y.atspi.Collection" && manners.collection) {
        auto paths = tree.itemPaths();
        paths.resize(std::min(paths.size(), mostWanted(message)));
        return answerPaths(message, paths) >= 0;
    }
    if (interface == "org.a11y.atspi.Action" && member == "GetKeyBinding") {
        return (manners.wrongTypes
                    ? sd_bus_reply_method_return(&message, "i", 7)
                    : sd_bus_reply_method_return(&message, "s", tree.binding(path).c_str())) >= 0;
    }
    if (interface == "org.freedesktop.DBus.Properties" && member == "Get") {
        if (manners.wrongTypes) {
            return sd_bus_reply_method_return(&message, "v", "i", 7) >= 0;
        }
        if (manners.invalidUtf8 && tree.items.contains(path)) {
            return sendInvalidText(bus.get(), replyTo(message)) >= 0;
        }
        return sd_bus_reply_method_return(&message, "v", "s", tree.name(path).c_str()) >= 0;
    }
    if (interface == "org.a11y.atspi.Accessible" && answerAccessible(message, member, path) > 0) {
        return true;
    }
    sd_bus_reply_method_errorf(&message, SD_BUS_ERROR_UNKNOWN_METHOD, "not here");
    return true;
}

int FakeAccessibleApplication::answerAccessible(sd_bus_message& message, const std::string& member,
                                                const std::string& path) {
    if (member == "GetChildren") {
        return answerPaths(message, tree.children(path));
    }
    if (member == "GetRole") {
        return sd_bus_reply_method_return(&message, "u", tree.role(path));
    }
    if (member == "GetState") {
        const auto states = tree.states(path);
        return manners.wrongTypes ? sd_bus_reply_method_return(&message, "s", "all of them")
                                  : sd_bus_reply_method_return(&message, "au", 2, states[0], states[1]);
    }
    return 0;
}

int FakeAccessibleApplication::answerPaths(sd_bus_message& message, const std::vector<std::string>& paths) {
    const auto reply = replyTo(message);
    check(sd_bus_message_open_container(reply.get(), 'a', "(so)"), "array");
    for (const auto& path : paths) {
        check(sd_bus_message_append(reply.get(), "(so)", uniqueName.c_str(), path.c_str()), "reference");
    }
    check(sd_bus_message_close_container(reply.get()), "array");
    return sd_bus_send(bus.get(), reply.get(), nullptr);
}

bool FakeAccessibleApplication::obey(const std::string& order) {
    const auto space = order.find(' ');
    const auto verb = order.substr(0, space);
    const auto rest = space == std::string::npos ? std::string() : order.substr(space + 1);
    const auto equals = rest.find('=');
    const auto subject = rest.substr(0, equals);
    const auto object = equals == std::string::npos ? std::string() : rest.substr(equals + 1);
    const auto path = tree.pathOf(subject);

    if (verb == "enable" || verb == "disable") {
        tree.items.at(path).enabled = verb == "enable";
        emit(path, "StateChanged", "sensitive", verb == "enable" ? 1 : 0, "i", "");
    } else if (verb == "rename-silently") {
        tree.items.at(path).title = object;
    } else if (verb == "rename") {
        tree.items.at(path).title = object;
        emit(path, "PropertyChange", "accessible-name", 0, "s", object);
    } else if (verb == "bind") {
        tree.items.at(path).binding = object;
    } else if (verb == "add") {
        emit(FakeAccessibleTree::path("menu"), "ChildrenChanged", "add", 0, "(so)",
             tree.addItem({subject, object}));
    } else if (verb == "retitle") {
        tree.title = rest;
        emit(FakeAccessibleTree::path("frame"), "PropertyChange", "accessible-name", 0, "s", rest);
    } else if (verb == "dialog") {
        emit(FakeAccessibleTree::root, "ChildrenChanged", "add", 0, "(so)", tree.addDialog(rest));
    } else if (verb == "quit") {
        return false;
    }
    return true;
}

void FakeAccessibleApplication::emit(const std::string& path, const char* member, const char* detail,
                                     int value, const char* type, const std::string& data) {
    sd_bus_message* created = nullptr;
    check(sd_bus_message_new_signal(bus.get(), &created, path.c_str(), "org.a11y.atspi.Event.Object", member),
          "signal");
    const MessageHandle signal(created);
    check(sd_bus_message_append(created, "sii", detail, value, 0), "signal");
    const std::string contents = type;
    if (contents == "i") {
        check(sd_bus_message_append(created, "v", type, 0), "signal");
    } else if (contents == "s") {
        check(sd_bus_message_append(created, "v", type, data.c_str()), "signal");
    } else {
        check(sd_bus_message_append(created, "v", type, uniqueName.c_str(), data.c_str()), "signal");
    }
    check(sd_bus_message_append(created, "a{sv}", 0), "signal");
    check(sd_bus_send(bus.get(), created, nullptr), "signal");
}

} // namespace orvantile::test
