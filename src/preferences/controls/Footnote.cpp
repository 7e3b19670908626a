#include "preferences/controls/Footnote.h"

#include "preferences/controls/FormMetrics.h"
#include "preferences/controls/Typography.h"

namespace orvantile {

Footnote::Footnote(const QString& text) : LeadingLabel(text) {
    setFont(footnoteFont());
    setWordWrap(true);
    setContentsMargins(rowPadding, 0, rowPadding, rowTextMargin + 2);
    setForegroundRole(QPalette::PlaceholderText);
}

} // namespace orvantile
