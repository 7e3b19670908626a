#pragma once

#include <wayland-client-protocol.h>

namespace orvantile::bench {

/// Is told of every commit of the panel's surfaces, just before it.
class CommitWatch {
public:
    CommitWatch() { current = this; }

    CommitWatch(const CommitWatch&) = delete;
    CommitWatch& operator=(const CommitWatch&) = delete;

    virtual ~CommitWatch() { current = nullptr; }

    virtual void commits(wl_surface* surface) = 0;

    static void commit(wl_surface* surface) {
        if (current != nullptr) {
            current->commits(surface);
        }
        wl_surface_commit(surface);
    }

private:
    static inline CommitWatch* current = nullptr;
};

} // namespace orvantile::bench
