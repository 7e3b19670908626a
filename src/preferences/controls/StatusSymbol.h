#pragma once

#include <QWidget>

namespace orvantile {

/// A green check mark in a disc, or an orange warning triangle.
class StatusSymbol final : public QWidget {
public:
    StatusSymbol();

    void setGood(bool good);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool good = false;
};

} // namespace orvantile
