#include "trace/Trace.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <unistd.h>
#include <vector>

namespace orvantile::trace {
namespace {

constexpr std::array names{"key",  "lookup", "report",  "label", "show", "measure", "shadow",     "backdrop",
                           "blur", "paint",  "compose", "put",   "map",  "sound",   "pixelsRead", "turn"};

std::int64_t now() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

struct Event {
    Step step;
    std::int64_t begin; ///< nanoseconds
    std::int64_t end;   ///< the same as `begin` for an instant
};

/// Keeps events in memory while the program runs, so that recording does not become what is measured.
class Recorder {
public:
    Recorder() : path(std::getenv("ORVANTILE_TRACE")) {
        if (path != nullptr) {
            events.reserve(most);
        }
    }

    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    ~Recorder() {
        if (path != nullptr) {
            write();
        }
    }

    [[nodiscard]] bool isOn() const { return path != nullptr; }

    void add(const Event& event) {
        if (events.size() < most) {
            events.push_back(event);
        }
    }

private:
    void write() const {
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path, "w"), &std::fclose);
        if (!file) {
            return;
        }
        std::fprintf(file.get(), R"({"traceEvents":[)");
        const char* separator = "\n";
        for (const auto& event : events) {
            const bool instant = event.begin == event.end;
            constexpr double microsecond = 1000;
            std::fprintf(file.get(), R"(%s{"name":"%s","ph":"%s","ts":%.3f,)", separator,
                         names.at(static_cast<std::size_t>(event.step)), instant ? "i" : "X",
                         static_cast<double>(event.begin) / microsecond);
            if (!instant) {
                std::fprintf(file.get(), R"("dur":%.3f,)",
                             static_cast<double>(event.end - event.begin) / microsecond);
            }
            std::fprintf(file.get(), R"("pid":%d,"tid":%d})", getpid(), getpid());
            separator = ",\n";
        }
        std::fprintf(file.get(), "\n]}\n");
    }

    static constexpr std::size_t most = 1 << 18;
    const char* path;
    std::vector<Event> events;
};

Recorder& recorder() {
    static Recorder instance;
    return instance;
}

} // namespace

Span::Span(Step step_) noexcept : begin(recorder().isOn() ? now() : 0), step(step_) {}

Span::~Span() {
    if (begin != 0) {
        recorder().add({step, begin, now()});
    }
}

void mark(Step step) noexcept {
    if (recorder().isOn()) {
        const auto time = now();
        recorder().add({step, time, time});
    }
}

} // namespace orvantile::trace
