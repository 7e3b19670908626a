#include "platform/linux/x11/PanelWindow.h"

#include <array>
#include <bit>
#include <string_view>
#include <unistd.h>
#include <vector>
#include <xcb/shape.h>

namespace orvantile::platform::x11 {
namespace {

struct Visual {
    xcb_visualid_t identifier;
    std::uint8_t depth;
};

/// The visual with an alpha channel, else the screen's own.
Visual translucentVisual(const xcb_screen_t& screen) {
    constexpr std::uint8_t wanted = 32;
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
        if (depth.data->depth != wanted) {
            continue;
        }
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0;
             xcb_visualtype_next(&visual)) {
            constexpr std::uint32_t redOfArgb = 0xff0000;
            if (visual.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR && visual.data->red_mask == redOfArgb) {
                return {visual.data->visual_id, wanted};
            }
        }
    }
    return {screen.root_visual, screen.root_depth};
}

} // namespace

PanelWindow::PanelWindow(XConnection& connection_)
    : connection(connection_),
      window(xcb_generate_id(connection.get())) {
    create();
    describe();
    // No input shape: the mouse goes to what lies below.
    xcb_shape_rectangles(connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         window, 0, 0, 0, nullptr);
    connection.selectRootEvents(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    token = connection.listen([this](const auto& event) { handle(event); });
}

PanelWindow::~PanelWindow() {
    xcb_destroy_window(connection.get(), window);
    xcb_free_colormap(connection.get(), colormap);
    connection.flush();
}

void PanelWindow::create() {
    const auto visual = translucentVisual(connection.screen());
    visualDepth = visual.depth;
    colormap = xcb_generate_id(connection.get());
    xcb_create_colormap(connection.get(), XCB_COLORMAP_ALLOC_NONE, colormap, connection.root(),
                        visual.identifier);
    constexpr std::uint32_t mask = XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT |
                                   XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
    const std::array<std::uint32_t, 5> values{XCB_BACK_PIXMAP_NONE, 0, 1, XCB_EVENT_MASK_VISIBILITY_CHANGE,
                                              colormap};
    xcb_create_window(connection.get(), visual.depth, window, connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual.identifier, mask, values.data());
}

void PanelWindow::describe() {
    const auto& atoms = connection.atoms();
    using namespace std::string_view_literals;
    constexpr auto className = "orvantile\0orvantile\0"sv;
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
                        8, static_cast<std::uint32_t>(className.size()), className.data());
    const auto set = [&](xcb_atom_t property, xcb_atom_t type, const auto& values) {
        xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                            static_cast<std::uint32_t>(values.size()), values.data());
    };
    set(atoms.type, XCB_ATOM_ATOM, std::array{atoms.typeNotification});
    set(atoms.state, XCB_ATOM_ATOM,
        std::array{atoms.stateAbove, atoms.stateSkipTaskbar, atoms.stateSkipPager});
    set(atoms.pid, XCB_ATOM_CARDINAL, std::array{static_cast<std::uint32_t>(getpid())});
    set(atoms.comptonShadow, XCB_ATOM_CARDINAL, std::array<std::uint32_t, 1>{0}); // the content has its own
}

void PanelWindow::setTitle(const QString& title) {
    constexpr qsizetype longest = 4096; // bytes; the server takes no property of any length
    const auto bytes = title.left(longest / 4).toUtf8();
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, connection.atoms().name,
                        connection.atoms().utf8String, 8, static_cast<std::uint32_t>(bytes.size()),
                        bytes.constData());
}

void PanelWindow::place(const PixelRect& frame) {
    if (frame == placed) {
        return;
    }
    placed = frame;
    const std::array<std::uint32_t, 4> values{
        static_cast<std::uint32_t>(frame.x), static_cast<std::uint32_t>(frame.y),
        static_cast<std::uint32_t>(frame.width), static_cast<std::uint32_t>(frame.height)};
    xcb_configure_window(connection.get(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
}

void PanelWindow::setBlur(const QRegion& region) {
    if (region == blurred) {
        return;
    }
    blurred = region;
    if (region.isEmpty()) {
        xcb_delete_property(connection.get(), window, connection.atoms().blurBehind);
        return;
    }
    std::vector<std::uint32_t> values;
    for (const auto& rect : region) {
        for (const int value : {rect.x(), rect.y(), rect.width(), rect.height()}) {
            values.push_back(static_cast<std::uint32_t>(value));
        }
    }
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, connection.atoms().blurBehind,
                        XCB_ATOM_CARDINAL, 32, static_cast<std::uint32_t>(values.size()), values.data());
}

void PanelWindow::show() {
    raises = 0;
    raise();
    if (!shown) {
        shown = true;
        xcb_map_window(connection.get(), window);
    }
}

void PanelWindow::hide() {
    if (shown) {
        shown = false;
        xcb_unmap_window(connection.get(), window);
    }
}

void PanelWindow::raise() {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

void PanelWindow::handle(const xcb_generic_event_t& event) {
    if (!shown) {
        return;
    }
    constexpr std::uint8_t withoutSentFlag = 0x7f;
    bool covered = false;
    switch (event.response_type & withoutSentFlag) {
    case XCB_VISIBILITY_NOTIFY: {
        const auto* change = std::bit_cast<const xcb_visibility_notify_event_t*>(&event);
        covered = change->window == window && change->state != XCB_VISIBILITY_UNOBSCURED;
        break;
    }
    // A compositor takes all windows off the screen, and they are never obscured then.
    case XCB_MAP_NOTIFY: {
        const auto* map = std::bit_cast<const xcb_map_notify_event_t*>(&event);
        covered = map->event == connection.root() && map->window != window;
        break;
    }
    case XCB_CONFIGURE_NOTIFY: {
        const auto* configure = std::bit_cast<const xcb_configure_notify_event_t*>(&event);
        covered = configure->event == connection.root() && configure->above_sibling == window;
        break;
    }
    case XCB_CIRCULATE_NOTIFY: {
        const auto* circulate = std::bit_cast<const xcb_circulate_notify_event_t*>(&event);
        covered = circulate->place == XCB_PLACE_ON_TOP && circulate->window != window;
        break;
    }
    default:
        break;
    }
    if (covered && raises < mostRaises) {
        ++raises;
        raise();
    }
}

} // namespace orvantile::platform::x11
