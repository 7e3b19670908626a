#pragma once

#include <QPalette>

namespace orvantile {

/// The colours of the preferences, as roles of the toolkit's palette so that they are inherited and change
/// live:
///
/// `Window` behind cards, `Base` of cards, `Mid` of their edges and separators, `WindowText` of labels,
/// `PlaceholderText` of footnotes, `Button` of controls, `Midlight` of tracks, `Light` of knobs, `Highlight`
/// of what is on, `BrightText` of destructive actions.
[[nodiscard]] QPalette formPalette(bool dark);

/// Whether these are the colours of a dark desktop.
[[nodiscard]] bool isDark(const QPalette& palette);

} // namespace orvantile
