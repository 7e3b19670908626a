#include "platform/linux/wayland/BlurOffer.h"

#include <string_view>
#include <utility>

namespace orvantile::platform::wayland {

bool BlurOffer::add(wl_registry& registry, std::uint32_t name, const char* interface) {
    const std::string_view offered = interface;
    if (offered == org_kde_kwin_blur_manager_interface.name) {
        kdeManager.reset(static_cast<org_kde_kwin_blur_manager*>(
            wl_registry_bind(&registry, name, &org_kde_kwin_blur_manager_interface, 1)));
        kdeName = name;
        changed();
        return true;
    }
    if (offered == ext_background_effect_manager_v1_interface.name) {
        static constexpr ext_background_effect_manager_v1_listener listener{
            .capabilities = [](void* data, ext_background_effect_manager_v1*, std::uint32_t flags) {
                static_cast<BlurOffer*>(data)->setCapabilities(flags);
            }};
        effectsManager.reset(static_cast<ext_background_effect_manager_v1*>(
            wl_registry_bind(&registry, name, &ext_background_effect_manager_v1_interface, 1)));
        effectsName = name;
        capabilities = 0; // it tells them next
        ext_background_effect_manager_v1_add_listener(effectsManager.get(), &listener, this);
        return true;
    }
    return false;
}

bool BlurOffer::remove(std::uint32_t name) {
    if (name == kdeName && kdeManager) {
        kdeManager.reset();
        changed();
        return true;
    }
    if (name == effectsName && effectsManager) {
        effectsManager.reset();
        setCapabilities(0);
        return true;
    }
    return false;
}

ext_background_effect_manager_v1* BlurOffer::effects() const {
    const bool blurs = (capabilities & EXT_BACKGROUND_EFFECT_MANAGER_V1_CAPABILITY_BLUR) != 0;
    return blurs ? effectsManager.get() : nullptr;
}

void BlurOffer::setCapabilities(std::uint32_t flags) {
    if (std::exchange(capabilities, flags) != flags) {
        changed();
    }
}

void BlurOffer::changed() {
    ++changes;
    listeners.notify();
}

} // namespace orvantile::platform::wayland
