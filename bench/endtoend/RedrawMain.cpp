// A window that is drawn anew sixty times a second.

#include <array>
#include <chrono>
#include <cstdlib>
#include <string_view>
#include <thread>
#include <xcb/xcb.h>

int main() {
    auto* x = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(x) != 0) {
        return EXIT_FAILURE;
    }
    const auto& screen = *xcb_setup_roots_iterator(xcb_get_setup(x)).data;
    const auto window = xcb_generate_id(x);
    constexpr std::uint16_t width = 640;
    constexpr std::uint16_t height = 480;
    xcb_create_window(x, XCB_COPY_FROM_PARENT, window, screen.root, 0, 0, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual, 0, nullptr);
    using namespace std::string_view_literals;
    constexpr auto className = "redraw\0redraw\0"sv;
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(className.size()), className.data());
    xcb_map_window(x, window);
    const auto context = xcb_generate_id(x);
    xcb_create_gc(x, context, window, 0, nullptr);
    auto next = std::chrono::steady_clock::now();
    for (std::uint32_t picture = 0; xcb_connection_has_error(x) == 0; ++picture) {
        const std::uint32_t colour = picture * 0x010305U & 0xffffffU;
        xcb_change_gc(x, context, XCB_GC_FOREGROUND, &colour);
        constexpr xcb_rectangle_t everything{0, 0, width, height};
        xcb_poly_fill_rectangle(x, window, context, 1, &everything);
        xcb_flush(x);
        while (auto* event = xcb_poll_for_event(x)) {
            std::free(event);
        }
        next += std::chrono::microseconds(1'000'000 / 60);
        std::this_thread::sleep_until(next);
    }
    return EXIT_SUCCESS;
}
