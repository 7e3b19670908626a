#pragma once

#include "desktop/applications/Stage.h"

namespace orvantile::test {

/// Expects that everything works, and at once: the commands of the editor in front are named within half a
/// second of the key, nothing else is, the HUD goes again and the program runs on.
void expectFullFunction(Stage& stage);

} // namespace orvantile::test
