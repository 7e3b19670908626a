// How long an application on Wayland waits with each key until those who asked for keys have answered, with
// and without the program running, in turns.

#include "support/Samples.h"
#include "support/wayland/WaylandStage.h"

#include <QElapsedTimer>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

const test::WaylandApplication editor{
    u"mousepad"_s, {u"--disable-server"_s, u"notes.txt"_s}, u"Mousepad"_s, u"Ctrl+A"_s, u"⌃A  Select All"_s};

/// Asks as applications do before they act on a key.
class Application {
public:
    explicit Application(const QString& busAddress) {
        sd_bus* opened = nullptr;
        sd_bus_new(&opened);
        bus.reset(opened);
        if (sd_bus_set_address(opened, busAddress.toLatin1().constData()) < 0 ||
            sd_bus_set_bus_client(opened, 1) < 0 || sd_bus_start(opened) < 0) {
            throw std::runtime_error("no accessibility bus");
        }
    }

    /// How long the answer takes, in milliseconds.
    [[nodiscard]] double press(int symbol, int code, int modifiers, const char* text) const {
        sd_bus_error error = SD_BUS_ERROR_NULL;
        QElapsedTimer clock;
        clock.start();
        if (sd_bus_call_method(bus.get(), "org.a11y.atspi.Registry",
                               "/org/a11y/atspi/registry/deviceeventcontroller",
                               "org.a11y.atspi.DeviceEventController", "NotifyListenersSync", &error, nullptr,
                               "(uinnisb)", 0U, symbol, code, modifiers, 1, text, 1) < 0) {
            throw std::runtime_error(error.message == nullptr ? "the registry does not answer"
                                                              : error.message);
        }
        return static_cast<double>(clock.nsecsElapsed()) / 1e6;
    }

private:
    struct CloseBus {
        void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
    };

    std::unique_ptr<sd_bus, CloseBus> bus;
};

struct Waits {
    Samples shortcut;
    Samples letter;
};

void measure(const Application& application, Waits& waits, int shots) {
    constexpr int control = 4;
    constexpr int keyA = 38;
    constexpr int keyX = 53;
    for (int shot = 0; shot < shots; ++shot) {
        std::this_thread::sleep_for(20ms); // nobody types faster
        waits.shortcut.add(application.press('a', keyA, control, "a"));
        std::this_thread::sleep_for(20ms);
        waits.letter.add(application.press('x', keyX, 0, "x"));
    }
}

/// What an application waits for while the program is stopped, and when it goes on again.
void measureStopped(test::WaylandStage& stage, const Application& application) {
    constexpr int control = 4;
    constexpr int keyA = 38;
    constexpr int keyX = 53;
    const auto shortcut = [&] { return application.press('a', keyA, control, "a"); };
    stage.orvantile().signal(SIGSTOP);
    std::this_thread::sleep_for(100ms);
    std::printf("program stopped: a letter %.1f ms, Ctrl+A", application.press('x', keyX, 0, "x"));
    for (int shot = 0; shot < 5; ++shot) {
        std::printf(" %.1f", shortcut());
    }
    stage.orvantile().signal(SIGCONT);
    std::this_thread::sleep_for(500ms);
    std::printf(" ms; going on again: Ctrl+A");
    for (int shot = 0; shot < 5; ++shot) {
        std::printf(" %.1f", shortcut());
    }
    std::printf(" ms\n");
}

int run(int shots) {
    constexpr int blocks = 8;
    test::WaylandStage stage;
    stage.start(editor);
    const Application application(stage.session().accessibilityBusAddress());
    Waits without;
    Waits with;
    for (int block = 0; block < blocks; ++block) {
        measure(application, without, shots / blocks);
        stage.startOrvantile();
        stage.awaitCommandsOf(editor);
        measure(application, with, shots / blocks);
        if (block + 1 == blocks) {
            measureStopped(stage, application);
        }
        stage.orvantile().end();
    }
    Samples::printHeader();
    without.shortcut.print(u"an application waits with Ctrl+A, program not running"_s);
    with.shortcut.print(u"… running"_s);
    without.letter.print(u"an application waits with a letter, program not running"_s);
    with.letter.print(u"… running"_s);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    try {
        return orvantile::bench::run(argc > 1 ? std::atoi(argv[1]) : 400);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
