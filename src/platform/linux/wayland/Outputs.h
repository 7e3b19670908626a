#pragma once

#include "platform/linux/wayland/Globals.h"
#include "platform/linux/wayland/Listeners.h"
#include "platform/linux/wayland/OutputLayout.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace orvantile::platform::wayland {

/// One output, followed by events.
class Output {
public:
    /// `onChanged` is called with each complete description.
    Output(const Globals& globals, std::uint32_t name, std::function<void()> onChanged);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output() = default;

    [[nodiscard]] wl_output* get() const { return output.get(); }

    /// False until the compositor has described it.
    [[nodiscard]] bool isKnown() const { return known; }

    [[nodiscard]] const OutputGeometry& geometry() const { return current; }

private:
    void listen();
    void listenToDetails();
    void apply();

    struct Description {
        QPoint position;
        QSize mode;
        bool turned = false; ///< by a quarter
        int scale = 1;
        QRect logical; ///< null where the compositor gives no details
    };

    std::function<void()> onChanged;
    Handle<wl_output> output;
    Handle<zxdg_output_v1> details;
    Description pending;
    OutputGeometry current;
    bool known = false;
};

/// The outputs of the compositor as they come and go.
class Outputs {
public:
    /// Waits for their descriptions once.
    Outputs(WaylandConnection& connection, Globals& globals);
    Outputs(const Outputs&) = delete;
    Outputs& operator=(const Outputs&) = delete;
    ~Outputs();

    /// The names of the outputs that are known, in the order in which they came.
    [[nodiscard]] std::vector<std::uint32_t> names() const;

    /// The layout of `names()`, in that order. While all screens are off there are no outputs: then it is the
    /// one there was before.
    [[nodiscard]] OutputLayout layout() const;

    /// Null when there is no such output.
    [[nodiscard]] const Output* find(std::uint32_t name) const;

    /// 0 when there is no such output.
    [[nodiscard]] std::uint32_t nameOf(const wl_output* output) const;

    /// Calls `listener` after outputs have come, gone or changed.
    [[nodiscard]] Listeners::Token listen(std::function<void()> listener) {
        return listeners.add(std::move(listener));
    }

private:
    void update();
    void changed();

    Globals& globals;
    Listeners listeners;
    std::map<std::uint32_t, std::unique_ptr<Output>> all; ///< names grow
    std::vector<OutputGeometry> latest{
        {.logical = {0, 0, 1920, 1080}, .pixels = {1920, 1080}}}; ///< never empty
};

} // namespace orvantile::platform::wayland
