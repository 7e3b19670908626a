#pragma once

#include "platform/linux/desktop/bus/BusHandles.h"
#include "platform/linux/desktop/statusitem/MenuDescription.h"

#include <set>
#include <string>
#include <vector>

namespace orvantile::platform::desktop {

/// The names that a call asks for; empty means all.
using MenuPropertyNames = std::set<std::string>;

// Reading calls of the menu protocol. What is not there reads as empty.
[[nodiscard]] std::set<int> readIdentifiers(sd_bus_message& call);
[[nodiscard]] MenuPropertyNames readNames(sd_bus_message& call);

// Writing its replies and signals.
[[nodiscard]] MessageHandle replyTo(sd_bus_message& call);

/// A variant.
void appendValue(sd_bus_message& message, const MenuProperty& value);

/// An array of (ia{sv}).
void appendProperties(sd_bus_message& message, const std::vector<MenuEntry>& entries,
                      const MenuPropertyNames& wanted);

/// An item with no children, as (ia{sv}av).
void appendItem(sd_bus_message& message, const MenuEntry& entry, const MenuPropertyNames& wanted);

/// The whole menu as (ia{sv}av).
void appendRoot(sd_bus_message& message, const std::vector<MenuEntry>& entries,
                const MenuPropertyNames& wanted);

} // namespace orvantile::platform::desktop
