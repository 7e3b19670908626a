#include "platform/linux/x11/FocusedWindow.h"

#include "platform/linux/x11/Properties.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace orvantile::platform::x11 {
namespace {

constexpr std::uint32_t followedEvents = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
constexpr std::uint32_t longestTitle = 256; // words
constexpr std::uint32_t mostValues = 32;
constexpr std::uint32_t longestPath = 64; // words

using session::WindowObjects;

/// The properties that tell where a window exports its menus.
struct ObjectProperty {
    xcb_atom_t Atoms::*name;
    std::string WindowObjects::*value;
};

constexpr auto objectProperties = std::to_array<ObjectProperty>({
    {&Atoms::gtkBusName, &WindowObjects::gtkBusName},
    {&Atoms::gtkMenuBar, &WindowObjects::gtkMenuBar},
    {&Atoms::gtkApplication, &WindowObjects::gtkApplication},
    {&Atoms::gtkWindow, &WindowObjects::gtkWindow},
    {&Atoms::menuService, &WindowObjects::menuService},
    {&Atoms::menuPath, &WindowObjects::menuPath},
});

bool tellsOfWindow(xcb_atom_t property, const Atoms& atoms) {
    return property == atoms.name || property == XCB_ATOM_WM_NAME || property == atoms.state ||
           property == atoms.type || property == XCB_ATOM_WM_TRANSIENT_FOR ||
           std::ranges::any_of(objectProperties,
                               [&](const auto& each) { return atoms.*each.name == property; });
}

bool contains(std::span<const std::uint32_t> values, xcb_atom_t value) {
    return std::ranges::find(values, value) != values.end();
}

void select(XConnection& connection, xcb_window_t window, std::uint32_t events) {
    if (window != XCB_WINDOW_NONE) {
        xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &events);
    }
}

} // namespace

FocusedWindow::FocusedWindow(XConnection& connection_) : connection(connection_) {}

void FocusedWindow::start() {
    connection.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE);
    token = connection.listen([this](const auto& event) { handle(event); });
    askWhich();
}

void FocusedWindow::handle(const xcb_generic_event_t& event) {
    constexpr std::uint8_t withoutSentFlag = 0x7f;
    switch (event.response_type & withoutSentFlag) {
    case XCB_PROPERTY_NOTIFY: {
        const auto* change = std::bit_cast<const xcb_property_notify_event_t*>(&event);
        const auto& atoms = connection.atoms();
        if (change->window == connection.root() && change->atom == atoms.activeWindow) {
            askWhich();
        } else if (change->window == followed && tellsOfWindow(change->atom, atoms)) {
            refresh();
        }
        break;
    }
    case XCB_DESTROY_NOTIFY:
        // The name of the window may soon be that of another.
        if (std::bit_cast<const xcb_destroy_notify_event_t*>(&event)->window == followed) {
            become(XCB_WINDOW_NONE);
        }
        break;
    case XCB_CONFIGURE_NOTIFY:
        if (std::bit_cast<const xcb_configure_notify_event_t*>(&event)->window == followed) {
            askPlace();
        }
        break;
    default:
        break;
    }
}

void FocusedWindow::askWhich() {
    ++questions;
    connection.ask<xcb_get_property_reply_t>(
        requestProperty(connection, connection.root(), connection.atoms().activeWindow, 1),
        [this](const auto* reply) {
            const auto value = words(reply);
            become(value.empty() ? xcb_window_t{XCB_WINDOW_NONE} : value.front());
            answered();
        });
}

void FocusedWindow::answered() {
    if (--questions == 0 && onResolved) {
        onResolved();
    }
}

void FocusedWindow::become(xcb_window_t window) {
    if (window == followed) {
        return;
    }
    select(connection, followed, XCB_EVENT_MASK_NO_EVENT);
    followed = window;
    if (window == XCB_WINDOW_NONE) {
        place.reset();
        settle(std::nullopt);
        return;
    }
    select(connection, window, followedEvents);
    askPlace(); // first, so that it is known when the window is announced
    ++questions;
    askDetails([this](const session::ActiveWindow& details) {
        if (details.handle == followed) {
            settle(details);
        }
        answered();
    });
}

/// Gathers the answers about one window.
struct FocusedWindow::Details {
    session::ActiveWindow window;
    QString oldTitle;
};

void FocusedWindow::askDetails(std::function<void(const session::ActiveWindow&)> answer) {
    const auto details = std::make_shared<Details>();
    details->window.handle = followed;
    const auto property = [&](xcb_atom_t name, std::uint32_t maximum, auto handler) {
        connection.ask<xcb_get_property_reply_t>(
            requestProperty(connection, followed, name, maximum),
            [details, handler](const xcb_get_property_reply_t* reply) { handler(*details, reply); });
    };
    const auto& atoms = connection.atoms();
    property(XCB_ATOM_WM_TRANSIENT_FOR, 1, [](Details& found, const auto* reply) {
        const auto value = words(reply);
        found.window.dialog |= !value.empty() && value.front() != XCB_WINDOW_NONE;
    });
    property(atoms.state, mostValues, [&atoms](Details& found, const auto* reply) {
        found.window.dialog |= contains(words(reply), atoms.stateModal);
    });
    property(atoms.type, mostValues, [&atoms](Details& found, const auto* reply) {
        found.window.dialog |= contains(words(reply), atoms.typeDialog);
    });
    property(XCB_ATOM_WM_NAME, longestTitle,
             [&atoms](Details& found, const auto* reply) { found.oldTitle = text(reply, atoms); });
    property(atoms.name, longestTitle, [&atoms](Details& found, const auto* reply) {
        const auto title = text(reply, atoms);
        found.window.title = title.isEmpty() ? found.oldTitle : title;
    });
    for (const auto& each : objectProperties) {
        property(atoms.*each.name, longestPath,
                 [&atoms, value = each.value](Details& found, const auto* reply) {
                     found.window.objects.*value = text(reply, atoms).toStdString();
                 });
    }
    askProcess(connection, followed, [details, answer = std::move(answer)](std::int32_t process) {
        details->window.processIdentifier = process;
        answer(details->window);
    });
}

void FocusedWindow::refresh() {
    askDetails([this](const session::ActiveWindow& details) {
        if (current && details.handle == current->handle && details.handle == followed) {
            settle(details);
        }
    });
}

void FocusedWindow::settle(std::optional<session::ActiveWindow> window) {
    if (window == current) {
        return;
    }
    current = std::move(window);
    if (onChanged) {
        onChanged(current);
    }
}

void FocusedWindow::askPlace() {
    if (std::exchange(placeAsked, true)) {
        return;
    }
    const auto size = std::make_shared<std::optional<PixelRect>>();
    const auto window = followed;
    connection.ask<xcb_get_geometry_reply_t>(
        xcb_get_geometry(connection.get(), window), [size](const auto* geometry) {
            if (geometry != nullptr) {
                *size = PixelRect{0, 0, geometry->width, geometry->height};
            }
        });
    connection.ask<xcb_translate_coordinates_reply_t>(
        xcb_translate_coordinates(connection.get(), window, connection.root(), 0, 0),
        [this, size, window](const auto* origin) {
            placeAsked = false;
            if (window != followed) {
                if (followed != XCB_WINDOW_NONE) {
                    askPlace();
                }
                return;
            }
            if (origin == nullptr || !size->has_value()) {
                become(XCB_WINDOW_NONE); // a window that had gone before it was called active
                return;
            }
            place = PixelRect{origin->dst_x, origin->dst_y, (*size)->width, (*size)->height};
        });
}

} // namespace orvantile::platform::x11
