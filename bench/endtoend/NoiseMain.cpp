// An accessible application that never stops talking. Arguments: the bus address, seconds, events per second.
// Prints how many events it has sent.

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <systemd/sd-bus.h>
#include <thread>

namespace {

struct CloseBus {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};

using Bus = std::unique_ptr<sd_bus, CloseBus>;
using Clock = std::chrono::steady_clock;

Bus connectTo(const char* address) {
    sd_bus* bus = nullptr;
    if (sd_bus_new(&bus) < 0) {
        return nullptr;
    }
    Bus owned(bus);
    if (sd_bus_set_address(bus, address) < 0 || sd_bus_set_bus_client(bus, 1) < 0 || sd_bus_start(bus) < 0) {
        return nullptr;
    }
    return owned;
}

struct Kind {
    const char* member;
    const char* detail;
};

constexpr std::array kinds{Kind{"StateChanged", "sensitive"}, Kind{"ChildrenChanged", "add"},
                           Kind{"TextChanged", "insert"},     Kind{"PropertyChange", "accessible-name"},
                           Kind{"StateChanged", "focused"},   Kind{"ChildrenChanged", "remove"},
                           Kind{"TextCaretMoved", ""},        Kind{"StateChanged", "showing"},
                           Kind{"VisibleDataChanged", ""},    Kind{"BoundsChanged", ""}};

} // namespace

int main(int argc, char* argv[]) {
    constexpr int arguments = 4;
    const auto bus = argc == arguments ? connectTo(argv[1]) : nullptr;
    if (!bus) {
        std::fprintf(stderr, "no such bus\n");
        return EXIT_FAILURE;
    }
    const auto start = Clock::now();
    const auto end = start + std::chrono::seconds(std::atoi(argv[2]));
    const double rate = std::atof(argv[3]);
    long sent = 0;
    while (Clock::now() < end) {
        const double due = std::chrono::duration<double>(Clock::now() - start).count() * rate;
        for (; static_cast<double>(sent) < due; ++sent) {
            const auto& kind = kinds[static_cast<std::size_t>(sent) % kinds.size()];
            sd_bus_emit_signal(bus.get(), "/org/a11y/atspi/accessible/7", "org.a11y.atspi.Event.Object",
                               kind.member, "siiv(so)", kind.detail, 1, 0, "s", "text", ":1.0",
                               "/org/a11y/atspi/accessible/root");
        }
        sd_bus_flush(bus.get());
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    std::printf("%ld\n", sent);
    return EXIT_SUCCESS;
}
