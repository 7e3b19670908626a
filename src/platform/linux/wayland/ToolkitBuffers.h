#pragma once

namespace orvantile::platform::wayland {

/// Keeps the toolkit's part for Wayland from loading a renderer for graphics hardware, which no window of
/// this program uses and which may take 50 MB. Called before the toolkit's application object exists. What
/// the user has set wins.
void drawWithoutGraphicsHardware();

/// Called once the application object exists: from the first window on, programs that this one starts do not
/// inherit that.
void forgetGraphicsHardware();

} // namespace orvantile::platform::wayland
