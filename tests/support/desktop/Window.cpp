#include "support/desktop/Window.h"

namespace orvantile::test {

Window lookAt(const XConnection& x, xcb_window_t handle) {
    auto* c = x.get();
    const auto attributesCookie = xcb_get_window_attributes(c, handle);
    const auto geometryCookie = xcb_get_geometry(c, handle);
    const auto originCookie = xcb_translate_coordinates(c, handle, x.root(), 0, 0);
    const XReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(c, attributesCookie, nullptr));
    const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(c, geometryCookie, nullptr));
    const XReply<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(c, originCookie, nullptr));
    if (!attributes || !geometry || !origin) {
        return {};
    }
    Window window;
    window.handle = handle;
    const auto classes = x.bytes(handle, "WM_CLASS").split('\0');
    window.className = classes.size() > 1 ? QString::fromUtf8(classes[1]) : QString();
    QByteArray title = x.bytes(handle, "_NET_WM_NAME");
    if (title.isEmpty()) {
        title = x.bytes(handle, "WM_NAME");
    }
    window.title = QString::fromUtf8(title);
    if (const auto process = x.numbers(handle, "_NET_WM_PID"); !process.empty()) {
        window.process = static_cast<pid_t>(process.front());
    }
    window.frame = QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
    window.mapped = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    window.overrideRedirect = attributes->override_redirect != 0;
    return window;
}

std::vector<xcb_window_t> rootChildren(const XConnection& x) {
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x.get(), xcb_query_tree(x.get(), x.root()), nullptr));
    if (!tree) {
        return {};
    }
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

} // namespace orvantile::test
