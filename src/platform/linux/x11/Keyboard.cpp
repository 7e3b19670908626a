#include "platform/linux/x11/Keyboard.h"

#include "platform/linux/keys/KeyCandidates.h"
#include "platform/linux/x11/XkbProtocol.h"
#include "trace/Trace.h"

#include <array>
#include <bit>
#include <utility>
#include <xcb/xinput.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace orvantile::platform::x11 {

Keyboard::Keyboard(XConnection& connection_)
    : connection(connection_),
      context(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    reload.setSingleShot(true);
    QObject::connect(&reload, &QTimer::timeout, &reload, [this] { loadKeymap(); });
    if (context == nullptr || !selectKeymapEvents() || !selectKeyEvents()) {
        return;
    }
    loadKeymap();
    token = connection.listen([this](const auto& event) { handle(event); });
}

bool Keyboard::selectKeymapEvents() {
    if (xkb_x11_setup_xkb_extension(connection.get(), XKB_X11_MIN_MAJOR_XKB_VERSION,
                                    XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS,
                                    nullptr, nullptr, &keymapEvents, nullptr) == 0) {
        return false;
    }
    device = xkb_x11_get_core_keyboard_device_id(connection.get());
    if (device < 0) {
        return false;
    }
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                     XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t allMapParts = 0xff;
    xcb_xkb_select_events(connection.get(), static_cast<xcb_xkb_device_spec_t>(device), events, 0, events,
                          allMapParts, allMapParts, nullptr);
    return true;
}

bool Keyboard::selectKeyEvents() {
    const auto* extension = xcb_get_extension_data(connection.get(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    inputOpcode = extension->major_opcode;
    // Since version 2.1 raw events come while another program holds a grab, as menus do.
    const Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection.get(), xcb_input_xi_query_version(connection.get(), 2, 2), nullptr));
    if (!version || std::pair(version->major_version, version->minor_version) <
                        std::pair<std::uint16_t, std::uint16_t>(2, 1)) {
        return false;
    }

    struct {
        xcb_input_event_mask_t header;
        std::uint32_t mask;
    } const wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS};

    xcb_input_xi_select_events(connection.get(), connection.root(), 1, &wanted.header);
    return true;
}

void Keyboard::loadKeymap() {
    reload.stop();
    decltype(keymap) newKeymap(
        xkb_x11_keymap_new_from_device(context.get(), connection.get(), device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (newKeymap == nullptr) {
        return; // keep what was in force
    }
    decltype(state) newState(xkb_x11_state_new_from_device(newKeymap.get(), connection.get(), device));
    if (newState == nullptr) {
        return;
    }
    state = std::move(newState);
    keymap = std::move(newKeymap);
}

void Keyboard::handle(const xcb_generic_event_t& event) {
    constexpr std::uint8_t withoutSentFlag = 0x7f;
    const auto type = event.response_type & withoutSentFlag;
    if (type == keymapEvents) {
        handleKeymapEvent(event);
        return;
    }
    if (type != XCB_GE_GENERIC) {
        return;
    }
    const auto* generic = std::bit_cast<const xcb_ge_generic_event_t*>(&event);
    if (generic->extension != inputOpcode || generic->event_type != XCB_INPUT_RAW_KEY_PRESS) {
        return;
    }
    const auto* key = std::bit_cast<const xcb_input_raw_key_press_event_t*>(&event);
    if ((key->flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0) {
        return;
    }
    const trace::Span span(trace::Step::key);
    if (reload.isActive()) {
        loadKeymap();
    }
    if (auto candidates = keys::keyCandidates(state.get(), key->detail); !candidates.empty() && onPressed) {
        onPressed(std::move(candidates));
    }
}

void Keyboard::handleKeymapEvent(const xcb_generic_event_t& event) {
    // The second byte of all events of this extension tells which one it is.
    if (event.pad0 == XCB_XKB_STATE_NOTIFY) {
        const auto* change = std::bit_cast<const xcb_xkb_state_notify_event_t*>(&event);
        xkb_state_update_mask(state.get(), change->baseMods, change->latchedMods, change->lockedMods,
                              static_cast<xkb_layout_index_t>(change->baseGroup),
                              static_cast<xkb_layout_index_t>(change->latchedGroup), change->lockedGroup);
    } else if (event.pad0 == XCB_XKB_MAP_NOTIFY || event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY) {
        reload.start(0);
    }
}

} // namespace orvantile::platform::x11
