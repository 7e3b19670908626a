#pragma once

#include <QLabel>

namespace orvantile {

/// Plain words at the leading edge of the layout, in whatever direction they are written themselves.
class LeadingLabel : public QLabel {
public:
    explicit LeadingLabel(const QString& text = {});

protected:
    void changeEvent(QEvent* event) override;

private:
    void align();
};

} // namespace orvantile
