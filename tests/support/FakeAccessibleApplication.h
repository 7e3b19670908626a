#pragma once

#include "support/FakeAccessibleTree.h"

#include <memory>
#include <string>
#include <systemd/sd-bus.h>

namespace orvantile::test {

/// A program on the accessibility bus that behaves as it is told. It runs in a process of its own and takes
/// orders, one a line, from a named pipe:
///   enable TITLE | disable TITLE | rename TITLE=TITLE | rename-silently TITLE=TITLE |
///   add TITLE=BINDING | retitle TITLE | dialog TITLE | quit
class FakeAccessibleApplication {
public:
    /// Joins the bus of the session. Throws std::runtime_error when that fails.
    explicit FakeAccessibleApplication(const Manners& manners);

    /// Serves until the order to quit; `orders` is the pipe's descriptor.
    void run(int orders);

private:
    struct Close {
        void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
    };

    static int question(sd_bus_message* message, void* self, sd_bus_error* error);

    [[nodiscard]] bool answer(sd_bus_message& message);
    [[nodiscard]] int answerAccessible(sd_bus_message& message, const std::string& member,
                                       const std::string& path);
    [[nodiscard]] int answerPaths(sd_bus_message& message, const std::vector<std::string>& paths);
    [[nodiscard]] bool obey(const std::string& order);
    void emit(const std::string& path, const char* member, const char* detail, int value, const char* type,
              const std::string& data);

    Manners manners;
    FakeAccessibleTree tree;
    std::unique_ptr<sd_bus, Close> bus;
    std::string uniqueName;
    int questions = 0;
};

} // namespace orvantile::test
