#pragma once

#include "support/wayland/FakeCompositor.h"
#include "support/wayland/ServerThread.h"

#include <map>
#include <vector>
#include <wayland-server-core.h>

namespace orvantile::test {

/// What a `FakeCompositor` does on its thread. All but the constructor, the destructor and `thread` belong
/// there.
class FakeServer {
public:
    struct Surface {
        wl_resource* role = nullptr;
        wl_resource* buffer = nullptr; ///< attached since the latest commit
        std::vector<wl_resource*> frames;
        FakeCompositor::Panel pending;
        FakeCompositor::Panel current;
        bool configured = false;
        int age = 0;
    };

    struct KdeBlur {
        wl_resource* surface;
        QRegion region;
    };

    FakeServer();
    FakeServer(const FakeServer&) = delete;
    FakeServer& operator=(const FakeServer&) = delete;

    ~FakeServer() { thread.stop(); }

    template <typename Interface, typename Implementation>
    wl_resource* make(wl_client* client, std::uint32_t id, const Interface& interface,
                      const Implementation& implementation, int version) {
        auto* resource = wl_resource_create(client, &interface, version, id);
        wl_resource_set_implementation(resource, &implementation, this, [](wl_resource* gone) {
            static_cast<FakeServer*>(wl_resource_get_user_data(gone))->forget(gone);
        });
        return resource;
    }

    template <auto Bind>
    wl_global* offer(const wl_interface& interface, int version) {
        return wl_global_create(thread.display(), &interface, version, this,
                                [](wl_client* client, void* data, std::uint32_t bound, std::uint32_t id) {
                                    Bind(*static_cast<FakeServer*>(data), client, static_cast<int>(bound),
                                         id);
                                });
    }

    [[nodiscard]] QRegion regionOf(wl_resource* region) const {
        const auto found = regions.find(region);
        return found == regions.end() ? QRegion() : found->second;
    }

    void setScale(int scale);
    void offerKdeBlur();
    void offerEffects();
    void forget(wl_resource* gone);
    void commit(wl_resource* surface);
    void enterOutputs(wl_resource* surface) const;

    ServerThread thread;
    std::map<wl_resource*, QRegion> regions;
    std::map<wl_resource*, Surface> surfaces;
    std::map<wl_resource*, wl_resource*> effects; ///< and the surfaces they belong to
    std::map<wl_resource*, KdeBlur> kdeBlurs;
    std::vector<wl_resource*> outputs;
    std::vector<wl_resource*> effectManagers;
    int outputScale = 1;
    bool refuses = false;
    wl_global* kdeGlobal = nullptr;
    wl_global* effectsGlobal = nullptr;
    std::uint32_t capabilities = 0;
    int surfacesMade = 0;
};

} // namespace orvantile::test
