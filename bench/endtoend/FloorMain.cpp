// The least that a program can do which shows a window for a key: a window drawn in advance is mapped as soon
// as the raw press of one key is heard, and unmapped a moment later. Arguments: the key code, x, y, width,
// height.

#include <array>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <string_view>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace {

constexpr int shownMilliseconds = 300;
constexpr std::uint32_t colour = 0x202020;

xcb_window_t createWindow(xcb_connection_t* x, const xcb_screen_t& screen, char* argv[]) {
    const auto number = [&](int index) { return static_cast<std::uint16_t>(std::atoi(argv[index])); };
    const auto window = xcb_generate_id(x);
    const std::array<std::uint32_t, 2> values{colour, 1};
    xcb_create_window(x, XCB_COPY_FROM_PARENT, window, screen.root, static_cast<std::int16_t>(number(2)),
                      static_cast<std::int16_t>(number(3)), number(4), number(5), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
    using namespace std::string_view_literals;
    constexpr auto className = "floor\0floor\0"sv;
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(className.size()), className.data());
    return window;
}

void listenToKeys(xcb_connection_t* x, const xcb_screen_t& screen) {
    std::free(xcb_input_xi_query_version_reply(x, xcb_input_xi_query_version(x, 2, 2), nullptr));

    struct {
        xcb_input_event_mask_t header;
        std::uint32_t mask;
    } const wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS};

    xcb_input_xi_select_events(x, screen.root, 1, &wanted.header);
    xcb_flush(x);
}

} // namespace

int main(int argc, char* argv[]) {
    constexpr int arguments = 6;
    auto* x = xcb_connect(nullptr, nullptr);
    if (argc != arguments || xcb_connection_has_error(x) != 0) {
        return EXIT_FAILURE;
    }
    const auto& screen = *xcb_setup_roots_iterator(xcb_get_setup(x)).data;
    const auto key = static_cast<std::uint32_t>(std::atoi(argv[1]));
    const auto window = createWindow(x, screen, argv);
    listenToKeys(x, screen);
    bool shown = false;
    while (xcb_connection_has_error(x) == 0) {
        while (auto* event = xcb_poll_for_event(x)) {
            const auto* press = reinterpret_cast<const xcb_input_raw_key_press_event_t*>(event);
            if ((event->response_type & 0x7f) == XCB_GE_GENERIC &&
                press->event_type == XCB_INPUT_RAW_KEY_PRESS && press->detail == key) {
                xcb_map_window(x, window);
                xcb_flush(x);
                shown = true;
            }
            std::free(event);
        }
        pollfd waiting{.fd = xcb_get_file_descriptor(x), .events = POLLIN, .revents = 0};
        if (poll(&waiting, 1, shown ? shownMilliseconds : -1) == 0) {
            xcb_unmap_window(x, window);
            xcb_flush(x);
            shown = false;
        }
    }
    return EXIT_SUCCESS;
}
