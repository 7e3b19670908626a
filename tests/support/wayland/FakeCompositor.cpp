#include "support/wayland/FakeCompositor.h"

#include "support/wayland/FakeServer.h"

#include <ext-background-effect-v1-server.h>
#include <utility>

namespace orvantile::test {

FakeCompositor::FakeCompositor() : server(std::make_unique<FakeServer>()) {}

FakeCompositor::~FakeCompositor() = default;

QString FakeCompositor::display() const {
    return server->thread.path();
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

std::optional<FakeCompositor::Panel> FakeCompositor::panel() const {
    std::optional<Panel> found;
    server->thread.run([&] {
        int age = 0;
        for (const auto& [resource, surface] : server->surfaces) {
            if (surface.role != nullptr && surface.age > age) {
                age = surface.age;
                found = surface.current;
            }
        }
    });
    return found;
}

} // namespace orvantile::test
