#include "support/desktop/WindowWatcher.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace orvantile::test {
namespace {

constexpr std::uint32_t sourceIsPager = 2;

bool isMenu(const XConnection& x, const Window& window) {
    if (!window.mapped || !window.overrideRedirect) {
        return false;
    }
    const auto types = x.numbers(window.handle, "_NET_WM_WINDOW_TYPE");
    return std::ranges::any_of(types, [&x](xcb_atom_t type) {
        return type == x.atom("_NET_WM_WINDOW_TYPE_MENU") ||
               type == x.atom("_NET_WM_WINDOW_TYPE_POPUP_MENU") ||
               type == x.atom("_NET_WM_WINDOW_TYPE_DROPDOWN_MENU");
    });
}

} // namespace

WindowWatcher::WindowWatcher(const QString& display) : x(display) {
    x.select(x.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
}

std::vector<Window> WindowWatcher::windows() const {
    std::vector<Window> found;
    for (const xcb_window_t handle : x.numbers(x.root(), "_NET_CLIENT_LIST")) {
        x.select(handle, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        if (const Window window = lookAt(x, handle); window.handle != XCB_NONE) {
            found.push_back(window);
        }
    }
    return found;
}

Window WindowWatcher::activeWindow() const {
    const auto active = x.numbers(x.root(), "_NET_ACTIVE_WINDOW");
    return active.empty() || active.front() == XCB_NONE ? Window() : lookAt(x, active.front());
}

std::vector<Window> WindowWatcher::menus() const {
    std::vector<Window> found;
    for (const xcb_window_t handle : rootChildren(x)) {
        if (const Window window = lookAt(x, handle); isMenu(x, window)) {
            found.push_back(window);
        }
    }
    return found;
}

Window WindowWatcher::awaitWindow(const Predicate& fits, QDeadlineTimer deadline) const {
    Window result;
    await(
        "a window to appear",
        [&] {
            const auto all = windows();
            const auto found =
                std::ranges::find_if(all, [&](const Window& w) { return w.mapped && fits(w); });
            return found != all.end() && (result = *found).handle != XCB_NONE;
        },
        deadline);
    return result;
}

Window WindowWatcher::awaitActive(const Predicate& fits, QDeadlineTimer deadline) const {
    Window result;
    await(
        "a window to get the focus",
        [&] {
            (void)windows(); // so that their titles are followed
            result = activeWindow();
            return result.handle != XCB_NONE && fits(result);
        },
        deadline);
    return result;
}

std::vector<Window> WindowWatcher::awaitMenus(std::size_t count, QDeadlineTimer deadline) const {
    std::vector<Window> result;
    await(
        "menus to open or close", [&] { return (result = menus()).size() == count; }, deadline);
    return result;
}

void WindowWatcher::awaitGone(xcb_window_t window, QDeadlineTimer deadline) const {
    await(
        "a window to go",
        [&] { return std::ranges::none_of(windows(), [&](const Window& w) { return w.handle == window; }); },
        deadline);
}

void WindowWatcher::activate(xcb_window_t window) const {
    askManager(window, "_NET_ACTIVE_WINDOW", sourceIsPager);
    awaitActive([window](const Window& active) { return active.handle == window; });
}

void WindowWatcher::moveTo(xcb_window_t window, QPoint position) const {
    const std::array<std::uint32_t, 2> values{static_cast<std::uint32_t>(position.x()),
                                              static_cast<std::uint32_t>(position.y())};
    // The manager gets this as a request of the window itself.
    xcb_configure_window(x.get(), window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values.data());
    x.synchronize();
    constexpr int decoration = 60; // pixels
    await(
        "a window that moves",
        [&] { return (lookAt(x, window).frame.topLeft() - position).manhattanLength() < decoration; },
        QDeadlineTimer(patience));
}

void WindowWatcher::close(xcb_window_t window) const {
    askManager(window, "_NET_CLOSE_WINDOW", XCB_CURRENT_TIME);
}

void WindowWatcher::await(const char* what, const std::function<bool()>& done,
                          const QDeadlineTimer& deadline) const {
    if (!x.await(done, {}, deadline)) {
        throw std::runtime_error(std::string("waited in vain for ") + what +
                                 "; on the screen: " + describeScreen());
    }
}

void WindowWatcher::askManager(xcb_window_t window, const char* request, std::uint32_t first) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = x.atom(request);
    message.data.data32[0] = first;
    message.data.data32[1] = first == sourceIsPager ? XCB_CURRENT_TIME : sourceIsPager;
    xcb_send_event(x.get(), 0, x.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    x.synchronize();
}

std::string WindowWatcher::describeScreen() const {
    std::string text;
    const auto add = [&text](const Window& window) {
        text += "[" + window.className.toStdString() + " \"" + window.title.toStdString() + "\"] ";
    };
    std::ranges::for_each(windows(), add);
    text += "with the focus: ";
    add(activeWindow());
    return text + "menus: " + std::to_string(menus().size());
}

WindowWatcher::Predicate ofClass(const QString& className) {
    return [className](const Window& window) {
        return window.className.compare(className, Qt::CaseInsensitive) == 0;
    };
}

WindowWatcher::Predicate titled(const QString& text) {
    return [text](const Window& window) { return window.title.contains(text); };
}

WindowWatcher::Predicate ofProcess(pid_t process) {
    return [process](const Window& window) { return window.process == process; };
}

} // namespace orvantile::test
