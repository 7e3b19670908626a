#pragma once

#include "platform/linux/a11y/MenuModel.h"
#include "platform/linux/applications/ProgramFacts.h"

#include <QString>

namespace orvantile::platform::applications {

/// Whether Qt programs are to have the helper.
enum class Helper {
    missing, ///< the installation has none
    off,
    on
};

/// Says to the user what a program tells of its commands and, if it does not, what would help.
[[nodiscard]] QString describeReach(const ProgramFacts& program, const a11y::MenuReach& reach, Helper helper);

} // namespace orvantile::platform::applications
