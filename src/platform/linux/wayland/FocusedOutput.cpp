#include "platform/linux/wayland/FocusedOutput.h"

#include <algorithm>
#include <cstring>

namespace orvantile::platform::wayland {
namespace {

/// The state of a window is a list of these.
bool contains(const wl_array& states, std::uint32_t wanted) {
    for (std::size_t offset = 0; offset + sizeof(std::uint32_t) <= states.size;
         offset += sizeof(std::uint32_t)) {
        std::uint32_t state = 0;
        std::memcpy(&state, static_cast<const char*>(states.data) + offset, sizeof state);
        if (state == wanted) {
            return true;
        }
    }
    return false;
}

} // namespace

FocusedOutput::FocusedOutput(const Globals& globals_, Outputs& outputs_)
    : globals(globals_),
      outputs(outputs_),
      token(outputs_.listen([this] { outputsChanged(); })) {
    outputsChanged();
}

FocusedOutput::~FocusedOutput() {
    stop();
}

void FocusedOutput::outputsChanged() {
    const bool wanted = globals.listsWindows() && outputs.names().size() > 1;
    if (wanted && !manager) {
        start();
    } else if (!wanted && manager) {
        stop();
    }
}

void FocusedOutput::start() {
    static constexpr zwlr_foreign_toplevel_manager_v1_listener listener{
        .toplevel =
            [](void* data, zwlr_foreign_toplevel_manager_v1*, zwlr_foreign_toplevel_handle_v1* handle) {
                static_cast<FocusedOutput*>(data)->add(handle);
            },
        .finished = [](void* data,
                       zwlr_foreign_toplevel_manager_v1*) { static_cast<FocusedOutput*>(data)->stop(); }};
    manager.reset(globals.bindWindows());
    zwlr_foreign_toplevel_manager_v1_add_listener(manager.get(), &listener, this);
}

void FocusedOutput::stop() {
    if (manager) {
        zwlr_foreign_toplevel_manager_v1_stop(manager.get());
    }
    windows.clear();
    manager.reset();
}

void FocusedOutput::add(zwlr_foreign_toplevel_handle_v1* handle) {
    using WindowHandle = zwlr_foreign_toplevel_handle_v1;
    static constexpr auto window = [](void* data) -> Window& { return *static_cast<Window*>(data); };
    static constexpr zwlr_foreign_toplevel_handle_v1_listener listener{
        .title = [](void*, WindowHandle*, const char*) {},
        .app_id = [](void*, WindowHandle*, const char*) {},
        .output_enter = [](void* data, WindowHandle*,
                           wl_output* output) { window(data).outputs.push_back(output); },
        .output_leave = [](void* data, WindowHandle*,
                           wl_output* output) { std::erase(window(data).outputs, output); },
        .state =
            [](void* data, WindowHandle*, wl_array* states) {
                window(data).activated = contains(*states, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
            },
        .done = [](void*, WindowHandle*) {},
        .closed = [](void* data, WindowHandle* closed) { window(data).list->windows.erase(closed); }};
    auto& added = windows[handle];
    added = std::make_unique<Window>();
    added->list = this;
    added->handle.reset(handle);
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &listener, added.get());
}

std::uint32_t FocusedOutput::name() const {
    const auto focused = std::ranges::find_if(
        windows, [](const auto& entry) { return entry.second->activated && !entry.second->outputs.empty(); });
    return focused == windows.end() ? 0 : outputs.nameOf(focused->second->outputs.back());
}

} // namespace orvantile::platform::wayland
