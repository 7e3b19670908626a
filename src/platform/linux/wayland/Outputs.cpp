#include "platform/linux/wayland/Outputs.h"

#include <algorithm>
#include <utility>

namespace orvantile::platform::wayland {
namespace {

Output& self(void* data) {
    return *static_cast<Output*>(data);
}

} // namespace

Output::Output(const Globals& globals, std::uint32_t name, std::function<void()> onChanged_)
    : onChanged(std::move(onChanged_)),
      output(globals.bindOutput(name)) {
    listen();
    if (globals.outputDetails) {
        details.reset(zxdg_output_manager_v1_get_xdg_output(globals.outputDetails.get(), get()));
        listenToDetails();
    }
}

void Output::listen() {
    static constexpr wl_output_listener listener{
        .geometry =
            [](void* data, wl_output*, std::int32_t x, std::int32_t y, std::int32_t, std::int32_t,
               std::int32_t, const char*, const char*, std::int32_t transform) {
                auto& described = self(data).pending;
                described.position = {x, y};
                described.turned = (transform & WL_OUTPUT_TRANSFORM_90) != 0;
            },
        .mode =
            [](void* data, wl_output*, std::uint32_t flags, std::int32_t width, std::int32_t height,
               std::int32_t) {
                if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) {
                    self(data).pending.mode = {width, height};
                }
            },
        .done = [](void* data, wl_output*) { self(data).apply(); },
        .scale = [](void* data, wl_output*,
                    std::int32_t factor) { self(data).pending.scale = std::max(factor, 1); },
        .name = [](void*, wl_output*, const char*) {},
        .description = [](void*, wl_output*, const char*) {}};
    wl_output_add_listener(get(), &listener, this);
}

void Output::listenToDetails() {
    static constexpr zxdg_output_v1_listener listener{
        .logical_position = [](void* data, zxdg_output_v1*, std::int32_t x,
                               std::int32_t y) { self(data).pending.logical.moveTo(x, y); },
        .logical_size =
            [](void* data, zxdg_output_v1*, std::int32_t width, std::int32_t height) {
                self(data).pending.logical.setSize({width, height});
            },
        .done = [](void* data, zxdg_output_v1*) { self(data).apply(); },
        .name = [](void*, zxdg_output_v1*, const char*) {},
        .description = [](void*, zxdg_output_v1*, const char*) {}};
    zxdg_output_v1_add_listener(details.get(), &listener, this);
}

void Output::apply() {
    OutputGeometry next;
    next.pixels = pending.turned ? pending.mode.transposed() : pending.mode;
    next.bufferScale = pending.scale;
    next.logical =
        pending.logical.isEmpty() ? QRect(pending.position, next.pixels / pending.scale) : pending.logical;
    if (next.logical.isEmpty() || (known && next == current)) {
        return;
    }
    current = next;
    known = true;
    onChanged();
}

Outputs::Outputs(WaylandConnection& connection, Globals& globals_) : globals(globals_) {
    globals.onOutputsChanged = [this] { update(); };
    update();
    connection.synchronize();
}

Outputs::~Outputs() {
    globals.onOutputsChanged = nullptr;
}

void Outputs::update() {
    std::erase_if(all, [this](const auto& entry) { return !globals.outputs().contains(entry.first); });
    for (const auto& [name, version] : globals.outputs()) {
        if (!all.contains(name)) {
            all.emplace(name, std::make_unique<Output>(globals, name, [this] { changed(); }));
        }
    }
    changed();
}

void Outputs::changed() {
    std::vector<OutputGeometry> found;
    for (const auto name : names()) {
        found.push_back(all.at(name)->geometry());
    }
    if (!found.empty()) {
        latest = std::move(found);
    }
    listeners.notify();
}

std::vector<std::uint32_t> Outputs::names() const {
    std::vector<std::uint32_t> found;
    for (const auto& [name, output] : all) {
        if (output->isKnown()) {
            found.push_back(name);
        }
    }
    return found;
}

OutputLayout Outputs::layout() const {
    return OutputLayout(latest);
}

const Output* Outputs::find(std::uint32_t name) const {
    const auto found = all.find(name);
    return found == all.end() ? nullptr : found->second.get();
}

std::uint32_t Outputs::nameOf(const wl_output* output) const {
    for (const auto& [name, candidate] : all) {
        if (candidate->get() == output) {
            return name;
        }
    }
    return 0;
}

} // namespace orvantile::platform::wayland
