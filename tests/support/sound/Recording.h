#pragma once

#include "support/sound/SoundServer.h"

#include <cstdint>
#include <vector>

namespace orvantile::test {

/// What has come out of a sound server, cut at the silence before it.
class Recording {
public:
    using Samples = std::vector<std::int16_t>;

    /// Waits for the first sound and records `length` samples from there; fewer, or none, at the deadline.
    Recording(SoundServer& server, std::size_t length, const QDeadlineTimer& deadline);

    [[nodiscard]] bool isSilent() const { return samples.empty(); }

    /// Where a sound is found best, and how well.
    struct Match {
        std::size_t start = 0; ///< samples after the first sound
        double share = 0;      ///< 1 when the sound is in the recording just as it is, at full volume
        double likeness = 0;   ///< 1 when the recording is nothing else there
    };

    /// Looks for `sound` at every place up to `latest`.
    [[nodiscard]] Match find(const Samples& sound, std::size_t latest) const;

private:
    Samples samples;
};

} // namespace orvantile::test
