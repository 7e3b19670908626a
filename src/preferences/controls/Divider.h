#pragma once

#include <QWidget>

namespace orvantile {

/// A hairline across.
class Divider final : public QWidget {
public:
    Divider();

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace orvantile
