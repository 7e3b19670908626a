#include "platform/linux/desktop/CanberraSounds.h"

#include "platform/linux/desktop/CanberraPlayer.h"

#include <chrono>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

using Clock = std::chrono::steady_clock;

/// A sound that starts later than this no longer belongs to what it accompanies.
constexpr std::chrono::milliseconds tooLate{300};

constexpr std::size_t mostWaiting = 8;

} // namespace

/// Sounds that are to be played. `add` on any thread, `play` on the worker's.
class CanberraSounds::Queue {
public:
    explicit Queue(SoundFolder folder_) : folder(std::move(folder_)) {}

    void add(const QString& name) {
        const std::scoped_lock lock(mutex);
        if (waiting.size() == mostWaiting) {
            waiting.pop_front();
        }
        waiting.push_back({name, Clock::now()});
    }

    void play() {
        while (const auto sound = next()) {
            if (Clock::now() - sound->asked > tooLate) {
                continue;
            }
            if (const auto file = folder.find(sound->name)) {
                player.play(sound->name.toUtf8(), *file);
            }
        }
    }

private:
    struct Sound {
        QString name;
        Clock::time_point asked;
    };

    std::optional<Sound> next() {
        const std::scoped_lock lock(mutex);
        if (waiting.empty()) {
            return std::nullopt;
        }
        auto first = std::move(waiting.front());
        waiting.pop_front();
        return first;
    }

    const SoundFolder folder;
    CanberraPlayer player;
    std::mutex mutex; ///< of what follows
    std::deque<Sound> waiting;
};

CanberraSounds::CanberraSounds(SoundFolder folder) : queue(std::make_shared<Queue>(std::move(folder))) {}

void CanberraSounds::play(const QString& name) {
    queue->add(name);
    worker.schedule([queue = queue] { queue->play(); });
}

} // namespace orvantile::platform::desktop
