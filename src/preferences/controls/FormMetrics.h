#pragma once

namespace orvantile {

// The rhythm of a grouped form, in points.
constexpr int formMargin = 20; ///< at the sides of cards
constexpr int formEdge = 14;   ///< above the first card and below the last
constexpr int sectionSpacing = 12;
constexpr int cardRadius = 9;
constexpr int rowHeight = 34;    ///< of a row with one line
constexpr int rowPadding = 12;   ///< at the sides of a row
constexpr int rowSpacing = 12;   ///< between what stands in a row
constexpr int rowTextMargin = 8; ///< above and below text of several lines
constexpr int controlHeight = 24;
constexpr int controlRadius = 6;
constexpr int numberWidth = 44; ///< of the value beside a slider

} // namespace orvantile
