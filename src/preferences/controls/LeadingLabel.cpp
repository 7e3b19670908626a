#include "preferences/controls/LeadingLabel.h"

#include <QEvent>
#include <QStyle>

namespace orvantile {

LeadingLabel::LeadingLabel(const QString& text) {
    setTextFormat(Qt::PlainText);
    setText(text);
    align();
}

void LeadingLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        align();
    }
}

void LeadingLabel::align() {
    setAlignment(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeading) | Qt::AlignVCenter |
                 Qt::AlignAbsolute);
}

} // namespace orvantile
