#pragma once

#include <QLabel>

namespace orvantile {

/// Small secondary words that belong to the row above.
class Footnote final : public QLabel {
public:
    explicit Footnote(const QString& text);
};

} // namespace orvantile
