#pragma once

#include "preferences/controls/FormSection.h"

#include <QVBoxLayout>
#include <QWidget>

namespace orvantile {

/// Cards below each other, with their content at the top.
class Form final : public QWidget {
public:
    Form();

    /// The section stays the caller's.
    void addSection(FormSection& section);

private:
    QVBoxLayout sections;
};

} // namespace orvantile
