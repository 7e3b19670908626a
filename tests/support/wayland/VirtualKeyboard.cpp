#include "support/wayland/VirtualKeyboard.h"

#include "support/desktop/FileDescriptor.h"

#include <QFile>
#include <QStringList>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>
#include <virtual-keyboard.h>
#include <wayland-client.h>
#include <xkbcommon/xkbcommon.h>

namespace orvantile::test {
namespace {

constexpr std::uint32_t codeOffset = 8; ///< between the codes of XKB and those of the kernel

/// The first key that gives the symbol without any modifier, as the kernel numbers it.
std::uint32_t codeOf(xkb_keymap* keymap, const QString& name) {
    const auto symbol = xkb_keysym_from_name(name.toLatin1().constData(), XKB_KEYSYM_CASE_INSENSITIVE);
    for (auto code = xkb_keymap_min_keycode(keymap); code <= xkb_keymap_max_keycode(keymap); ++code) {
        const xkb_keysym_t* symbols = nullptr;
        if (xkb_keymap_key_get_syms_by_level(keymap, code, 0, 0, &symbols) == 1 && symbols[0] == symbol) {
            return code - codeOffset;
        }
    }
    throw std::runtime_error("no key for " + name.toStdString());
}

} // namespace

struct VirtualKeyboard::Protocol {
    Protocol(const QString& layout, const QString& compositor)
        : context(xkb_context_new(XKB_CONTEXT_NO_FLAGS)),
          display(wl_display_connect(compositor.isEmpty() ? nullptr
                                                          : QFile::encodeName(compositor).constData())) {
        if (display == nullptr) {
            throw std::runtime_error("no compositor to make a keyboard on");
        }
        const QByteArray layoutName = layout.toLatin1();
        const xkb_rule_names names{"evdev", "pc105", layoutName.constData(), "", ""};
        keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
        state = xkb_state_new(keymap);
        bind();
        if (manager == nullptr || seat == nullptr) {
            throw std::runtime_error("the compositor lets nobody make a keyboard");
        }
        keyboard = zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(manager, seat);
        sendKeymap();
        wl_display_roundtrip(display);
    }

    Protocol(const Protocol&) = delete;
    Protocol& operator=(const Protocol&) = delete;

    ~Protocol() {
        zwp_virtual_keyboard_v1_destroy(keyboard);
        zwp_virtual_keyboard_manager_v1_destroy(manager);
        wl_seat_destroy(seat);
        wl_registry_destroy(registry);
        wl_display_disconnect(display);
        xkb_state_unref(state);
        xkb_keymap_unref(keymap);
        xkb_context_unref(context);
    }

    void bind() {
        static constexpr wl_registry_listener listener{
            .global =
                [](void* data, wl_registry* list, std::uint32_t name, const char* interface, std::uint32_t) {
                    auto& self = *static_cast<Protocol*>(data);
                    const std::string_view offered(interface);
                    if (offered == zwp_virtual_keyboard_manager_v1_interface.name) {
                        self.manager = static_cast<zwp_virtual_keyboard_manager_v1*>(
                            wl_registry_bind(list, name, &zwp_virtual_keyboard_manager_v1_interface, 1));
                    } else if (offered == wl_seat_interface.name && self.seat == nullptr) {
                        self.seat =
                            static_cast<wl_seat*>(wl_registry_bind(list, name, &wl_seat_interface, 1));
                    }
                },
            .global_remove = [](void*, wl_registry*, std::uint32_t) {}};
        registry = wl_display_get_registry(display);
        wl_registry_add_listener(registry, &listener, this);
        wl_display_roundtrip(display);
    }

    void sendKeymap() {
        auto* text = xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1);
        const auto size = std::strlen(text) + 1;
        const FileDescriptor file(memfd_create("keymap", MFD_CLOEXEC));
        const bool written = ::write(file.get(), text, size) == static_cast<ssize_t>(size);
        std::free(text);
        if (!written) {
            throw std::runtime_error("cannot hand over a keymap");
        }
        zwp_virtual_keyboard_v1_keymap(keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file.get(),
                                       static_cast<std::uint32_t>(size));
    }

    xkb_context* context;
    xkb_keymap* keymap = nullptr;
    xkb_state* state = nullptr;
    wl_display* display;
    wl_registry* registry = nullptr;
    wl_seat* seat = nullptr;
    zwp_virtual_keyboard_manager_v1* manager = nullptr;
    zwp_virtual_keyboard_v1* keyboard = nullptr;
    std::uint32_t time = 0;
};

VirtualKeyboard::VirtualKeyboard(const QString& layout, const QString& compositor)
    : protocol(std::make_unique<Protocol>(layout, compositor)) {}

VirtualKeyboard::~VirtualKeyboard() = default;

void VirtualKeyboard::key(std::uint32_t code, bool pressed) {
    zwp_virtual_keyboard_v1_key(protocol->keyboard, ++protocol->time, code,
                                pressed ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    xkb_state_update_key(protocol->state, code + codeOffset, pressed ? XKB_KEY_DOWN : XKB_KEY_UP);
    const auto mods = [&](xkb_state_component part) {
        return xkb_state_serialize_mods(protocol->state, part);
    };
    zwp_virtual_keyboard_v1_modifiers(protocol->keyboard, mods(XKB_STATE_MODS_DEPRESSED),
                                      mods(XKB_STATE_MODS_LATCHED), mods(XKB_STATE_MODS_LOCKED), 0);
}

void VirtualKeyboard::type(const QString& text) {
    for (const auto character : text) {
        press(character == u' ' ? QStringLiteral("space") : QString(character));
    }
}

void VirtualKeyboard::press(const QString& combination) {
    std::vector<std::uint32_t> codes;
    for (const auto& part : combination.split(u'+')) {
        const bool isControl = part == QStringLiteral("Ctrl");
        const bool isModifier = isControl || part == QStringLiteral("Shift") ||
                                part == QStringLiteral("Alt") || part == QStringLiteral("Super");
        const QString base = isControl ? QStringLiteral("Control") : part;
        codes.push_back(codeOf(protocol->keymap, isModifier ? QString(base + QStringLiteral("_L")) : part));
    }
    for (const auto code : codes) {
        key(code, true);
    }
    for (auto code = codes.rbegin(); code != codes.rend(); ++code) {
        key(*code, false);
    }
    wl_display_roundtrip(protocol->display);
}

} // namespace orvantile::test
