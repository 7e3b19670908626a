#pragma once

#include "preferences/controls/LeadingLabel.h"

namespace orvantile {

/// Small secondary words that belong to the row above.
class Footnote final : public LeadingLabel {
public:
    explicit Footnote(const QString& text);
};

} // namespace orvantile
