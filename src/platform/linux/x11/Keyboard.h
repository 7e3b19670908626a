#pragma once

#include "platform/linux/keys/Accelerator.h"
#include "platform/linux/x11/XConnection.h"

#include <QTimer>
#include <functional>
#include <memory>
#include <xkbcommon/xkbcommon.h>

namespace orvantile::platform::x11 {

/// Hears the keys of every keyboard, whoever has the focus and whatever is grabbed. Keys that type text are
/// forgotten at once. Main thread only.
class Keyboard {
public:
    /// Starts to listen; this waits for the server.
    explicit Keyboard(XConnection& connection);
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;
    ~Keyboard() = default;

    /// Whether the server has what it takes.
    [[nodiscard]] bool hears() const { return state != nullptr; }

    /// What the key that was pressed may mean, never empty.
    std::function<void(keys::Candidates)> onPressed;

private:
    template <auto unreference>
    struct Unreference {
        void operator()(auto* object) const noexcept { unreference(object); }
    };

    bool selectKeymapEvents();
    bool selectKeyEvents();
    void handle(const xcb_generic_event_t& event);
    void handleKeymapEvent(const xcb_generic_event_t& event);
    void loadKeymap();

    XConnection& connection;
    std::unique_ptr<xkb_context, Unreference<xkb_context_unref>> context;
    std::unique_ptr<xkb_keymap, Unreference<xkb_keymap_unref>> keymap;
    std::unique_ptr<xkb_state, Unreference<xkb_state_unref>> state;
    std::uint8_t keymapEvents = 0; ///< response type of the keyboard extension
    std::uint8_t inputOpcode = 0;
    std::int32_t device = -1;
    QTimer reload; ///< several changes of the keymap come at once and are loaded once
    XConnection::Token token;
};

} // namespace orvantile::platform::x11
