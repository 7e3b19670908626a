#include "platform/linux/wayland/Toplevels.h"

#include <algorithm>
#include <cstring>
#include <utility>

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

bool isActivated(const auto& entry) {
    return entry.second->activated;
}

} // namespace

Toplevels::Toplevels(const Globals& globals, std::function<void()> onFocusChanged_)
    : onFocusChanged(std::move(onFocusChanged_)),
      manager(globals.bindWindows()) {
    static constexpr zwlr_foreign_toplevel_manager_v1_listener listener{
        .toplevel =
            [](void* data, zwlr_foreign_toplevel_manager_v1*, zwlr_foreign_toplevel_handle_v1* handle) {
                static_cast<Toplevels*>(data)->add(handle);
            },
        .finished = [](void* data,
                       zwlr_foreign_toplevel_manager_v1*) { static_cast<Toplevels*>(data)->stop(); }};
    if (manager) {
        zwlr_foreign_toplevel_manager_v1_add_listener(manager.get(), &listener, this);
    }
}

Toplevels::~Toplevels() {
    onFocusChanged = nullptr;
    stop();
}

void Toplevels::stop() {
    if (manager) {
        zwlr_foreign_toplevel_manager_v1_stop(manager.get());
    }
    windows.clear();
    manager.reset();
    announce();
}

void Toplevels::add(zwlr_foreign_toplevel_handle_v1* handle) {
    using WindowHandle = zwlr_foreign_toplevel_handle_v1;
    static constexpr auto window = [](void* data) -> Window& { return *static_cast<Window*>(data); };
    static constexpr zwlr_foreign_toplevel_handle_v1_listener listener{
        .title =
            [](void* data, WindowHandle*, const char* title) {
                window(data).description.title = QString::fromUtf8(title).trimmed();
            },
        .app_id =
            [](void* data, WindowHandle*, const char* identifier) {
                window(data).description.applicationId = QString::fromUtf8(identifier);
            },
        .output_enter = [](void* data, WindowHandle*,
                           wl_output* output) { window(data).outputs.push_back(output); },
        .output_leave = [](void* data, WindowHandle*,
                           wl_output* output) { std::erase(window(data).outputs, output); },
        .state =
            [](void* data, WindowHandle*, wl_array* states) {
                window(data).activated = contains(*states, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
            },
        .done = [](void* data, WindowHandle*) { window(data).list->announce(); },
        .closed = [](void* data, WindowHandle* closed) { window(data).list->remove(closed); }};
    auto& added = windows[handle];
    added = std::make_unique<Window>();
    added->list = this;
    added->handle.reset(handle);
    added->description.number = ++latest;
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &listener, added.get());
}

void Toplevels::remove(zwlr_foreign_toplevel_handle_v1* handle) {
    windows.erase(handle);
    announce();
}

void Toplevels::announce() {
    auto now = focused();
    if (now == announced) {
        return;
    }
    announced = std::move(now);
    if (onFocusChanged) {
        onFocusChanged();
    }
}

std::optional<FocusedToplevel> Toplevels::focused() const {
    if (!manager) {
        return std::nullopt;
    }
    const auto active = std::ranges::find_if(windows, [](const auto& entry) { return isActivated(entry); });
    return active == windows.end() ? FocusedToplevel() : active->second->description;
}

const wl_output* Toplevels::focusedOutput() const {
    const auto active = std::ranges::find_if(
        windows, [](const auto& entry) { return isActivated(entry) && !entry.second->outputs.empty(); });
    return active == windows.end() ? nullptr : active->second->outputs.back();
}

} // namespace orvantile::platform::wayland
