#include "support/wayland/VirtualPointer.h"

#include <linux/input-event-codes.h>
#include <stdexcept>
#include <string_view>
#include <virtual-pointer.h>
#include <wayland-client.h>

namespace orvantile::test {

struct VirtualPointer::Protocol {
    Protocol() : display(wl_display_connect(nullptr)) {
        if (display == nullptr) {
            throw std::runtime_error("no compositor to make a mouse on");
        }
        static constexpr wl_registry_listener listener{
            .global =
                [](void* data, wl_registry* list, std::uint32_t name, const char* interface, std::uint32_t) {
                    if (std::string_view(interface) == zwlr_virtual_pointer_manager_v1_interface.name) {
                        static_cast<Protocol*>(data)->manager = static_cast<zwlr_virtual_pointer_manager_v1*>(
                            wl_registry_bind(list, name, &zwlr_virtual_pointer_manager_v1_interface, 1));
                    }
                },
            .global_remove = [](void*, wl_registry*, std::uint32_t) {}};
        registry = wl_display_get_registry(display);
        wl_registry_add_listener(registry, &listener, this);
        wl_display_roundtrip(display);
        if (manager == nullptr) {
            throw std::runtime_error("the compositor lets nobody make a mouse");
        }
        pointer = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(manager, nullptr);
        wl_display_roundtrip(display);
    }

    Protocol(const Protocol&) = delete;
    Protocol& operator=(const Protocol&) = delete;

    ~Protocol() {
        zwlr_virtual_pointer_v1_destroy(pointer);
        zwlr_virtual_pointer_manager_v1_destroy(manager);
        wl_registry_destroy(registry);
        wl_display_disconnect(display);
    }

    wl_display* display;
    wl_registry* registry = nullptr;
    zwlr_virtual_pointer_manager_v1* manager = nullptr;
    zwlr_virtual_pointer_v1* pointer = nullptr;
    std::uint32_t time = 0;
};

VirtualPointer::VirtualPointer() : protocol(std::make_unique<Protocol>()) {}

VirtualPointer::~VirtualPointer() = default;

void VirtualPointer::click(QPoint point, QSize desktop) {
    auto* pointer = protocol->pointer;
    zwlr_virtual_pointer_v1_motion_absolute(pointer, ++protocol->time, static_cast<std::uint32_t>(point.x()),
                                            static_cast<std::uint32_t>(point.y()),
                                            static_cast<std::uint32_t>(desktop.width()),
                                            static_cast<std::uint32_t>(desktop.height()));
    zwlr_virtual_pointer_v1_frame(pointer);
    for (const std::uint32_t state : {WL_POINTER_BUTTON_STATE_PRESSED, WL_POINTER_BUTTON_STATE_RELEASED}) {
        zwlr_virtual_pointer_v1_button(pointer, ++protocol->time, BTN_LEFT, state);
        zwlr_virtual_pointer_v1_frame(pointer);
    }
    wl_display_roundtrip(protocol->display);
}

} // namespace orvantile::test
