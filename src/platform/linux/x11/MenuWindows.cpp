#include "platform/linux/x11/MenuWindows.h"

#include "platform/linux/x11/MenuTypes.h"
#include "platform/linux/x11/Properties.h"

#include <algorithm>
#include <bit>
#include <memory>

namespace orvantile::platform::x11 {

MenuWindows::MenuWindows(XConnection& connection_) : connection(connection_) {}

void MenuWindows::start() {
    connection.selectRootEvents(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    token = connection.listen([this](const auto& event) { handle(event); });
    scan();
}

int MenuWindows::open(std::int32_t process) const {
    return static_cast<int>(std::ranges::count_if(
        menus, [&](const auto& menu) { return menu.second == process || menu.second == -1; }));
}

void MenuWindows::scan() {
    connection.ask<xcb_query_tree_reply_t>(
        xcb_query_tree(connection.get(), connection.root()), [this](const auto* tree) {
            if (tree == nullptr) {
                return;
            }
            const std::span children(xcb_query_tree_children(tree), tree->children_len);
            for (const auto window : children) {
                connection.ask<xcb_get_window_attributes_reply_t>(
                    xcb_get_window_attributes(connection.get(), window),
                    [this, window](const auto* attributes) {
                        if (attributes != nullptr && attributes->override_redirect != 0 &&
                            attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
                            appeared(window);
                        }
                    });
            }
        });
}

void MenuWindows::handle(const xcb_generic_event_t& event) {
    constexpr std::uint8_t withoutSentFlag = 0x7f;
    switch (event.response_type & withoutSentFlag) {
    case XCB_MAP_NOTIFY: {
        const auto* map = std::bit_cast<const xcb_map_notify_event_t*>(&event);
        if (map->event == connection.root() && map->override_redirect != 0) {
            appeared(map->window);
        }
        break;
    }
    case XCB_UNMAP_NOTIFY: {
        const auto* unmap = std::bit_cast<const xcb_unmap_notify_event_t*>(&event);
        if (unmap->event == connection.root()) {
            disappeared(unmap->window);
        }
        break;
    }
    case XCB_DESTROY_NOTIFY:
        disappeared(std::bit_cast<const xcb_destroy_notify_event_t*>(&event)->window);
        break;
    case XCB_REPARENT_NOTIFY: {
        const auto* reparent = std::bit_cast<const xcb_reparent_notify_event_t*>(&event);
        if (reparent->parent != connection.root()) {
            disappeared(reparent->window);
        }
        break;
    }
    default:
        break;
    }
}

void MenuWindows::appeared(xcb_window_t window) {
    if (menus.contains(window) || undecided.contains(window)) {
        return;
    }
    const auto question = ++latestQuestion;
    undecided[window] = question;
    ++questions;
    constexpr std::uint32_t mostTypes = 16;
    const auto menu = std::make_shared<bool>(false);
    connection.ask<xcb_get_property_reply_t>(
        requestProperty(connection, window, connection.atoms().type, mostTypes),
        [this, menu](const auto* reply) { *menu = isMenu(words(reply), connection.atoms()); });
    askProcess(connection, window, [this, menu, window, question](std::int32_t process) {
        // It may have gone again, and even come back, before the answer.
        const auto found = undecided.find(window);
        if (found != undecided.end() && found->second == question) {
            undecided.erase(found);
            if (*menu) {
                menus[window] = process;
                if (onOpened) {
                    onOpened(process);
                }
            }
        }
        answered();
    });
}

void MenuWindows::disappeared(xcb_window_t window) {
    undecided.erase(window);
    if (const auto found = menus.find(window); found != menus.end()) {
        const auto process = found->second;
        menus.erase(found);
        if (onClosed) {
            onClosed(process);
        }
    }
}

void MenuWindows::answered() {
    if (--questions == 0 && onResolved) {
        onResolved();
    }
}

} // namespace orvantile::platform::x11
