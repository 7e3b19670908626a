#include "preferences/controls/Form.h"

#include "preferences/controls/FormMetrics.h"

namespace orvantile {

Form::Form() : sections(this) {
    sections.setContentsMargins(formMargin, formEdge, formMargin, formEdge);
    sections.setSpacing(sectionSpacing);
    sections.addStretch(1);
}

void Form::addSection(FormSection& section) {
    sections.insertWidget(sections.count() - 1, &section);
    section.show();
}

} // namespace orvantile
