#include "platform/linux/desktop/CanberraPlayer.h"

#include <canberra.h>

namespace orvantile::platform::desktop {

void CanberraPlayer::Destroy::operator()(ca_context* destroyed) const {
    ca_context_destroy(destroyed);
}

void CanberraPlayer::play(const QByteArray& name, const std::filesystem::path& file) {
    const bool wasConnected = context != nullptr;
    if (!context && !connect()) {
        return;
    }
    if (!start(name, file)) {
        // The server that was there has ended; another may have taken its place.
        context.reset();
        if (wasConnected && connect() && !start(name, file)) {
            context.reset();
        }
    }
}

bool CanberraPlayer::start(const QByteArray& name, const std::filesystem::path& file) {
    const auto event = QByteArray("orvantile-" + name.toLower());
    return ca_context_play(context.get(), ++lastIdentifier, CA_PROP_EVENT_ID, event.constData(),
                           CA_PROP_EVENT_DESCRIPTION, name.constData(), CA_PROP_MEDIA_FILENAME, file.c_str(),
                           CA_PROP_CANBERRA_CACHE_CONTROL, "volatile", nullptr) == CA_SUCCESS;
}

bool CanberraPlayer::connect() {
    if (Clock::now() < notBefore) {
        return false;
    }
    ca_context* created = nullptr;
    if (ca_context_create(&created) == CA_SUCCESS) {
        context.reset(created);
        // Both sound servers in use speak this. Without one the next choice would be the bare card, which
        // complains on standard error where there is none.
        ca_context_set_driver(context.get(), "pulse");
        ca_context_change_props(context.get(), CA_PROP_APPLICATION_NAME, "Orvantile", CA_PROP_APPLICATION_ID,
                                "org.orvantile.Orvantile", CA_PROP_APPLICATION_ICON_NAME,
                                "org.orvantile.Orvantile", nullptr);
        if (ca_context_open(context.get()) == CA_SUCCESS) {
            return true;
        }
        context.reset();
    }
    notBefore = Clock::now() + patience;
    return false;
}

} // namespace orvantile::platform::desktop
