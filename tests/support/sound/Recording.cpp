#include "support/sound/Recording.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace orvantile::test {
namespace {

/// Quieter samples than this are silence.
constexpr int threshold = 3;

/// Kept of the silence before the first sound, which starts softly.
constexpr std::size_t lead = 240;

bool isHeard(std::int16_t sample) {
    return std::abs(sample) >= threshold;
}

} // namespace

Recording::Recording(SoundServer& server, std::size_t length, const QDeadlineTimer& deadline) {
    QByteArray rest;
    bool begun = false;
    while (samples.size() < length + lead && !deadline.hasExpired()) {
        rest += server.recorded(deadline);
        Samples fresh(static_cast<std::size_t>(rest.size()) / sizeof(std::int16_t));
        if (fresh.empty()) {
            continue;
        }
        std::memcpy(fresh.data(), rest.constData(), fresh.size() * sizeof(std::int16_t));
        rest.remove(0, static_cast<qsizetype>(fresh.size() * sizeof(std::int16_t)));
        samples.insert(samples.end(), fresh.begin(), fresh.end());
        if (!begun) {
            const auto first = std::ranges::find_if(samples, isHeard);
            begun = first != samples.end();
            const auto silence = static_cast<std::size_t>(first - samples.begin());
            const auto dropped = silence - std::min(silence, lead);
            samples.erase(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(dropped));
        }
    }
    if (!begun) {
        samples.clear();
    }
}

Recording::Match Recording::find(const Samples& sound, std::size_t latest) const {
    double own = 0;
    for (const double sample : sound) {
        own += sample * sample;
    }
    Match best;
    for (std::size_t start = 0; start <= latest && start + sound.size() <= samples.size(); ++start) {
        double common = 0;
        double there = 0;
        for (std::size_t index = 0; index < sound.size(); ++index) {
            const double sample = samples[start + index];
            common += sample * sound[index];
            there += sample * sample;
        }
        const double likeness = there > 0 ? common / std::sqrt(own * there) : 0;
        const double share = common / own;
        if (share > best.share) {
            best = {start, share, likeness};
        }
    }
    return best;
}

} // namespace orvantile::test
