#pragma once

#include "platform/Sounds.h"
#include "platform/linux/desktop/SoundFolder.h"
#include "platform/linux/desktop/WorkerThread.h"

#include <memory>

namespace orvantile::platform::desktop {

/// The program's own sounds, played by the desktop's sound server through libcanberra, whose calls wait for
/// that server. A worker thread makes them, so that `play` returns at once even when the server hangs; a
/// sound whose moment has passed before it could start is dropped.
class CanberraSounds final : public Sounds {
public:
    explicit CanberraSounds(SoundFolder folder);

    void play(const QString& name) override;

private:
    class Queue;

    std::shared_ptr<Queue> queue;
    WorkerThread worker;
};

} // namespace orvantile::platform::desktop
