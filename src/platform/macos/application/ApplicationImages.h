#pragma once

namespace orvantile::platform::macos {

/// Lets the toolkit find pictures by name, under its prefix "images", among the resources of the application.
void registerApplicationImages();

} // namespace orvantile::platform::macos
