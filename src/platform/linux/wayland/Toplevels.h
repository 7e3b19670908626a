#pragma once

#include "platform/linux/wayland/FocusedToplevel.h"
#include "platform/linux/wayland/Globals.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace orvantile::platform::wayland {

/// The windows that the compositor lists, whosever they are. Nothing where it lists none.
class Toplevels {
public:
    /// Begins to listen. `onFocusChanged` (may be empty) is called when another window has the focus, or the
    /// same one with another title.
    explicit Toplevels(const Globals& globals, std::function<void()> onFocusChanged = {});
    Toplevels(const Toplevels&) = delete;
    Toplevels& operator=(const Toplevels&) = delete;
    ~Toplevels();

    /// The window that has the focus; absent where the compositor does not tell.
    [[nodiscard]] std::optional<FocusedToplevel> focused() const;

    /// The output that the focused window has entered last, only to be compared; null when there is none.
    [[nodiscard]] const wl_output* focusedOutput() const;

private:
    struct Window {
        Toplevels* list = nullptr;
        Handle<zwlr_foreign_toplevel_handle_v1> handle;
        std::vector<const wl_output*> outputs; ///< the one it entered last at the end; only compared
        FocusedToplevel description;
        bool activated = false;
    };

    void add(zwlr_foreign_toplevel_handle_v1* handle);
    void remove(zwlr_foreign_toplevel_handle_v1* handle);
    void stop();
    void announce();

    std::function<void()> onFocusChanged;
    Handle<zwlr_foreign_toplevel_manager_v1> manager;
    std::map<zwlr_foreign_toplevel_handle_v1*, std::unique_ptr<Window>> windows;
    std::uint64_t latest = 0;
    std::optional<FocusedToplevel> announced;
};

} // namespace orvantile::platform::wayland
