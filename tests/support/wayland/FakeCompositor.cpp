#include "support/wayland/FakeCompositor.h"

#include "support/wayland/FakeServer.h"

#include <ext-background-effect-v1-server.h>
#include <utility>
#include <wlr-layer-shell-unstable-v1-server.h>

namespace orvantile::test {

FakeCompositor::FakeCompositor() : server(std::make_unique<FakeServer>()) {}

FakeCompositor::~FakeCompositor() = default;

QString FakeCompositor::display() const {
    return server->thread.path();
}

void FakeCompositor::setScale(int scale) {
    server->thread.run([&] { server->setScale(scale); });
}

void FakeCompositor::closePanels() {
    server->thread.run([this] {
        for (const auto& [resource, surface] : server->surfaces) {
            if (surface.role != nullptr) {
                zwlr_layer_surface_v1_send_closed(surface.role);
            }
        }
    });
}

void FakeCompositor::refusePanels() {
    server->thread.run([this] { server->refuses = true; });
}

void FakeCompositor::offerKdeBlur() {
    server->thread.run([this] { server->offerKdeBlur(); });
}

void FakeCompositor::withdrawKdeBlur() {
    server->thread.run([this] { wl_global_destroy(std::exchange(server->kdeGlobal, nullptr)); });
}

void FakeCompositor::offerEffects(std::uint32_t capabilities) {
    server->thread.run([&] {
        server->capabilities = capabilities;
        server->offerEffects();
    });
}

void FakeCompositor::setCapabilities(std::uint32_t capabilities) {
    server->thread.run([&] {
        server->capabilities = capabilities;
        for (auto* manager : server->effectManagers) {
            ext_background_effect_manager_v1_send_capabilities(manager, capabilities);
        }
    });
}

void FakeCompositor::withdrawEffects() {
    server->thread.run([this] { wl_global_destroy(std::exchange(server->effectsGlobal, nullptr)); });
}

int FakeCompositor::surfaces() const {
    int count = 0;
    server->thread.run([&] { count = server->surfacesMade; });
    return count;
}

std::optional<FakeCompositor::Panel> FakeCompositor::panel() const {
    std::optional<Panel> found;
    server->thread.run([&] {
        int age = 0;
        for (const auto& [resource, surface] : server->surfaces) {
            if (surface.role != nullptr && surface.age > age) {
                age = surface.age;
                found = surface.current;
                found->number = age;
            }
        }
    });
    return found;
}

} // namespace orvantile::test
