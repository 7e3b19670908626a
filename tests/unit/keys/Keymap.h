#pragma once

#include "platform/linux/keys/KeyCandidates.h"

#include <memory>
#include <string>
#include <vector>
#include <xkbcommon/xkbcommon.h>

namespace orvantile::test {

/// A keyboard with given layouts. Keys are named as on their caps in the keyboard description, "AC02" for
/// one.
class Keymap {
public:
    explicit Keymap(const std::string& layouts, const std::string& variants = {},
                    const std::string& options = {});

    void hold(const std::string& key);
    void release(const std::string& key);

    /// Presses and releases, as for a lock.
    void tap(const std::string& key);

    void lockLayout(xkb_layout_index_t layout);

    /// What pressing the key means now.
    [[nodiscard]] platform::keys::Candidates candidates(const std::string& key) const;

    /// The same as lines such as "Ctrl+Shift+s", in order.
    [[nodiscard]] std::vector<std::string> described(const std::string& key) const;

private:
    [[nodiscard]] xkb_keycode_t codeOf(const std::string& key) const;

    template <auto unreference>
    struct Unreference {
        void operator()(auto* object) const noexcept { unreference(object); }
    };

    std::unique_ptr<xkb_context, Unreference<xkb_context_unref>> context;
    std::unique_ptr<xkb_keymap, Unreference<xkb_keymap_unref>> keymap;
    std::unique_ptr<xkb_state, Unreference<xkb_state_unref>> state;
};

} // namespace orvantile::test
