#pragma once

#include "platform/linux/wayland/Handle.h"
#include "platform/linux/wayland/Listeners.h"

#include <cstdint>

namespace orvantile::platform::wayland {

/// The compositor's offer to blur what lies behind a surface, by either of the two protocols for that. It
/// comes and goes while the compositor runs, with its effects.
class BlurOffer {
public:
    BlurOffer() = default;
    BlurOffer(const BlurOffer&) = delete;
    BlurOffer& operator=(const BlurOffer&) = delete;
    ~BlurOffer() = default;

    /// Takes what the registry tells, if it belongs here.
    bool add(wl_registry& registry, std::uint32_t name, const char* interface);
    bool remove(std::uint32_t name);

    [[nodiscard]] bool stands() const { return effects() != nullptr || kde() != nullptr; }

    /// By the newer protocol; null while it does not blur. It comes first where both are offered.
    [[nodiscard]] ext_background_effect_manager_v1* effects() const;

    /// By KWin's own; null where there is none.
    [[nodiscard]] org_kde_kwin_blur_manager* kde() const { return kdeManager.get(); }

    /// Another number after each change.
    [[nodiscard]] unsigned revision() const { return changes; }

    /// Calls `listener` after each change.
    [[nodiscard]] Listeners::Token listen(std::function<void()> listener) {
        return listeners.add(std::move(listener));
    }

private:
    void setCapabilities(std::uint32_t flags);
    void changed();

    Handle<ext_background_effect_manager_v1> effectsManager;
    Handle<org_kde_kwin_blur_manager> kdeManager;
    std::uint32_t effectsName = 0;
    std::uint32_t kdeName = 0;
    std::uint32_t capabilities = 0;
    unsigned changes = 0;
    Listeners listeners;
};

} // namespace orvantile::platform::wayland
