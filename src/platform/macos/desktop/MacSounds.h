#pragma once

#include "platform/Sounds.h"

namespace orvantile::platform::macos {

/// The system's named sounds.
class MacSounds final : public Sounds {
public:
    void play(const QString& name) override;
};

} // namespace orvantile::platform::macos
