#include "support/VirtualScheduler.h"

#include <algorithm>

namespace orvantile::test {

class VirtualScheduler::Handle final : public platform::Scheduled {
public:
    explicit Handle(std::shared_ptr<Entry> entry_) : entry(std::move(entry_)) {}

    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    ~Handle() override { entry->valid = false; }

    void invalidate() override { entry->valid = false; }

private:
    std::shared_ptr<Entry> entry;
};

std::shared_ptr<VirtualScheduler::Entry> VirtualScheduler::schedule(double at, Entry entry) {
    auto shared = std::make_shared<Entry>(std::move(entry));
    entries.emplace(std::pair(at, sequence++), shared);
    return shared;
}

void VirtualScheduler::runLater(Work work) {
    schedule(time, {.work = std::move(work), .posted = true});
}

std::unique_ptr<platform::Scheduled> VirtualScheduler::runAfter(double seconds, Work work) {
    return std::make_unique<Handle>(schedule(time + std::max(seconds, 0.0), {.work = std::move(work)}));
}

std::unique_ptr<platform::Scheduled> VirtualScheduler::runEveryFrame(Work work) {
    return std::make_unique<Handle>(schedule(time + frame, {.work = std::move(work), .interval = frame}));
}

void VirtualScheduler::advance(double seconds) {
    const double end = time + seconds;
    while (!entries.empty() && entries.begin()->first.first <= end) {
        auto node = entries.extract(entries.begin());
        time = std::max(time, node.key().first);
        const auto entry = node.mapped();
        if (!entry->valid) {
            continue;
        }
        if (entry->interval > 0) {
            entries.emplace(std::pair(node.key().first + entry->interval, sequence++), entry);
        }
        entry->work();
    }
    time = end;
}

int VirtualScheduler::pending() const {
    return static_cast<int>(std::ranges::count_if(
        entries, [](const auto& scheduled) { return scheduled.second->valid && !scheduled.second->posted; }));
}

} // namespace orvantile::test
