#include "support/wayland/KWinInput.h"

#include <QFile>
#include <fake-input.h>
#include <iterator>
#include <linux/input-event-codes.h>
#include <stdexcept>
#include <string_view>
#include <wayland-client.h>

namespace orvantile::test {

struct KWinInput::Protocol {
    explicit Protocol(const QString& compositor)
        : display(wl_display_connect(QFile::encodeName(compositor).constData())) {
        if (display == nullptr) {
            throw std::runtime_error("no compositor to make input on");
        }
        static constexpr wl_registry_listener listener{
            .global =
                [](void* data, wl_registry* list, std::uint32_t name, const char* interface, std::uint32_t) {
                    if (std::string_view(interface) == org_kde_kwin_fake_input_interface.name) {
                        static_cast<Protocol*>(data)->input = static_cast<org_kde_kwin_fake_input*>(
                            wl_registry_bind(list, name, &org_kde_kwin_fake_input_interface, 4));
                    }
                },
            .global_remove = [](void*, wl_registry*, std::uint32_t) {}};
        registry = wl_display_get_registry(display);
        wl_registry_add_listener(registry, &listener, this);
        wl_display_roundtrip(display);
        if (input == nullptr) {
            throw std::runtime_error("the compositor lets nobody make input");
        }
        org_kde_kwin_fake_input_authenticate(input, "test", "test");
        wl_display_roundtrip(display);
    }

    Protocol(const Protocol&) = delete;
    Protocol& operator=(const Protocol&) = delete;

    ~Protocol() {
        org_kde_kwin_fake_input_destroy(input);
        wl_registry_destroy(registry);
        wl_display_disconnect(display);
    }

    wl_display* display;
    wl_registry* registry = nullptr;
    org_kde_kwin_fake_input* input = nullptr;
};

KWinInput::KWinInput(const QString& compositor) : protocol(std::make_unique<Protocol>(compositor)) {}

KWinInput::~KWinInput() = default;

void KWinInput::press(std::initializer_list<std::uint32_t> keys) {
    for (const auto key : keys) {
        org_kde_kwin_fake_input_keyboard_key(protocol->input, key, 1);
    }
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key) {
        org_kde_kwin_fake_input_keyboard_key(protocol->input, *key, 0);
    }
    wl_display_roundtrip(protocol->display);
}

void KWinInput::click(QPoint place) {
    org_kde_kwin_fake_input_pointer_motion_absolute(protocol->input, wl_fixed_from_int(place.x()),
                                                    wl_fixed_from_int(place.y()));
    org_kde_kwin_fake_input_button(protocol->input, BTN_LEFT, 1);
    org_kde_kwin_fake_input_button(protocol->input, BTN_LEFT, 0);
    wl_display_roundtrip(protocol->display);
}

} // namespace orvantile::test
