#pragma once

#include "platform/linux/wayland/Globals.h"
#include "platform/linux/wayland/Outputs.h"

#include <map>
#include <memory>
#include <vector>

namespace orvantile::platform::wayland {

/// The output that holds the focused window, where the compositor lists its windows. Listens only while there
/// are several outputs to choose from.
class FocusedOutput {
public:
    FocusedOutput(const Globals& globals, Outputs& outputs);
    FocusedOutput(const FocusedOutput&) = delete;
    FocusedOutput& operator=(const FocusedOutput&) = delete;
    ~FocusedOutput();

    /// The name of the output; 0 while it is not known, when the compositor knows best.
    [[nodiscard]] std::uint32_t name() const;

private:
    struct Window {
        FocusedOutput* list = nullptr;
        Handle<zwlr_foreign_toplevel_handle_v1> handle;
        std::vector<const wl_output*> outputs; ///< the one it entered last at the end; only compared
        bool activated = false;
    };

    void outputsChanged();
    void start();
    void stop();
    void add(zwlr_foreign_toplevel_handle_v1* handle);

    const Globals& globals;
    const Outputs& outputs;
    Handle<zwlr_foreign_toplevel_manager_v1> manager;
    Outputs::Token token;
    std::map<zwlr_foreign_toplevel_handle_v1*, std::unique_ptr<Window>> windows;
};

} // namespace orvantile::platform::wayland
