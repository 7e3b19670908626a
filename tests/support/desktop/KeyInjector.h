#pragma once

#include "support/desktop/XConnection.h"

#include <QPoint>
#include <QString>
#include <memory>
#include <vector>
#include <xkbcommon/xkbcommon.h>

namespace orvantile::test {

/// Presses keys and mouse buttons as a person's hands would: the server cannot tell the difference. Throws
/// std::runtime_error for a key that the keyboard layout does not have.
class KeyInjector {
public:
    explicit KeyInjector(const QString& display);
    KeyInjector(const KeyInjector&) = delete;
    KeyInjector& operator=(const KeyInjector&) = delete;
    ~KeyInjector();

    /// Presses and releases a combination such as "Ctrl+Shift+S", "F11", "Alt+Left" or "Ctrl++". The key is a
    /// character or the name of a key symbol. It is looked for in the active layout first, then in the
    /// others; what it takes to reach it (Shift for "?", say) is held as well.
    void press(const QString& combination);

    void hold(const QString& key);
    void release(const QString& key);

    /// Types text, as fast as the server takes it.
    void type(const QString& text);

    /// Switches to the layout of that number among those configured.
    void lockLayout(int layout);

    void moveTo(QPoint position);
    void click(QPoint position, std::uint8_t button = 1);
    void holdButton(std::uint8_t button = 1);
    void releaseButton(std::uint8_t button = 1);

private:
    struct Stroke {
        xkb_keycode_t key = 0;
        std::vector<xkb_keycode_t> modifiers; ///< that the level of the symbol needs
    };

    void loadKeymap();
    [[nodiscard]] Stroke strokeFor(const QString& key) const;
    [[nodiscard]] std::optional<Stroke> strokeIn(xkb_layout_index_t layout, xkb_keysym_t symbol) const;
    [[nodiscard]] std::optional<std::vector<xkb_keycode_t>>
    modifiersFor(xkb_keycode_t key, xkb_layout_index_t layout, xkb_level_index_t level) const;
    [[nodiscard]] xkb_keycode_t keyOf(xkb_keysym_t symbol) const;
    void strike(const Stroke& stroke) const;
    void send(std::uint8_t type, std::uint8_t detail, QPoint position = {}) const;

    struct Unref {
        void operator()(xkb_context* context) const { xkb_context_unref(context); }

        void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    };

    XConnection x;
    std::unique_ptr<xkb_context, Unref> context;
    std::unique_ptr<xkb_keymap, Unref> keymap;
    xkb_layout_index_t activeLayout = 0;
};

} // namespace orvantile::test
