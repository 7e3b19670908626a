#pragma once

#include "desktop/compatibility/Outcome.h"
#include "desktop/compatibility/Program.h"

namespace orvantile::test {

/// Writes what came of a program: lines of fields with tabs between them, which a table is made from. Throws
/// std::runtime_error when the file cannot be written.
void writeReport(const QString& path, const Program& program, const Report& report);

} // namespace orvantile::test
